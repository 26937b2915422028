// SPDX-License-Identifier: MIT
#include "text/TerminalText.h"

#include <algorithm>
#include <fmt/format.h>
#include <iterator>
#include <unicode/utf8.h>

namespace vellumo {

namespace {

constexpr struct {
    UChar32 first;
    UChar32 last;
} obeyed[] = {{0, 0x1F}, {0x7F, 0x9F}, {0x61C, 0x61C}, {0x200E, 0x200F}, {0x2028, 0x202E}, {0x2066, 0x2069}};

bool isObeyed(UChar32 character)
{
    return std::ranges::any_of(
        obeyed, [character](const auto& range) { return character >= range.first && character <= range.last; });
}

bool holds(std::string_view ascii, UChar32 character)
{
    return character >= 0 && character <= 0x7F && ascii.find(static_cast<char>(character)) != std::string_view::npos;
}

// `take` gets each character, negative for bytes that are none, and its bytes.
template <typename Take> void forEachCharacter(std::string_view text, const Take& take)
{
    for (std::size_t at = 0, start = 0; at < text.size(); start = at) {
        UChar32 character = 0;
        U8_NEXT(text.data(), at, text.size(), character);
        take(character, text.substr(start, at - start));
    }
}

} // namespace

std::string escapedText(std::string_view text, std::string_view kept)
{
    std::string result;
    forEachCharacter(text, [&](UChar32 character, std::string_view bytes) {
        if (isObeyed(character) && !holds(kept, character))
            fmt::format_to(std::back_inserter(result), "\\u{{{:X}}}", character);
        else
            result += bytes;
    });
    return result;
}

std::string withoutObeyed(std::string_view text)
{
    std::string result;
    forEachCharacter(text, [&](UChar32 character, std::string_view bytes) {
        if (character >= 0 && !isObeyed(character)) result += bytes;
    });
    return result;
}

std::string cleanedText(std::string_view text, std::string_view forbidden, char replacement)
{
    std::string result;
    forEachCharacter(text, [&](UChar32 character, std::string_view bytes) {
        if (character < 0 || isObeyed(character) || holds(forbidden, character))
            result += replacement;
        else
            result += bytes;
    });
    return result;
}

} // namespace vellumo
