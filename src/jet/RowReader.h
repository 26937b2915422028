#pragma once

#include "jet/CellText.h"
#include "jet/LongValue.h"
#include "rows/RowGroup.h"

#include <functional>
#include <memory>

namespace vellumo::jet {

class Database;

// Turns the raw value of an object cell into what the row keeps; null for a null cell. Called on the reading thread.
using ObjectDecoder = std::function<std::shared_ptr<TAdmBlobData>(std::span<const std::uint8_t>)>;

// Cells of object columns are kept as blobs, all others as text.
[[nodiscard]] std::vector<CellKind> cellKinds(const TableDef& table);

// Reads the rows of one table, page by page, in the order in which they lie there. One thread; the handle serves no
// one else meanwhile.
class RowReader {
public:
    // `table` outlives the reader. Without a decoder all object cells are null.
    RowReader(Database& database, const TableDef& table, ObjectDecoder decodeObject);
    ~RowReader();

    // Appends the rows of one page of the table to `builder`; whenever that is full, its rows become a group of
    // `groups`. A page that is none of the table's, or cannot be read, has no rows. Returns the number of rows.
    std::size_t readPage(std::uint32_t page, RowGroupBuilder& builder, std::vector<RowGroup>& groups);

private:
    struct Library;

    [[nodiscard]] bool readRow(unsigned row, RowGroupBuilder& builder);
    void addCell(std::size_t column, std::span<const std::uint8_t> stored, RowGroupBuilder& builder);
    void addMemo(std::span<const std::uint8_t> stored, TextColumnBuilder& text);

    Database& m_database;
    const TableDef& m_table;
    ObjectDecoder m_decodeObject;
    TextRules m_rules;
    LongValue m_longValue;
    std::unique_ptr<Library> m_library;
};

} // namespace vellumo::jet
