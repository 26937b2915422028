#pragma once

#include <cstddef>
#include <string>

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

} // namespace vellumo
