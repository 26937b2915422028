// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vellumo {

class RowStore;

// The rows of a column that have the longest texts, by their bytes: at most `count`, in no order. Among equals any.
// Looks at the length of every text and at no text. None for a column of objects.
[[nodiscard]] std::vector<std::uint32_t> longestTexts(const RowStore& rows, std::size_t column, std::size_t count);

} // namespace vellumo
