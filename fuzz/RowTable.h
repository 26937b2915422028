// SPDX-License-Identifier: MIT
#pragma once

#include "embedded/TAdmBlobData.h"
#include "jet/ComplexColumns.h"

// The table whose rows fuzz_rows reads: a column of each type, by its stored code, and of what newer files have.
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

inline jet::ColumnDef calculatedColumn(unsigned number, int code, std::size_t index)
{
    auto column = variableColumn(number, code, index);
    column.isWrapped = true;
    return column;
}

// Two values, or one object, under the number 7.
inline std::shared_ptr<const jet::ValueGroups> valueGroups()
{
    auto groups = std::make_shared<jet::ValueGroups>();
    auto& group = groups->groupOf(7);
    group.text = "a; b";
    group.object = std::make_shared<TAdmBlobData>(std::vector<std::byte>(3), "bin");
    group.count = 2;
    return groups;
}
inline jet::ColumnDef complexColumn(unsigned number, ColumnType type, std::size_t index)
{
    auto column = variableColumn(number, static_cast<int>(type), index);
    column.groups = valueGroups();
    return column;
}

inline jet::TableDef rowTable()
{
    jet::TableDef table{.definitionPage = rowTablePage, .columnLimit = 28};
    table.columns = {fixedColumn(0, 1, 0, 1), fixedColumn(1, 2, 0, 1), fixedColumn(2, 3, 1, 2), fixedColumn(3, 4, 3, 4),
        fixedColumn(4, 5, 7, 8), fixedColumn(5, 6, 15, 4), fixedColumn(6, 7, 19, 8), fixedColumn(7, 8, 27, 8),
        fixedColumn(8, 15, 35, 16), fixedColumn(9, 16, 51, 17), fixedColumn(10, 10, 68, 8), fixedColumn(11, 18, 76, 4),
        variableColumn(12, 9, 0), variableColumn(13, 10, 1), variableColumn(14, 12, 2), variableColumn(15, 11, 3),
        variableColumn(16, 4, 4), variableColumn(17, 0, 5), variableColumn(18, 19, 6), variableColumn(19, 20, 7),
        calculatedColumn(20, 1, 8), calculatedColumn(21, 16, 9), calculatedColumn(22, 10, 10),
        calculatedColumn(23, 12, 11), complexColumn(24, ColumnType::MultipleValues, 12),
        complexColumn(25, ColumnType::Attachment, 13)};
    table.histories = {{complexColumn(26, ColumnType::ComplexAutoNumber, 14)}};
    return table;
}

} // namespace vellumo
