// SPDX-License-Identifier: MIT
#include "desktop/grid/GridDelegate.h"

#include "desktop/grid/GridModel.h"

#include <QApplication>
#include <QPainter>
#include <QTextLayout>

namespace vellumo {

namespace {

// A marker pen: the same on light, dark and selected ground.
constexpr QRgb markerColour = 0xFFFFD54F;
constexpr QRgb markedTextColour = 0xFF000000;

QList<QTextLayout::FormatRange> formats(const QList<QPoint>& hits, qsizetype length)
{
    QTextCharFormat marked;
    marked.setBackground(QColor(markerColour));
    marked.setForeground(QColor(markedTextColour));
    QList<QTextLayout::FormatRange> ranges;
    for (const auto& hit : hits)
        if (hit.x() < length) ranges << QTextLayout::FormatRange{hit.x(), hit.y(), marked};
    return ranges;
}

void drawText(QPainter& painter, const QStyleOptionViewItem& item, const QString& text, const QList<QPoint>& hits)
{
    const auto& style = item.widget != nullptr ? *item.widget->style() : *QApplication::style();
    const auto margin = style.pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, item.widget) + 1;
    const auto place =
        style.subElementRect(QStyle::SE_ItemViewItemText, &item, item.widget).adjusted(margin, 0, -margin, 0);
    const auto shown = item.fontMetrics.elidedText(text, item.textElideMode, place.width());
    QTextLayout layout(shown, item.font);
    layout.setFormats(formats(hits, shown.size()));
    layout.beginLayout();
    const auto line = layout.createLine();
    layout.endLayout();
    const QSize size(qCeil(line.naturalTextWidth()), qCeil(line.height()));
    painter.save();
    painter.setClipRect(place);
    painter.setPen(
        item.palette.color(item.state.testFlag(QStyle::State_Selected) ? QPalette::HighlightedText : QPalette::Text));
    layout.draw(&painter, QStyle::alignedRect(item.direction, item.displayAlignment, size, place).topLeft());
    painter.restore();
}

} // namespace

void GridDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const auto hits = index.data(GridModel::HitsRole).value<QList<QPoint>>();
    if (hits.isEmpty()) return QStyledItemDelegate::paint(painter, option, index);
    auto item = option;
    initStyleOption(&item, index);
    const auto& style = item.widget != nullptr ? *item.widget->style() : *QApplication::style();
    const auto text = std::exchange(item.text, QString());
    style.drawControl(QStyle::CE_ItemViewItem, &item, painter, item.widget);
    item.text = text; // its place depends on there being one
    drawText(*painter, item, text, hits);
}

} // namespace vellumo
