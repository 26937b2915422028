// SPDX-License-Identifier: MIT
#include "browser/DataView.h"

#include "browser/GridValue.h"
#include "browser/LongestTexts.h"
#include "embedded/TAdmBlobData.h"
#include "export/objects/ObjectFile.h"
#include "model/TAdmMDBFile.h"
#include "text/Format.h"
#include "text/Messages.h"

#include <algorithm>
#include <numeric>

namespace vellumo {

namespace {

std::string captionOf(const TAdmMDBColumn& column)
{
    for (const auto& [property, value] : column.properties())
        if (property == "Caption")
            if (auto caption = jet::propertyText(value); !caption.empty()) return caption;
    return column.name();
}

GridColumn gridColumn(const TAdmMDBColumn& column, bool isCaptionShown)
{
    const bool isNumberOrDate =
        factsOf(column.type()).sortKind != SortKind::Text && column.type() != ColumnType::Boolean;
    return {column.name(), isCaptionShown ? captionOf(column) : column.name(), column.isPrimaryKey(), column.isOLE(),
        column.textAlignForCell(), isNumberOrDate, column.sortOrder()};
}

int nextDirection(int direction)
{
    if (direction == 0) return 1;
    return direction == 1 ? -1 : 0;
}

} // namespace

DataView::DataView(DataViewPort& port, const DesktopPorts& desktop, bool textViewShow)
    : m_port(port)
    , m_desktop(desktop)
    , m_layouts(desktop.defaults)
    , m_isTextViewShown(textViewShow)
    , m_update(m_rows, desktop.mainThread, [this] { rowsDidCome(); })
    , m_hitsUpdate(m_hits, desktop.mainThread, [this] {
        if (m_rowsListener) m_rowsListener();
    })
{
    m_port.setTextViewShown(textViewShow);
}

void DataView::updateDataTableToShowMDBTable(const TAdmMDBTable* table)
{
    if (table != m_rows.table()) {
        m_update.setTable(table);
        m_hitsUpdate.setTable(table);
        m_selectedRows = {};
        m_clickedRow = {};
        m_currentColumn = {};
        m_recordShown = {};
        m_awaited = {};
    }
    m_columns.clear();
    if (table != nullptr)
        for (const auto& column : table->columns())
            m_columns.push_back(gridColumn(*column, m_areCaptionsShown));
    readLayout();
    m_selectedRows.clipTo(numberOfRows());
    m_port.gridColumnsDidChange();
    m_port.selectedRowsDidChange();
}

void DataView::showInstead(const TAdmMDBTable* table)
{
    const auto selected = m_selectedRows.first();
    const auto record = selected ? std::optional(recordAt(*selected)) : std::nullopt;
    const auto place =
        record ? std::optional(Place{*record, m_recordShown == *record ? m_currentColumn : std::nullopt}) : m_awaited;
    updateDataTableToShowMDBTable(table);
    reloadData();
    displayTextViewContent({});
    if (areRowsToCome())
        m_awaited = place;
    else if (place)
        goTo(*place);
    else
        selectRows({});
}

void DataView::goTo(const Place& place)
{
    const auto position = positionOfRecord(place.record);
    selectRows(position ? RowSelection::ofRow(*position) : RowSelection());
    if (place.shownColumn && position) displayCell(*place.shownColumn, *position);
}

void DataView::readLayout()
{
    m_layout.order.resize(m_columns.size());
    std::iota(m_layout.order.begin(), m_layout.order.end(), std::size_t{0});
    m_layout.widths.assign(m_columns.size(), 0);
    if (table() != nullptr) m_layout = m_layouts.find(*table()).value_or(m_layout);
}

void DataView::setDisplayOrder(std::vector<std::size_t> columns)
{
    m_layout.order = std::move(columns);
    m_layouts.keep(*table(), m_layout);
}

void DataView::setColumnWidth(std::size_t column, int width)
{
    m_layout.widths[column] = width;
    m_layouts.keep(*table(), m_layout);
}

std::vector<std::uint32_t> DataView::longestRecords(std::size_t column, std::size_t count) const
{
    return longestTexts(table()->rows(), column, count);
}

GridValue DataView::valueOfRecord(std::size_t column, std::size_t record) const
{
    return vellumo::getValueForTableColumn(table(), column, record);
}

void DataView::orderDidChange()
{
    for (std::size_t i = 0; i < m_columns.size(); ++i)
        setSortIndicator(i, table()->columns()[i]->sortOrder());
    m_port.sortIndicatorsDidChange();
    reloadData();
}

GridValue DataView::getValueForTableColumn(std::size_t column, std::size_t row) const
{
    return vellumo::getValueForTableColumn(m_rows.table(), column, m_rows.rowAt(row));
}

std::optional<std::size_t> DataView::positionOfRecord(std::size_t record) const { return m_rows.positionOfRow(record); }

void DataView::tableViewSelectionDidChange(RowSelection selection)
{
    m_selectedRows = std::move(selection);
    m_selectedRows.clipTo(numberOfRows());
    if (m_selectionListener) m_selectionListener();
}

void DataView::selectRows(RowSelection selection)
{
    if (selection == m_selectedRows) return;
    tableViewSelectionDidChange(std::move(selection));
    m_port.selectedRowsDidChange();
}

void DataView::didClickTableColumn(std::size_t column)
{
    if (column >= m_columns.size()) return;
    ChangeSortIndictor(column);
    applySortOrder(column);
    reloadData();
    if (m_orderListener) m_orderListener();
}

void DataView::ChangeSortIndictor(std::size_t column)
{
    const auto direction = nextDirection(m_columns[column].headerTag);
    for (std::size_t i = 0; i < m_columns.size(); ++i)
        setSortIndicator(i, i == column ? direction : 0);
    m_port.sortIndicatorsDidChange();
}

void DataView::setSortIndicator(std::size_t column, int order) { m_columns[column].headerTag = order; }

// The order lives in the model, so every view of the table follows it.
void DataView::applySortOrder(std::size_t clickedColumn)
{
    const auto& clicked = m_columns[clickedColumn];
    for (const auto& column : m_rows.table()->columns())
        column->setSortOrder(column->name() == clicked.identifier ? clicked.headerTag : 0);
}

void DataView::displayTextViewContent(const GridValue& value)
{
    m_detail = {};
    m_recordShown = {};
    const auto* blob = std::get_if<std::shared_ptr<TAdmBlobData>>(&value);
    const auto image = blob == nullptr ? nullptr : (*blob)->image(m_desktop.imageDecoder);
    if (blob != nullptr) {
        m_detail.object = *blob;
        m_detail.objectNote = objectNote(**blob);
    }
    if (image) {
        m_detail.blob = *blob;
        m_detail.image = image;
    } else {
        std::string buffer;
        const auto text = valueText(value, buffer);
        m_detail.text = text ? std::string(*text) : textInstead(value);
        m_detail.isGrey = !text;
    }
    m_port.detailDidChange();
}

void DataView::openBlobAsFile()
{
    if (m_detail.blob) openObject();
}

void DataView::displayCell(std::size_t column, std::size_t row)
{
    m_currentColumn = column;
    displayTextViewContent(getValueForTableColumn(column, row));
    m_recordShown = recordAt(row);
    // Rows count from 1 in stored order, however the grid is sorted.
    m_detail.objectName = format("%@-%@", {m_columns[column].identifier, m_rows.rowAt(row) + 1});
}

bool DataView::canOpenObject() const { return m_detail.object && m_detail.object->mayBeOpened(); }

void DataView::openObject()
{
    if (!canOpenObject()) return;
    // Without a temporary file there is nothing to open.
    if (const auto path = m_detail.object->createTempFile(); !path.empty()) m_desktop.workspace.openFile(path);
}

void DataView::saveObjectAs()
{
    // The dialog may let events through that show another cell, or close the window and this view with it.
    const auto object = m_detail.object;
    if (!object) return;
    auto& alerts = m_desktop.alerts;
    const auto database = table() != nullptr && table()->file() != nullptr ? table()->file()->fullPath() : "";
    const auto name = fileNamePart(object->fileName(m_detail.objectName));
    const auto path = m_desktop.filePanels.saveFile(object->extensionByContent(), name);
    if (path && !writeObjectFile(*object, *path, database))
        alerts.show({localized("Error"), localizedFormat("File (%@) cannot be written", {*path})});
}

void DataView::ShowHideBottomTextView(bool isShown)
{
    m_isTextViewShown = isShown;
    m_port.setTextViewShown(isShown);
}

void DataView::ShowHideJumpBar(bool isShown) { m_port.setJumpBarShown(isShown); }

void DataView::setEditedColumn(std::size_t column, std::size_t row)
{
    selectRows(RowSelection::ofRow(row));
    m_port.focusCell(column, row);
    displayCell(column, row);
}

bool DataView::keyDown(int keyCode)
{
    if (keyCode != leftArrowKey && keyCode != rightArrowKey) return false;
    if (numberOfRows() == 0 || m_columns.empty()) return false;
    // The left arrow leads to the last column and the right arrow to the first.
    setEditedColumn(
        keyCode == leftArrowKey ? m_layout.order.back() : m_layout.order.front(), m_selectedRows.first().value_or(0));
    return true;
}

IconClick DataView::handleDragIconWithColumn(std::size_t column, std::size_t row, int clickCount)
{
    using enum IconClick::Outcome;
    const auto value = getValueForTableColumn(column, row);
    const auto* blob = std::get_if<std::shared_ptr<TAdmBlobData>>(&value);
    if (blob == nullptr || clickCount < 1 || clickCount > 2) return {LeftToGrid, {}};
    if (clickCount == 2 && !(*blob)->mayBeOpened()) return {LeftToGrid, {}};
    const auto path = (*blob)->createTempFile();
    if (path.empty()) return {Nothing, {}};
    if (clickCount == 1) return {DragFile, path};
    m_desktop.workspace.openFile(path);
    return {Opened, {}};
}

bool DataView::validateMenuItem(GridCommand command)
{
    switch (command) {
    case GridCommand::SelectAll:
    case GridCommand::JumpToRow: return numberOfRows() > 0;
    case GridCommand::DeselectAll: return !m_selectedRows.isEmpty();
    case GridCommand::Copy: return m_clickedRow || !m_selectedRows.isEmpty();
    case GridCommand::Other: break;
    }
    return false;
}

void DataView::copy()
{
    const auto rows = rowsToCopy();
    if (!rows.isEmpty()) m_desktop.pasteboard.setText(copiedText(rows));
}

// A click on a selected row stands for all selected rows.
RowSelection DataView::rowsToCopy() const
{
    if (!m_clickedRow || m_selectedRows.contains(*m_clickedRow)) return m_selectedRows;
    return RowSelection::ofRow(*m_clickedRow);
}

std::string DataView::copiedText(const RowSelection& rows) const
{
    std::string text;
    std::string buffer;
    for (const auto& [first, last] : rows.ranges())
        for (auto row = first; row <= last; ++row) {
            for (const auto column : m_layout.order)
                appendCopiedValue(getValueForTableColumn(column, row), buffer, text);
            endCopiedRow(text);
        }
    return text;
}

void DataView::JumpToRow() { m_port.askForRow(localized("Jump to row"), localizedFormat("%@:", {localized("Row")})); }

void DataView::jumpToRowConfirmed(long number)
{
    if (number < 1 || static_cast<std::size_t>(number) > numberOfRows()) {
        m_desktop.alerts.beep();
        return;
    }
    const auto row = static_cast<std::size_t>(number) - 1;
    selectRows(RowSelection::ofRow(row));
    if (!m_columns.empty()) displayCell(currentColumn(), row);
    m_port.scrollToRow(row);
    m_port.focusGrid();
}

} // namespace vellumo
