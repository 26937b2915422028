// SPDX-License-Identifier: MIT
#pragma once

#include <QStyledItemDelegate>

namespace vellumo {

// Draws the cells of a grid, and marks in them what a search has found.
class GridDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

} // namespace vellumo
