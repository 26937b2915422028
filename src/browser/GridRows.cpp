// SPDX-License-Identifier: MIT
#include "browser/GridRows.h"

#include "model/TAdmMDBTable.h"

#include <algorithm>

namespace vellumo {

namespace {

// Columns whose order is kept: 8 bytes a row each.
constexpr std::size_t keptOrders = 3;

} // namespace

void GridRows::setTable(const TAdmMDBTable* table)
{
    m_table = table;
    m_orders.clear();
    m_list.reset();
    m_positions.clear();
}

std::size_t GridRows::rowCount()
{
    if (!isCurrent()) {
        auto made = task();
        made.run();
        take(std::move(made));
    }
    return lastRowCount();
}

RowWish GridRows::wish() const
{
    RowWish wish{m_search};
    const auto& columns = m_table->columns();
    const auto sorted =
        std::find_if(columns.begin(), columns.end(), [](const auto& column) { return column->sortOrder() != 0; });
    if (m_order == Order::Stored || sorted == columns.end()) return wish;
    wish.column = static_cast<std::size_t>(sorted - columns.begin());
    wish.direction = (*sorted)->sortOrder() > 0 ? 1 : -1;
    return wish;
}

RowListTask GridRows::task() const
{
    RowListTask task{&m_table->rows(), SortKind::Text, m_list, nullptr, {wish(), nullptr, nullptr}};
    const auto& wish = task.list.wish;
    if (wish.direction == 0) return task;
    task.sortKind = factsOf(m_table->columns()[wish.column]->type()).sortKind;
    if (const auto known = findOrder(wish.column); known != m_orders.end()) task.order = known->order;
    return task;
}

void GridRows::take(RowListTask task)
{
    m_list = std::move(task.list);
    m_positions.clear();
    if (task.order) keepOrder({m_list->wish.column, std::move(task.order)});
}

GridRows::Orders::const_iterator GridRows::findOrder(std::size_t column) const
{
    return std::ranges::find(m_orders, column, &ColumnOrder::column);
}

void GridRows::keepOrder(ColumnOrder order)
{
    if (const auto known = findOrder(order.column); known != m_orders.end())
        m_orders.erase(known);
    else if (m_orders.size() == keptOrders)
        m_orders.pop_back();
    m_orders.insert(m_orders.begin(), std::move(order));
}

std::size_t GridRows::lastRowCount() const
{
    if (m_table == nullptr || !m_list) return 0;
    return m_list->rows ? m_list->rows->size() : m_table->rows().rowCount();
}

std::optional<std::size_t> GridRows::positionOfRow(std::size_t row) const
{
    if (m_table == nullptr || !m_list || row >= m_table->rows().rowCount()) return std::nullopt;
    if (!m_list->rows) return row;
    if (m_positions.empty()) {
        m_positions.assign(m_table->rows().rowCount(), 0);
        for (std::size_t i = 0; i < m_list->rows->size(); ++i)
            m_positions[(*m_list->rows)[i]] = static_cast<std::uint32_t>(i + 1);
    }
    if (m_positions[row] == 0) return std::nullopt;
    return m_positions[row] - 1;
}

} // namespace vellumo
