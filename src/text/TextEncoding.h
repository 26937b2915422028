// SPDX-License-Identifier: MIT
#pragma once

#include "text/UTF8.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct UConverter;

// The text encodings that output can be written in, from ICU's converters.
namespace vellumo {

// An encoding of the list. The identifier is stored and passed around; it never changes its meaning: the common
// encodings have small numbers fixed here, every other one a number above 0x7FFFFFFF made from its registered name.
struct TextEncoding {
    std::uint32_t identifier = 0;
    std::string registeredName; // as registered with IANA, such as "ISO-8859-1"
    std::string name;           // for people, localised; the registered name where there is no better one
};

inline constexpr std::uint32_t encodingASCII = 1;
inline constexpr std::uint32_t encodingUTF8 = 4;
inline constexpr std::uint32_t encodingISOLatin1 = 5;
inline constexpr std::uint32_t encodingUTF16 = 10;
inline constexpr std::uint32_t encodingWindows1252 = 12;

// Every encoding that has a registered name, in no particular order; the names are in the language of the first call.
// No locale of the process has an influence on the encodings themselves.
[[nodiscard]] const std::vector<TextEncoding>& availableTextEncodings();

// The readable name of an encoding; "" for an identifier that is none.
[[nodiscard]] std::string textEncodingName(std::uint32_t identifier);

// Its name as registered; "" likewise.
[[nodiscard]] std::string textEncodingRegisteredName(std::uint32_t identifier);

// Whether only a mark in front tells readers in which order the bytes of the encoding come.
[[nodiscard]] bool needsByteOrderMark(std::uint32_t identifier);

// The identifier of the encoding that a user names by its readable name, its registered name or any alias of that
// ("latin1", "cp1252"); case does not matter.
[[nodiscard]] std::optional<std::uint32_t> findTextEncoding(std::string_view name);

// Converts UTF-8 into one encoding, strictly: no replacement characters, no fallback mappings. Never writes a
// byte-order mark; UTF-16 and UTF-32 without a byte order in their name are little-endian. One thread at a time.
class TextEncoder {
public:
    // nullopt for an identifier that is no encoding.
    [[nodiscard]] static std::optional<TextEncoder> create(std::uint32_t identifier);

    // True when it is certain that the conversion gives the very bytes of `text`. Looks at each byte at most once.
    [[nodiscard]] bool keeps(std::string_view text) const;

    // Appends the text's bytes in this encoding; each call is a conversion of its own, begun and ended in the initial
    // shift state. False, with `out` as before, when the text cannot be represented. `text` is well-formed UTF-8.
    [[nodiscard]] bool append(std::string_view text, std::string& out);

private:
    struct Close {
        void operator()(UConverter* converter) const;
    };
    using Converter = std::unique_ptr<UConverter, Close>;

    explicit TextEncoder(Converter converter);
    [[nodiscard]] bool convert(std::string_view text, std::string& out);
    [[nodiscard]] bool convertSegment(std::string_view segment, bool isLast, std::string& out);

    Converter m_converter; // null: UTF-8, which needs none
    bool m_keepsASCII = true;
    std::u16string m_units; // the segment being converted
};

} // namespace vellumo
