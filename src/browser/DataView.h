// SPDX-License-Identifier: MIT
#pragma once

#include "browser/ColumnLayouts.h"
#include "browser/DesktopPorts.h"
#include "browser/GridRows.h"
#include "browser/GridValue.h"
#include "browser/RowListUpdate.h"
#include "browser/RowSelection.h"
#include "browser/SearchHits.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace vellumo {

class RowSelection;

// The widgets of one data view: the grid and the detail pane. Each call says what changed; what it changed to is asked
// of the DataView. No call waits for the user or calls back before it returns. Main thread only.
class DataViewPort {
public:
    virtual ~DataViewPort() = default;

    // Grid: other columns and rows; the same columns with other rows; another direction in the headers.
    virtual void gridColumnsDidChange() = 0;
    virtual void gridRowsDidChange() = 0;
    virtual void sortIndicatorsDidChange() = 0;
    // The selected rows are now those of DataView::selectedRows().
    virtual void selectedRowsDidChange() = 0;
    // Brings a selected row into sight; its cell in DataView::currentColumn() becomes the current one.
    virtual void scrollToRow(std::size_t row) = 0;
    virtual void focusGrid() = 0;
    // Marks a cell as the current one; its row is selected already.
    virtual void focusCell(std::size_t column, std::size_t row) = 0;

    // The detail pane shows DataView::detail().
    virtual void detailDidChange() = 0;
    virtual void setTextViewShown(bool isShown) = 0;
    virtual void setJumpBarShown(bool isShown) = 0;

    // A sheet that asks for a number; confirmed, it is answered by DataView::jumpToRowConfirmed.
    virtual void askForRow(const std::string& title, const std::string& prompt) = 0;
};

// How one grid column looks. Column c shows column c of the table.
struct GridColumn {
    // The picture in front of the title of a primary-key column; the title's baseline is raised by so many points.
    static constexpr const char* keyImageName = "OV_Key";
    static constexpr int keyBaselineOffset = 4;

    std::string identifier; // the column's name
    std::string title;      // of the header: the name, or the caption where captions are shown
    bool hasKeyImage = false;
    bool isImageAndText = false; // cells draw a file-type icon in front of the text
    TextAlignment alignment = TextAlignment::Natural;
    bool isNumberOrDate = false; // stands on the right unless the alignment says otherwise
    int headerTag = 0;           // the sort direction shown: 1 ascending, -1 descending, 0 none
};

// What the pane below the grid shows.
struct DetailContent {
    std::shared_ptr<TAdmBlobData> blob;   // set when a picture is shown
    std::shared_ptr<const Image> image;   // never null when `blob` is set
    std::shared_ptr<TAdmBlobData> object; // the object that is shown, as a picture or otherwise; null for a text
    std::string objectName;               // a name for its file, without extension
    std::string objectNote;               // that it is damaged; "" for a sound one
    std::string text = textInstead({});   // without a picture
    bool isGrey = true;                   // a placeholder rather than a value
};

// The commands of the grid's menus.
enum class GridCommand { SelectAll, DeselectAll, Copy, JumpToRow, Other };

// What came of a click on the icon of a blob cell.
struct IconClick {
    enum class Outcome { LeftToGrid, DragFile, Opened, Nothing };
    Outcome outcome = Outcome::LeftToGrid;
    std::string path; // DragFile: the file to drag
};

// One table's rows in a grid above a detail pane, without the widgets. Positions are rows of the grid (sorted and
// searched), counted from 0. What is selected and what the detail pane shows are records: they stay the same whatever
// order and search do to their places.
//
// Rows whose search or order takes its time come later: until then the grid has those it had, of a new table none.
// Main thread only.
class DataView {
public:
    static constexpr int leftArrowKey = 123;
    static constexpr int rightArrowKey = 124;

