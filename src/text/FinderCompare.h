// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

// The order in which the desktop's file browser lists names: composed and decomposed forms are equal, full-width and
// half-width forms are equal, digit sequences compare as numbers, punctuation and case count. Independent of the
// process's locale (the root order of the Unicode Collation Algorithm). Any thread.
namespace vellumo {

// -1, 0 or 1. Texts are UTF-8; malformed bytes count as U+FFFD.
[[nodiscard]] int finderCompare(std::string_view left, std::string_view right);

// Appends a key of `text` to `key`; comparing two keys bytewise gives what finderCompare gives for the texts. The
// faster way to order many texts.
void appendFinderSortKey(std::string_view text, std::string& key);

} // namespace vellumo
