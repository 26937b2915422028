// SPDX-License-Identifier: MIT
#include "desktop/window/StatusLine.h"

#include "browser/VellumoAppDelegate.h"
#include "desktop/QtText.h"
#include "desktop/icons/Icons.h"

#include <QAccessible>
#include <QLabel>
#include <QToolButton>
#include <functional>

namespace vellumo {

namespace {

struct Button {
    ViewToggle toggle;
    const char* iconWhileShown;
    const char* iconWhileHidden;
    void (VellumoAppDelegate::*command)();
};

constexpr std::array buttons{
    Button{ViewToggle::FileTree, "hide_tree", "show_tree", &VellumoAppDelegate::ToggleTreeView},
    Button{ViewToggle::InformationView, "hide_information", "show_information",
        &VellumoAppDelegate::ToggleInformationView},
    Button{ViewToggle::TextView, "hide_text", "show_text", &VellumoAppDelegate::ToggleTextView},
};

} // namespace

StatusLine::StatusLine(VellumoAppDelegate& app, QWidget* parent)
    : QStatusBar(parent)
    , m_app(app)
    , m_text(new QLabel(this))
    , m_searchText(new QLabel(this))
{
    static_assert(buttons.size() == buttonCount);
    m_text->setObjectName("statusText");
    m_text->setTextFormat(Qt::PlainText);
    m_text->setContentsMargins(6, 0, 0, 0);
    addWidget(m_text, 1);
    m_searchText->setObjectName("searchText");
    m_searchText->setTextFormat(Qt::PlainText);
    addPermanentWidget(m_searchText);
    for (std::size_t i = 0; i < buttons.size(); ++i) {
        m_buttons[i] = new QToolButton(this);
        m_buttons[i]->setAutoRaise(true);
        m_buttons[i]->setFocusPolicy(Qt::TabFocus);
        addPermanentWidget(m_buttons[i]);
        connect(m_buttons[i], &QToolButton::clicked, this, [this, i] { std::invoke(buttons[i].command, m_app); });
        toggleDidChange(buttons[i].toggle);
    }
    textDidChange();
}

void StatusLine::textDidChange()
{
    m_text->setText(toQString(m_app.statusText()));
    // A long one must not make the window wide.
    const auto room = fontMetrics().averageCharWidth() * 60;
    m_searchText->setText(fontMetrics().elidedText(toQString(m_app.searchText()), Qt::ElideMiddle, room));
    // Screen readers speak what changes here.
    QAccessibleEvent event(m_text, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&event);
}

void StatusLine::toggleDidChange(ViewToggle toggle)
{
    for (std::size_t i = 0; i < buttons.size(); ++i) {
        if (buttons[i].toggle != toggle) continue;
        const auto isShown = m_app.toggles().isShown(toggle);
        const auto title = toQString(m_app.toggles().menuTitle(toggle));
        m_buttons[i]->setIcon(icon(isShown ? buttons[i].iconWhileShown : buttons[i].iconWhileHidden));
        m_buttons[i]->setToolTip(title);
        m_buttons[i]->setAccessibleName(title);
    }
}

} // namespace vellumo
