#include "desktop/information/PropertyList.h"

#include "desktop/QtText.h"

#include <QEvent>
#include <QHeaderView>
#include <algorithm>

namespace vellumo {

namespace {

QTableWidgetItem* makeItem(const std::string& text)
{
    auto* item = new QTableWidgetItem(toQString(text)); // the table owns it
    item->setToolTip(item->text());
    item->setTextAlignment(Qt::AlignLeading | Qt::AlignTop);
    return item;
}

} // namespace

PropertyList::PropertyList(QWidget* parent)
    : QTableWidget(0, 2, parent)
{
    setAccessibleName(localizedText("Properties"));
    setEditTriggers(NoEditTriggers);
    setSelectionBehavior(SelectRows);
    setShowGrid(false);
    setAlternatingRowColors(true);
    setTabKeyNavigation(false);
    setFrameShape(NoFrame);
    setTextElideMode(Qt::ElideMiddle); // of a path both ends tell something
    horizontalHeader()->hide();
    horizontalHeader()->setMinimumSectionSize(20);
    horizontalHeader()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
    verticalHeader()->hide();
    verticalHeader()->setMinimumSectionSize(fontMetrics().height() + 4);
    verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
}

void PropertyList::setProperties(const std::vector<PropertyRow>& properties)
{
    clearContents();
    setRowCount(static_cast<int>(properties.size()));
    for (int row = 0; row < rowCount(); ++row) {
        const auto& [label, value] = properties[static_cast<std::size_t>(row)];
        setItem(row, 0, makeItem(label));
        setItem(row, 1, makeItem(value));
    }
    colourLabels();
}

void PropertyList::colourLabels()
{
    for (int row = 0; row < rowCount(); ++row)
        item(row, 0)->setForeground(palette().color(QPalette::PlaceholderText));
}

void PropertyList::changeEvent(QEvent* event)
{
    QTableWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) colourLabels();
}

std::string PropertyList::selectedText() const
{
    std::vector<int> rows;
    for (const auto& index : selectionModel()->selectedRows())
        rows.push_back(index.row());
    std::ranges::sort(rows);
    std::string text;
    for (const auto row : rows)
        text += fromQString(item(row, 0)->text()) + '\t' + fromQString(item(row, 1)->text()) + '\n';
    return text;
}

} // namespace vellumo
