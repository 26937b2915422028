// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string_view>

namespace vellumo {

// Whether all bytes belong to characters: none is cut, too long for what it says, or a surrogate.
[[nodiscard]] bool isWellFormedUTF8(std::string_view text);

// The text's first bytes, at most `count`; a character that does not fit as a whole is left out.
[[nodiscard]] std::string_view firstBytes(std::string_view text, std::size_t count);

// Of a well-formed text that is not empty: the bytes of its first character, and what it is in Unicode.
[[nodiscard]] std::string_view firstCharacter(std::string_view text);
[[nodiscard]] std::uint32_t firstCodePoint(std::string_view text);

} // namespace vellumo
