// SPDX-License-Identifier: MIT
#include "embedded/FileNames.h"

#include "embedded/Limits.h"
#include "text/TerminalText.h"

#include <unicode/utf8.h>

namespace vellumo {

namespace {

// The bytes 0x80 to 0x9F; the five that stand for nothing become the control characters of that number.
constexpr char16_t windows1252[] =
    u"\u20AC\u0081\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152\u008D"
    u"\u017D\u008F\u0090\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A"
    u"\u0153\u009D\u017E\u0178";

void appendUtf8(std::string& out, UChar32 character)
{
    char bytes[U8_MAX_LENGTH];
    std::size_t length = 0;
    U8_APPEND_UNSAFE(bytes, length, character);
    out.append(bytes, length);
}

std::string shortened(const std::string& name)
{
    constexpr std::size_t longestExtension = 16;
    if (name.size() <= limits::longestFileName) return name;
    const auto dot = name.rfind('.');
    const auto hasExtension = dot != std::string::npos && name.size() - dot <= longestExtension;
    const auto extension = hasExtension ? name.substr(dot) : "";
    return std::string(firstBytes(name, limits::longestFileName - extension.size())) + extension;
}

} // namespace

std::string textFromAnsi(std::string_view text)
{
    if (isWellFormedUTF8(text)) return std::string(text);
    std::string out;
    for (const char c : text) {
        const auto code = static_cast<unsigned char>(c);
        appendUtf8(out, code >= 0x80 && code < 0xA0 ? windows1252[code - 0x80] : code);
    }
    return out;
}

std::string cleanFileName(std::string_view path)
{
    const auto separator = path.find_last_of("/\\");
    const auto name = withoutObeyed(separator == std::string_view::npos ? path : path.substr(separator + 1));
    const auto first = name.find_first_not_of(' ');
    if (first == std::string::npos) return {};
    const auto trimmed = name.substr(first, name.find_last_not_of(' ') - first + 1);
    return trimmed.find_first_not_of('.') == std::string::npos ? std::string() : shortened(trimmed);
}

} // namespace vellumo
