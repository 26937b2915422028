// SPDX-License-Identifier: MIT
#include "browser/ChildWindow.h"

#include "browser/MainWindowView.h"
#include "browser/VellumoAppDelegate.h"
#include "text/Format.h"

#include <algorithm>

namespace vellumo {

ChildWindow::ChildWindow(ChildWindowManager& manager, MainWindowView& mainWindow, const FileList& files,
    const DesktopPorts& desktop, TAdmMDBTable* tableToShow)
    : m_manager(manager)
    , m_port(mainWindow.createChildWindow(*this))
    , m_dataView(m_port->dataView(), desktop, true)
    , m_jumpBar(files)
{
    m_dataView.setOrderListener([this] { m_manager.orderDidChange(m_dataView); });
    showTable(tableToShow);
    m_port->makeKey();
    m_port->dataView().focusGrid();
}

void ChildWindow::showTable(TAdmMDBTable* table)
{
    m_tableToShow = table;
    m_awaited = {};
    m_title = table == nullptr ? std::string() : format("%@ @%@", {table->name(), table->file()->name()});
    m_port->setTitle(m_title);
    auto& delegate = m_manager.delegate();
    m_dataView.setCaptionsShown(delegate.toggles().isShown(ViewToggle::Captions));
    m_dataView.updateDataTableToShowMDBTable(delegate.shownTable(table));
    m_dataView.displayTextViewContent({});
    updateJumpBarSelection();
}

void ChildWindow::showTableAnew()
{
    auto& delegate = m_manager.delegate();
    m_dataView.setCaptionsShown(delegate.toggles().isShown(ViewToggle::Captions));
    m_dataView.showInstead(delegate.shownTable(m_tableToShow));
}

void ChildWindow::awaitTable()
{
    const auto item = m_jumpBar.idOf(TreeItem::of(*m_tableToShow));
    showTable(nullptr);
    m_awaited = item;
}

bool ChildWindow::showAwaitedTable()
{
    if (m_awaited.isNone()) return true;
    auto* table = m_jumpBar.find(m_awaited).table;
    if (table != nullptr) showTable(table);
    return table != nullptr;
}

void ChildWindow::refreshChildJumpBarMenu()
{
    m_jumpBar.rebuild();
    m_port->jumpBarMenuDidChange();
    updateJumpBarSelection();
}

void ChildWindow::clearJumpBarMenu()
{
    m_jumpBar.clear();
    m_port->jumpBarMenuDidChange();
}

void ChildWindow::updateJumpBarSelection()
{
    if (m_tableToShow == nullptr) return;
    m_jumpBar.select(TreeItem::of(*m_tableToShow));
    m_port->jumpBarSelectionDidChange();
}

void ChildWindow::jumpBarDidSelectItem(const TreeItem& item)
{
    m_jumpBar.select(item);
    m_port->jumpBarSelectionDidChange();
    showTable(m_jumpBar.selectedItem().table);
}

void ChildWindow::windowWillClose()
{
    clearJumpBarMenu();
    m_manager.removeChild(*this);
}

void ChildWindowManager::createChildWindow(TAdmMDBTable& table)
{
    m_childWins.push_back(std::make_unique<ChildWindow>(
        *this, m_delegate.mainWindow(), m_delegate.fileList(), m_delegate.desktop(), &table));
    refreshChildJumpBarMenus();
}

void ChildWindowManager::closeChildrenForFile(const TAdmMDBFile& file)
{
    // Removing a window shortens the list.
    for (auto i = m_childWins.size(); i-- > 0;) {
        const auto* table = m_childWins[i]->tableToShow();
        if (table != nullptr && table->file() == &file) m_childWins[i]->windowWillClose();
    }
}

void ChildWindowManager::fileWillBeReadAgain(const TAdmMDBFile& file)
{
    for (const auto& window : m_childWins)
        if (window->tableToShow() != nullptr && window->tableToShow()->file() == &file) window->awaitTable();
}

void ChildWindowManager::fileWasReadAgain()
{
    for (auto i = m_childWins.size(); i-- > 0;)
        if (!m_childWins[i]->showAwaitedTable()) m_childWins[i]->windowWillClose();
}

void ChildWindowManager::removeChild(const ChildWindow& window)
{
    const auto isWindow = [&](const auto& child) { return child.get() == &window; };
    const auto place = std::find_if(m_childWins.begin(), m_childWins.end(), isWindow);
    if (place == m_childWins.end()) return;
    // Out of the list before it is destroyed: its port may look around while it goes.
    const auto closed = std::move(*place);
    m_childWins.erase(place);
}

void ChildWindowManager::AllAlwaysOnTop(bool isOnTop)
{
    for (const auto& window : m_childWins)
        window->port().setLevel(isOnTop ? WindowLevel::ModalPanel : WindowLevel::Normal);
}

void ChildWindowManager::orderDidChange(const DataView& by) { m_delegate.orderDidChange(by); }

void ChildWindowManager::showTablesAnew()
{
    for (const auto& window : m_childWins)
        window->showTableAnew();
}

void ChildWindowManager::showTableAnew(const TAdmMDBTable& table)
{
    for (const auto& window : m_childWins)
        if (window->tableToShow() == &table) window->showTableAnew();
}

void ChildWindowManager::refreshChildJumpBarMenus()
{
    for (const auto& window : m_childWins)
        window->refreshChildJumpBarMenu();
}

} // namespace vellumo
