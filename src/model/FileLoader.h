#pragma once

#include "jet/Database.h"
#include "model/TAdmMDBFile.h"

namespace vellumo {

// Reads the content of a database file into its TAdmMDBFile, in one pass; the file is closed again at the end.
class FileLoader {
public:
    FileLoader(TAdmMDBFile& file, const OpenOptions& options)
        : m_file(file)
        , m_options(options)
    {
    }
    // False when the file cannot be opened or the observer stopped it; what was read so far is then still in the file.
    [[nodiscard]] bool load();

private:
    // A table that will be listed: its definition, and the object to fill.
    struct PendingTable {
        jet::TableDef def;
        std::unique_ptr<TAdmMDBTable> table;
    };

    [[nodiscard]] std::vector<PendingTable> readDefinitions(const std::vector<jet::CatalogEntry>& catalog);
    void addUserTable(const jet::CatalogEntry& entry, std::vector<PendingTable>& pending);
    void readRelations(const jet::TableDef& table);
    [[nodiscard]] bool readRows(std::vector<PendingTable>& pending);

    TAdmMDBFile& m_file;
    const OpenOptions& m_options;
    std::unique_ptr<jet::Database> m_database;
};

} // namespace vellumo
