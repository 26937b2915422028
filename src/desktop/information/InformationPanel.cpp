// SPDX-License-Identifier: MIT
#include "desktop/information/InformationPanel.h"

#include "browser/VellumoAppDelegate.h"
#include "desktop/QtText.h"
#include "desktop/information/InformationPage.h"

#include <QBoxLayout>
#include <QButtonGroup>
#include <QLabel>
#include <QStackedWidget>
#include <QToolButton>

namespace vellumo {

InformationPanel::InformationPanel(VellumoAppDelegate& app, QWidget* parent)
    : QWidget(parent)
    , m_app(app)
    , m_buttons(new QButtonGroup(this))
    , m_title(new QLabel(this))
    , m_pages(new QStackedWidget(this))
{
    auto* bar = makeBar();
    bar->lower(); // for the Tab key it comes before the pages, as it lies
    for (const auto type : InformationPane::allTypes) {
        auto* typePage = new InformationPage(type, app, m_pages);
        m_typePages[static_cast<std::size_t>(type)] = typePage;
        m_pages->addWidget(typePage);
    }
    auto font = m_title->font();
    font.setBold(true);
    m_title->setFont(font);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    layout->addWidget(bar);
    layout->addWidget(m_title);
    layout->addWidget(m_pages, 1);
    connect(m_buttons, &QButtonGroup::idClicked, this,
        [this](int id) { m_app.InformationTypeChange(static_cast<InformationType>(id)); });
    barDidChange();
}

QWidget* InformationPanel::makeBar()
{
    auto* bar = new QWidget(this);
    auto* layout = new QHBoxLayout(bar);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    for (const auto type : InformationPane::allTypes) {
        const auto texts = describe(type);
        auto* button = new QToolButton(bar);
        button->setObjectName(toQString(texts.identifier + "_Button"));
        button->setText(toQString(texts.barLabel));
        button->setToolTip(toQString(texts.paneTitle));
        button->setAccessibleName(toQString(texts.paneTitle));
        button->setCheckable(true);
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::TabFocus);
        m_buttons->addButton(button, static_cast<int>(type));
        layout->addWidget(button);
    }
    layout->addStretch();
    return bar;
}

void InformationPanel::barDidChange()
{
    const auto& information = m_app.information();
    const auto selected = information.selectedType();
    for (const auto type : InformationPane::allTypes) {
        auto* button = m_buttons->button(static_cast<int>(type));
        button->setVisible(information.isTypeShown(type));
        button->setChecked(type == selected);
    }
    m_title->setText(toQString(describe(selected).paneTitle));
    m_pages->setCurrentIndex(static_cast<int>(selected));
}

void InformationPanel::reload(InformationType type) { page(type).reload(); }

void InformationPanel::detailsDidChange(InformationType type) { page(type).detailsDidChange(); }

} // namespace vellumo
