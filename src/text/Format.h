// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <type_traits>

namespace vellumo {

// The formats of the message table: "%@" takes a text, "%d" and "%ld" a whole number, "%%" is a percent sign.

// One argument of a format: a text (borrowed for the call) or a number.
class FormatArg {
public:
    template <typename T>
    requires std::is_integral_v<T> FormatArg(T number)
        : m_isNumber(true)
        , m_number(static_cast<std::int64_t>(number))
    {
    }
    FormatArg(std::string_view text)
        : m_text(text)
    {
    }
    FormatArg(const std::string& text)
        : m_text(text)
    {
    }
    FormatArg(const char* text)
        : m_text(text)
    {
    }

    void appendTo(std::string& out) const;

private:
    std::string_view m_text;
    bool m_isNumber = false;
    std::int64_t m_number = 0;
};

// Fills the placeholders of `format` from left to right. An argument is written as what it is, so a translation that
// turns "%d" into "%@" does no harm; a placeholder without an argument stays as it stands.
[[nodiscard]] std::string format(std::string_view format, std::initializer_list<FormatArg> args);

// The same for a key of the message table.
[[nodiscard]] std::string localizedFormat(const char* key, std::initializer_list<FormatArg> args);

// A file size for people: "12 KB", "1.5 MB", "2.0 GB", with the decimal symbol of their language. Units are binary and
// kilobytes are rounded up, so that a file that is not empty never shows 0 KB.
[[nodiscard]] std::string formatComputerFileSize(std::uint64_t bytes);

// Writes the lower-case hexadecimal text of `count` bytes at `in` to `out`, high digit first, without a terminator,
// and returns its length, 2 * count. Without an output buffer (null) only the length is returned; a text that does not
// fit into `outCapacity` is not written at all and 0 is returned.
std::size_t toHex(char* out, std::size_t outCapacity, const std::uint8_t* in, std::size_t count);

} // namespace vellumo
