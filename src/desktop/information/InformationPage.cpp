// SPDX-License-Identifier: MIT
#include "desktop/information/InformationPage.h"

#include "browser/VellumoAppDelegate.h"
#include "desktop/QtText.h"
#include "desktop/information/ContentsText.h"

#include <QEvent>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QSignalBlocker>
#include <QSplitter>
#include <algorithm>

namespace vellumo {

namespace {

QTableWidgetItem* makeItem(const std::string& text)
{
    auto* item = new QTableWidgetItem(toQString(text)); // the table owns it
    item->setToolTip(plainToolTip(item->text()));
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

InformationPage::InformationPage(InformationType type, VellumoAppDelegate& app, QWidget* parent)
    : QStackedWidget(parent)
    , m_type(type)
    , m_app(app)
    , m_properties(new PropertyList(this))
{
    const auto texts = describe(type);
    setObjectName(toQString(texts.identifier));
    m_properties->setAccessibleName(toQString(texts.paneTitle));
    addWidget(hasNames() ? makeLists() : m_properties);
    auto* empty = new QLabel(toQString(texts.emptyText), this);
    empty->setAlignment(Qt::AlignCenter);
    empty->setWordWrap(true);
    empty->setForegroundRole(QPalette::PlaceholderText);
    addWidget(empty);
    reload();
}

QWidget* InformationPage::makeLists()
{
    constexpr int leastPartHeight = 40; // the pane fits on a small screen with all its parts
    auto* splitter = new QSplitter(Qt::Vertical, this);
    splitter->setChildrenCollapsible(false);
    m_names = new QListWidget(splitter);
    m_names->setFrameShape(QFrame::NoFrame);
    m_names->setUniformItemSizes(true);
    m_names->setSpacing(1);
    m_names->setAccessibleName(toQString(describe(m_type).barLabel));
    splitter->addWidget(m_names);
    splitter->addWidget(m_properties);
    if (m_type == InformationType::Contents) splitter->addWidget(m_text = new ContentsText(m_app, splitter));
    // Two or three properties, and the text of a query.
    splitter->setSizes(m_text == nullptr ? QList{200, 300} : QList{300, 150, 300});
    splitter->setStretchFactor(0, 2);
    splitter->setStretchFactor(1, m_text == nullptr ? 3 : 1);
    for (QWidget* part : {static_cast<QWidget*>(m_names), static_cast<QWidget*>(m_properties)})
        part->setMinimumHeight(leastPartHeight);
    connect(m_names, &QListWidget::currentRowChanged, this, [this](int row) {
        if (row >= 0) m_app.informationEntryDidChange(m_type, static_cast<std::size_t>(row));
    });
    return splitter;
}

void InformationPage::reload()
{
    if (m_names != nullptr) reloadNames();
    setCurrentIndex(m_app.information().entries(m_type).empty() ? 1 : 0);
    detailsDidChange();
}

void InformationPage::reloadNames()
{
    const QSignalBlocker blocker(m_names);
    const auto& information = m_app.information();
    m_names->clear();
    for (const auto& entry : information.entries(m_type))
        m_names->addItem(toQString(entry.name));
    m_names->setCurrentRow(static_cast<int>(information.selectedEntry(m_type)));
}

void InformationPage::detailsDidChange()
{
    m_properties->setProperties(m_app.information().properties(m_type));
    if (m_text != nullptr) m_text->detailsDidChange();
}

} // namespace vellumo