    // `port` and the interfaces outlive the view.
    DataView(DataViewPort& port, const DesktopPorts& desktop, bool textViewShow);
    // Called after the rows selected in the grid have changed.
    void setSelectionListener(std::function<void()> listener) { m_selectionListener = std::move(listener); }
    // Called after a click on a header has changed the order of the table, which other views of it share.
    void setOrderListener(std::function<void()> listener) { m_orderListener = std::move(listener); }

    // Called when such rows have come, or cannot come, and when what setFind looks for was found.
    void setRowsListener(std::function<void()> listener) { m_rowsListener = std::move(listener); }

    // Shows a table, or nothing. The rows selected stay selected when it is the table shown already.
    void updateDataTableToShowMDBTable(const TAdmMDBTable* table);
    [[nodiscard]] const TAdmMDBTable* table() const { return m_rows.table(); }
    // The same with the record selected first selected again: another form of the table shown.
    void showInstead(const TAdmMDBTable* table);
    // Takes effect with the next table.
    void setCaptionsShown(bool isShown) { m_areCaptionsShown = isShown; }
    // The search takes effect with the reload.
    void setSearch(SearchSettings settings) { m_rows.setSearch(std::move(settings)); }
    // What to look for without hiding the rest. It shows with the next findNext or reload.
    void setFind(SearchSettings settings);
    // Selects the next (`step` 1) or the previous (-1) record that agrees, round and round, and shows the cell that
    // does. False when there is none.
    bool findNext(int step);
    // How many records agree with the search, or with what setFind looks for, or what the rows wait for; "" otherwise.
    [[nodiscard]] std::string searchText();
    // The parts of a cell's text for which it was found. Of a long text only the beginning is looked at.
    [[nodiscard]] std::vector<TextRange> hits(std::size_t column, std::size_t row) const;
    // Brings the row list up to date. Selected records that the search hides are dropped, and when it hides the one
    // that is shown below, the detail pane is emptied.
    void reloadData();
    // Whether rows are still to come, and waiting for them.
    [[nodiscard]] bool areRowsToCome() const;
    void awaitRows();
    // The order of the table was changed elsewhere: headers and rows follow.
    void orderDidChange();

    // The grid's questions. `row` is below what numberOfRows last said.
    [[nodiscard]] const std::vector<GridColumn>& columns() const { return m_columns; }
    // The columns as the user has laid them out; initially as they are. What the user does here is kept for the table.
    [[nodiscard]] const ColumnLayout& columnLayout() const { return m_layout; }
    void setDisplayOrder(std::vector<std::size_t> columns);
    void setColumnWidth(std::size_t column, int width);
    // The records with the longest texts of a column, whether or not the search hides them: at most `count`.
    [[nodiscard]] std::vector<std::uint32_t> longestRecords(std::size_t column, std::size_t count) const;
    [[nodiscard]] GridValue valueOfRecord(std::size_t column, std::size_t record) const;
    std::size_t numberOfRows();
    // What the grid says instead of rows; empty when there are some.
    [[nodiscard]] std::string placeholder();
    // Whether there are records and the search hides all of them.
    [[nodiscard]] bool hidesAllRows();
    [[nodiscard]] GridValue getValueForTableColumn(std::size_t column, std::size_t row) const;
    // The record (row number of the table's store) at a position, and back; nullopt when the search hides it.
    [[nodiscard]] std::size_t recordAt(std::size_t row) const { return m_rows.rowAt(row); }
    [[nodiscard]] std::optional<std::size_t> positionOfRecord(std::size_t record) const;

    // Selection. The port tells what the user selected and which row was clicked for a menu (nullopt: none).
    [[nodiscard]] const RowSelection& selectedRows() const { return m_selectedRows; }
    void tableViewSelectionDidChange(RowSelection selection);
    void setClickedRow(std::optional<std::size_t> row) { m_clickedRow = row; }
    // Selects exactly these rows and tells the port.
    void selectRows(RowSelection selection);

    // A click on a header: turns the direction, sorts by the column, and reloads.
    void didClickTableColumn(std::size_t column);
    // The direction of the header turns from none to ascending to descending to none; all others turn to none.
    void ChangeSortIndictor(std::size_t column);
    void setSortIndicator(std::size_t column, int order);

