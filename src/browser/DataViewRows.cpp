// SPDX-License-Identifier: MIT
// Which rows a data view has: how they come, what becomes of the selection then, and looking for records among them.

#include "browser/DataView.h"
#include "text/Format.h"
#include "text/Messages.h"

#include <algorithm>
#include <utility>

namespace vellumo {

namespace {

// Runs of rows that a grid can mark without standing still; a sort can tear a large selection into very many.
constexpr std::size_t mostSelectedRuns = 2000;

// Bytes of a text that are looked at for what to mark in its cell.
constexpr std::size_t longestMarkedText = 4096;

} // namespace

void DataView::reloadData()
{
    const auto before = m_selectedRows;
    const auto count = numberOfRows();
    m_selectedRows.clipTo(count);
    if (!areRowsToCome() || count == 0) { // with none the grid says why
        m_port.gridRowsDidChange();
        m_port.selectedRowsDidChange();
    }
    if (m_selectionListener && m_selectedRows != before) m_selectionListener();
}

void DataView::rowsDidCome()
{
    reloadData();
    if (const auto place = std::exchange(m_awaited, {})) goTo(*place);
    if (m_rowsListener) m_rowsListener();
}

void DataView::awaitRows()
{
    if (!m_update.isDue()) m_update.wait();
}

bool DataView::areRowsToCome() const
{
    using enum RowListUpdate::State;
    return m_update.state() == Searching || m_update.state() == Sorting;
}

// Whoever asks first takes the new list, so that no place of the old one is taken for one of the new.
std::size_t DataView::numberOfRows()
{
    if (!m_update.isDue()) return m_rows.lastRowCount();
    const auto selected = recordsOf(m_selectedRows);
    const auto clicked = m_clickedRow ? std::optional(recordAt(*m_clickedRow)) : std::nullopt;
    m_update.take();
    m_selectedRows = rowsOf(selected);
    if (m_selectedRows.ranges().size() > mostSelectedRuns)
        m_selectedRows = rowShown() ? RowSelection::ofRow(*rowShown()) : RowSelection();
    m_clickedRow = clicked ? positionOfRecord(*clicked) : std::nullopt;
    if (m_recordShown && !rowShown()) displayTextViewContent({});
    return m_rows.lastRowCount();
}

// Empty when no row is selected. A list that was never asked for has no rows.
std::vector<bool> DataView::recordsOf(const RowSelection& rows) const
{
    auto known = rows;
    known.clipTo(m_rows.lastRowCount());
    if (known.isEmpty()) return {};
    std::vector<bool> records(table()->rows().rowCount());
    for (const auto& [first, last] : known.ranges())
        for (auto row = first; row <= last; ++row)
            records[recordAt(row)] = true;
    return records;
}

RowSelection DataView::rowsOf(const std::vector<bool>& records) const
{
    std::vector<RowSelection::Range> ranges;
    const auto count = records.empty() ? 0 : m_rows.lastRowCount();
    for (std::size_t row = 0; row < count; ++row) {
        if (!records[recordAt(row)]) continue;
        if (ranges.empty() || ranges.back().last + 1 < row) ranges.push_back({row, row});
        ranges.back().last = row;
    }
    return RowSelection(std::move(ranges));
}

std::optional<std::size_t> DataView::rowShown() const
{
    return m_recordShown ? positionOfRecord(*m_recordShown) : std::nullopt;
}

std::string DataView::placeholder()
{
    if (table() == nullptr) return localized("No tables selected");
    if (numberOfRows() > 0) return {};
    if (m_update.state() != RowListUpdate::State::UpToDate) return searchText();
    if (!hidesAllRows()) return localized("No records");
    const auto& search = m_rows.search();
    return localized("No records found") + '\n'
        + localizedFormat(
            "The search for “%@” (%@) hides every record of this table.", {search.text, searchRuleText(search)});
}

bool DataView::hidesAllRows()
{
    return table() != nullptr && numberOfRows() == 0 && m_update.state() == RowListUpdate::State::UpToDate
        && !table()->rows().empty();
}

void DataView::setFind(SearchSettings settings)
{
    m_hits.setSearch(std::move(settings));
    m_port.gridRowsDidChange();
    m_port.selectedRowsDidChange();
}

// As the last answer left them while they are looked for.
std::size_t DataView::countHits()
{
    if (m_hitsUpdate.isDue()) m_hitsUpdate.take();
    return m_hits.lastRowCount();
}

bool DataView::findNext(int step)
{
    const auto count = numberOfRows();
    if (!isFinding() || count == 0) return false;
    static_cast<void>(countHits());
    m_hitsUpdate.wait();
    if (countHits() == 0 || m_hitsUpdate.state() == RowListUpdate::State::Failed) return false;
    auto row = m_selectedRows.first().value_or(step > 0 ? count - 1 : 0);
    for (std::size_t i = 0; i < count; ++i) {
        row = (step > 0 ? row + 1 : row + count - 1) % count;
        if (!m_hits.positionOfRow(recordAt(row))) continue;
        setEditedColumn(columnOfHit(row), row);
        return true;
    }
    return false;
}

// The first one that is displayed; the current one for a hit that lies too far behind in its text.
std::size_t DataView::columnOfHit(std::size_t row) const
{
    for (const auto column : m_layout.order)
        if (!hits(column, row).empty()) return column;
    return currentColumn();
}

std::string DataView::searchText()
{
    if (table() == nullptr) return {};
    const auto count = numberOfRows();
    const auto hits = countHits();
    switch (m_update.state() == RowListUpdate::State::UpToDate ? m_hitsUpdate.state() : m_update.state()) {
    case RowListUpdate::State::Searching: return localized("Searching…");
    case RowListUpdate::State::Sorting: return localized("Sorting…");
    case RowListUpdate::State::Failed: return localized("There is too little memory to search or sort.");
    case RowListUpdate::State::UpToDate: break;
    }
    return searchResultText(shownSearch(), isFinding() ? hits : count, table()->rows().rowCount());
}

std::vector<TextRange> DataView::hits(std::size_t column, std::size_t row) const
{
    const auto& search = shownSearch();
    if (search.text.empty()) return {};
    const auto value = getValueForTableColumn(column, row);
    const auto* text = std::get_if<std::string_view>(&value);
    if (text == nullptr) return {};
    const bool needsEnd = search.searchOption == SearchOption::Equals || search.searchOption == SearchOption::EndsWith;
    if (text->size() > longestMarkedText && needsEnd) return {};
    return hitsIn(text->substr(0, longestMarkedText), search);
}

} // namespace vellumo
