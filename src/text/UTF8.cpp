// SPDX-License-Identifier: MIT
#include "text/UTF8.h"

#include <unicode/utf8.h>

namespace vellumo {

bool isWellFormedUTF8(std::string_view text)
{
    for (std::size_t at = 0; at < text.size();) {
        UChar32 character = 0;
        U8_NEXT(text.data(), at, text.size(), character);
        if (character < 0) return false;
    }
    return true;
}

std::string_view firstBytes(std::string_view text, std::size_t count)
{
    if (text.size() <= count) return text;
    while (count > 0 && U8_IS_TRAIL(text[count]))
        --count;
    return text.substr(0, count);
}

std::string_view firstCharacter(std::string_view text)
{
    std::size_t length = 0;
    U8_FWD_1(text.data(), length, text.size());
    return text.substr(0, length);
}

std::uint32_t firstCodePoint(std::string_view text)
{
    std::size_t at = 0;
    UChar32 character = 0;
    U8_NEXT(text.data(), at, text.size(), character);
    return static_cast<std::uint32_t>(character);
}

} // namespace vellumo