    // Detail pane.
    [[nodiscard]] const DetailContent& detail() const { return m_detail; }
    void displayTextViewContent(const GridValue& value);
    // Shows the value of a cell, whose column is the current one from then on.
    void displayCell(std::size_t column, std::size_t row);
    // Opens the file of the picture shown with its default application.
    void openBlobAsFile();
    // The object shown may be opened: it is of a kind that people keep and open, and nothing to execute.
    [[nodiscard]] bool canOpenObject() const;
    // Opens the object shown with its default application, if that is safe.
    void openObject();
    // Writes the object shown under a name that the user chooses; tells when that failed.
    void saveObjectAs();
    void ShowHideBottomTextView(bool isShown);
    void ShowHideJumpBar(bool isShown);
    [[nodiscard]] bool isTextViewShown() const { return m_isTextViewShown; }

    // Makes a cell the current one and shows its value below; nothing is edited.
    void setEditedColumn(std::size_t column, std::size_t row);
    // Returns false for a key that is left to the grid.
    bool keyDown(int keyCode);
    // `clickCount` 1 starts a drag of the object's file, 2 opens it if that is safe.
    [[nodiscard]] IconClick handleDragIconWithColumn(std::size_t column, std::size_t row, int clickCount);

    // Menu commands.
    [[nodiscard]] bool validateMenuItem(GridCommand command);
    void copy();
    void JumpToRow();
    // The answer to the sheet; counts from 1. Shows the row's value in the current column.
    void jumpToRowConfirmed(long number);
    // Where the record is that the detail pane shows a cell of; nullopt when it shows none.
    [[nodiscard]] std::optional<std::size_t> rowShown() const;
    // The column of the cell that was shown last, else the first as they are displayed; 0 when there are none.
    [[nodiscard]] std::size_t currentColumn() const
    {
        return m_currentColumn.value_or(m_layout.order.empty() ? 0 : m_layout.order.front());
    }

private:
    // A cell of a record, to come back to when the rows are there.
    struct Place {
        std::size_t record;
        std::optional<std::size_t> shownColumn;
    };

    void rowsDidCome();
    void goTo(const Place& place);
    [[nodiscard]] std::size_t countHits();
    [[nodiscard]] RowSelection rowsToCopy() const;
    [[nodiscard]] std::string copiedText(const RowSelection& rows) const;
    [[nodiscard]] const SearchSettings& shownSearch() const { return isFinding() ? m_hits.search() : m_rows.search(); }
    [[nodiscard]] bool isFinding() const { return !m_hits.search().text.empty(); }
    [[nodiscard]] std::size_t columnOfHit(std::size_t row) const;
    void readLayout();
    void applySortOrder(std::size_t clickedColumn);
    [[nodiscard]] std::vector<bool> recordsOf(const RowSelection& rows) const;
    [[nodiscard]] RowSelection rowsOf(const std::vector<bool>& records) const;

    DataViewPort& m_port;
    DesktopPorts m_desktop;
    std::function<void()> m_selectionListener;
    std::function<void()> m_orderListener;
    std::function<void()> m_rowsListener;
    GridRows m_rows;
    GridRows m_hits{GridRows::Order::Stored}; // the records that agree with what setFind looks for
    std::optional<Place> m_awaited;           // where to go when the rows come
    std::vector<GridColumn> m_columns;
    ColumnLayouts m_layouts;
    ColumnLayout m_layout; // of m_columns
    RowSelection m_selectedRows;
    std::optional<std::size_t> m_clickedRow;
    std::optional<std::size_t> m_currentColumn; // of the table shown
    std::optional<std::size_t> m_recordShown;   // the one that the detail pane shows a cell of
    DetailContent m_detail;
    bool m_areCaptionsShown = false;
    bool m_isTextViewShown;
    RowListUpdate m_update; // these two last: what they tell needs the rest
    RowListUpdate m_hitsUpdate;
};

} // namespace vellumo
