// SPDX-License-Identifier: MIT
#pragma once

#include "browser/DataView.h"

#include <QAbstractTableModel>
#include <QHash>
#include <QIcon>

namespace vellumo {

// The grid of a DataView for Qt's views. Cells are made when they are asked for, a line each and cut where no cell is
// wide enough to show more. Row and column numbers are those of the DataView.
class GridModel : public QAbstractTableModel {
public:
    // The parts of the cell's text that a search has found, as a QList<QPoint>: where in the text, how long.
    static constexpr int HitsRole = Qt::UserRole;

    explicit GridModel(QObject* parent);

    // Null: an empty grid. The view outlives its being set.
    void setDataView(DataView* dataView);
    // The DataView has other columns or rows.
    void reload();
    // The sort direction of some header is another one.
    void headersDidChange();

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    // Whether the cell draws a file-type icon.
    [[nodiscard]] bool hasIcon(const QModelIndex& index) const;

private:
    [[nodiscard]] GridValue value(const QModelIndex& index) const;
    [[nodiscard]] QVariant columnTitle(const GridColumn& column, int role) const;
    [[nodiscard]] QVariant hits(const QModelIndex& index) const;
    [[nodiscard]] QIcon iconOf(const TAdmBlobData& blob) const;

    QIcon m_keyIcon;
    DataView* m_dataView = nullptr;
    // As of the last reload: what the DataView has may be ahead of what the views know.
    int m_rowCount = 0;
    int m_columnCount = 0;
    mutable QHash<QString, QIcon> m_icons; // of file types, by extension
};

// What a cell shows of a value.
[[nodiscard]] QString cellText(const GridValue& value);
// The text as one line for a cell: line breaks and other control characters become spaces, and what is too long for
// any cell is cut.
[[nodiscard]] QString cellLine(std::string_view text);

} // namespace vellumo
