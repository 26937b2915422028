// SPDX-License-Identifier: MIT
#pragma once

#include "browser/RowList.h"

#include <optional>

namespace vellumo {

class TAdmMDBTable;

// The row list of one grid: the records of a table that the search finds, in the order of the table's sort column
// (the first one in column order whose sortOrder is not 0; without one in stored order). A position counts the list's
// rows from 0; a row number is that of the table's row store. Main thread only.
class GridRows {
public:
    enum class Order { Sorted, Stored }; // Stored: whatever the table's sort column

    explicit GridRows(Order order = Order::Sorted)
        : m_order(order)
    {
    }

    // The table to show, or null for none. Forgets everything about the one before; call it also when a table's rows
    // have been replaced, and with null before the table goes away.
    void setTable(const TAdmMDBTable* table);
    [[nodiscard]] const TAdmMDBTable* table() const { return m_table; }

    // Takes effect at the next rowCount(). Table windows do without.
    void setSearch(SearchSettings settings) { m_search = std::move(settings); }
    [[nodiscard]] const SearchSettings& search() const { return m_search; }

    // Whether rowCount() would leave the list as it is.
    [[nodiscard]] bool isCurrent() const { return m_table == nullptr || (m_list && m_list->wish == wish()); }
    // Length of the list. Rebuilds it first if the search or the columns' sortOrder have changed since; costs a look at
    // the columns otherwise.
    std::size_t rowCount();

    // The same in two steps, between which the list may be made elsewhere. While there is a table.
    [[nodiscard]] RowWish wish() const;
    [[nodiscard]] RowListTask task() const;
    void take(RowListTask task);

    // The list as the last rowCount() left it.
    [[nodiscard]] std::size_t lastRowCount() const;
    // `position` is below that count. O(1).
    [[nodiscard]] std::uint32_t rowAt(std::size_t position) const
    {
        return m_list->rows ? (*m_list->rows)[position] : static_cast<std::uint32_t>(position);
    }
    // Where a record stands in that list; nullopt when the search hides it. O(1) but for the first call after the list
    // was rebuilt, which costs O(rows).
    [[nodiscard]] std::optional<std::size_t> positionOfRow(std::size_t row) const;

private:
    struct ColumnOrder {
        std::size_t column;
        std::shared_ptr<const RowOrder> order;
    };
    using Orders = std::vector<ColumnOrder>;

    [[nodiscard]] Orders::const_iterator findOrder(std::size_t column) const;
    void keepOrder(ColumnOrder order);

    Order m_order;
    const TAdmMDBTable* m_table = nullptr;
    SearchSettings m_search;
    std::optional<RowList> m_list; // nullopt when there is none yet
    // Position + 1 of each row of the table, 0 for a hidden one; empty until someone asks.
    mutable std::vector<std::uint32_t> m_positions;
    Orders m_orders; // the columns sorted last, the latest first
};

} // namespace vellumo
