// SPDX-License-Identifier: MIT
#include "desktop/grid/JumpBar.h"

#include "browser/JumpBarMenu.h"
#include "desktop/QtText.h"
#include "desktop/icons/Icons.h"

#include <QBoxLayout>
#include <QMenu>
#include <QToolButton>

namespace vellumo {

namespace {

// A name as the text of a button or menu item, where "&" would mark a mnemonic.
QString plainTitle(const std::string& name) { return toQString(name).replace('&', "&&"); }

// A long name must not make the window wide; the tool tip has it in full.
void showName(QToolButton& button, const std::string& name)
{
    const auto room = button.fontMetrics().averageCharWidth() * 40;
    button.setText(button.fontMetrics().elidedText(toQString(name), Qt::ElideRight, room).replace('&', "&&"));
    button.setToolTip(plainToolTip(toQString(name)));
}

} // namespace

JumpBar::JumpBar(QWidget* parent)
    : QWidget(parent)
    , m_fileButton(makeButton(messageKey("File"), &JumpBar::fillFiles))
    , m_tableButton(makeButton(messageKey("Table"), &JumpBar::fillTables))
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(4, 2, 4, 2);
    layout->setSpacing(2);
    layout->addWidget(m_fileButton);
    layout->addWidget(m_tableButton);
    layout->addStretch();
    m_fileButton->setObjectName("jumpBarFile");
    m_tableButton->setObjectName("jumpBarTable");
    m_fileButton->setIcon(icon("database"));
    m_tableButton->setIcon(icon("table"));
    selectionDidChange();
}

QToolButton* JumpBar::makeButton(const char* nameKey, void (JumpBar::*fill)(QMenu&))
{
    auto* button = new QToolButton(this);
    auto* menu = new QMenu(button);
    button->setMenu(menu);
    button->setPopupMode(QToolButton::InstantPopup);
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    button->setAccessibleName(localizedText(nameKey));
    connect(menu, &QMenu::aboutToShow, this, [this, menu, fill] {
        menu->clear();
        if (m_menu != nullptr) (this->*fill)(*menu);
    });
    return button;
}

void JumpBar::setMenu(const JumpBarMenu& menu, Select select)
{
    m_menu = &menu;
    m_select = std::move(select);
    selectionDidChange();
}

void JumpBar::selectionDidChange()
{
    const auto selected = m_menu == nullptr ? TreeItem() : m_menu->selectedItem();
    showName(*m_fileButton, selected.isNone() ? localized("No files selected") : selected.file->name());
    m_tableButton->setVisible(selected.isTable());
    if (selected.isTable()) showName(*m_tableButton, selected.table->name());
}

void JumpBar::fillFiles(QMenu& menu)
{
    for (const auto& item : m_menu->items()) {
        if (item.tables.empty()) {
            addItem(menu, item.file->name(), TreeItem::of(*item.file));
            continue;
        }
        auto* tables = menu.addMenu(plainTitle(item.file->name()));
        // Items of the submenu are many; most submenus are never opened.
        connect(tables, &QMenu::aboutToShow, this, [this, tables, id = m_menu->idOf(TreeItem::of(*item.file))] {
            tables->clear();
            auto* file = m_menu->find(id).file;
            if (file == nullptr) return;
            addItem(*tables, file->name(), TreeItem::of(*file));
            tables->addSeparator();
            addTables(*tables, file);
        });
    }
}

void JumpBar::fillTables(QMenu& menu) { addTables(menu, m_menu->selectedItem().file); }

void JumpBar::addTables(QMenu& menu, TAdmMDBFile* file)
{
    for (const auto& item : m_menu->items())
        if (item.file == file)
            for (auto* table : item.tables)
                addItem(menu, table->name(), TreeItem::of(*table));
}

void JumpBar::addItem(QMenu& menu, const std::string& title, const TreeItem& item)
{
    auto* action = menu.addAction(plainTitle(title), this, [this, id = m_menu->idOf(item)] {
        // A file may be closed while the menu is open.
        const auto found = m_menu->find(id);
        if (!found.isNone() && found.isTable() == id.isTable()) m_select(found);
    });
    action->setCheckable(true);
    action->setChecked(item == m_menu->selectedItem());
}

} // namespace vellumo
