// SPDX-License-Identifier: MIT
#include "samples/TableShape.h"

#include <algorithm>
#include <numeric>

namespace vellumo::samples {
namespace {

bool isFixed(const ColumnDescription& column)
{
    if (column.calculated) return false;
    if (column.placement != Placement::Usual) return column.placement == Placement::Fixed;
    switch (column.type) {
    case ColumnType::Binary:
    case ColumnType::Text:
    case ColumnType::Ole:
    case ColumnType::Memo: return false;
    default: return true;
    }
}

int sizeOf(const ColumnDescription& column, JetVersion version)
{
    const int given = column.size == 0 ? 255 : column.size;
    switch (column.type) {
    case ColumnType::Boolean:
    case ColumnType::Byte: return 1;
    case ColumnType::Integer: return 2;
    case ColumnType::Long:
    case ColumnType::Single: return 4;
    case ColumnType::Currency:
    case ColumnType::Double:
    case ColumnType::DateTime: return 8;
    case ColumnType::Binary: return given;
    case ColumnType::Text: return version == JetVersion::Jet3 ? given : 2 * given;
    case ColumnType::Ole:
    case ColumnType::Memo: return 0;
    case ColumnType::Guid: return 16;
    case ColumnType::Numeric: return 17;
    case ColumnType::Complex: return 4;
    case ColumnType::BigInt: return 8;
    case ColumnType::DateTimeExtended: return 42;
    }
    return 0;
}

} // namespace

int columnNumber(const TableDescription& table, std::size_t column)
{
    return table.columns[column].number.value_or(static_cast<int>(column));
}

std::size_t columnWithNumber(const TableShape& shape, int number)
{
    const auto found = std::find_if(
        shape.places.begin(), shape.places.end(), [&](const ColumnPlace& place) { return place.number == number; });
    return static_cast<std::size_t>(found - shape.places.begin());
}

TableShape::TableShape(const TableDescription& table, JetVersion version)
    : places(table.columns.size())
    , numberOrder(table.columns.size())
{
    for (std::size_t i = 0; i < places.size(); ++i) {
        places[i].number = columnNumber(table, i);
        if (!table.columns[i].deleted) ++listedCount;
    }
    std::iota(numberOrder.begin(), numberOrder.end(), std::size_t{0});
    std::sort(numberOrder.begin(), numberOrder.end(),
        [&](std::size_t left, std::size_t right) { return places[left].number < places[right].number; });
    std::uint16_t fixedEnd = 0;
    for (const auto index : numberOrder) {
        const auto& column = table.columns[index];
        auto& place = places[index];
        place.isFixed = isFixed(column);
        place.size = static_cast<std::uint16_t>(sizeOf(column, version));
        place.variableIndex = static_cast<std::uint16_t>(variableCount);
        if (!place.isFixed) {
            ++variableCount;
        } else if (column.type != ColumnType::Boolean) { // its value is a bit of the mask
            place.fixedOffset = fixedEnd;
            fixedEnd = static_cast<std::uint16_t>(fixedEnd + place.size);
        }
    }
    columnCount = places.empty() ? 0 : places[numberOrder.back()].number + 1;
}

} // namespace vellumo::samples
