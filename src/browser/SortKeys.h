// SPDX-License-Identifier: MIT
#pragma once

#include "rows/ColumnType.h"

#include <string>
#include <string_view>

namespace vellumo {

// Appends a key of `text` to `key`; keys of one kind compare bytewise as the texts are to be ordered, and are equal
// when the texts rank equally. No key contains a zero byte.
//   Text: the order of finderCompare.
//   Number: by value, exact at any length and exponent; "-inf" and "inf" before and after all numbers.
//   Date: "MM/dd/yyyy HH:mm:ss" by time.
// A text that is no number ("nan") or no date follows all that are, such texts among themselves in the order of
// finderCompare.
void appendSortKey(SortKind kind, std::string_view text, std::string& key);

} // namespace vellumo
