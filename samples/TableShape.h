// SPDX-License-Identifier: MIT
#pragma once

#include "samples/Description.h"

#include <cstdint>
#include <vector>

namespace vellumo::samples {

// Where a column's values lie in a row.
struct ColumnPlace {
    int number = 0;
    bool isFixed = false;
    std::uint16_t fixedOffset = 0;   // from the end of the row's column count; 0 for variable columns
    std::uint16_t variableIndex = 0; // for a fixed column the number of variable columns before it
    std::uint16_t size = 0;          // bytes, as the definition states it; 0 for Ole and Memo
};

// The layout of a table's rows. Offsets and variable indexes are given out in order of column number, deleted columns
// keeping theirs.
struct TableShape {
    TableShape(const TableDescription& table, JetVersion version);

    std::vector<ColumnPlace> places;      // one for each column of the description, in its order
    std::vector<std::size_t> numberOrder; // indexes into `places`, by column number
    int columnCount = 0;                  // highest column number + 1
    int variableCount = 0;
    int listedCount = 0; // without deleted columns
};

// The column's number: the one asked for, or its place in the list.
[[nodiscard]] int columnNumber(const TableDescription& table, std::size_t column);

// The index of the column with this number.
[[nodiscard]] std::size_t columnWithNumber(const TableShape& shape, int number);

} // namespace vellumo::samples
