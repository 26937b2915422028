// SPDX-License-Identifier: MIT
#include "desktop/window/SearchField.h"

#include "browser/VellumoAppDelegate.h"
#include "desktop/QtText.h"
#include "desktop/icons/Icons.h"

#include <QActionGroup>
#include <QKeyEvent>
#include <QMenu>

namespace vellumo {

SearchField::SearchField(VellumoAppDelegate& app, QWidget* parent)
    : QLineEdit(parent)
    , m_app(app)
{
    setObjectName("dataSearchField");
    setClearButtonEnabled(true);
    setAcceptDrops(false); // files are for the window
    setMinimumWidth(fontMetrics().averageCharWidth() * 18);
    setMaximumWidth(fontMetrics().averageCharWidth() * 40);
    setAccessibleName(localizedText("Search"));
    auto* options = addAction(icon("search"), LeadingPosition);
    options->setText(localizedText("Search options")); // the button's name and tool tip
    connect(options, &QAction::triggered, this, &SearchField::popUpMenu);
    connect(this, &QLineEdit::textChanged, this, [this](const QString& text) {
        m_app.controlTextDidChange(VellumoAppDelegate::SearchField::Data, fromQString(text));
    });
    searchDidChange();
}

void SearchField::searchDidChange()
{
    if (const auto searched = toQString(m_app.search().text); searched != text()) setText(searched);
    for (const auto& item : searchMenu(m_app.search()))
        if (item.isChecked && item.tag < SearchMenuItem::caseTag) setPlaceholderText(toQString(item.title));
}

void SearchField::popUpMenu()
{
    auto* menu = new QMenu(this);
    menu->setObjectName("searchMenu");
    menu->setAttribute(Qt::WA_DeleteOnClose);
    auto* options = new QActionGroup(menu);
    for (const auto& item : searchMenu(m_app.search())) {
        if (item.tag == SearchMenuItem::optionsTag) {
            menu->addSection(toQString(item.title));
            continue;
        }
        auto* action = menu->addAction(toQString(item.title));
        action->setCheckable(true);
        action->setChecked(item.isChecked);
        if (item.tag == SearchMenuItem::caseTag) {
            connect(action, &QAction::triggered, this, [this] { m_app.SetCaseForSearch(); });
        } else {
            options->addAction(action);
            connect(action, &QAction::triggered, this, [this, tag = item.tag] { m_app.SetSearchOption(tag); });
        }
    }
    menu->popup(mapToGlobal(QPoint(0, height())));
}

void SearchField::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Down) {
        popUpMenu();
    } else if (event->key() == Qt::Key_Escape && !text().isEmpty()) {
        clear();
    } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        m_app.mainWindow().dataView().focusGrid();
    } else {
        QLineEdit::keyPressEvent(event);
    }
}

} // namespace vellumo
