// SPDX-License-Identifier: MIT
#include "samples/SystemTables.h"

#include <algorithm>

namespace vellumo::samples {
namespace {

constexpr std::uint32_t rootId = 0x0F000000;
constexpr std::uint32_t tablesId = 0x0F000001;
constexpr std::uint32_t databasesId = 0x0F000002;
constexpr std::uint32_t relationshipsId = 0x0F000003;
constexpr std::uint32_t databaseId = 0x10000000;
constexpr std::uint32_t firstObjectId = 0x80000000; // of objects that have no page of their own
constexpr std::uint32_t systemFlag = 0x80000000;
constexpr int databaseType = 2;
constexpr int containerType = 3;
constexpr int relationType = 8;

ColumnDescription column(const char* name, ColumnType type, int size = 0)
{
    ColumnDescription made;
    made.name = name;
    made.type = type;
    made.size = size;
    return made;
}

// Numbers the columns in the given order; Jet 4 stores those of its system tables by name.
std::vector<ColumnDescription> systemColumns(JetVersion version, std::vector<ColumnDescription> columns)
{
    for (std::size_t i = 0; i < columns.size(); ++i)
        columns[i].number = static_cast<int>(i);
    if (version == JetVersion::Jet4) {
        std::sort(
            columns.begin(), columns.end(), [](const auto& left, const auto& right) { return left.name < right.name; });
    }
    return columns;
}

// `rows` have their values in column-number order; brings them into stored order.
RowSource inStoredOrder(const std::vector<ColumnDescription>& columns, const std::vector<std::vector<Value>>& rows)
{
    std::vector<std::vector<Value>> stored(rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        for (const auto& column : columns)
            stored[i].push_back(rows[i][static_cast<std::size_t>(*column.number)]);
    }
    return rowsOf(std::move(stored));
}

std::vector<CatalogRow> standardRows()
{
    std::vector<CatalogRow> rows{
        {tablesId, rootId, "Tables", containerType, systemFlag, {}},
        {databasesId, rootId, "Databases", containerType, systemFlag, {}},
        {relationshipsId, rootId, "Relationships", containerType, systemFlag, {}},
        {databaseId, databasesId, "MSysDb", databaseType, systemFlag, {}},
        {objectsPage, tablesId, "MSysObjects", 1, systemFlag, {}},
        {acesPage, tablesId, "MSysACEs", 1, systemFlag, {}},
        {queriesPage, tablesId, "MSysQueries", 1, systemFlag, {}},
        {relationshipsPage, tablesId, "MSysRelationships", 1, systemFlag, {}},
    };
    return rows;
}

Value signedLong(std::uint32_t number) { return std::int64_t{static_cast<std::int32_t>(number)}; }

Value textOrNull(const std::string& text) { return text.empty() ? Value() : Value(text); }

std::vector<Value> objectValues(const CatalogRow& row, Date created)
{
    std::vector<Value> values(17);
    values[0] = signedLong(row.id);
    values[1] = signedLong(row.parentId);
    values[2] = row.name;
    values[3] = row.type;
    values[4] = created;
    values[5] = created;
    values[7] = signedLong(row.flags);
    values[8] = textOrNull(row.database);
    values[9] = textOrNull(row.connect);
    values[10] = textOrNull(row.foreignName);
    if (!row.properties.empty()) values[14] = row.properties;
    return values;
}

int relationFlags(const RelationDescription& relation)
{
    return (relation.oneToOne ? 1 : 0) | (relation.enforced ? 0 : 2) | (relation.cascadeUpdates ? 0x100 : 0)
        | (relation.cascadeDeletes ? 0x1000 : 0);
}

std::optional<Bytes> propertiesOf(const TableDescription& table, JetVersion version)
{
    std::vector<PropertyOwner> owners;
    if (!table.properties.empty()) owners.push_back({"", &table.properties});
    for (const auto& column : table.columns) {
        if (!column.properties.empty()) owners.push_back({column.name, &column.properties});
    }
    if (owners.empty()) return Bytes{};
    return encodeProperties(owners, version);
}

// Behind the relations.
std::uint32_t idOfEntry(const DatabaseDescription& description, std::size_t entry)
{
    return firstObjectId + static_cast<std::uint32_t>(description.relations.size() + entry);
}

} // namespace

TableDescription objectsTable(JetVersion version, Date created, const std::vector<CatalogRow>& rows)
{
    using enum ColumnType;
    TableDescription table;
    table.name = "MSysObjects";
    table.columns = systemColumns(version,
        {column("Id", Long), column("ParentId", Long), column("Name", Text), column("Type", Integer),
            column("DateCreate", DateTime), column("DateUpdate", DateTime),
            column("Owner", Binary, version == JetVersion::Jet3 ? 255 : 510), column("Flags", Long),
            column("Database", Memo), column("Connect", Memo), column("ForeignName", Text),
            column("RmtInfoShort", Binary), column("RmtInfoLong", Ole), column("Lv", Ole), column("LvProp", Ole),
            column("LvModule", Ole), column("LvExtra", Ole)});
    table.indexes.resize(2);
    table.indexes[0] = {.name = "Id", .columns = {{"Id"}}, .primary = true};
    table.indexes[1] = {.name = "ParentIdName", .columns = {{"ParentId"}, {"Name"}}, .unique = true};
    std::vector<std::vector<Value>> values;
    for (const auto& row : standardRows())
        values.push_back(objectValues(row, created));
    for (const auto& row : rows)
        values.push_back(objectValues(row, created));
    table.rows = inStoredOrder(table.columns, values);
    return table;
}

TableDescription acesTable(JetVersion version)
{
    using enum ColumnType;
    TableDescription table;
    table.name = "MSysACEs";
    table.columns = systemColumns(version,
        {column("ObjectId", Long), column("ACM", Long), column("SID", Binary), column("FInheritable", Boolean)});
    table.indexes = {{.name = "ObjectId", .columns = {{"ObjectId"}}}};
    return table;
}

TableDescription queriesTable(const DatabaseDescription& description)
{
    using enum ColumnType;
    TableDescription table;
    table.name = "MSysQueries";
    table.columns = systemColumns(description.version,
        {column("ObjectId", Long), column("Attribute", Byte), column("Order", Binary), column("Name1", Text),
            column("Name2", Text), column("Expression", Memo), column("Flag", Integer), column("LvExtra", Ole)});
    table.indexes = {
        {.name = "ObjectIdAttribute", .columns = {{"ObjectId"}, {"Attribute"}, {"Order"}}, .unique = true}};
    std::vector<std::vector<Value>> rows;
    for (std::size_t i = 0; i < description.otherEntries.size(); ++i) {
        std::uint8_t order = 0;
        for (const auto& row : description.otherEntries[i].query)
            rows.push_back({signedLong(idOfEntry(description, i)), std::int64_t{row.attribute}, Bytes{0, 0, 0, order++},
                textOrNull(row.name1), textOrNull(row.name2), textOrNull(row.expression),
                row.flag ? Value(std::int64_t{*row.flag}) : Value(), Value()});
    }
    table.rows = inStoredOrder(table.columns, rows);
    return table;
}

TableDescription relationshipsTable(JetVersion version, const std::vector<RelationDescription>& relations)
{
    using enum ColumnType;
    TableDescription table;
    table.name = "MSysRelationships";
    table.columns = systemColumns(version,
        {column("szRelationship", Text), column("grbit", Long), column("ccolumn", Long), column("icolumn", Long),
            column("szObject", Text), column("szColumn", Text), column("szReferencedObject", Text),
            column("szReferencedColumn", Text)});
    table.indexes = {{.name = "szObject", .columns = {{"szObject"}}},
        {.name = "szReferencedObject", .columns = {{"szReferencedObject"}}},
        {.name = "szRelationship", .columns = {{"szRelationship"}}}};
    std::vector<std::vector<Value>> rows;
    for (const auto& relation : relations) {
        for (std::size_t i = 0; i < relation.columns.size(); ++i) {
            rows.push_back({relation.name, relationFlags(relation), static_cast<std::int64_t>(relation.columns.size()),
                static_cast<std::int64_t>(i), relation.table, relation.columns[i], relation.referencedTable,
                relation.referencedColumns[i]});
        }
    }
    table.rows = inStoredOrder(table.columns, rows);
    return table;
}

TableDescription complexColumnsTable(const std::vector<ComplexColumnEntry>& columns)
{
    using enum ColumnType;
    TableDescription table;
    table.name = "MSysComplexColumns";
    table.columns = systemColumns(JetVersion::Jet4,
        {column("ColumnName", Text), column("ComplexTypeObjectID", Long), column("FlatTableID", Long),
            column("ConceptualTableID", Long), column("ComplexID", Long)});
    table.indexes = {{.name = "IdxID", .columns = {{"ComplexID"}}, .primary = true}};
    std::vector<std::vector<Value>> rows;
    rows.reserve(columns.size());
    for (const auto& entry : columns)
        rows.push_back({entry.column, signedLong(entry.templateTable), signedLong(entry.valueTable),
            signedLong(entry.table), static_cast<std::int64_t>(rows.size() + 1)});
    table.rows = inStoredOrder(table.columns, rows);
    return table;
}

std::optional<std::vector<CatalogRow>> catalogRows(
    const DatabaseDescription& description, const std::vector<std::uint32_t>& tablePages, std::string& failedTable)
{
    std::vector<CatalogRow> rows;
    for (std::size_t i = 0; i < description.tables.size(); ++i) {
        const auto& table = description.tables[i];
        auto properties = propertiesOf(table, description.version);
        if (!properties) {
            failedTable = table.name;
            return std::nullopt;
        }
        rows.push_back({tablePages[i], tablesId, table.name, table.link.type, table.flags, std::move(*properties),
            table.link.database, table.link.connect, table.link.foreignName});
    }
    auto nextId = firstObjectId;
    for (const auto& relation : description.relations)
        rows.push_back({nextId++, relationshipsId, relation.name, relationType, 0, {}});
    for (const auto& entry : description.otherEntries)
        rows.push_back({nextId++, tablesId, entry.name, entry.type, entry.flags, {}, entry.database, entry.connect,
            entry.foreignName});
    return rows;
}

} // namespace vellumo::samples
