// SPDX-License-Identifier: MIT
#include "rows/RowStore.h"

#include "embedded/TAdmBlobData.h"

#include <algorithm>

namespace vellumo {

CellValue RowRecord::value(std::string_view columnName) const
{
    const auto column = m_store->columnIndex(columnName);
    return column ? m_store->value(m_row, *column) : CellValue();
}

CellValue RowRecord::value(std::size_t column) const { return m_store->value(m_row, column); }

RowStore::RowStore(std::vector<std::string> columnNames, std::vector<CellKind> kinds)
    : m_columnNames(std::move(columnNames))
    , m_kinds(std::move(kinds))
{
}

std::optional<std::size_t> RowStore::columnIndex(std::string_view name) const
{
    const auto found = std::find(m_columnNames.begin(), m_columnNames.end(), name);
    if (found == m_columnNames.end()) return std::nullopt;
    return static_cast<std::size_t>(found - m_columnNames.begin());
}

RowStore::Position RowStore::locate(std::size_t row) const
{
    const auto behind = std::upper_bound(m_firstRows.begin(), m_firstRows.end(), row);
    const auto group = static_cast<std::size_t>(behind - m_firstRows.begin()) - 1;
    return {&m_groups[group], static_cast<std::uint32_t>(row - m_firstRows[group])};
}

std::int32_t RowStore::historyGroup(std::size_t row, std::size_t history) const
{
    const auto [group, rowInGroup] = locate(row);
    return group->historyGroups[history][rowInGroup];
}

std::string_view RowStore::text(std::size_t row, std::size_t column) const
{
    if (m_kinds[column] == CellKind::Blob) return {};
    const auto [group, rowInGroup] = locate(row);
    return group->texts[column].text(rowInGroup);
}

CellValue RowStore::value(std::size_t row, std::size_t column) const
{
    const auto [group, rowInGroup] = locate(row);
    if (m_kinds[column] == CellKind::Blob) {
        const auto& blob = group->blobs[column][rowInGroup];
        return blob ? CellValue(blob) : CellValue();
    }
    const auto text = group->texts[column].text(rowInGroup);
    return text.empty() ? CellValue() : CellValue(text);
}

void RowStore::append(RowGroup group)
{
    if (group.rowCount == 0) return;
    m_firstRows.push_back(m_rowCount);
    m_rowCount += group.rowCount;
    m_groups.push_back(std::move(group));
}

void RowStore::clear()
{
    m_groups.clear();
    m_groups.shrink_to_fit();
    m_firstRows.clear();
    m_rowCount = 0;
}

} // namespace vellumo
