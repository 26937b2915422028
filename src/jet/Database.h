#pragma once

#include "jet/PageFile.h"
#include "jet/TableDef.h"

#include <memory>
#include <optional>

namespace vellumo {
class TAdmBlobData;
}

namespace vellumo::jet {

struct CatalogEntry {
    std::string name; // UTF-8
    int type = 0;
    std::uint32_t flags = 0;
    std::uint32_t page = 0;                   // of the definition, for a table
    std::shared_ptr<TAdmBlobData> properties; // as stored; null when there are none

    static constexpr int tableType = 1;
    static constexpr std::uint32_t systemFlags = 0x80000002;

    [[nodiscard]] bool isSystemTable() const { return type == tableType && (flags & systemFlags) != 0; }
    [[nodiscard]] bool isUserTable() const { return type == tableType && (flags & systemFlags) == 0; }
};

// An open database file: libmdb's handle, and what a reader of it must not leave to the library. Opened read-only. A
// handle serves one thread; open the file again for another.
class Database {
public:
    // nullptr: the file is missing, unreadable, no regular file, shorter than a page, not a database, or of a format
    // newer than the one of Access 2000 to 2003. Takes the library's environment variables out of the environment at
    // the first call, which should therefore come before other threads use it.
    [[nodiscard]] static std::unique_ptr<Database> open(const std::string& path);
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    // 0: Access 97 (Jet 3), 1: Access 2000 to 2003 (Jet 4).
    [[nodiscard]] int formatVersion() const;
    [[nodiscard]] std::uint64_t fileSize() const;

    // Every named object in the order of the catalogue. nullopt when the catalogue cannot be read. Read once.
    [[nodiscard]] std::optional<std::vector<CatalogEntry>> readCatalog();

    // The definition of a table with its columns in stored order, their properties, and its indexes. nullopt when it
    // cannot be read.
    [[nodiscard]] std::optional<TableDef> readTable(const CatalogEntry& entry);

    // For the layer's own sources: what needs the library's headers.
    struct Impl;
    [[nodiscard]] Impl& impl() { return *m_impl; }

private:
    explicit Database(std::unique_ptr<Impl> impl);
    [[nodiscard]] std::optional<TableDef> readTableAt(std::uint32_t page);
    [[nodiscard]] std::vector<std::uint8_t> readDefinition(std::uint32_t firstPage);

    std::unique_ptr<Impl> m_impl;
};

} // namespace vellumo::jet
