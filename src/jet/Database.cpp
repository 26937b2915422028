// SPDX-License-Identifier: MIT
#include "jet/Database.h"

#include "embedded/TAdmBlobData.h"
#include "jet/ByteReader.h"
#include "jet/Definition.h"
#include "jet/IndexReader.h"
#include "jet/Limits.h"
#include "jet/Properties.h"

#include <algorithm>
#include <charconv>
#include <set>

namespace vellumo::jet {

namespace {

constexpr std::uint32_t typeMask = 0x7F;       // of a catalogue entry; forms and the like have negative types
constexpr std::uint32_t pageMask = 0x00FFFFFF; // of its Id

std::int32_t number(std::string_view text)
{
    std::int32_t value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

DecodedObject rawObject(ByteSpan stored, bool isWhole)
{
    const auto bytes = std::as_bytes(stored);
    const ObjectFacts facts{.state = isWhole ? ObjectState::Whole : ObjectState::Damaged};
    return {std::make_shared<TAdmBlobData>(std::vector<std::byte>(bytes.begin(), bytes.end()), std::string(), facts)};
}

// By the page of the definition to which they lead.
std::map<std::uint32_t, const CatalogEntry*> entriesByPage(const std::vector<CatalogEntry>& entries)
{
    std::map<std::uint32_t, const CatalogEntry*> byPage;
    for (const auto& entry : entries)
        if (entry.isTable() || entry.id == entry.page) byPage.emplace(entry.page, &entry);
    return byPage;
}

// Whether it is kept out of sight by flags of which some are never set. People hide their tables too, by the others.
bool hasImpossibleFlags(const CatalogEntry& entry)
{
    constexpr std::uint32_t neverSet = 0x1FF00000;
    return entry.isSystemTable() && (entry.flags & neverSet) != 0 && !entry.name.starts_with("MSys");
}

// The ids of what is no table have flags.
bool mayBeTable(const CatalogEntry& entry)
{
    return entry.id == entry.page
        && std::ranges::find(CatalogEntry::linkedTypes, entry.type) == std::end(CatalogEntry::linkedTypes);
}

void keepColumns(TableDef& table, const std::vector<std::string_view>& names)
{
    std::erase_if(
        table.columns, [&](const ColumnDef& column) { return std::ranges::find(names, column.name) == names.end(); });
}

std::optional<std::size_t> columnNamed(const TableDef& table, std::string_view name)
{
    for (std::size_t i = 0; i < table.columns.size(); ++i)
        if (table.columns[i].name == name) return i;
    return std::nullopt;
}

std::shared_ptr<TAdmBlobData> objectIn(const RowStore& rows, std::size_t row, std::size_t column)
{
    const auto value = rows.value(row, column);
    const auto* object = std::get_if<std::shared_ptr<TAdmBlobData>>(&value);
    return object == nullptr ? nullptr : *object;
}

// What a calculation can give.
bool isResult(ColumnType type)
{
    return type != ColumnType::Unknown && type != ColumnType::ComplexAutoNumber && !isObjectType(type);
}

// A system table's damage, told in the unit of what the table lists. Its objects are the properties of tables, of which
// each table tells itself.
void tellAs(DamageKind kind, const DamageReport& found, DamageReport& damage)
{
    const auto isObject = [](const DamageRecord& record) { return record.kind == DamageKind::Object; };
    if (std::ranges::all_of(found.records(), isObject)) return;
    damage.add({.kind = kind, .count = std::max<std::uint64_t>(found.missingRows(), 1)});
}

} // namespace

void tellMissingRows(const TableDef& table, std::uint64_t rowsFound, DamageReport& damage)
{
    const auto known = rowsFound + damage.total(DamageKind::Row);
    if (table.statedRowCount > known)
        damage.add({.kind = DamageKind::MissingRows, .count = table.statedRowCount - known});
}

Database::Database(std::unique_ptr<PageSource> pages, int codePage)
    : m_pages(std::move(pages))
    , m_codePage(codePage)
    , m_longValueBudget(static_cast<std::int64_t>(m_pages->fileSize() * longValueBytesPerFileByte))
{
}

std::unique_ptr<Database> Database::open(const std::string& path, const OpenOptions& options, OpenFailure& failure)
{
    auto pages = PageSource::open(path, options, failure);
    if (!pages) return nullptr;
    const auto codePage = options.codePage.value_or(pages->codePage());
    return std::unique_ptr<Database>(new Database(std::move(pages), codePage));
}

TableReader::Source Database::source(Pages& pages, ObjectDecoder decodeObject)
{
    return {pages, rules(), m_longValueBudget, std::move(decodeObject)};
}

// Nothing else of the catalogue is asked for, and what of the rest is damaged concerns nobody.
std::optional<TableDef> Database::readCatalogDefinition(DamageReport& damage)
{
    auto objects = readTableAt(catalogPage, damage);
    if (objects)
        keepColumns(*objects,
            {"Id", "Name", "Type", "Flags", "LvProp", "DateCreate", "DateUpdate", "Database", "Connect",
                "ForeignName"});
    const bool isComplete = objects && columnNamed(*objects, "Id") && columnNamed(*objects, "Name")
        && columnNamed(*objects, "Type") && columnNamed(*objects, "Flags");
    return isComplete ? std::move(objects) : std::nullopt;
}

std::vector<CatalogEntry> Database::readCatalog(DamageReport& damage)
{
    DamageReport found;
    const auto objects = readCatalogDefinition(found);
    if (!objects) {
        damage.add({.kind = DamageKind::Catalogue, .page = catalogPage});
        return {};
    }
    const auto rows = readAllRows(*objects, found);
    tellAs(DamageKind::Catalogue, found, damage);
    return entriesOf(*objects, rows);
}

std::vector<CatalogEntry> Database::entriesOf(const TableDef& objects, const RowStore& rows)
{
    const auto id = *columnNamed(objects, "Id");
    const auto name = *columnNamed(objects, "Name");
    const auto type = *columnNamed(objects, "Type");
    const auto flags = *columnNamed(objects, "Flags");
    const auto properties = columnNamed(objects, "LvProp");
    const auto textIn = [&](std::size_t row, std::string_view columnName) {
        const auto column = columnNamed(objects, columnName);
        return std::string(column ? rows.text(row, *column) : std::string_view());
    };
    std::vector<CatalogEntry> catalog;
    for (std::size_t row = 0; row < rows.rowCount(); ++row) {
        CatalogEntry entry;
        entry.name = rows.text(row, name);
        entry.storedType = number(rows.text(row, type));
        entry.type = static_cast<int>(static_cast<std::uint32_t>(entry.storedType) & typeMask);
        entry.flags = static_cast<std::uint32_t>(number(rows.text(row, flags)));
        entry.id = static_cast<std::uint32_t>(number(rows.text(row, id)));
        entry.page = entry.id & pageMask;
        if (properties && rows.kinds()[*properties] == CellKind::Blob)
            entry.properties = objectIn(rows, row, *properties);
        entry.created = textIn(row, "DateCreate");
        entry.modified = textIn(row, "DateUpdate");
        entry.database = textIn(row, "Database");
        entry.connect = textIn(row, "Connect");
        entry.foreignName = textIn(row, "ForeignName");
        catalog.push_back(std::move(entry));
    }
    return catalog;
}

bool Database::hidesTable(const CatalogEntry& entry)
{
    if (entry.isTable() ? !hasImpossibleFlags(entry) : !mayBeTable(entry)) return false;
    DamageReport unwanted;
    const auto table = readTableAt(entry.page, unwanted);
    return table && !table->isSystem;
}

std::optional<TableDef> Database::readTable(const CatalogEntry& entry, DamageReport& damage)
{
    DamageReport found;
    auto table = readTableAt(entry.page, found);
    if (!table) found.add({.kind = DamageKind::Table, .page = entry.page});
    if (table && entry.properties) {
        const auto data = entry.properties->data();
        auto properties = parseProperties({reinterpret_cast<const std::uint8_t*>(data.data()), data.size()}, rules());
        if (!properties.isWhole || entry.properties->state() != ObjectState::Whole)
            found.add({.kind = DamageKind::Properties});
        table->properties = std::move(properties.table);
        for (auto& column : table->columns)
            if (const auto own = properties.columns.find(column.name); own != properties.columns.end())
                column.properties = std::move(own->second);
    }
    if (table) table->name = entry.name;
    if (table && isNewerFormat()) unwrapCalculated(*table);
    damage.append(found, entry.name, 0);
    return table;
}

// The type that stands in the entry of a calculated column is often another one.
void Database::unwrapCalculated(TableDef& table) const
{
    for (auto& column : table.columns) {
        if (!column.isCalculated) continue;
        for (const auto& [name, value] : column.properties) {
            const auto* code = name == "ResultType" ? std::get_if<std::int64_t>(&value) : nullptr;
            const auto type = code == nullptr ? ColumnType::Unknown : columnTypeOfCode(*code);
            if (isResult(type)) column.type = type;
        }
        // What the entry says of the digits is not true of the results.
        column.precision = 0;
        column.scale = 0;
        column.isWrapped = isResult(column.type);
    }
}

std::optional<TableContent> Database::readContent(const CatalogEntry& entry, DamageReport& damage)
{
    auto table = readTable(entry, damage);
    if (!table) return std::nullopt;
    auto rows = readAllRows(*table, damage);
    return TableContent{std::move(*table), std::move(rows)};
}

std::vector<RelationPart> Database::readRelations(const CatalogEntry& entry, DamageReport& damage)
{
    std::vector<RelationPart> parts;
    const auto rows = readTexts(entry,
        {"szRelationship", "grbit", "szObject", "szColumn", "szReferencedObject", "szReferencedColumn"}, 6,
        DamageKind::Relations, damage);
    if (!rows) return parts;
    for (const auto& row : *rows)
        parts.push_back({row[0], number(row[1]), row[2], row[3], row[4], row[5]});
    return parts;
}

std::optional<std::vector<std::vector<std::string>>> Database::readTexts(const CatalogEntry& entry,
    const std::vector<std::string_view>& columns, std::size_t needed, DamageKind kind, DamageReport& damage)
{
    DamageReport found;
    auto table = readTable(entry, found);
    if (table) keepColumns(*table, columns);
    std::vector<std::optional<std::size_t>> places;
    bool isComplete = table.has_value();
    for (std::size_t i = 0; isComplete && i < columns.size(); ++i) {
        places.push_back(columnNamed(*table, columns[i]));
        isComplete = places.back() || i >= needed;
    }
    if (!isComplete) {
        damage.add({.kind = kind});
        return std::nullopt;
    }
    const auto rows = readAllRows(*table, found);
    tellAs(kind, found, damage);
    std::vector<std::vector<std::string>> texts(rows.rowCount());
    for (std::size_t row = 0; row < texts.size(); ++row)
        for (const auto& place : places)
            texts[row].emplace_back(place ? rows.text(row, *place) : std::string_view());
    return texts;
}

std::optional<TableDef> Database::readTableAt(std::uint32_t page, DamageReport& damage)
{
    const auto definition = readDefinition(*m_pages, m_buffer, page);
    auto parsed =
        parseDefinition(definition.bytes, m_pages->format().isJet3, [this](ByteSpan stored) { return textOf(stored); });
    if (!parsed) return std::nullopt;
    if (!parsed->isSound || !definition.isComplete) damage.add({.kind = DamageKind::Definition, .page = page});
    auto& table = parsed->table;
    table.definitionPage = page;
    readDataPages(table, damage);
    return std::move(table);
}

void Database::readDataPages(TableDef& table, DamageReport& damage)
{
    const auto mapPage = m_pages->read(pageOf(table.pageMapPointer), m_buffer);
    std::vector<std::uint8_t> map;
    if (isDataPage(mapPage))
        if (const auto place = rowAt(mapPage, m_pages->format(), table.pageMapPointer))
            map.assign(place->bytes.begin(), place->bytes.end());
    table.dataPages = readPageList(map, *m_pages, m_buffer);
    if (table.dataPages.beyondEnd != 0) damage.add({.kind = DamageKind::Page, .count = table.dataPages.beyondEnd});
    if (table.dataPages.gaps.empty()) return;
    damage.add({.kind = DamageKind::PageList, .page = pageOf(table.pageMapPointer)});
    fillGaps(table.dataPages, table.definitionPage);
}

// Where the table's own list has gaps, the pages that name the table as their owner stand in for it.
void Database::fillGaps(PageList& list, std::uint32_t definitionPage)
{
    const auto& owned = pagesOwnedBy(definitionPage);
    for (const auto& gap : list.gaps)
        std::ranges::copy_if(owned, std::back_inserter(list.pages),
            [&](std::uint32_t page) { return page >= gap.first && page < gap.end; });
    std::ranges::sort(list.pages);
}

const PageSurvey& Database::survey()
{
    if (!m_survey) m_survey = surveyPages(*m_pages, PageMarks(m_pages->count()), [] { return true; });
    return *m_survey;
}

const std::vector<std::uint32_t>& Database::pagesOwnedBy(std::uint32_t definitionPage)
{
    static const std::vector<std::uint32_t> none;
    const auto& owned = survey().dataPages;
    const auto found = owned.find(definitionPage);
    return found == owned.end() ? none : found->second;
}

std::optional<Strays> Database::findStrays(
    const std::vector<CatalogEntry>& entries, const TablesByPage& read, const std::function<bool()>& goesOn)
{
    auto leftOut = freePages(*m_pages);
    for (const auto& [definition, table] : read) {
        if (!listsItsOwn(*table)) continue;
        for (const auto page : table->dataPages.pages)
            leftOut[page] = true;
    }
    const auto found = surveyPages(*m_pages, leftOut, goesOn);
    if (!found) return std::nullopt;
    const auto entryOf = entriesByPage(entries);
    Strays strays;
    for (const auto page : found->definitions)
        if (!entryOf.contains(page)) addLostTable(page, strays);
    const auto isLost = [&](std::uint32_t page) {
        return std::ranges::binary_search(strays.tables, page) || std::ranges::binary_search(strays.systemTables, page);
    };
    for (const auto& [owner, pages] : found->dataPages) {
        if (owner == noOwner || owner == longValueOwner || owner == freeMapPage) continue;
        if (const auto entry = entryOf.find(owner); entry != entryOf.end())
            addUnlisted(*entry->second, pages, read, strays);
        else if (!isLost(owner))
            strays.ownerless.insert(strays.ownerless.end(), pages.begin(), pages.end());
    }
    return strays;
}

// By the first page, which is enough where two definitions have changed places.
bool Database::listsItsOwn(const TableDef& table)
{
    if (table.dataPages.pages.empty()) return false;
    const auto page = m_pages->read(table.dataPages.pages.front(), m_buffer);
    return isDataPage(page) && ownerOf(page) == table.definitionPage;
}

void Database::addLostTable(std::uint32_t page, Strays& strays)
{
    const auto bytes = m_pages->read(page, m_buffer);
    if (bytes.empty()) return;
    if (const auto isSystem = isSystemDefinition(bytes, m_pages->format().isJet3))
        (*isSystem ? strays.systemTables : strays.tables).push_back(page);
}

// `pages` name the table of the entry. When its definition cannot be read, that is told.
void Database::addUnlisted(
    const CatalogEntry& entry, const std::vector<std::uint32_t>& pages, const TablesByPage& read, Strays& strays)
{
    const auto known = read.find(entry.page);
    DamageReport unwanted;
    const auto table = known == read.end() ? readTableAt(entry.page, unwanted) : std::nullopt;
    if (known == read.end() && !table) return;
    const auto& listed = table ? table->dataPages.pages : known->second->dataPages.pages;
    for (const auto page : pages)
        if (!std::ranges::binary_search(listed, page)) strays.unlisted.push_back({&entry, page});
}

std::vector<std::uint32_t> Database::unlistedPages(const TableDef& table)
{
    std::vector<std::uint32_t> pages;
    std::ranges::set_difference(pagesOwnedBy(table.definitionPage), table.dataPages.pages, std::back_inserter(pages));
    return pages;
}

std::vector<TableDef> Database::lostTables(const std::vector<CatalogEntry>& entries)
{
    auto definitions = survey().definitions;
    for (const auto& entry : entries)
        definitions.erase(entry.page);
    DamageReport unwanted; // all of this is beyond what the file still lists
    std::map<std::uint32_t, CatalogEntry> lostEntries;
    if (auto objects = readCatalogDefinition(unwanted)) {
        objects->dataPages.pages = unlistedPages(*objects);
        for (auto& entry : entriesOf(*objects, readAllRows(*objects, unwanted)))
            lostEntries.emplace(entry.page, std::move(entry));
    }
    std::vector<TableDef> tables;
    for (const auto page : definitions) {
        const auto lost = lostEntries.find(page);
        auto table = readTable(lost == lostEntries.end() ? CatalogEntry{.page = page} : lost->second, unwanted);
        if (!table || table->isSystem) continue;
        table->dataPages.pages = pagesOwnedBy(page);
        tables.push_back(std::move(*table));
    }
    return tables;
}

std::vector<std::uint32_t> Database::rowsOnlyInIndexes(const TableDef& table, DamageReport& damage)
{
    std::set<std::uint32_t> missing;
    for (const auto root : table.indexRoots) {
        const auto entries = readIndexEntries(*m_pages, root, table.definitionPage);
        for (const auto page : entries.damagedPages)
            damage.add({.kind = DamageKind::Index, .page = page});
        for (const auto pointer : entries.rows)
            if (!hasRow(table, pointer)) missing.insert(pointer);
    }
    return {missing.begin(), missing.end()};
}

bool Database::hasRow(const TableDef& table, std::uint32_t pointer)
{
    if (!std::ranges::binary_search(table.dataPages.pages, pageOf(pointer))) return false;
    const auto page = m_pages->read(pageOf(pointer), m_buffer);
    if (!isDataPage(page) || ownerOf(page) != table.definitionPage) return false;
    const auto place = rowAt(page, m_pages->format(), pointer);
    // A damaged row has been told as such.
    return place && place->state != RowState::Deleted;
}

// Object cells are kept as they are stored.
RowStore Database::readAllRows(const TableDef& table, DamageReport& damage)
{
    RowStore rows({}, cellKinds(table));
    TableReader reader(table, source(*m_pages, rawObject));
    RowRun run;
    for (const auto page : table.dataPages.pages)
        reader.readPage(page, run);
    reader.finish(run);
    for (auto& group : run.groups)
        rows.append(std::move(group));
    damage.append(run.damage, {}, 0);
    tellMissingRows(table, run.rowCount, damage);
    return rows;
}

std::string Database::textOf(ByteSpan stored) const
{
    TextColumnBuilder text;
    appendStoredText(stored, rules(), text);
    return std::string(text.openText());
}

} // namespace vellumo::jet
