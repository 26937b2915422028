#include "desktop/tree/FileTreeDelegate.h"

#include "desktop/tree/FileTreeModel.h"

#include <QApplication>
#include <QPainter>

namespace vellumo {

namespace {

// The size of the row numbers beside that of the names: 12 points beside 13.
QFont rowCountFont(const QFont& nameFont)
{
    auto font = nameFont;
    if (font.pointSizeF() > 0) font.setPointSizeF(font.pointSizeF() * 12 / 13);
    return font;
}

QColor rowCountColour(const QStyleOptionViewItem& option)
{
    const auto isSelected = option.state.testFlag(QStyle::State_Selected);
    auto colour = option.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text);
    colour.setAlphaF(isSelected ? 0.8F : 0.55F);
    return colour;
}

QStyle& styleOf(const QStyleOptionViewItem& option)
{
    return option.widget != nullptr ? *option.widget->style() : *QApplication::style();
}

} // namespace

void FileTreeDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    auto item = option;
    initStyleOption(&item, index);
    const auto count = index.data(FileTreeModel::RowCountRole).toString();
    const QFontMetrics countMetrics(rowCountFont(item.font));
    const auto place = styleOf(item).subElementRect(QStyle::SE_ItemViewItemText, &item, item.widget);
    const auto margin = styleOf(item).pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, item.widget) + 1;
    const auto roomForName = place.width() - 2 * margin - countMetrics.horizontalAdvance(count);
    item.text = item.fontMetrics.elidedText(item.text, Qt::ElideRight, roomForName);
    styleOf(item).drawControl(QStyle::CE_ItemViewItem, &item, painter, item.widget);
    if (count.isEmpty()) return;
    const auto isRightToLeft = item.direction == Qt::RightToLeft;
    const auto indent = margin + item.fontMetrics.horizontalAdvance(item.text);
    painter->save();
    painter->setFont(rowCountFont(item.font));
    painter->setPen(rowCountColour(item));
    painter->drawText(place.adjusted(isRightToLeft ? 0 : indent, 0, isRightToLeft ? -indent : 0, 0),
        static_cast<int>(Qt::AlignLeading | Qt::AlignVCenter | Qt::TextSingleLine), count);
    painter->restore();
}

QSize FileTreeDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const auto size = QStyledItemDelegate::sizeHint(option, index);
    return {size.width(), std::max(size.height(), option.fontMetrics.height() + 6)};
}

} // namespace vellumo
