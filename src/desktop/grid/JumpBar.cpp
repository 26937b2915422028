// SPDX-License-Identifier: MIT
#include "desktop/grid/JumpBar.h"

#include "browser/JumpBarMenu.h"
#include "desktop/QtText.h"
#include "desktop/grid/GridModel.h"
#include "desktop/grid/JumpList.h"
#include "desktop/icons/Icons.h"

#include <QBoxLayout>
#include <QMenu>
#include <QToolButton>

#include <algorithm>

namespace vellumo {

namespace {

// A name as the text of a button or menu item, where "&" would mark a mnemonic.
QString plainTitle(const std::string& name) { return toQString(name).replace('&', "&&"); }

// A long name must not make the window wide; the tool tip has it in full.
void showName(QToolButton& button, const std::string& name)
{
    const auto room = button.fontMetrics().averageCharWidth() * 40;
    const auto shown = button.fontMetrics().elidedText(toQString(name), Qt::ElideRight, room).replace('&', "&&");
    button.setText(shown + " ▾");
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
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    button->setAccessibleName(localizedText(nameKey));
    connect(button, &QToolButton::pressed, this, [this, button, fill] {
        button->setDown(false); // the popup takes the release
        if (m_menu != nullptr) open(*button, fill);
    });
    return button;
}

void JumpBar::open(QToolButton& button, void (JumpBar::*fill)(QMenu&))
{
    const auto files = m_menu->items();
    const auto selected = m_menu->selectedItem().file;
    const auto isLong = [&](const JumpBarMenu::FileItem& item) {
        return item.tables.size() > mostMenuItems && (&button == m_fileButton || item.file == selected);
    };
    if ((&button == m_fileButton && files.size() > mostMenuItems) || std::ranges::any_of(files, isLong))
        return openList(button);
    auto* menu = new QMenu(&button); // the bar may go while it is open
    menu->setAttribute(Qt::WA_DeleteOnClose);
    (this->*fill)(*menu);
    menu->popup(button.mapToGlobal(QPoint(0, button.height())));
}

// All files with their tables, or the tables of one file.
void JumpBar::openList(QToolButton& button)
{
    const auto selected = m_menu->selectedItem();
    const bool hasFiles = &button == m_fileButton;
    std::vector<JumpList::Entry> entries;
    const auto add = [&](const std::string& title, const TreeItem& item) {
        entries.push_back({cellLine(title), m_menu->idOf(item), item == selected});
    };
    for (const auto& [file, tables] : m_menu->items()) {
        if (!hasFiles && file != selected.file) continue;
        if (hasFiles) add(file->name(), TreeItem::of(*file));
        for (auto* table : tables)
            add(hasFiles ? file->name() + " › " + table->name() : table->name(), TreeItem::of(*table));
    }
    (new JumpList(
         std::move(entries), [this](const ItemId& id) { choose(id); }, this))
        ->popUpBelow(button);
}

// A file may have been closed while the menu was open.
void JumpBar::choose(const ItemId& id)
{
    const auto found = m_menu->find(id);
    if (!found.isNone() && found.isTable() == id.isTable()) m_select(found);
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
    auto* action = menu.addAction(plainTitle(title), this, [this, id = m_menu->idOf(item)] { choose(id); });
    action->setCheckable(true);
    action->setChecked(item == m_menu->selectedItem());
}

} // namespace vellumo
