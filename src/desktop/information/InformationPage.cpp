#include "desktop/information/InformationPage.h"

#include "browser/VellumoAppDelegate.h"
#include "desktop/QtText.h"
#include "desktop/information/PropertyList.h"

#include <QLabel>
#include <QListWidget>
#include <QSignalBlocker>
#include <QSplitter>

namespace vellumo {

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
    auto* splitter = new QSplitter(Qt::Vertical, this);
    splitter->setChildrenCollapsible(false);
    m_names = new QListWidget(splitter);
    m_names->setFrameShape(QFrame::NoFrame);
    m_names->setUniformItemSizes(true);
    m_names->setSpacing(1);
    m_names->setAccessibleName(toQString(describe(m_type).barLabel));
    splitter->addWidget(m_names);
    splitter->addWidget(m_properties);
    splitter->setStretchFactor(0, 2);
    splitter->setStretchFactor(1, 3);
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

void InformationPage::detailsDidChange() { m_properties->setProperties(m_app.information().properties(m_type)); }

} // namespace vellumo
