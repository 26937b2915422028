// SPDX-License-Identifier: MIT
#pragma once

#include "model/ComplexColumnsLoader.h"
#include "model/TAdmMDBFile.h"
#include "model/TableRowsLoader.h"

namespace vellumo {

// Reads the content of a database file into its TAdmMDBFile, in one pass; the file is closed again at the end.
class FileLoader {
public:
    // `database` and `file` outlive the loader.
    FileLoader(jet::Database& database, TAdmMDBFile& file, const OpenOptions& options)
        : m_database(database)
        , m_file(file)
        , m_options(options)
        , m_rows(database, options.readerCount)
    {
    }
    // False when the observer stopped it; what was read so far is then still in the file.
    [[nodiscard]] bool load();

private:
    // A table that will be listed: its definition, and the object to fill.
    struct PendingTable {
        jet::TableDef def;
        std::unique_ptr<TAdmMDBTable> table;
    };

    void readDefinitions(const std::vector<jet::CatalogEntry>& catalog);
    [[nodiscard]] bool isListed(const jet::CatalogEntry& entry) const;
    void addUserTable(const jet::CatalogEntry& entry);
    [[nodiscard]] std::unique_ptr<TAdmMDBTable> newTable(const jet::TableDef& def);
    [[nodiscard]] bool tellStrays(const std::vector<jet::CatalogEntry>& catalog);
    [[nodiscard]] DamageRecord recordOf(const jet::Strays::Page& page) const;
    void addSalvage(const std::vector<jet::CatalogEntry>& catalog);
    void addSalvaged(jet::TableDef def, const std::string& name, TableOrigin origin);
    void dropEmptySalvage();
    void readRelations(const jet::CatalogEntry& entry);
    [[nodiscard]] bool readAllRows();
    [[nodiscard]] bool readRows(PendingTable& pending, std::uint64_t rowsDone, std::uint64_t rowsExpected);
    static void setValues(PendingTable& pending);
    static void setHistories(const PendingTable& pending);
    void checkRows(const PendingTable& pending, DamageReport& found);

    jet::Database& m_database;
    TAdmMDBFile& m_file;
    const OpenOptions& m_options;
    TableRowsLoader m_rows;
    std::optional<ComplexColumnsLoader> m_complexColumns; // once the catalogue is read
    std::vector<PendingTable> m_pending;
    DamageReport m_damage;
};

} // namespace vellumo
