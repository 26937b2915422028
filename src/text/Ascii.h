#pragma once

#include <algorithm>
#include <string>
#include <string_view>

// Letters of names that are ASCII by their nature (extensions, stream names), whatever the language.
namespace vellumo {

[[nodiscard]] constexpr char asciiLower(char letter)
{
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + ('a' - 'A')) : letter;
}

[[nodiscard]] inline std::string asciiLower(std::string_view text)
{
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(), [](char letter) { return asciiLower(letter); });
    return lower;
}

} // namespace vellumo
