// SPDX-License-Identifier: MIT
#include "model/FileLoader.h"

#include "model/ContentsLoader.h"
#include "model/LookupTexts.h"

#include <algorithm>
#include <map>
#include <set>

namespace vellumo {

namespace {

// Catalogue flags under which formats newer than Jet 4 keep the values of a complex column.
constexpr std::uint32_t hiddenValueTableFlags = 0x800A0000;
constexpr std::string_view relationshipsTable = "MSysRelationships";
constexpr std::string_view resourcesTable = "MSysResources_Data";

std::string firstPrimaryKeyColumn(const TAdmMDBTable& table)
{
    for (const auto& column : table.columns())
        if (column->isPrimaryKey()) return column->name();
    return {};
}

} // namespace

bool FileLoader::load()
{
    const auto& pages = m_database.pages();
    m_file.setFormat({pages.formatVersion(), pages.codePage(), pages.isEncrypted(), pages.hasIdlePassword()});
    const auto catalog = m_database.readCatalog(m_damage);
    m_complexColumns.emplace(m_database, m_rows, catalog);
    readDefinitions(catalog);
    if (!tellStrays(catalog)) return false;
    if (m_options.salvage != Salvage::None) addSalvage(catalog);
    m_file.setContents(readContents(m_database, catalog, m_damage));
    if (!readAllRows()) return false;
    dropEmptySalvage();
    if (pages.isCutOrChanged()) m_damage.add({.kind = DamageKind::File});
    TAdmMDBFile::Tables tables;
    for (auto& item : m_pending)
        tables.push_back(std::move(item.table));
    sortByName(tables);
    m_file.setTables(std::move(tables));
    m_file.setDamage(std::move(m_damage));
    return true;
}

void FileLoader::readDefinitions(const std::vector<jet::CatalogEntry>& catalog)
{
    std::set<std::uint32_t> definitionPages;
    for (const auto& entry : catalog) {
        if (m_database.hidesTable(entry)) m_damage.add({.kind = DamageKind::Catalogue, .page = entry.page});
        if (entry.type != jet::CatalogEntry::tableType) continue;
        // Two tables cannot have one definition; the second would show the rows of the first again.
        if (!definitionPages.insert(entry.page).second) {
            m_damage.add({.kind = DamageKind::Catalogue, .page = entry.page});
            continue;
        }
        if (isListed(entry))
            addUserTable(entry);
        else if (entry.name == relationshipsTable)
            readRelations(entry);
    }
}

// A table of values is listed, as one of a name of its own, when no column leads to its values any more. Newer formats
// keep some tables of theirs without the flags of a system table.
bool FileLoader::isListed(const jet::CatalogEntry& entry) const
{
    if (!m_database.isNewerFormat()) return entry.isUserTable();
    if (entry.isUserTable()) return !entry.name.starts_with("MSys") && !entry.name.starts_with('~');
    return entry.flags == hiddenValueTableFlags && !m_complexColumns->isValueTable(entry);
}

void FileLoader::addUserTable(const jet::CatalogEntry& entry)
{
    auto def = m_database.readTable(entry, m_damage);
    if (!def || (!entry.isUserTable() && def->statedRowCount == 0)) return;
    m_complexColumns->mark(*def);
    auto table = newTable(*def);
    table->getIndicesFromMdbTableDef(*def);
    table->setColumnPrimaryKey();
    const auto keyName = firstPrimaryKeyColumn(*table);
    table->setName(entry.isUserTable() || keyName.empty() ? entry.name : keyName);
    if (!entry.isUserTable() && table->name() == resourcesTable) return;
    m_pending.push_back({std::move(*def), std::move(table)});
}

std::unique_ptr<TAdmMDBTable> FileLoader::newTable(const jet::TableDef& def)
{
    auto table = std::make_unique<TAdmMDBTable>();
    table->setFile(&m_file);
    table->setProperties(def.properties);
    table->getColumnsFromMdbTableDef(def, m_database.formatVersion());
    return table;
}

// Whatever the file holds and does not lead to would be missing without a word. False when the observer stopped it.
bool FileLoader::tellStrays(const std::vector<jet::CatalogEntry>& catalog)
{
    jet::TablesByPage read;
    for (const auto& item : m_pending)
        read.emplace(item.def.definitionPage, &item.def);
    const auto strays =
        m_database.findStrays(catalog, read, [&] { return !m_options.observer || m_options.observer(0, 0); });
    if (!strays) return false;
    for (const auto& page : strays->unlisted)
        m_damage.add(recordOf(page));
    for (const auto page : strays->ownerless)
        m_damage.add({.kind = DamageKind::Page, .page = page});
    for (const auto page : strays->tables)
        m_damage.add({.kind = DamageKind::LostTable, .page = page});
    // Nobody sees such a table as one.
    if (m_damage.total(DamageKind::Catalogue) != 0) return true;
    for (const auto page : strays->systemTables)
        m_damage.add({.kind = DamageKind::Catalogue, .page = page});
    return true;
}

// A page of the catalogue is a part of it, and one of a hidden table of values concerns the column that has these.
DamageRecord FileLoader::recordOf(const jet::Strays::Page& page) const
{
    const auto& entry = *page.entry;
    if (entry.page == jet::catalogPage) return {.kind = DamageKind::Catalogue, .page = page.number};
    DamageRecord record{.kind = DamageKind::LostPage, .table = entry.name, .page = page.number};
    for (const auto& item : m_pending) {
        if (item.def.definitionPage == entry.page) record.table = item.table->name();
        const auto* column = m_complexColumns->columnOf(item.def, entry);
        if (column == nullptr) continue;
        record.table = item.table->name();
        record.column = column->name;
    }
    return record;
}

// Rows that were lost or deleted are never mixed into those of a table that can be read.
void FileLoader::addSalvage(const std::vector<jet::CatalogEntry>& catalog)
{
    std::vector<std::pair<jet::TableDef, std::string>> listed; // a copy: the list grows
    for (const auto& item : m_pending)
        listed.emplace_back(item.def, item.table->name());
    for (auto& [def, name] : listed) {
        if (m_options.salvage == Salvage::LostAndDeletedRows)
            addSalvaged(def, name + " (deleted)", TableOrigin::Deleted);
        def.dataPages.pages = m_database.unlistedPages(def);
        if (!def.dataPages.pages.empty()) addSalvaged(def, name + " (recovered)", TableOrigin::Recovered);
    }
    int nameless = 0;
    auto tables = catalog;
    std::erase_if(tables, [&](const jet::CatalogEntry& entry) { return m_database.hidesTable(entry); });
    for (auto& def : m_database.lostTables(tables)) {
        const auto name = def.name.empty() ? "Recovered " + std::to_string(++nameless) : def.name + " (recovered)";
        m_complexColumns->mark(def);
        addSalvaged(std::move(def), name, TableOrigin::Recovered);
    }
}

// Without indexes: what they promise of the rows of their table does not hold here.
void FileLoader::addSalvaged(jet::TableDef def, const std::string& name, TableOrigin origin)
{
    const auto isTaken = [&](const PendingTable& item) { return item.table->name() == name; };
    if (std::ranges::any_of(m_pending, isTaken)) {
        addSalvaged(std::move(def), name + " 2", origin);
        return;
    }
    auto table = newTable(def);
    table->setName(name);
    table->setOrigin(origin);
    def.name = name;
    m_pending.push_back({std::move(def), std::move(table)});
}

// Looking in vain is no find, except for a whole table that the catalogue has lost.
void FileLoader::dropEmptySalvage()
{
    const bool isCatalogueDamaged = m_damage.total(DamageKind::Catalogue) + m_damage.total(DamageKind::LostTable) != 0;
    std::erase_if(m_pending, [&](const PendingTable& item) {
        const bool mayBeWhole = isCatalogueDamaged && item.table->origin() == TableOrigin::Recovered;
        return item.table->origin() != TableOrigin::Catalogue && item.table->rows().empty() && !mayBeWhole;
    });
}

// The first part of a name tells the tables, every part adds a pair of columns.
void FileLoader::readRelations(const jet::CatalogEntry& entry)
{
    TAdmMDBFile::ForeignKeys relations;
    std::map<std::string, TAdmMDBForeignKey*, std::less<>> byName;
    for (const auto& part : m_database.readRelations(entry, m_damage)) {
        auto& relation = byName[part.name];
        if (relation == nullptr) {
            relations.push_back(std::make_unique<TAdmMDBForeignKey>());
            relation = relations.back().get();
            relation->setName(part.name);
            relation->setReferencingTable(part.table);
            relation->setReferencedTable(part.referencedTable);
        }
        if ((part.flags & jet::RelationPart::notEnforced) != 0) relation->setIsEnforced(false);
        if ((part.flags & jet::RelationPart::cascadeUpdates) != 0) relation->setOnUpdateCascade(true);
        if ((part.flags & jet::RelationPart::cascadeDeletes) != 0) relation->setOnDeleteCascade(true);
        relation->addColumnPair(part.column, part.referencedColumn);
    }
    sortByName(relations);
    m_file.setAllForeignKeys(std::move(relations));
}

bool FileLoader::readAllRows()
{
    std::uint64_t rowsExpected = 0;
    for (const auto& item : m_pending)
        rowsExpected += item.def.statedRowCount;
    std::uint64_t rowsDone = 0;
    for (auto& item : m_pending) {
        if (!readRows(item, rowsDone, rowsExpected)) return false;
        rowsDone += item.table->rows().rowCount();
    }
    return true;
}

bool FileLoader::readRows(PendingTable& pending, std::uint64_t rowsDone, std::uint64_t rowsExpected)
{
    auto rows = pending.table->emptyRows();
    const auto observer = [&](std::size_t rowsOfTable) {
        return !m_options.observer || m_options.observer(rowsDone + rowsOfTable, rowsExpected);
    };
    const auto origin = pending.table->origin();
    const auto choice = origin == TableOrigin::Deleted ? jet::RowChoice::Deleted : jet::RowChoice::Live;
    DamageReport found;
    if (!m_complexColumns->readValues(pending.def, found, [&](std::size_t) { return observer(0); })) return false;
    if (!m_rows.load(pending.def, rows, found, observer, {.choice = choice})) return false;
    setValues(pending);
    setHistories(pending);
    if (origin == TableOrigin::Catalogue) {
        jet::tellMissingRows(pending.def, rows.rowCount(), found);
        checkRows(pending, found);
        ComplexColumnsLoader::tellUnclaimed(pending.def, found);
        m_damage.append(found, pending.table->name(), 0);
    }
    pending.table->setRows(std::move(rows));
    return true;
}

// Only now, since what the values' lookup is stands in their table.
void FileLoader::setValues(PendingTable& pending)
{
    for (std::size_t i = 0; i < pending.def.columns.size(); ++i) {
        auto& def = pending.def.columns[i];
        if (def.type != ColumnType::MultipleValues) continue;
        auto& column = *pending.table->columns()[i];
        column.setProperties(std::move(def.properties));
        if (hasTableLookup(column)) column.setStoredValues(std::move(def.groups));
    }
}

void FileLoader::setHistories(const PendingTable& pending)
{
    std::vector<MemoHistory> histories;
    for (const auto& history : pending.def.histories)
        histories.push_back({history.memo, history.column.groups});
    pending.table->setHistories(std::move(histories));
}

// What the indexes know counts as far as it goes beyond what is known to be missing already.
void FileLoader::checkRows(const PendingTable& pending, DamageReport& found)
{
    if (!m_options.checksIndexes) return;
    const auto missing = m_database.rowsOnlyInIndexes(pending.def, found).size();
    const auto known = found.missingRows();
    if (missing > known) found.add({.kind = DamageKind::MissingRows, .count = missing - known});
}

} // namespace vellumo
