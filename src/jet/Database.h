// SPDX-License-Identifier: MIT
#pragma once

#include "jet/PageSource.h"
#include "jet/PageSurvey.h"
#include "jet/TableReader.h"
#include "jet/UnicodeText.h"
#include "rows/RowStore.h"

#include <map>
#include <optional>
#include <set>

namespace vellumo::jet {

constexpr std::uint32_t catalogPage = 2; // the first of the catalogue's definition

// A named object of the database: table, query, form and so on.
struct CatalogEntry {
    std::string name{}; // UTF-8
    int type = 0;
    std::uint32_t flags = 0;
    std::uint32_t id = 0;
    std::uint32_t page = 0;                           // of the definition, for a table: the id without its flags
    std::shared_ptr<TAdmBlobData> properties{};       // as stored; null when there are none
    int storedType = 0;                               // as stored; that of a form or the like is negative
    std::string created{}, modified{};                // as the text of a DateTime cell
    std::string database{}, connect{}, foreignName{}; // of a linked table

    static constexpr int tableType = 1;
    static constexpr int linkedTypes[] = {4, 6}; // they keep a definition of what they lead to
    static constexpr std::uint32_t systemFlags = 0x80000002;

    [[nodiscard]] bool isTable() const { return type == tableType; }
    [[nodiscard]] bool isSystemTable() const { return type == tableType && (flags & systemFlags) != 0; }
    [[nodiscard]] bool isUserTable() const { return type == tableType && (flags & systemFlags) == 0; }
};

// A relation as one column pair of it is stored.
struct RelationPart {
    std::string name;
    std::int32_t flags = 0;
    std::string table, column;                     // the side that holds the foreign key
    std::string referencedTable, referencedColumn; // the other side

    static constexpr std::int32_t notEnforced = 2;
    static constexpr std::int32_t cascadeUpdates = 0x100;
    static constexpr std::int32_t cascadeDeletes = 0x1000;
};

using TablesByPage = std::map<std::uint32_t, const TableDef*>; // by the first page of their definition

// What lies in a file though nothing leads to it.
struct Strays {
    struct Page {
        const CatalogEntry* entry; // of its table
        std::uint32_t number;
    };
    std::vector<Page> unlisted; // pages of rows that the list of their table lacks
    // First pages of definitions to which no entry leads: of users' tables and of the system's.
    std::vector<std::uint32_t> tables, systemTables;
    std::vector<std::uint32_t> ownerless; // pages of rows whose table is none
};

// A system table with all its rows; object cells as they are stored.
struct TableContent {
    TableDef def;
    RowStore rows;
};

// What an open database file holds, read from its pages. What cannot be read goes into the report that is handed in.
// One thread, but for what the parts of a TableReader::Source say.
class Database {
public:
    // Null, with the reason in `failure`, when the file cannot be opened.
    [[nodiscard]] static std::unique_ptr<Database> open(
        const std::string& path, const OpenOptions& options, OpenFailure& failure);

    // 0: Access 97 (Jet 3), 1: Access 2000 to 2003 (Jet 4).
    [[nodiscard]] int formatVersion() const { return m_pages->formatVersion(); }
    // Of Access 2007 or later, with what only these formats have.
    [[nodiscard]] bool isNewerFormat() const { return formatVersion() > 1; }
    [[nodiscard]] std::uint64_t fileSize() const { return m_pages->fileSize(); }
    [[nodiscard]] PageSource& pages() { return *m_pages; }
    [[nodiscard]] const PageSource& pages() const { return *m_pages; }

    // Every named object in the order of the catalogue; empty when it cannot be read.
    [[nodiscard]] std::vector<CatalogEntry> readCatalog(DamageReport& damage);
    // Whether the entry is none of a user's table though it leads to the definition of one: its type or its flags are
    // damaged.
    [[nodiscard]] bool hidesTable(const CatalogEntry& entry);
    // The definition of a table with its columns in stored order, their properties, its indexes and its pages. nullopt
    // when it cannot be read.
    [[nodiscard]] std::optional<TableDef> readTable(const CatalogEntry& entry, DamageReport& damage);
    // nullopt when the definition cannot be read.
    [[nodiscard]] std::optional<TableContent> readContent(const CatalogEntry& entry, DamageReport& damage);
    // `entry`: the catalogue's entry of the table of relations.
    [[nodiscard]] std::vector<RelationPart> readRelations(const CatalogEntry& entry, DamageReport& damage);

