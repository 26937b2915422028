#include "browser/ChildWindow.h"

#include "browser/ChildWindowManager.h"
#include "browser/MainWindowView.h"
#include "text/Format.h"

namespace vellumo {

ChildWindow::ChildWindow(ChildWindowManager& manager, MainWindowView& mainWindow, const FileList& files,
    const DesktopPorts& desktop, TAdmMDBTable* tableToShow)
    : m_manager(manager)
    , m_port(mainWindow.createChildWindow(*this))
    , m_dataView(m_port->dataView(), desktop, true)
    , m_jumpBar(files)
{
    showTable(tableToShow);
    m_port->makeKey();
    m_port->dataView().focusGrid();
}

void ChildWindow::showTable(TAdmMDBTable* table)
{
    m_tableToShow = table;
    m_title = table == nullptr ? std::string() : format("%@ @%@", {table->name(), table->file()->name()});
    m_port->setTitle(m_title);
    m_dataView.updateDataTableToShowMDBTable(table);
    m_dataView.displayTextViewContent({});
    updateJumpBarSelection();
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

} // namespace vellumo
