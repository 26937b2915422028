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
    m_found.clear();
    m_rows.clear();
    m_positions.clear();
    m_isStoredOrder = true;
    m_builtSort.reset();
    m_builtSearch = {};
}

bool GridRows::isCurrent() const
{
    return m_table == nullptr || (m_builtSort == currentSort() && m_builtSearch == m_search);
}

std::size_t GridRows::rowCount()
{
    if (!isCurrent()) {
        updateFound();
        rebuild(currentSort());
    }
    return lastRowCount();
}

std::size_t GridRows::lastRowCount() const
{
    if (m_table == nullptr || !m_builtSort) return 0;
    return m_isStoredOrder ? m_table->rows().rowCount() : m_rows.size();
}

std::uint32_t GridRows::rowAt(std::size_t position) const
{
    return m_isStoredOrder ? static_cast<std::uint32_t>(position) : m_rows[position];
}

std::optional<std::size_t> GridRows::positionOfRow(std::size_t row) const
{
    if (m_table == nullptr || row >= m_table->rows().rowCount()) return std::nullopt;
    if (m_isStoredOrder) return row;
    if (m_positions.empty()) {
        m_positions.assign(m_table->rows().rowCount(), 0);
        for (std::size_t i = 0; i < m_rows.size(); ++i)
            m_positions[m_rows[i]] = static_cast<std::uint32_t>(i + 1);
    }
    if (m_positions[row] == 0) return std::nullopt;
    return m_positions[row] - 1;
}

GridRows::Sort GridRows::currentSort() const
{
    const auto& columns = m_table->columns();
    const auto sorted =
        std::find_if(columns.begin(), columns.end(), [](const auto& column) { return column->sortOrder() != 0; });
    if (sorted == columns.end()) return {};
    return {static_cast<std::size_t>(sorted - columns.begin()), (*sorted)->sortOrder() > 0 ? 1 : -1};
}

void GridRows::updateFound()
{
    if (m_search == m_builtSearch) return;
    const auto& rows = m_table->rows();
    if (m_search.text.empty()) {
        m_found.clear();
    } else if (!m_builtSearch.text.empty() && isNarrower(m_search, m_builtSearch)) {
        m_found = filterData(rows, m_search, m_found);
    } else {
        m_found = filterData(rows, m_search);
    }
    m_builtSearch = m_search;
}

void GridRows::rebuild(Sort sort)
{
    m_positions.clear();
    m_rows.clear();
    m_builtSort = sort;
    const bool isSearching = !m_builtSearch.text.empty();
    m_isStoredOrder = sort.direction == 0 && !isSearching;
    if (m_isStoredOrder) return;
    if (sort.direction == 0) {
        m_rows = m_found;
        return;
    }
    m_rows = orderOf(sort.column).rows(sort.direction);
    if (!isSearching) return;
    std::vector<bool> isFound(m_rows.size());
    for (const auto row : m_found)
        isFound[row] = true;
    std::erase_if(m_rows, [&](std::uint32_t row) { return !isFound[row]; });
}

const RowOrder& GridRows::orderOf(std::size_t column)
{
    const auto known = std::find_if(
        m_orders.begin(), m_orders.end(), [&](const ColumnOrder& order) { return order.column == column; });
    if (known != m_orders.end()) {
        std::rotate(m_orders.begin(), known, known + 1);
        return m_orders.front().order;
    }
    if (m_orders.size() == keptOrders) m_orders.pop_back();
    const auto kind = factsOf(m_table->columns()[column]->type()).sortKind;
    m_orders.insert(m_orders.begin(), {column, RowOrder(m_table->rows(), column, kind)});
    return m_orders.front().order;
}

} // namespace vellumo
