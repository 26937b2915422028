// SPDX-License-Identifier: MIT
#include "desktop/grid/GridView.h"

#include "browser/DataView.h"
#include "desktop/QtText.h"
#include "desktop/grid/ColumnWidths.h"
#include "desktop/grid/GridDelegate.h"
#include "desktop/grid/GridMenu.h"
#include "desktop/grid/GridModel.h"
#include "desktop/grid/ObjectActions.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <utility>

namespace vellumo {

namespace {

// Shows that the program is at work, for what may take a second on a large table.
class BusyCursor {
public:
    BusyCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~BusyCursor() { QApplication::restoreOverrideCursor(); }
    BusyCursor(const BusyCursor&) = delete;
    BusyCursor& operator=(const BusyCursor&) = delete;
};

} // namespace

GridView::GridView(QWidget* parent)
    : QTableView(parent)
    , m_clearSearch(new QPushButton(localizedText("Clear Search"), viewport()))
{
    setItemDelegate(new GridDelegate(this));
    m_clearSearch->setObjectName("clearSearch");
    m_clearSearch->setAutoDefault(false);
    m_clearSearch->hide();
    connect(m_clearSearch, &QPushButton::clicked, this, &GridView::clearSearchRequested);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setAlternatingRowColors(true);
    setWordWrap(false);
    setTabKeyNavigation(false); // the Tab key leads out of the grid
    setCornerButtonEnabled(false);
    setHorizontalScrollMode(ScrollPerPixel);
    setIconSize({16, 16});
    setAccessibleName(localizedText("Records"));
    setUpHeaders();
}

void GridView::setUpHeaders()
{
    horizontalHeader()->setSectionsMovable(true);
    horizontalHeader()->setSectionsClickable(true);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setTextElideMode(Qt::ElideRight);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeading | Qt::AlignVCenter);
    horizontalHeader()->setSortIndicatorShown(true);
    horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    horizontalHeader()->setAccessibleName(localizedText("Column titles"));
    verticalHeader()->setAccessibleName(localizedText("Row numbers"));
    verticalHeader()->setHighlightSections(false);
    verticalHeader()->setDefaultAlignment(Qt::AlignTrailing | Qt::AlignVCenter);
    // A height asked for row by row would take a million questions.
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    adjustRowHeight();
    connect(horizontalHeader(), &QHeaderView::sectionClicked, this, [this](int column) { sortByColumn(column); });
    connect(horizontalHeader(), &QHeaderView::sectionMoved, this, [this] { columnsWereMoved(); });
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this](int column, int, int width) {
        if (!m_isFollowing) m_dataView->setColumnWidth(static_cast<std::size_t>(column), width);
    });
}

void GridView::adjustRowHeight()
{
    verticalHeader()->setDefaultSectionSize(std::max(fontMetrics().height(), iconSize().height()) + 6);
}

void GridView::paintEvent(QPaintEvent* event)
{
    QTableView::paintEvent(event);
    if (m_model == nullptr) return;
    if (m_model->rowCount() > 0) {
        frameCurrentCell();
        return;
    }
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(viewport()->rect(), Qt::AlignCenter | Qt::TextWordWrap, toQString(m_dataView->placeholder()));
}

// Below the text in place of rows.
void GridView::offerToClearSearch()
{
    m_clearSearch->setVisible(m_dataView != nullptr && m_dataView->hidesAllRows());
    m_clearSearch->adjustSize();
    const auto centre = viewport()->rect().center() + QPoint(0, 2 * fontMetrics().lineSpacing());
    m_clearSearch->move(centre - QPoint(m_clearSearch->width() / 2, 0));
}

void GridView::resizeEvent(QResizeEvent* event)
{
    QTableView::resizeEvent(event);
    offerToClearSearch();
}

// The text in place of rows stays where it is, while the viewport's pixels move along.
void GridView::scrollContentsBy(int dx, int dy)
{
    QTableView::scrollContentsBy(dx, dy);
    if (m_model != nullptr && m_model->rowCount() == 0) viewport()->update();
}

// The style's own frame is lost in the colour of a selected row, and goes with the focus.
void GridView::frameCurrentCell()
{
    const auto current = currentIndex();
    if (!current.isValid()) return;
    const auto isSelected = selectionModel()->isSelected(current);
    QPainter painter(viewport());
    QPen pen(palette().color(isSelected ? QPalette::HighlightedText : QPalette::Highlight), 2);
    pen.setJoinStyle(Qt::MiterJoin);
    painter.setPen(pen);
    painter.drawRect(visualRect(current).adjusted(1, 1, -1, -1));
}

void GridView::changeEvent(QEvent* event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) adjustRowHeight();
}

void GridView::setDataView(DataView& dataView)
{
    m_dataView = &dataView;
    m_model = new GridModel(this);
    setModel(m_model);
    // Rows are selected, never columns; a title that asks nevertheless goes through all rows to find out.
    horizontalHeader()->setSelectionModel(new QItemSelectionModel(m_model, this));
    m_model->setDataView(&dataView);
}

