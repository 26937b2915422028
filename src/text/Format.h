#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <type_traits>

// The formats of the message table: "%@" takes a text, "%d" and "%ld" a whole number, "%%" is a percent sign.
namespace vellumo {

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

} // namespace vellumo
