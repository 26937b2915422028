// SPDX-License-Identifier: MIT
#pragma once

#include "browser/DataView.h"
#include "browser/JumpBarMenu.h"
#include "desktop/grid/JumpBar.h"

#include <QWidget>

#include <functional>
#include <memory>

namespace Ui {
class DataView;
}

namespace vellumo {

class DataView;

// The widgets of one data view: jump bar, grid and detail pane, laid out by DataView.ui. Used by the main window and by
// table windows.
class DataViewWidget : public QWidget, public DataViewPort {
public:
    explicit DataViewWidget(QWidget* parent = nullptr);
    ~DataViewWidget() override;

    // Once. Until then the port's calls are left without an answer, since a DataView is made with its port.
    void setDataView(DataView& dataView);
    [[nodiscard]] JumpBar& jumpBar();
    void fitColumns();
    // Called when the user wants to see the rows that a search hides.
    void setClearSearch(std::function<void()> clear);

    // The share of grid and detail pane, as a text.
    [[nodiscard]] std::string layoutState() const;
    void restoreLayout(const std::string& state);
    // Called after the user has changed that share, or the columns.
    void setLayoutListener(std::function<void()> listener);

    // DataViewPort
    void gridColumnsDidChange() override;
    void gridRowsDidChange() override;
    void sortIndicatorsDidChange() override;
    void selectedRowsDidChange() override;
    void scrollToRow(std::size_t row) override;
    void focusGrid() override;
    void focusCell(std::size_t column, std::size_t row) override;
    void detailDidChange() override;
    void setTextViewShown(bool isShown) override;
    void setJumpBarShown(bool isShown) override;
    void askForRow(const std::string& title, const std::string& prompt) override;

private:
    std::unique_ptr<Ui::DataView> m_ui;
    DataView* m_dataView = nullptr;
};

} // namespace vellumo