// What the DataView tells

void GridView::columnsDidChange()
{
    if (m_model == nullptr) return;
    const QScopedValueRollback following(m_isFollowing, true);
    m_model->reload();
    layOutColumns();
    offerToClearSearch();
    scrollToTop();
    horizontalScrollBar()->setValue(0);
    sortIndicatorsDidChange();
}

void GridView::rowsDidChange()
{
    if (m_model == nullptr) return;
    const QScopedValueRollback following(m_isFollowing, true);
    m_model->reload();
    offerToClearSearch();
}

void GridView::sortIndicatorsDidChange()
{
    const auto& columns = m_dataView->columns();
    const auto sorted = std::ranges::find_if(columns, [](const auto& column) { return column.headerTag != 0; });
    const auto isDescending = sorted != columns.end() && sorted->headerTag < 0;
    horizontalHeader()->setSortIndicator(sorted == columns.end() ? -1 : static_cast<int>(sorted - columns.begin()),
        isDescending ? Qt::DescendingOrder : Qt::AscendingOrder);
    m_model->headersDidChange();
}

void GridView::selectedRowsDidChange()
{
    if (m_model == nullptr || m_model->columnCount() == 0) return;
    QItemSelection selection;
    for (const auto& [first, last] : m_dataView->selectedRows().ranges())
        selection.select(m_model->index(static_cast<int>(first), 0),
            m_model->index(static_cast<int>(last), m_model->columnCount() - 1));
    const QScopedValueRollback following(m_isFollowing, true);
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    goOnFromSelection();
}

// The arrow keys go on from a selected row: the current one if it is among them, or that of the cell shown below, or
// else one that can be seen.
void GridView::goOnFromSelection()
{
    const auto& rows = m_dataView->selectedRows();
    const auto isSelected = [&rows](int row) { return row >= 0 && rows.contains(static_cast<std::size_t>(row)); };
    if (rows.isEmpty() || isSelected(currentIndex().row())) return;
    const auto topRow = rowAt(0);
    const auto shown = m_dataView->rowShown();
    const auto row = shown && rows.contains(*shown) ? static_cast<int>(*shown)
        : isSelected(topRow)                        ? topRow
                                                    : static_cast<int>(*rows.first());
    const auto index = m_model->index(row, static_cast<int>(m_dataView->currentColumn()));
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
    scrollTo(index);
}

void GridView::scrollToRow(std::size_t row) { focusCell(m_dataView->currentColumn(), row); }

void GridView::focusCell(std::size_t column, std::size_t row)
{
    const auto index = m_model->index(static_cast<int>(row), static_cast<int>(column));
    const QScopedValueRollback following(m_isFollowing, true);
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
    scrollTo(index);
}

// What the user does

void GridView::sortByColumn(int column)
{
    const BusyCursor busy;
    m_dataView->didClickTableColumn(static_cast<std::size_t>(column));
}

void GridView::columnsWereMoved()
{
    if (m_isFollowing) return;
    std::vector<std::size_t> order;
    for (int position = 0; position < m_model->columnCount(); ++position)
        order.push_back(static_cast<std::size_t>(horizontalHeader()->logicalIndex(position)));
    m_dataView->setDisplayOrder(std::move(order));
}

void GridView::layOutColumns()
{
    auto& header = *horizontalHeader();
    const auto& [order, widths] = m_dataView->columnLayout();
    for (int position = 0; position < m_model->columnCount(); ++position)
        header.moveSection(header.visualIndex(static_cast<int>(order[static_cast<std::size_t>(position)])), position);
    for (int column = 0; column < m_model->columnCount(); ++column) {
        const auto width = widths[static_cast<std::size_t>(column)];
        setColumnWidth(column, width > 0 ? width : usualColumnWidth(*this, *m_dataView, column));
    }
}

// Asked for by a double click on the border of a title.
int GridView::sizeHintForColumn(int column) const
{
    return m_dataView == nullptr ? -1 : fittedColumnWidth(*this, *m_dataView, column);
}

void GridView::fitColumns()
{
    const BusyCursor busy;
    for (int column = 0; column < m_model->columnCount(); ++column)
        resizeColumnToContents(column);
}

RowSelection GridView::selectionOfView() const
{
    std::vector<RowSelection::Range> ranges;
    for (const auto& range : selectionModel()->selection())
        ranges.push_back({static_cast<std::size_t>(range.top()), static_cast<std::size_t>(range.bottom())});
    return RowSelection(std::move(ranges));
}

void GridView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected)
{
    QTableView::selectionChanged(selected, deselected);
    if (!m_isFollowing) m_dataView->tableViewSelectionDidChange(selectionOfView());
}

void GridView::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QTableView::currentChanged(current, previous);
    if (!m_isFollowing && current.isValid()) displayCell(current);
}

