// SPDX-License-Identifier: MIT
#pragma once

#include "browser/RowSelection.h"

#include <QPersistentModelIndex>
#include <QTableView>

#include <optional>

class QPushButton;

namespace vellumo {

class DataView;
class GridModel;

// The grid of a DataView. Left and right arrow lead where the DataView says; with Ctrl they go from cell to cell. The
// icon of an object cell can be dragged out as a file, and a double click on it opens the object.
class GridView : public QTableView {
    Q_OBJECT

public:
    explicit GridView(QWidget* parent = nullptr);

    // Once; it outlives the view's use.
    void setDataView(DataView& dataView);

    // What changed in the DataView.
    void columnsDidChange();
    void rowsDidChange();
    void sortIndicatorsDidChange();
    void selectedRowsDidChange();
    void scrollToRow(std::size_t row);
    void focusCell(std::size_t column, std::size_t row);

    // Makes every column as wide as its texts need, those that a search hides as well.
    void fitColumns();

signals:
    // The user does not want the search any more that hides all rows.
    void clearSearchRequested();

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    [[nodiscard]] int sizeHintForColumn(int column) const override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
    void changeEvent(QEvent* event) override;

private:
    void setUpHeaders();
    void offerToClearSearch();
    void adjustRowHeight();
    void frameCurrentCell();
    void sortByColumn(int column);
    void columnsWereMoved();
    void displayCell(const QModelIndex& index);
    void goOnFromSelection();
    void layOutColumns();
    [[nodiscard]] RowSelection selectionOfView() const;
    [[nodiscard]] QModelIndex iconAt(const QPoint& position) const;
    void dragIcon(const QModelIndex& index);
    [[nodiscard]] bool moveToNeighbour(int step);

    DataView* m_dataView = nullptr;
    GridModel* m_model = nullptr;
    QPushButton* m_clearSearch;
    bool m_isFollowing = false; // the view takes over what the DataView has, which is no action of the user
    QPersistentModelIndex m_pressedIcon;
    QPoint m_pressPosition;
};

} // namespace vellumo