    // A system table as texts: for each row those of these columns, "" for null and for objects. The first `needed` of
    // the columns have to be there, else nullopt; of a further one that is not, the texts are empty. What is damaged is
    // told as this kind.
    [[nodiscard]] std::optional<std::vector<std::vector<std::string>>> readTexts(const CatalogEntry& entry,
        const std::vector<std::string_view>& columns, std::size_t needed, DamageKind kind, DamageReport& damage);

    // Rows of the table that its indexes know and its pages do not have, as pointers, each once.
    [[nodiscard]] std::vector<std::uint32_t> rowsOnlyInIndexes(const TableDef& table, DamageReport& damage);

    // Looks at the pages that are not free, but for those that the tables of `read` list: whoever reads their rows
    // looks at those. `entries`: the whole catalogue, which outlives what is returned. nullopt when `goesOn`, which is
    // asked now and then, says no.
    [[nodiscard]] std::optional<Strays> findStrays(
        const std::vector<CatalogEntry>& entries, const TablesByPage& read, const std::function<bool()>& goesOn);
    // The pages of a table that its own list does not name, as far as they name the table.
    [[nodiscard]] std::vector<std::uint32_t> unlistedPages(const TableDef& table);
    // Tables of users whose definition lies in the file though none of the entries leads to it, with all the pages that
    // name them; with a name where an old or lost part of the catalogue still has one.
    [[nodiscard]] std::vector<TableDef> lostTables(const std::vector<CatalogEntry>& entries);

    // For a reader on the thread that `pages` serves.
    [[nodiscard]] TableReader::Source source(Pages& pages, ObjectDecoder decodeObject);

private:
    Database(std::unique_ptr<PageSource> pages, int codePage);
    [[nodiscard]] std::optional<TableDef> readTableAt(std::uint32_t page, DamageReport& damage);
    void readDataPages(TableDef& table, DamageReport& damage);
    void unwrapCalculated(TableDef& table) const;
    void fillGaps(PageList& list, std::uint32_t definitionPage);
    // Of all pages; the first call reads the whole file.
    [[nodiscard]] const PageSurvey& survey();
    [[nodiscard]] bool listsItsOwn(const TableDef& table);
    void addLostTable(std::uint32_t page, Strays& strays);
    void addUnlisted(
        const CatalogEntry& entry, const std::vector<std::uint32_t>& pages, const TablesByPage& read, Strays& strays);
    [[nodiscard]] bool hasRow(const TableDef& table, std::uint32_t pointer);
    [[nodiscard]] const std::vector<std::uint32_t>& pagesOwnedBy(std::uint32_t definitionPage);
    [[nodiscard]] std::optional<TableDef> readCatalogDefinition(DamageReport& damage);
    [[nodiscard]] static std::vector<CatalogEntry> entriesOf(const TableDef& objects, const RowStore& rows);
    [[nodiscard]] RowStore readAllRows(const TableDef& table, DamageReport& damage);
    [[nodiscard]] TextRules rules() const { return {m_pages->format().isJet3, &m_codePage}; }
    [[nodiscard]] std::string textOf(ByteSpan stored) const;

    std::unique_ptr<PageSource> m_pages;
    CodePage m_codePage;
    LongValue::Budget m_longValueBudget;
    PageBuffer m_buffer;
    std::optional<PageSurvey> m_survey;
};

// Adds the rows that a table states beyond those found, `damage` being the table's own: rows told one by one are not
// told again.
void tellMissingRows(const TableDef& table, std::uint64_t rowsFound, DamageReport& damage);

} // namespace vellumo::jet
