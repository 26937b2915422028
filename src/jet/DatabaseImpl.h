#pragma once

// glib's header must come before libmdb's, which includes it as C code.
#include <glib.h>

#include <mdbtools.h>

#include "jet/Database.h"
#include "jet/UnicodeText.h"

#include <map>

// The parts of an open database that need the library's headers. For the sources of this folder only.
namespace vellumo::jet {

struct HandleClose {
    void operator()(MdbHandle* handle) const { mdb_close(handle); }
};
using HandlePtr = std::unique_ptr<MdbHandle, HandleClose>;

struct TableDefFree {
    void operator()(MdbTableDef* table) const { mdb_free_tabledef(table); }
};
using TableDefPtr = std::unique_ptr<MdbTableDef, TableDefFree>;

struct Database::Impl : PageFile {
    Impl(HandlePtr openHandle, std::uint64_t sizeOfFile);

    // Whole pages in the file.
    [[nodiscard]] std::uint32_t pageCount() const { return m_pageCount; }
    [[nodiscard]] std::span<const std::uint8_t> row(std::uint32_t pointer) override;
    // A page read into the library's second buffer; empty when it cannot be read. Valid until the next call.
    [[nodiscard]] std::span<const std::uint8_t> otherPage(std::uint32_t page);
    // To be called when the library may have used that buffer itself.
    void forgetOtherPage() { m_otherPage = 0; }
    // The data pages that say they belong to this table, for one whose own list of them is lost. The first call reads
    // the whole file.
    [[nodiscard]] const std::vector<std::uint32_t>& dataPagesOf(std::uint32_t definitionPage);
    // A page read into the library's first buffer, which cracking rows works on.
    [[nodiscard]] bool readPage(std::uint32_t page);

    [[nodiscard]] std::size_t pageSize() const { return static_cast<std::size_t>(handle->fmt->pg_size); }
    [[nodiscard]] bool isJet3() const { return handle->f->jet_version == MDB_VER_JET3; }

    HandlePtr handle;
    std::uint64_t fileSize;
    CodePage codePage;

private:
    std::uint32_t m_pageCount;
    std::uint32_t m_otherPage = 0; // what the second buffer holds; 0: nothing
    std::optional<std::map<std::uint32_t, std::vector<std::uint32_t>>> m_pagesByOwner; // ascending
};

// A table as the library knows it.
struct LibraryTable {
    // Null when the library cannot read the definition. Its own catalogue is not needed for this, nor read at all.
    [[nodiscard]] static std::unique_ptr<LibraryTable> open(Database::Impl& database, std::uint32_t definitionPage);

    // Whether the library sees the same columns, in the order of their numbers. Where it does not, its rows could not
    // be trusted.
    [[nodiscard]] bool agrees(const TableDef& table) const;

    MdbCatalogEntry entry{}; // the definition below points to it
    TableDefPtr def;
};

// The library sorts a table's columns by their number (of which it reads one byte), and rows come out right only in
// that order. The permutation that leads from it to the stored order: entry i is the position in `columns`, which are
// in stored order, of the library's column i.
[[nodiscard]] std::vector<std::size_t> mdb_read_columns_without_sorting(const std::vector<ColumnDef>& columns);

} // namespace vellumo::jet
