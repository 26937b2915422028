// SPDX-License-Identifier: MIT
#include "desktop/window/MainToolBar.h"

#include "browser/SearchHits.h"
#include "browser/ToolbarDescription.h"
#include "browser/VellumoAppDelegate.h"
#include "desktop/QtText.h"
#include "desktop/icons/Icons.h"
#include "desktop/window/SearchField.h"

#include <QBoxLayout>
#include <QLabel>
#include <QToolButton>

namespace vellumo {

MainToolBar::MainToolBar(VellumoAppDelegate& app, QWidget* parent)
    : QToolBar(localizedText("Toolbar"), parent)
    , m_app(app)
{
    setObjectName("toolbar");
    setMovable(false);
    setContextMenuPolicy(Qt::PreventContextMenu); // there is no other way to bring a hidden toolbar back
    setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    setIconSize({28, 28});
    for (const auto& item : toolbarItems()) {
        if (item.command == ToolbarCommand::Search) {
            addSearchField(item);
            continue;
        }
        auto* action = addItem(item);
        if (item.command == ToolbarCommand::Export) m_exports << action;
        if (item.command == ToolbarCommand::PreviousTable) m_back = action;
        if (item.command == ToolbarCommand::NextTable) m_next = action;
        if (item.command == ToolbarCommand::NextTable || item.command == ToolbarCommand::OpenFile) addSeparator();
    }
    navigationDidChange();
    m_widthWithTexts = sizeHint().width();
    setToolButtonStyle(Qt::ToolButtonIconOnly);
    layout()->invalidate();
    m_widthWithoutTexts = sizeHint().width();
    setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
}

void MainToolBar::resizeEvent(QResizeEvent* event)
{
    QToolBar::resizeEvent(event);
    setToolButtonStyle(width() < m_widthWithTexts ? Qt::ToolButtonIconOnly : Qt::ToolButtonTextUnderIcon);
}

QAction* MainToolBar::addItem(const ToolbarItem& item)
{
    auto* action = addAction(icon(toQString(item.iconName)), toQString(item.label()));
    action->setObjectName(toQString(item.identifier));
    action->setToolTip(toQString(item.toolTip()));
    connect(action, &QAction::triggered, this, [this, &item] { run(item); });
    auto* button = widgetForAction(action);
    button->setFocusPolicy(Qt::TabFocus);
    button->setAccessibleName(toQString(item.label()));
    button->setAccessibleDescription(toQString(item.toolTip()));
    return action;
}

void MainToolBar::run(const ToolbarItem& item)
{
    switch (item.command) {
    case ToolbarCommand::PreviousTable: m_app.PreviousSelectedTable(); break;
    case ToolbarCommand::NextTable: m_app.NextSelectedTable(); break;
    case ToolbarCommand::OpenFile: m_app.OpenFile(); break;
    case ToolbarCommand::Export: m_app.Export(item.exportTag); break;
    case ToolbarCommand::Search: break; // a field, no button
    }
}

void MainToolBar::addSearchField(const ToolbarItem& item)
{
    auto* spacer = new QWidget(this);
    spacer->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    addWidget(spacer);
    auto* holder = new QWidget(this);
    m_searchField = new SearchField(m_app, holder);
    auto* label = new QLabel(toQString(item.label()), holder);
    label->setBuddy(m_searchField);
    m_searchRule = new QLabel(holder);
    m_searchRule->setObjectName("searchRule");
    m_searchRule->setForegroundRole(QPalette::PlaceholderText);
    auto* layout = new QGridLayout(holder);
    layout->setContentsMargins(4, 0, 4, 0);
    layout->setVerticalSpacing(2);
    layout->addWidget(m_searchField, 0, 0, 1, 2, Qt::AlignVCenter);
    layout->addWidget(label, 1, 0);
    layout->addWidget(m_searchRule, 1, 1, Qt::AlignRight);
    addWidget(holder);
    searchDidChange();
    connect(this, &QToolBar::toolButtonStyleChanged, label,
        [label](Qt::ToolButtonStyle style) { label->setVisible(style != Qt::ToolButtonIconOnly); });
}

void MainToolBar::searchDidChange()
{
    m_searchField->searchDidChange();
    m_searchRule->setText(toQString(searchRuleText(m_app.search())));
}

void MainToolBar::navigationDidChange()
{
    m_back->setEnabled(m_app.history().isBackEnabled());
    m_next->setEnabled(m_app.history().isNextEnabled());
}

} // namespace vellumo
