#include "jet/TableDef.h"

#include <algorithm>
#include <numeric>

namespace vellumo::jet {

std::string propertyText(const PropertyValue& value)
{
    if (const auto* isSet = std::get_if<bool>(&value)) return *isSet ? "yes" : "no";
    if (const auto* number = std::get_if<std::int64_t>(&value)) return std::to_string(*number);
    return std::get<std::string>(value);
}

std::vector<CellKind> cellKinds(const TableDef& table)
{
    std::vector<CellKind> kinds;
    for (const auto& column : table.columns)
        kinds.push_back(column.type == ColumnType::Ole ? CellKind::Blob : CellKind::Text);
    return kinds;
}

std::vector<std::size_t> numberOrder(const std::vector<ColumnDef>& columns)
{
    std::vector<std::size_t> order(columns.size());
    std::iota(order.begin(), order.end(), 0);
    std::ranges::stable_sort(order, {}, [&](std::size_t column) { return columns[column].number; });
    return order;
}

} // namespace vellumo::jet
