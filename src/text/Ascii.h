// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

// Letters of names that are ASCII by their nature (extensions, stream names), whatever the language.
namespace vellumo {

[[nodiscard]] constexpr char asciiLower(char letter)
{
    return static_cast<char>(letter | (letter >= 'A' && letter <= 'Z' ? 0x20 : 0));
}

[[nodiscard]] inline std::string asciiLower(std::string_view text)
{
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(), [](char letter) { return asciiLower(letter); });
    return lower;
}

} // namespace vellumo
