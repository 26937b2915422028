#include "model/FileLoader.h"

#include "model/TableRowsLoader.h"

#include <charconv>

namespace vellumo {

namespace {

// Catalogue flags under which formats newer than Jet 4 keep a table that belongs to a user table's column.
constexpr std::uint32_t hiddenValueTableFlags = 0x800A0000;
constexpr int jet4 = 1;
constexpr std::string_view relationshipsTable = "MSysRelationships";
constexpr std::string_view resourcesTable = "MSysResources_Data";

// Columns of the relationships table, by column number.
enum RelationColumn : std::size_t {
    RelationName = 0,
    RelationFlags = 1,
    ReferencingTable = 4,
    ReferencingColumn = 5,
    ReferencedTable = 6,
    ReferencedColumn = 7,
    RelationColumnCount = 8,
};
constexpr int cascadeUpdates = 0x100;
constexpr int cascadeDeletes = 0x1000;

int number(std::string_view text)
{
    int value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

std::string firstPrimaryKeyColumn(const TAdmMDBTable& table)
{
    for (const auto& column : table.columns())
        if (column->isPrimaryKey()) return column->name();
    return {};
}

} // namespace

bool FileLoader::load()
{
    m_database = jet::Database::open(m_file.fullPath());
    if (!m_database) return false;
    const auto catalog = m_database->readCatalog();
    // A database whose catalogue cannot be read opens without tables.
    if (!catalog) return true;
    auto pending = readDefinitions(*catalog);
    if (!readRows(pending)) return false;
    TAdmMDBFile::Tables tables;
    for (auto& item : pending)
        tables.push_back(std::move(item.table));
    sortByName(tables);
    m_file.setTables(std::move(tables));
    return true;
}

std::vector<FileLoader::PendingTable> FileLoader::readDefinitions(const std::vector<jet::CatalogEntry>& catalog)
{
    std::vector<PendingTable> pending;
    for (const auto& entry : catalog) {
        if (entry.type != jet::CatalogEntry::tableType) continue;
        const bool isListed = entry.isUserTable()
            || (m_database->formatVersion() > jet4 && entry.isSystemTable() && entry.flags == hiddenValueTableFlags);
        if (isListed) {
            addUserTable(entry, pending);
        } else if (entry.name == relationshipsTable) {
            if (const auto table = m_database->readTable(entry)) readRelations(*table);
        }
    }
    return pending;
}

void FileLoader::addUserTable(const jet::CatalogEntry& entry, std::vector<PendingTable>& pending)
{
    auto def = m_database->readTable(entry);
    if (!def) return;
    auto table = std::make_unique<TAdmMDBTable>();
    table->setFile(&m_file);
    table->getColumnsFromMdbTableDef(*def, m_database->formatVersion());
    table->getIndicesFromMdbTableDef(*def);
    table->setColumnPrimaryKey();
    table->setName(entry.isUserTable() ? entry.name : firstPrimaryKeyColumn(*table));
    if (!entry.isUserTable() && table->name() == resourcesTable) return;
    pending.push_back({std::move(*def), std::move(table)});
}

// One row a column pair: the first row of a name tells the tables, every row adds a pair.
void FileLoader::readRelations(const jet::TableDef& table)
{
    if (table.columns.size() < RelationColumnCount) return;
    RowStore rows({}, jet::cellKinds(table));
    TableRowsLoader loader(*m_database, m_file.fullPath(), 1);
    if (!loader.load(table, rows, [](std::size_t) { return true; })) return;
    TAdmMDBFile::ForeignKeys relations;
    std::map<std::string_view, TAdmMDBForeignKey*> byName;
    for (std::size_t row = 0; row < rows.rowCount(); ++row) {
        const auto text = [&](RelationColumn column) { return rows.text(row, table.numberOrder[column]); };
        auto& relation = byName[text(RelationName)];
        if (relation == nullptr) {
            relations.push_back(std::make_unique<TAdmMDBForeignKey>());
            relation = relations.back().get();
            relation->setName(std::string(text(RelationName)));
            relation->setReferencingTable(std::string(text(ReferencingTable)));
            relation->setReferencedTable(std::string(text(ReferencedTable)));
        }
        const auto flags = number(text(RelationFlags));
        if ((flags & cascadeUpdates) != 0) relation->setOnUpdateCascade(true);
        if ((flags & cascadeDeletes) != 0) relation->setOnDeleteCascade(true);
        relation->addColumnPair(std::string(text(ReferencingColumn)), std::string(text(ReferencedColumn)));
    }
    sortByName(relations);
    m_file.setAllForeignKeys(std::move(relations));
}

bool FileLoader::readRows(std::vector<PendingTable>& pending)
{
    std::uint64_t rowsExpected = 0;
    for (const auto& item : pending)
        rowsExpected += item.def.statedRowCount;
    TableRowsLoader loader(*m_database, m_file.fullPath(), m_options.readerCount);
    std::uint64_t rowsDone = 0;
    for (auto& item : pending) {
        auto rows = item.table->emptyRows();
        const auto observer = [&](std::size_t rowsOfTable) {
            return !m_options.observer || m_options.observer(rowsDone + rowsOfTable, rowsExpected);
        };
        if (!loader.load(item.def, rows, observer)) return false;
        rowsDone += rows.rowCount();
        item.table->setRows(std::move(rows));
    }
    return true;
}

} // namespace vellumo
