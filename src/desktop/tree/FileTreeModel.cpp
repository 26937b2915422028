// SPDX-License-Identifier: MIT
#include "desktop/tree/FileTreeModel.h"

#include "browser/DamageDetails.h"
#include "browser/VellumoAppDelegate.h"
#include "desktop/QtText.h"
#include "desktop/icons/Icons.h"

#include <QApplication>
#include <QFont>
#include <QGuiApplication>
#include <QPainter>
#include <QPalette>
#include <algorithm>

namespace vellumo {

namespace {

template <typename List, typename Item> int positionIn(const List& list, const Item& item)
{
    return static_cast<int>(std::ranges::find(list, item) - list.begin());
}

QColor greyTextColor() { return QGuiApplication::palette().color(QPalette::PlaceholderText); }

bool isDamaged(const TreeItem& item)
{
    const auto& damage = item.file->damage();
    return item.isTable() ? damage.concerns(item.table->name()) : !damage.empty();
}

QString damageText(const TreeItem& item)
{
    return toQString(item.isTable() ? damageOf(*item.table) : damageOf(*item.file));
}

// What was found by looking for lost rows is set apart from the tables that the file lists.
QVariant fontOf(const TreeItem& item, bool isMissing)
{
    QFont font;
    font.setItalic(true);
    if (isMissing) return font;
    if (!item.isTable() || item.table->origin() == TableOrigin::Catalogue) return {};
    return font;
}

} // namespace

FileTreeModel::FileTreeModel(VellumoAppDelegate& app, QObject* parent)
    : QAbstractItemModel(parent)
    , m_app(app)
    , m_tableIcon(icon("table"))
    , m_openFileIcon(icon("database"))
    , m_closedFileIcon(icon("database_closed"))
{
    reload();
}

void FileTreeModel::reload()
{
    beginResetModel();
    m_rows.clear();
    for (auto* file : m_app.tree().fileEntities())
        m_rows.push_back({file, m_app.tree().tableEntities(*file)});
    endResetModel();
}

void FileTreeModel::removeTablesOf(const TAdmMDBFile& file)
{
    const auto row = std::ranges::find(m_rows, &file, &FileRow::file);
    if (row == m_rows.end() || row->tables.empty()) return;
    const auto parent = index(static_cast<int>(row - m_rows.begin()), 0);
    beginRemoveRows(parent, 0, static_cast<int>(row->tables.size()) - 1);
    row->tables.clear();
    endRemoveRows();
}

const FileTreeModel::FileRow* FileTreeModel::fileRowOf(const QModelIndex& index) const
{
    if (!index.isValid()) return nullptr;
    const auto row = index.internalId() == 0 ? static_cast<std::size_t>(index.row()) : index.internalId() - 1;
    return row < m_rows.size() ? &m_rows[row] : nullptr;
}

TreeItem FileTreeModel::item(const QModelIndex& index) const
{
    const auto* row = fileRowOf(index);
    if (row == nullptr) return {};
    if (index.internalId() == 0) return TreeItem::of(*row->file);
    const auto table = static_cast<std::size_t>(index.row());
    return table < row->tables.size() ? TreeItem::of(*row->tables[table]) : TreeItem();
}

QModelIndex FileTreeModel::indexOf(const TreeItem& item) const
{
    const auto row = std::ranges::find(m_rows, item.file, &FileRow::file);
    if (row == m_rows.end()) return {};
    const auto parent = index(static_cast<int>(row - m_rows.begin()), 0);
    if (item.isFile()) return parent;
    return index(positionIn(row->tables, item.table), 0, parent);
}

QModelIndex FileTreeModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent)) return {};
    return createIndex(row, column, parent.isValid() ? static_cast<quintptr>(parent.row()) + 1 : quintptr{0});
}

QModelIndex FileTreeModel::parent(const QModelIndex& index) const
{
    if (!index.isValid() || index.internalId() == 0) return {};
    return createIndex(static_cast<int>(index.internalId() - 1), 0, quintptr{0});
}

int FileTreeModel::rowCount(const QModelIndex& parent) const
{
    if (!parent.isValid()) return static_cast<int>(m_rows.size());
    const auto* row = parent.internalId() == 0 ? fileRowOf(parent) : nullptr;
    return row == nullptr ? 0 : static_cast<int>(row->tables.size());
}

int FileTreeModel::columnCount(const QModelIndex& /*parent*/) const { return 1; }

QVariant FileTreeModel::data(const QModelIndex& index, int role) const
{
    const auto shown = item(index);
    if (shown.isNone()) return {};
    switch (role) {
    case Qt::DisplayRole: return toQString(m_app.objectValueByItem(shown).name);
    case RowCountRole: return toQString(m_app.objectValueByItem(shown).rowCount);
    case DamageRole: return isDamaged(shown);
    case Qt::AccessibleTextRole: return spokenText(shown);
    case Qt::FontRole: return fontOf(shown, isMissing(shown));
    case Qt::ForegroundRole: return isMissing(shown) ? QVariant(greyTextColor()) : QVariant();
    case Qt::DecorationRole: return picture(shown);
    case Qt::ToolTipRole: return toolTip(shown);
    default: return {};
    }
}

bool FileTreeModel::isMissing(const TreeItem& item) const
{
    return item.isFile() && !item.file->active() && m_app.fileList().isMissing(*item.file);
}

QVariant FileTreeModel::toolTip(const TreeItem& item) const
{
    auto text = toQString(item.isTable() ? item.table->name() : item.file->fullPath());
    if (isDamaged(item)) text += '\n' + damageText(item);
    if (isMissing(item)) text += '\n' + localizedText("The file is not there any more.");
    return plainToolTip(text);
}

QVariant FileTreeModel::picture(const TreeItem& item) const
{
    if (item.isTable()) return m_tableIcon;
    return item.file->active() ? m_openFileIcon : m_closedFileIcon;
}

QString FileTreeModel::spokenText(const TreeItem& item) const
{
    const auto shown = m_app.objectValueByItem(item);
    const auto text = toQString(shown.name + shown.rowCount);
    if (isMissing(item)) return text + ", " + localizedText("The file is not there any more.");
    return isDamaged(item) ? text + ", " + damageText(item) : text;
}

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
