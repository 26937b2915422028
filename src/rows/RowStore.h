// SPDX-License-Identifier: MIT
#pragma once

#include "rows/RowGroup.h"

#include <optional>
#include <span>
#include <string>
#include <variant>

namespace vellumo {

class RowStore;

// A cell: null, a text (never empty; lives as long as the store's rows), or a decoded object (never a null pointer).
using CellValue = std::variant<std::monostate, std::string_view, std::shared_ptr<TAdmBlobData>>;

[[nodiscard]] inline bool isNull(const CellValue& value) { return std::holds_alternative<std::monostate>(value); }

// One row of a table: a light view that stays valid while the store keeps its rows. Two records are the same record
// when they are the same row of the same store.
class RowRecord {
public:
    RowRecord(const RowStore& store, std::size_t row)
        : m_store(&store)
        , m_row(row)
    {
    }
    [[nodiscard]] std::size_t row() const { return m_row; }
    // Null also for a column that the table does not have.
    [[nodiscard]] CellValue value(std::string_view columnName) const;
    [[nodiscard]] CellValue value(std::size_t column) const;

    bool operator==(const RowRecord&) const = default;

private:
    const RowStore* m_store;
    std::size_t m_row;
};

// All rows of a table in stored order, column by column. Groups need not be of equal size.
class RowStore {
public:
    RowStore() = default;
    // `kinds`: one entry a name.
    RowStore(std::vector<std::string> columnNames, std::vector<CellKind> kinds);

    [[nodiscard]] std::size_t rowCount() const { return m_rowCount; }
    [[nodiscard]] bool empty() const { return m_rowCount == 0; }
    [[nodiscard]] std::size_t columnCount() const { return m_kinds.size(); }
    [[nodiscard]] const std::vector<CellKind>& kinds() const { return m_kinds; }
    // The first column of exactly this name.
    [[nodiscard]] std::optional<std::size_t> columnIndex(std::string_view name) const;

    // The way to walk over many rows: group by group, no look-up a cell.
    [[nodiscard]] std::span<const RowGroup> groups() const { return m_groups; }
    // Number of the group's first row.
    [[nodiscard]] std::size_t firstRow(std::size_t group) const { return m_firstRows[group]; }

    // `row` is below rowCount(), `column` below columnCount(). Cost: one binary search over the groups.
    [[nodiscard]] CellValue value(std::size_t row, std::size_t column) const;
    // "" for null and for the cells of a blob column.
    [[nodiscard]] std::string_view text(std::size_t row, std::size_t column) const;
    [[nodiscard]] RowRecord record(std::size_t row) const { return {*this, row}; }
    // The group of versions that a row has in a hidden column of histories.
    [[nodiscard]] std::int32_t historyGroup(std::size_t row, std::size_t history) const;

    // The group's columns are this store's.
    void append(RowGroup group);
    void clear();

private:
    struct Position {
        const RowGroup* group;
        std::uint32_t row; // within the group
    };
    [[nodiscard]] Position locate(std::size_t row) const;

    std::vector<std::string> m_columnNames;
    std::vector<CellKind> m_kinds;
    std::vector<RowGroup> m_groups;
    std::vector<std::size_t> m_firstRows;
    std::size_t m_rowCount = 0;
};

} // namespace vellumo