void GridView::displayCell(const QModelIndex& index)
{
    m_dataView->displayCell(static_cast<std::size_t>(index.column()), static_cast<std::size_t>(index.row()));
}

// Qt makes the first cell the current one, which nobody has asked for.
void GridView::focusInEvent(QFocusEvent* event)
{
    const auto hadCurrent = currentIndex().isValid();
    const QScopedValueRollback following(m_isFollowing, true);
    QTableView::focusInEvent(event);
    if (!hadCurrent && m_model != nullptr) selectionModel()->clearCurrentIndex();
}

void GridView::keyPressEvent(QKeyEvent* event)
{
    const auto isLeft = event->key() == Qt::Key_Left;
    if (isLeft || event->key() == Qt::Key_Right) {
        if (event->modifiers().testFlag(Qt::AltModifier)) return; // Back and Next that lead nowhere
        if (event->modifiers() == Qt::ControlModifier && moveToNeighbour(isLeft ? -1 : 1)) return;
        if (event->modifiers() == Qt::NoModifier
            && m_dataView->keyDown(isLeft ? DataView::leftArrowKey : DataView::rightArrowKey))
            return;
    }
    const auto isHome = event->key() == Qt::Key_Home;
    if ((isHome || event->key() == Qt::Key_End) && event->modifiers() == Qt::ControlModifier
        && m_model->rowCount() > 0) {
        const auto& order = m_dataView->columnLayout().order;
        const auto lastRow = static_cast<std::size_t>(m_model->rowCount()) - 1;
        return m_dataView->setEditedColumn(isHome ? order.front() : order.back(), isHome ? 0 : lastRow);
    }
    QTableView::keyPressEvent(event);
}

bool GridView::moveToNeighbour(int step)
{
    const auto current = currentIndex();
    if (!current.isValid()) return false;
    const auto position = horizontalHeader()->visualIndex(current.column()) + step;
    const auto column = horizontalHeader()->logicalIndex(position);
    if (column >= 0)
        m_dataView->setEditedColumn(static_cast<std::size_t>(column), static_cast<std::size_t>(current.row()));
    return true;
}

void GridView::contextMenuEvent(QContextMenuEvent* event)
{
    const auto isKeyboard = event->reason() == QContextMenuEvent::Keyboard;
    const auto index = isKeyboard ? currentIndex() : indexAt(event->pos());
    const auto position = isKeyboard ? visualRect(index).bottomLeft() : event->pos();
    popUpGridMenu(*this, *m_dataView, index, viewport()->mapToGlobal(position));
}

// Icons of object cells

QModelIndex GridView::iconAt(const QPoint& position) const
{
    const auto index = indexAt(position);
    if (!index.isValid() || !m_model->hasIcon(index)) return {};
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    option.rect = visualRect(index);
    option.features |= QStyleOptionViewItem::HasDecoration | QStyleOptionViewItem::HasDisplay;
    option.text = index.data().toString();
    option.decorationSize = iconSize();
    return style()->subElementRect(QStyle::SE_ItemViewItemDecoration, &option, this).contains(position) ? index
                                                                                                        : QModelIndex();
}

void GridView::mousePressEvent(QMouseEvent* event)
{
    m_pressPosition = event->position().toPoint();
    m_pressedIcon = event->button() == Qt::LeftButton ? iconAt(m_pressPosition) : QModelIndex();
    const auto before = currentIndex();
    QTableView::mousePressEvent(event);
    // A cell that was made the current one without being shown.
    if (before.isValid() && before == indexAt(m_pressPosition)) displayCell(before);
}

void GridView::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_pressedIcon.isValid()) {
        QTableView::mouseMoveEvent(event);
        return;
    }
    const auto distance = (event->position().toPoint() - m_pressPosition).manhattanLength();
    if (distance < QApplication::startDragDistance()) return;
    dragIcon(std::exchange(m_pressedIcon, QPersistentModelIndex()));
}

void GridView::mouseReleaseEvent(QMouseEvent* event)
{
    m_pressedIcon = QPersistentModelIndex();
    QTableView::mouseReleaseEvent(event);
}

void GridView::dragIcon(const QModelIndex& index)
{
    const auto click = m_dataView->handleDragIconWithColumn(
        static_cast<std::size_t>(index.column()), static_cast<std::size_t>(index.row()), 1);
    if (click.outcome == IconClick::Outcome::DragFile)
        dragFile(*this, click.path, index.data(Qt::DecorationRole).value<QIcon>().pixmap(iconSize()));
}

void GridView::mouseDoubleClickEvent(QMouseEvent* event)
{
    const auto index = iconAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && index.isValid()) {
        const auto click = m_dataView->handleDragIconWithColumn(
            static_cast<std::size_t>(index.column()), static_cast<std::size_t>(index.row()), 2);
        if (click.outcome != IconClick::Outcome::LeftToGrid) return;
    }
    QTableView::mouseDoubleClickEvent(event);
}

} // namespace vellumo
