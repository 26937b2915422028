// SPDX-License-Identifier: MIT
#pragma once

#include "browser/SortKeys.h"

#include <cstdint>
#include <stop_token>
#include <vector>

namespace vellumo {

class RowStore;

// The rows of a table ordered by one column: nulls first, then the values in ascending order. Rows of equal values
// stand in stored order, forwards and backwards. Objects are all equal.
class RowOrder {
public:
    // Sorts. Takes 32 bytes a row while it runs, and as much again as the texts' keys take (at most 1 KiB a row). When
    // that is stopped, which takes effect at once, the order holds nothing of use.
    RowOrder(const RowStore& rows, std::size_t column, SortKind kind, std::stop_token stop = {});

    // `direction` above 0: ascending; below: descending, nulls last. O(rows).
    [[nodiscard]] std::vector<std::uint32_t> rows(int direction) const;

private:
    std::vector<std::uint32_t> m_rows;        // ascending
    std::vector<std::uint32_t> m_groupStarts; // where each run of equal values starts in m_rows
};

} // namespace vellumo
