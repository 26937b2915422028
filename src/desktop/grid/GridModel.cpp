// SPDX-License-Identifier: MIT
#include "desktop/grid/GridModel.h"

#include "desktop/QtText.h"
#include "desktop/icons/Icons.h"
#include "embedded/TAdmBlobData.h"

#include <QGuiApplication>
#include <QPalette>
#include <QPoint>

#include <algorithm>
#include <limits>

namespace vellumo {

namespace {

constexpr std::size_t longestLine = 400; // bytes; wider than any column gets by itself

// Numbers that Qt counts with; a grid of more rows than that shows the first ones.
int qtCount(std::size_t count)
{
    return static_cast<int>(std::min<std::size_t>(count, std::numeric_limits<int>::max()));
}

QVariant qtAlignment(const GridColumn& column)
{
    const auto horizontal = [&] {
        switch (column.alignment) {
        case TextAlignment::Left: return Qt::AlignLeft | Qt::AlignAbsolute;
        case TextAlignment::Right: return Qt::AlignRight | Qt::AlignAbsolute;
        case TextAlignment::Center: return Qt::Alignment(Qt::AlignHCenter);
        case TextAlignment::Justified: return Qt::Alignment(Qt::AlignJustify);
        case TextAlignment::Natural: break;
        }
        return Qt::Alignment(column.isNumberOrDate ? Qt::AlignTrailing : Qt::AlignLeading);
    }();
    return QVariant::fromValue(horizontal | Qt::AlignVCenter);
}

bool isContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

QColor greyTextColor() { return QGuiApplication::palette().color(QPalette::PlaceholderText); }

} // namespace

QString cellLine(std::string_view text)
{
    auto length = std::min(text.size(), longestLine);
    while (length < text.size() && length > 0 && isContinuation(text[length]))
        --length;
    auto line = toQString(text.substr(0, length));
    for (auto& c : line)
        if (c.category() == QChar::Other_Control || c == QChar::LineSeparator || c == QChar::ParagraphSeparator)
            c = QLatin1Char(' ');
    if (length < text.size()) line += QChar(0x2026);
    return line;
}

QString cellText(const GridValue& value)
{
    if (const auto* text = std::get_if<std::string_view>(&value)) return cellLine(*text);
    return toQString(cellDisplayText(value));
}

GridModel::GridModel(QObject* parent)
    : QAbstractTableModel(parent)
    , m_keyIcon(icon(GridColumn::keyImageName))
{
}

void GridModel::setDataView(DataView* dataView)
{
    m_dataView = dataView;
    reload();
}

void GridModel::reload()
{
    beginResetModel();
    m_columnCount = m_dataView == nullptr ? 0 : qtCount(m_dataView->columns().size());
    m_rowCount = m_columnCount == 0 ? 0 : qtCount(m_dataView->numberOfRows());
    endResetModel();
}

void GridModel::headersDidChange()
{
    if (m_columnCount > 0) emit headerDataChanged(Qt::Horizontal, 0, m_columnCount - 1);
}

int GridModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : m_rowCount; }

int GridModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : m_columnCount; }

GridValue GridModel::value(const QModelIndex& index) const
{
    return m_dataView->getValueForTableColumn(
        static_cast<std::size_t>(index.column()), static_cast<std::size_t>(index.row()));
}

QVariant GridModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= m_rowCount || index.column() >= m_columnCount) return {};
    const auto& column = m_dataView->columns()[static_cast<std::size_t>(index.column())];
    switch (role) {
    case Qt::DisplayRole: return cellText(value(index));
    case Qt::TextAlignmentRole: return qtAlignment(column);
    case Qt::ForegroundRole: {
        return std::holds_alternative<NullCell>(value(index)) ? QVariant(greyTextColor()) : QVariant();
    }
    case Qt::DecorationRole: {
        if (!column.isImageAndText) return {};
        const auto cell = value(index);
        const auto* blob = std::get_if<std::shared_ptr<TAdmBlobData>>(&cell);
        return blob == nullptr ? QVariant() : QVariant(iconOf(**blob));
    }
    case HitsRole: return hits(index);
    default: return {};
    }
}

// The cell shows each letter of its text as one, as far as it goes.
QVariant GridModel::hits(const QModelIndex& index) const
{
    const auto ranges =
        m_dataView->hits(static_cast<std::size_t>(index.column()), static_cast<std::size_t>(index.row()));
    if (ranges.empty()) return {};
    const auto cell = value(index);
    const auto* text = std::get_if<std::string_view>(&cell);
    const auto lengthOf = [&](std::size_t start, std::size_t length) {
        return static_cast<int>(toQString(text->substr(start, length)).size());
    };
    QList<QPoint> hits;
    for (const auto& [start, length] : ranges)
        if (start < longestLine) hits << QPoint(lengthOf(0, start), lengthOf(start, length));
    return QVariant::fromValue(hits);
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    // The space keeps the number off the first cell.
    if (orientation == Qt::Vertical)
        return role == Qt::DisplayRole ? QVariant(QString::number(section + 1) + QChar::Nbsp) : QVariant();
    if (section < 0 || section >= m_columnCount) return {};
    return columnTitle(m_dataView->columns()[static_cast<std::size_t>(section)], role);
}

QVariant GridModel::columnTitle(const GridColumn& column, int role) const
{
    switch (role) {
    case Qt::DisplayRole: return cellLine(column.title);
    case Qt::ToolTipRole: return plainToolTip(toQString(column.identifier));
    case Qt::TextAlignmentRole: return qtAlignment(column);
    case Qt::DecorationRole: return column.hasKeyImage ? QVariant(m_keyIcon) : QVariant();
    case Qt::AccessibleDescriptionRole: return column.hasKeyImage ? QVariant(localizedText("Primary key")) : QVariant();
    default: return {};
    }
}

bool GridModel::hasIcon(const QModelIndex& index) const
{
    return !data(index, Qt::DecorationRole).value<QIcon>().isNull();
}

QIcon GridModel::iconOf(const TAdmBlobData& blob) const
{
    const auto extension = toQString(blob.fileExtension());
    const auto known = m_icons.constFind(extension);
    return known != m_icons.constEnd() ? *known : *m_icons.insert(extension, fileTypeIcon(extension));
}

} // namespace vellumo
