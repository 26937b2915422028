// SPDX-License-Identifier: MIT
#include "samples/IndexPlan.h"

#include "samples/TableShape.h"

#include <algorithm>

namespace vellumo::samples {
namespace {

template <typename Items> std::size_t placeOf(const Items& items, const std::string& name)
{
    const auto found = std::find_if(items.begin(), items.end(), [&](const auto& item) { return item.name == name; });
    return static_cast<std::size_t>(found - items.begin());
}

std::uint8_t flagsOf(const IndexDescription& index)
{
    int flags = index.ignoreNulls ? PhysicalIndex::IgnoreNulls : 0;
    if (index.primary || index.unique) flags |= PhysicalIndex::Unique;
    if (index.primary || index.required) flags |= PhysicalIndex::Required;
    return static_cast<std::uint8_t>(flags);
}

TableIndexes ownIndexes(const TableDescription& table)
{
    TableIndexes indexes;
    for (const auto& index : table.indexes) {
        auto& physical = indexes.physical.emplace_back();
        physical.flags = flagsOf(index);
        for (const auto& key : index.columns)
            physical.keys.push_back({columnNumber(table, columnIndex(table, key.column)), key.ascending});
        auto& logical = indexes.logical.emplace_back();
        logical.name = index.name;
        logical.physical = indexes.physical.size() - 1;
        logical.number = index.number.value_or(static_cast<int>(logical.physical));
        logical.kind = index.primary ? LogicalIndex::Primary : LogicalIndex::Plain;
    }
    return indexes;
}

int nextNumber(const TableIndexes& indexes)
{
    int next = 0;
    for (const auto& index : indexes.logical)
        next = std::max(next, index.number + 1);
    return next;
}

// The name that Access gives to the referenced side: ".rB", ".rC", ..
std::string referencedSideName(const TableIndexes& indexes)
{
    const auto taken = std::count_if(indexes.logical.begin(), indexes.logical.end(),
        [](const auto& index) { return index.side == LogicalIndex::Referenced; });
    std::string letters;
    for (auto rest = taken + 1; rest > 0; rest /= 26)
        letters.insert(letters.begin(), static_cast<char>('A' + rest % 26));
    return ".r" + letters;
}

void addRelation(
    const DatabaseDescription& description, const RelationDescription& relation, std::vector<TableIndexes>& all)
{
    const auto from = tableIndex(description, relation.table);
    const auto to = tableIndex(description, relation.referencedTable);
    PhysicalIndex physical;
    for (const auto& column : relation.columns) {
        const auto& table = description.tables[from];
        physical.keys.push_back({columnNumber(table, columnIndex(table, column)), true});
    }
    all[from].physical.push_back(physical);

    LogicalIndex referencing;
    referencing.name = relation.name;
    referencing.number = nextNumber(all[from]);
    referencing.physical = all[from].physical.size() - 1;
    referencing.kind = LogicalIndex::Relation;
    referencing.side = LogicalIndex::Referencing;
    referencing.otherTable = to;
    referencing.cascadeUpdates = relation.cascadeUpdates;
    referencing.cascadeDeletes = relation.cascadeDeletes;
    auto referenced = referencing;
    referenced.name = referencedSideName(all[to]);
    referenced.number = nextNumber(all[to]) + (from == to ? 1 : 0);
    referenced.physical = uniqueIndexOver(description.tables[to], relation.referencedColumns);
    referenced.side = LogicalIndex::Referenced;
    referenced.otherTable = from;
    referenced.otherNumber = referencing.number;
    referencing.otherNumber = referenced.number;
    all[from].logical.push_back(referencing);
    all[to].logical.push_back(referenced);
}

} // namespace

std::size_t tableIndex(const DatabaseDescription& description, const std::string& name)
{
    return placeOf(description.tables, name);
}

std::size_t columnIndex(const TableDescription& table, const std::string& name) { return placeOf(table.columns, name); }

std::size_t uniqueIndexOver(const TableDescription& table, const std::vector<std::string>& columns)
{
    const auto found = std::find_if(table.indexes.begin(), table.indexes.end(), [&](const IndexDescription& index) {
        return (index.primary || index.unique)
            && std::equal(index.columns.begin(), index.columns.end(), columns.begin(), columns.end(),
                [](const IndexColumn& key, const std::string& column) { return key.column == column; });
    });
    return static_cast<std::size_t>(found - table.indexes.begin());
}

std::vector<TableIndexes> planIndexes(const DatabaseDescription& description)
{
    std::vector<TableIndexes> all;
    all.reserve(description.tables.size());
    for (const auto& table : description.tables)
        all.push_back(ownIndexes(table));
    for (const auto& relation : description.relations) {
        if (relation.enforced) addRelation(description, relation, all);
    }
    for (auto& indexes : all) {
        std::stable_sort(indexes.logical.begin(), indexes.logical.end(),
            [](const LogicalIndex& left, const LogicalIndex& right) { return left.name < right.name; });
    }
    return all;
}

} // namespace vellumo::samples
