// SPDX-License-Identifier: MIT
#include "samples/DescriptionCheck.h"

#include "samples/IndexPlan.h"
#include "samples/TableShape.h"
#include "text/Format.h"

#include <set>

namespace vellumo::samples {
namespace {

constexpr std::size_t maxColumns = 255;
constexpr std::size_t maxIndexColumns = 10;

bool placementFits(const ColumnDescription& column)
{
    const bool isLong = column.type == ColumnType::Ole || column.type == ColumnType::Memo;
    if (column.placement == Placement::Fixed) return !isLong;
    return column.placement != Placement::Variable || column.type != ColumnType::Boolean;
}

bool hasColumn(const TableDescription& table, const std::string& name)
{
    const auto index = columnIndex(table, name);
    return index < table.columns.size() && !table.columns[index].deleted;
}

std::string checkColumns(const TableDescription& table)
{
    if (table.columns.empty() || table.columns.size() > maxColumns)
        return localizedFormat("Table <%@> must have 1 to 255 columns.", {table.name});
    std::set<int> numbers;
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        const auto& column = table.columns[i];
        const int number = columnNumber(table, i);
        if (number < 0 || number >= static_cast<int>(maxColumns) || !numbers.insert(number).second)
            return localizedFormat(
                "The number of column <%@> in table <%@> is taken or out of range.", {column.name, table.name});
        if (!placementFits(column) || column.size < 0 || column.size > 510)
            return localizedFormat("Column <%@> in table <%@> cannot be stored like that.", {column.name, table.name});
    }
    return {};
}

std::string checkIndexes(const TableDescription& table)
{
    for (const auto& index : table.indexes) {
        bool isSound = !index.columns.empty() && index.columns.size() <= maxIndexColumns;
        for (const auto& key : index.columns)
            isSound = isSound && hasColumn(table, key.column);
        if (!isSound) return localizedFormat("Index <%@> of table <%@> has no such columns.", {index.name, table.name});
    }
    return {};
}

bool haveColumns(const TableDescription& table, const std::vector<std::string>& names)
{
    for (const auto& name : names) {
        if (!hasColumn(table, name)) return false;
    }
    return !names.empty() && names.size() <= maxIndexColumns;
}

std::string checkRelation(const DatabaseDescription& description, const RelationDescription& relation)
{
    const auto from = tableIndex(description, relation.table);
    const auto to = tableIndex(description, relation.referencedTable);
    const auto count = description.tables.size();
    if (from == count || to == count || relation.columns.size() != relation.referencedColumns.size()
        || !haveColumns(description.tables[from], relation.columns)
        || !haveColumns(description.tables[to], relation.referencedColumns))
        return localizedFormat("Relation <%@> has no such tables or columns.", {relation.name});
    const auto& referenced = description.tables[to];
    if (relation.enforced && uniqueIndexOver(referenced, relation.referencedColumns) == referenced.indexes.size())
        return localizedFormat("Relation <%@> needs a unique index in table <%@>.", {relation.name, referenced.name});
    return {};
}

} // namespace

std::string checkDescription(const DatabaseDescription& description)
{
    for (const auto& table : description.tables) {
        if (auto error = checkColumns(table); !error.empty()) return error;
        if (auto error = checkIndexes(table); !error.empty()) return error;
    }
    for (const auto& relation : description.relations) {
        if (auto error = checkRelation(description, relation); !error.empty()) return error;
    }
    return {};
}

} // namespace vellumo::samples
