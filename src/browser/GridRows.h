// SPDX-License-Identifier: MIT
#pragma once

#include "browser/RecordSearch.h"
#include "browser/RowOrder.h"

#include <optional>

namespace vellumo {

class TAdmMDBTable;

// The row list of one grid: the records of a table that the search finds, in the order of the table's sort column
// (the first one in column order whose sortOrder is not 0; without one in stored order). A position counts the list's
// rows from 0; a row number is that of the table's row store. Main thread only.
class GridRows {
public:
    // The table to show, or null for none. Forgets everything about the one before; call it also when a table's rows
    // have been replaced, and with null before the table goes away.
    void setTable(const TAdmMDBTable* table);
    [[nodiscard]] const TAdmMDBTable* table() const { return m_table; }

    // Takes effect at the next rowCount(). Table windows do without.
    void setSearch(SearchSettings settings) { m_search = std::move(settings); }
    [[nodiscard]] const SearchSettings& search() const { return m_search; }

    // Whether rowCount() would leave the list as it is.
    [[nodiscard]] bool isCurrent() const;
    // Length of the list. Rebuilds it first if the search or the columns' sortOrder have changed since; costs a look at
    // the columns otherwise.
    std::size_t rowCount();

    // The list as the last rowCount() left it.
    [[nodiscard]] std::size_t lastRowCount() const;
    // `position` is below that count. O(1).
    [[nodiscard]] std::uint32_t rowAt(std::size_t position) const;
    // Where a record stands in that list; nullopt when the search hides it. O(1) but for the first call after the list
    // was rebuilt, which costs O(rows).
    [[nodiscard]] std::optional<std::size_t> positionOfRow(std::size_t row) const;

private:
    struct Sort {
        std::size_t column = 0;
        int direction = 0; // 1 ascending, -1 descending, 0 stored order

        bool operator==(const Sort&) const = default;
    };
    struct ColumnOrder {
        std::size_t column;
        RowOrder order;
    };

    [[nodiscard]] Sort currentSort() const;
    void updateFound();
    void rebuild(Sort sort);
    [[nodiscard]] const RowOrder& orderOf(std::size_t column);

    const TAdmMDBTable* m_table = nullptr;
    SearchSettings m_search;

    // What the list below was built for; nullopt when there is none yet.
    std::optional<Sort> m_builtSort;
    SearchSettings m_builtSearch;
    // Records that the search finds, ascending; unused while the search text is empty.
    std::vector<std::uint32_t> m_found;
    // The list; unused while it would be the stored order of all rows.
    std::vector<std::uint32_t> m_rows;
    bool m_isStoredOrder = true;
    // Position + 1 of each row of the table, 0 for a hidden one; empty until someone asks.
    mutable std::vector<std::uint32_t> m_positions;
    // The columns sorted last, the latest first.
    std::vector<ColumnOrder> m_orders;
};

} // namespace vellumo
