// SPDX-License-Identifier: MIT
#pragma once

#include "jet/Definition.h"

// The table whose rows fuzz_rows reads: a column of each type, by its stored code.
namespace vellumo {

constexpr std::uint32_t rowTablePage = 2; // what its pages say their owner is

inline jet::ColumnDef fixedColumn(unsigned number, int code, std::size_t offset, std::size_t size)
{
    return {.type = static_cast<ColumnType>(code),
        .size = size,
        .number = number,
        .isFixed = true,
        .fixedOffset = offset,
        .scale = 4};
}
inline jet::ColumnDef variableColumn(unsigned number, int code, std::size_t index)
{
    return {.type = static_cast<ColumnType>(code), .number = number, .variableIndex = index};
}

inline jet::TableDef rowTable()
{
    jet::TableDef table{.definitionPage = rowTablePage, .columnLimit = 20};
    table.columns = {fixedColumn(0, 1, 0, 1), fixedColumn(1, 2, 0, 1), fixedColumn(2, 3, 1, 2), fixedColumn(3, 4, 3, 4),
        fixedColumn(4, 5, 7, 8), fixedColumn(5, 6, 15, 4), fixedColumn(6, 7, 19, 8), fixedColumn(7, 8, 27, 8),
        fixedColumn(8, 15, 35, 16), fixedColumn(9, 16, 51, 17), fixedColumn(10, 10, 68, 8), fixedColumn(11, 18, 76, 4),
        variableColumn(12, 9, 0), variableColumn(13, 10, 1), variableColumn(14, 12, 2), variableColumn(15, 11, 3),
        variableColumn(16, 4, 4), variableColumn(17, 0, 5)};
    return table;
}

} // namespace vellumo
