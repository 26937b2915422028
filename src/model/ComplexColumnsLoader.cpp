// SPDX-License-Identifier: MIT
#include "model/ComplexColumnsLoader.h"

#include "embedded/TAdmBlobData.h"

#include <algorithm>

namespace vellumo {

namespace {

constexpr std::string_view systemTable = "MSysComplexColumns";

DamageKind lossOf(jet::ComplexKind kind)
{
    switch (kind) {
    case jet::ComplexKind::Attachments: return DamageKind::Object;
    case jet::ComplexKind::Versions: return DamageKind::LongText;
    case jet::ComplexKind::Values: break;
    }
    return DamageKind::Value;
}

// What a table of values lost, as a loss of the column whose values they are: a row of it is a value there, and its
// numbers mean nothing to anybody who sees the column.
void tellAsColumn(const DamageReport& found, const jet::ColumnDef& column, DamageReport& damage)
{
    for (auto record : found.records()) {
        if (record.kind == DamageKind::Table) continue; // every cell tells so
        if (record.kind == DamageKind::Row || record.kind == DamageKind::MissingRows)
            record.kind = lossOf(column.complexKind);
        record.table.clear();
        record.column = column.name;
        record.row = 0;
        damage.add(std::move(record));
    }
}

} // namespace

ComplexColumnsLoader::ComplexColumnsLoader(
    jet::Database& database, TableRowsLoader& rows, const std::vector<jet::CatalogEntry>& catalog)
    : m_database(database)
    , m_rows(rows)
    , m_catalog(catalog)
{
    const auto entry = std::ranges::find(catalog, systemTable, &jet::CatalogEntry::name);
    if (!database.isNewerFormat() || entry == catalog.end()) return;
    DamageReport unwanted; // a column that is not found here tells so itself
    if (const auto content = database.readContent(*entry, unwanted))
        m_columns = jet::complexColumnsFrom(content->def, content->rows, catalog);
}

bool ComplexColumnsLoader::isValueTable(const jet::CatalogEntry& entry) const
{
    return std::ranges::find(m_columns, entry.id, &jet::ComplexColumn::valueTable) != m_columns.end();
}

const jet::ComplexColumn* ComplexColumnsLoader::find(const jet::TableDef& table, const jet::ColumnDef& column) const
{
    const auto found = std::ranges::find_if(m_columns, [&](const jet::ComplexColumn& known) {
        return known.table == table.definitionPage && known.complexId == column.complexId;
    });
    return found == m_columns.end() ? nullptr : &*found;
}

const jet::ColumnDef* ComplexColumnsLoader::columnOf(const jet::TableDef& table, const jet::CatalogEntry& entry) const
{
    const auto hasItsValues = [&](const jet::ColumnDef& column) {
        const auto* known = column.complexId != 0 ? find(table, column) : nullptr;
        return known != nullptr && known->valueTable == entry.id;
    };
    const auto found = std::ranges::find_if(table.columns, hasItsValues);
    if (found != table.columns.end()) return &*found;
    const auto history = std::ranges::find_if(table.histories, hasItsValues, &jet::HistoryDef::column);
    return history == table.histories.end() ? nullptr : &history->column;
}

void ComplexColumnsLoader::mark(jet::TableDef& table) const
{
    if (!m_database.isNewerFormat()) return;
    for (auto& column : table.columns) {
        if (column.type != ColumnType::ComplexAutoNumber) continue;
        const auto* known = find(table, column);
        if (known != nullptr && known->kind != jet::ComplexKind::Versions) column.complexKind = known->kind;
        const bool isFiles = column.complexKind == jet::ComplexKind::Attachments;
        column.type = isFiles ? ColumnType::Attachment : ColumnType::MultipleValues;
    }
}

bool ComplexColumnsLoader::readValues(
    jet::TableDef& table, DamageReport& damage, const TableRowsLoader::Observer& observer)
{
    for (auto& column : table.columns)
        if (jet::isComplex(column.type) && !readValues(column, table, damage, observer)) return false;
    for (auto& history : table.histories) {
        history.column.complexKind = jet::ComplexKind::Versions;
        if (!readValues(history.column, table, damage, observer)) return false;
        const auto* known = find(table, history.column);
        if (history.column.groups) history.memo = jet::memoOfHistory(table, m_read.at(known->valueTable).values);
        // The name that people know.
        if (history.memo)
            history.column.name = table.columns[*history.memo].name;
        else
            damage.add({.kind = DamageKind::Definition, .column = history.column.name});
    }
    return true;
}

// A table of values is one column's alone; for others that a damaged file leads to it, there is nothing. It is read
// once, though the column may come again with rows that were lost or deleted.
bool ComplexColumnsLoader::readValues(
    jet::ColumnDef& column, const jet::TableDef& owner, DamageReport& damage, const TableRowsLoader::Observer& observer)
{
    const auto* known = find(owner, column);
    if (known == nullptr) return true;
    const auto [place, isNew] = m_read.try_emplace(known->valueTable);
    auto& read = place->second;
    if (isNew) {
        read.owner = known;
        if (!readTable(*known, column, read, damage, observer)) return false;
    }
    if (read.owner != known) return true;
    column.groups = read.groups;
    if (column.complexKind == jet::ComplexKind::Values) jet::takeLookupOf(read.values, column);
    return true;
}

bool ComplexColumnsLoader::readTable(const jet::ComplexColumn& known, const jet::ColumnDef& column, Read& read,
    DamageReport& damage, const TableRowsLoader::Observer& observer)
{
    const auto entry = std::ranges::find_if(
        m_catalog, [&](const jet::CatalogEntry& listed) { return listed.isTable() && listed.id == known.valueTable; });
    if (entry == m_catalog.end()) return true;
    DamageReport found;
    auto values = m_database.readTable(*entry, found);
    if (values) {
        jet::keepValueColumns(*values, column.complexKind);
        RowStore rows({}, jet::cellKinds(*values));
        const auto objects =
            column.complexKind == jet::ComplexKind::Attachments ? ObjectForm::Attachment : ObjectForm::Object;
        if (!m_rows.load(*values, rows, found, observer, {jet::RowChoice::Live, objects})) return false;
        jet::tellMissingRows(*values, rows.rowCount(), found);
        read.groups = jet::groupValues(column.complexKind, *values, rows);
        read.values = std::move(*values);
    }
    tellAsColumn(found, column, damage);
    return true;
}

// When rows are lost, their values are as well, and nobody asks for them.
void ComplexColumnsLoader::tellUnclaimed(const jet::TableDef& table, DamageReport& damage)
{
    if (damage.missingRows() != 0 || damage.total(DamageKind::Page) != 0) return;
    const auto tell = [&](const jet::ColumnDef& column) {
        const auto count = column.groups ? column.groups->unclaimedValues() : 0;
        if (count != 0) damage.add({.kind = lossOf(column.complexKind), .column = column.name, .count = count});
    };
    for (const auto& column : table.columns)
        tell(column);
    for (const auto& history : table.histories)
        tell(history.column);
}

} // namespace vellumo
