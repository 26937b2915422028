// SPDX-License-Identifier: MIT
#pragma once

#include "jet/ComplexColumns.h"
#include "jet/Definition.h"
#include "model/TAdmMDBColumn.h"
#include "model/TAdmMDBForeignKey.h"
#include "model/TAdmMDBIndex.h"
#include "rows/RowStore.h"

#include <memory>
#include <optional>
#include <span>

namespace vellumo {

// Where the rows of a table come from.
enum class TableOrigin : std::uint8_t {
    Catalogue, // a table as the file lists it
    Recovered, // found by looking for what was lost: its name ends in " (recovered)", or is "Recovered n"
    Deleted,   // deleted rows of a table: its name ends in " (deleted)"
};

// The history of a memo column: which it is, if that is known, and what its cells were, by the numbers that the rows
// have.
struct MemoHistory {
    std::optional<std::size_t> column;
    std::shared_ptr<const jet::ValueGroups> groups;
};

// A user table of an open file with its columns, rows and indexes. Filled while the file is opened, only read
// afterwards (but for the columns' sort order).
class TAdmMDBTable : public TAdmMDBObject {
public:
    [[nodiscard]] TAdmMDBFile* file() const { return m_file; }
    void setFile(TAdmMDBFile* file) { m_file = file; }

    [[nodiscard]] TableOrigin origin() const { return m_origin; }
    void setOrigin(TableOrigin origin) { m_origin = origin; }

    // All Access properties of the table, and of these what the user wrote about it.
    [[nodiscard]] const jet::PropertyList& properties() const { return m_properties; }
    void setProperties(jet::PropertyList properties) { m_properties = std::move(properties); }
    [[nodiscard]] std::optional<std::string> description() const;

    // The last number that Access gave to a row of an AutoNumber column; rows may have larger ones all the same.
    [[nodiscard]] std::int64_t lastAutoNumber() const { return m_lastAutoNumber; }
    void setLastAutoNumber(std::int64_t number) { m_lastAutoNumber = number; }

    // In the order in which the table stores them. Never null.
    using Columns = std::vector<std::unique_ptr<TAdmMDBColumn>>;
    [[nodiscard]] const Columns& columns() const { return m_columns; }
    void setColumns(Columns columns);
    [[nodiscard]] TAdmMDBColumn* findColumn(std::string_view name) const;

    // Column c of the rows is columns()[c].
    [[nodiscard]] const RowStore& rows() const { return m_rows; }
    void setRows(RowStore rows) { m_rows = std::move(rows); }

    // What a memo that keeps its history has been, the oldest first and the present text, as a rule, last; none for any
    // other cell. Valid as long as the table.
    [[nodiscard]] std::span<const jet::MemoVersion> versionsOf(std::size_t row, std::size_t column) const;
    [[nodiscard]] bool keepsHistory(std::size_t column) const;
    [[nodiscard]] const std::vector<MemoHistory>& histories() const { return m_histories; }
    void setHistories(std::vector<MemoHistory> histories) { m_histories = std::move(histories); }

    // Sorted by name. Never null.
    using Indices = std::vector<std::unique_ptr<TAdmMDBIndex>>;
    [[nodiscard]] const Indices& indices() const { return m_indices; }
    void setIndices(Indices indices);

    // Whether some column of exactly this name is an object column.
    [[nodiscard]] bool isOLEColumn(std::string_view columnName) const;
    // The relations in which this table holds the foreign key, sorted by name; owned by the file.
    [[nodiscard]] std::vector<TAdmMDBForeignKey*> foreignKeys() const;

    // `formatVersion`: 0 for Jet 3, 1 for Jet 4.
    void getColumnsFromMdbTableDef(const jet::TableDef& tableDef, int formatVersion);
    // Only indexes with keys are taken.
    void getIndicesFromMdbTableDef(const jet::TableDef& tableDef);
    // Marks the columns that are keys of a primary-key index.
    void setColumnPrimaryKey();

    // A store without rows that fits the columns.
    [[nodiscard]] RowStore emptyRows() const;

    // Empties columns, rows and indexes.
    void close();

    [[nodiscard]] Information information() const override;

private:
    TAdmMDBFile* m_file = nullptr; // the owner
    TableOrigin m_origin = TableOrigin::Catalogue;
    jet::PropertyList m_properties;
    std::int64_t m_lastAutoNumber = 0;
    Columns m_columns;
    RowStore m_rows;
    std::vector<MemoHistory> m_histories; // in the order of the rows' hidden columns
    Indices m_indices;
};

} // namespace vellumo
