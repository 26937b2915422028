#include "jet/TableDef.h"

#include <algorithm>
#include <numeric>

namespace vellumo::jet {

std::vector<CellKind> cellKinds(const TableDef& table)
{
    std::vector<CellKind> kinds;
    for (const auto& column : table.columns)
        kinds.push_back(column.typeCode == TypeCode::ole ? CellKind::Blob : CellKind::Text);
    return kinds;
}

std::vector<std::size_t> numberOrder(const std::vector<ColumnDef>& columns)
{
    std::vector<std::size_t> order(columns.size());
    std::iota(order.begin(), order.end(), 0);
    std::ranges::stable_sort(order, {}, [&](std::size_t column) { return columns[column].number; });
    return order;
}

std::string_view mdb_get_colbacktype_string_fromMdbType(int typeCode)
{
    switch (typeCode) {
    case 1: return "Boolean";
    case 2: return "Byte";
    case 3: return "Integer";
    case 4: return "Long Integer";
    case 5: return "Currency";
    case 6: return "Single";
    case 7: return "Double";
    case 8: return "DateTime";
    case 9: return "Binary";
    case 10: return "Text";
    case 11: return "OLE";
    case 12: return "Memo/Hyperlink";
    case 15: return "Replication ID";
    case 16: return "Numeric";
    case 18: return "Complex Value auto number";
    default: return {};
    }
}

} // namespace vellumo::jet
