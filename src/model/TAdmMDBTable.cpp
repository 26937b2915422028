// SPDX-License-Identifier: MIT
#include "model/TAdmMDBTable.h"

#include "jet/Definition.h"
#include "model/TAdmMDBFile.h"

#include <algorithm>
#include <set>

namespace vellumo {

namespace {

// Access keeps an index of its own over each column of several values. It is over numbers that nobody sees.
bool isOverGroups(const jet::TableDef& table, const jet::IndexDef& index)
{
    return std::ranges::any_of(
        index.keys, [&](const jet::IndexKeyDef& key) { return jet::isComplex(table.columns[key.column].type); });
}

} // namespace

void TAdmMDBTable::setColumns(Columns columns)
{
    m_columns = std::move(columns);
    for (const auto& column : m_columns)
        column->setTable(this);
}

void TAdmMDBTable::setIndices(Indices indices)
{
    m_indices = std::move(indices);
    for (const auto& index : m_indices)
        index->setTable(this);
}

TAdmMDBColumn* TAdmMDBTable::findColumn(std::string_view name) const
{
    for (const auto& column : m_columns)
        if (column->name() == name) return column.get();
    return nullptr;
}

bool TAdmMDBTable::isOLEColumn(std::string_view columnName) const
{
    for (const auto& column : m_columns)
        if (column->isOLE() && column->name() == columnName) return true;
    return false;
}

std::vector<TAdmMDBForeignKey*> TAdmMDBTable::foreignKeys() const
{
    return m_file == nullptr ? std::vector<TAdmMDBForeignKey*>() : m_file->foreignKeysForTable(name());
}

void TAdmMDBTable::getColumnsFromMdbTableDef(const jet::TableDef& tableDef, int formatVersion)
{
    m_lastAutoNumber = tableDef.lastAutoNumber;
    Columns columns;
    for (const auto& def : tableDef.columns) {
        auto column = std::make_unique<TAdmMDBColumn>();
        column->setName(def.name);
        column->setType(def.type);
        // Jet 4 stores two bytes a character and states the size in bytes.
        if (def.type == ColumnType::Text && def.size > 0)
            column->setFieldSize(static_cast<std::int32_t>(formatVersion != 0 ? def.size / 2 : def.size));
        column->setIsAutoNumber(def.isAutoNumber);
        column->setIsHyperlink(def.isHyperlink);
        column->setIsCalculatedType(def.isCalculated);
        if (def.precision > 0) {
            column->setPrecision(def.precision);
            column->setScale(def.scale);
        }
        column->setProperties(def.properties);
        columns.push_back(std::move(column));
    }
    setColumns(std::move(columns));
}

bool TAdmMDBTable::keepsHistory(std::size_t column) const
{
    return std::ranges::find(m_histories, column, &MemoHistory::column) != m_histories.end();
}

std::span<const jet::MemoVersion> TAdmMDBTable::versionsOf(std::size_t row, std::size_t column) const
{
    const auto history = std::ranges::find(m_histories, column, &MemoHistory::column);
    if (history == m_histories.end() || !history->groups) return {};
    const auto place = static_cast<std::size_t>(history - m_histories.begin());
    const auto* group = history->groups->find(m_rows.historyGroup(row, place));
    return group == nullptr ? std::span<const jet::MemoVersion>() : group->versions;
}

std::optional<std::string> TAdmMDBTable::description() const
{
    for (const auto& [property, value] : m_properties)
        if (property == "Description") return jet::propertyText(value);
    return std::nullopt;
}

void TAdmMDBTable::getIndicesFromMdbTableDef(const jet::TableDef& tableDef)
{
    Indices indices;
    for (const auto& def : tableDef.indices) {
        if (def.keys.empty() || isOverGroups(tableDef, def)) continue;
        auto index = std::make_unique<TAdmMDBIndex>();
        index->setName(def.name);
        index->setIsPrimaryKey(def.type == jet::IndexDef::primaryKeyType);
        index->setIsUnique((def.flags & jet::IndexDef::uniqueFlag) != 0);
        std::vector<IndexKey> keys;
        for (const auto& key : def.keys)
            keys.push_back({tableDef.columns[key.column].name, key.isAscending});
        index->setKeys(std::move(keys));
        indices.push_back(std::move(index));
    }
    sortByName(indices);
    setIndices(std::move(indices));
}

void TAdmMDBTable::setColumnPrimaryKey()
{
    std::set<std::string_view> keyColumns;
    for (const auto& index : m_indices)
        if (index->isPrimaryKey())
            for (const auto& key : index->keys())
                keyColumns.insert(key.name);
    for (const auto& column : m_columns)
        if (keyColumns.contains(column->name())) column->setIsPrimaryKey(true);
}

RowStore TAdmMDBTable::emptyRows() const
{
    std::vector<std::string> names;
    std::vector<CellKind> kinds;
    for (const auto& column : m_columns) {
        names.push_back(column->name());
        kinds.push_back(column->isOLE() ? CellKind::Blob : CellKind::Text);
    }
    return {std::move(names), std::move(kinds)};
}

void TAdmMDBTable::close()
{
    m_columns.clear();
    m_rows = RowStore();
    m_histories.clear();
    m_indices.clear();
}

Information TAdmMDBTable::information() const
{
    Information list = {{PropertyId::Name, name()},
        {PropertyId::RowCount, static_cast<std::int64_t>(m_rows.rowCount())},
        {PropertyId::ColumnCount, static_cast<std::int64_t>(m_columns.size())}};
    if (const auto text = description()) list.push_back({PropertyId::Description, *text});
    addListedProperties(m_properties, list);
    return list;
}

} // namespace vellumo
