// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace vellumo {

// Whether all bytes belong to characters: none is cut, too long for what it says, or a surrogate.
[[nodiscard]] bool isWellFormedUTF8(std::string_view text);

// The text's first bytes, at most `count`; a character that does not fit as a whole is left out.
[[nodiscard]] std::string_view firstBytes(std::string_view text, std::size_t count);

} // namespace vellumo
