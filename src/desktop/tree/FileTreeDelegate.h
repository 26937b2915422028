#pragma once

#include <QStyledItemDelegate>

namespace vellumo {

// Draws a row of the file list: the name, elided where there is no room, behind it the grey number of
// rows, and a warning where something is damaged.
class FileTreeDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

} // namespace vellumo
