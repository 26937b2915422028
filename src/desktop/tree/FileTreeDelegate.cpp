#include "desktop/tree/FileTreeDelegate.h"

#include "desktop/icons/Icons.h"
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

// What is left of the text's place behind its first pixels.
QRect behind(const QStyleOptionViewItem& item, const QRect& place, int indent)
{
    const auto isRightToLeft = item.direction == Qt::RightToLeft;
    return place.adjusted(isRightToLeft ? 0 : indent, 0, isRightToLeft ? -indent : 0, 0);
}

void drawRowCount(QPainter& painter, const QStyleOptionViewItem& item, const QRect& place, const QString& count)
{
    painter.save();
    painter.setFont(rowCountFont(item.font));
    painter.setPen(rowCountColour(item));
    painter.drawText(place, static_cast<int>(Qt::AlignLeading | Qt::AlignVCenter | Qt::TextSingleLine), count);
    painter.restore();
}

void drawWarning(QPainter& painter, const QStyleOptionViewItem& item, const QRect& place, int size)
{
    const auto square = QStyle::alignedRect(item.direction, Qt::AlignLeft | Qt::AlignVCenter, {size, size}, place);
    icon("warning").paint(&painter, square);
}

} // namespace

void FileTreeDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    auto item = option;
    initStyleOption(&item, index);
    const auto count = index.data(FileTreeModel::RowCountRole).toString();
    const auto countWidth = QFontMetrics(rowCountFont(item.font)).horizontalAdvance(count);
    const auto warningWidth = index.data(FileTreeModel::DamageRole).toBool() ? item.fontMetrics.height() : 0;
    const auto place = styleOf(item).subElementRect(QStyle::SE_ItemViewItemText, &item, item.widget);
    const auto margin = styleOf(item).pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, item.widget) + 1;
    const auto roomForName = place.width() - 2 * margin - countWidth - (warningWidth == 0 ? 0 : warningWidth + margin);
    item.text = item.fontMetrics.elidedText(item.text, Qt::ElideRight, roomForName);
    styleOf(item).drawControl(QStyle::CE_ItemViewItem, &item, painter, item.widget);
    const auto indent = margin + item.fontMetrics.horizontalAdvance(item.text);
    if (!count.isEmpty()) drawRowCount(*painter, item, behind(item, place, indent), count);
    if (warningWidth != 0) drawWarning(*painter, item, behind(item, place, indent + countWidth + margin), warningWidth);
}

QSize FileTreeDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const auto size = QStyledItemDelegate::sizeHint(option, index);
    return {size.width(), std::max(size.height(), option.fontMetrics.height() + 6)};
}

} // namespace vellumo
