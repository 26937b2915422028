#include "browser/VellumoAppDelegate.h"

#include "browser/StatusTexts.h"
#include "browser/ToolbarDescription.h"
#include "text/Format.h"
#include "text/Messages.h"

namespace vellumo {

VellumoAppDelegate::VellumoAppDelegate(MainWindowView& mainWindow, const DesktopPorts& desktop)
    : m_view(mainWindow)
    , m_desktop(desktop)
    , m_files(desktop.fileFacts)
    , m_tree(m_files)
    , m_dataView(mainWindow.dataView(), desktop, m_toggles.isShown(ViewToggle::TextView))
    , m_exports(mainWindow, desktop)
    , m_opener(mainWindow, desktop.mainThread)
{
    m_dataView.setSelectionListener([this] { updateStatusBarForRecordSelection(); });
}

void VellumoAppDelegate::applicationDidFinishLaunching()
{
    m_toggles.readFrom(m_desktop.defaults);
    for (const auto toggle : ViewToggles::all)
        applyToggle(toggle);
    showFileInformation();
    m_view.navigationDidChange();
    m_view.searchMenuDidChange();
    refreshRecentFiles(); // with nothing selected it tells the number of files
}

void VellumoAppDelegate::applicationWillTerminate() { storeSettings(); }

void VellumoAppDelegate::storeSettings()
{
    m_toggles.writeTo(m_desktop.defaults);
    if (!m_desktop.defaults.synchronize()) m_desktop.systemLog.log("The settings could not be stored.");
}

void VellumoAppDelegate::applicationShouldHandleReopen(bool hasVisibleWindows)
{
    if (!hasVisibleWindows) m_view.bringToFront();
}

// Selection and what it shows

void VellumoAppDelegate::outlineViewSelectionDidChange(const TreeItem& item)
{
    if (item == m_treeSelection) return;
    m_treeSelection = item;
    selectionDidChange(item);
}

void VellumoAppDelegate::selectionDidChange(const TreeItem& item)
{
    m_selectedFile = item.file;
    m_selectedTable = item.table;
    m_isNothingShown = item.isNone();
    if (item.isTable())
        showTableInformation();
    else
        showFileInformation();
    showInGrid(item.table);
    if (item.isTable())
        updateStatusBarForTableSelection();
    else if (item.isFile())
        updateStatusBarForFileSelection();
    else
        updateStatusBarForNoSelection();
    m_jumpBar.select(item);
    m_view.jumpBarSelectionDidChange();
}

void VellumoAppDelegate::showFileInformation()
{
    refreshFileInfo();
    m_information.showFileType();
    m_view.informationBarDidChange();
}

void VellumoAppDelegate::showTableInformation()
{
    refreshTableInfo();
    refreshColumnInfo();
    refreshIndexInfo();
    refreshRelationInfo();
    m_information.showTableTypes();
    m_view.informationBarDidChange();
}

void VellumoAppDelegate::refreshFileInfo()
{
    m_information.refreshFileInfo(m_selectedFile);
    m_view.informationDidReload(InformationType::File);
}

void VellumoAppDelegate::refreshTableInfo()
{
    m_information.refreshTableInfo(m_selectedTable);
    m_view.informationDidReload(InformationType::Table);
}

void VellumoAppDelegate::refreshColumnInfo()
{
    m_information.refreshColumnInfo(m_selectedTable);
    m_view.informationDidReload(InformationType::Column);
}

void VellumoAppDelegate::refreshIndexInfo()
{
    m_information.refreshIndexInfo(m_selectedTable);
    m_view.informationDidReload(InformationType::Index);
}

void VellumoAppDelegate::refreshRelationInfo()
{
    m_information.refreshRelationInfo(m_selectedTable);
    m_view.informationDidReload(InformationType::Relation);
}

void VellumoAppDelegate::showInGrid(const TAdmMDBTable* table)
{
    m_dataView.updateDataTableToShowMDBTable(table);
    m_dataView.displayTextViewContent({});
}

// Both selections, and all that shows what was selected.
void VellumoAppDelegate::clearSelection()
{
    m_selectedFile = nullptr;
    m_selectedTable = nullptr;
    showInGrid(nullptr);
    showFileInformation();
}

void VellumoAppDelegate::InformationTypeChange(InformationType type)
{
    m_information.selectType(type);
    m_view.informationBarDidChange();
}

void VellumoAppDelegate::informationEntryDidChange(InformationType type, std::size_t index)
{
    m_information.selectEntry(type, index);
    m_view.informationDetailsDidChange(type);
}

// Status bar

void VellumoAppDelegate::setStatusText(std::string text)
{
    m_statusText = std::move(text);
    m_view.statusTextDidChange();
}

void VellumoAppDelegate::updateStatusBarForNoSelection()
{
    setStatusText(statusForNoSelection(m_tree.fileEntities().size()));
}

void VellumoAppDelegate::updateStatusBarForFileSelection()
{
    setStatusText(statusForFile(m_tree.fileEntities().size(),
        isSelectedFileOpen() ? std::optional(m_selectedFile->tables().size()) : std::nullopt));
}

void VellumoAppDelegate::updateStatusBarForTableSelection()
{
    if (m_selectedTable == nullptr) return;
    setStatusText(statusForTable(m_tree.tableEntities(*m_selectedFile).size(), m_selectedTable->rows().rowCount()));
}

void VellumoAppDelegate::updateStatusBarForRecordSelection()
{
    const auto& rows = m_dataView.selectedRows();
    setStatusText(statusForRecords(m_dataView.numberOfRows(), rows.count(), rows.first().value_or(0)));
}

// View toggles

void VellumoAppDelegate::toggle(ViewToggle toggle)
{
    m_toggles.flip(toggle);
    applyToggle(toggle);
    if (toggle == ViewToggle::NumRows) reloadTree();
}

void VellumoAppDelegate::applyToggle(ViewToggle toggle)
{
    if (toggle == ViewToggle::TextView) m_dataView.ShowHideBottomTextView(m_toggles.isShown(toggle));
    if (toggle == ViewToggle::JumpBar) m_dataView.ShowHideJumpBar(m_toggles.isShown(toggle));
    m_view.viewToggleDidChange(toggle);
}

// Search

void VellumoAppDelegate::controlTextDidChange(SearchField field, std::string text)
{
    if (field == SearchField::File)
        fileSearchDidChange(std::move(text));
    else
        dataSearchDidChange(std::move(text));
}

// A filter that hides what is selected takes the tree's selection away but leaves what the window shows.
void VellumoAppDelegate::fileSearchDidChange(std::string text)
{
    const TreeItem remembered{m_selectedFile, m_selectedTable};
    m_tree.setFilterText(std::move(text));
    reloadTree();
    if (useFileFilter())
        for (auto* file : m_tree.fileEntities())
            if (file->active()) m_view.expandTreeItem(*file);
    m_dataView.updateDataTableToShowMDBTable(m_selectedTable);
    const bool isShown = m_tree.contains(remembered) && m_jumpBar.selectedItem() == remembered;
    setTreeSelection(isShown ? remembered : TreeItem());
    if (m_selectedTable != nullptr)
        updateStatusBarForTableSelection();
    else if (m_selectedFile != nullptr)
        updateStatusBarForFileSelection();
    else
        updateStatusBarForNoSelection();
}

void VellumoAppDelegate::dataSearchDidChange(std::string text)
{
    m_search.text = std::move(text);
    reloadForSearch();
    updateStatusBarForRecordSelection();
}

// The selected record stays selected while the search finds it.
void VellumoAppDelegate::reloadForSearch()
{
    const auto selected = m_dataView.selectedRows().first();
    const auto remembered = selected ? std::optional(m_dataView.recordAt(*selected)) : std::nullopt;
    m_dataView.setSearch(m_search);
    m_dataView.reloadData();
    const auto position = remembered ? m_dataView.positionOfRecord(*remembered) : std::nullopt;
    m_dataView.selectRows(position ? RowSelection::ofRow(*position) : RowSelection());
}

void VellumoAppDelegate::Find() { m_view.focusDataSearchField(); }

void VellumoAppDelegate::SetSearchOption(int tag)
{
    if (tag < static_cast<int>(SearchOption::Contains) || tag > static_cast<int>(SearchOption::EndsWith)) return;
    m_search.searchOption = static_cast<SearchOption>(tag);
    searchRuleDidChange();
}

void VellumoAppDelegate::SetCaseForSearch()
{
    m_search.ignoreCase = !m_search.ignoreCase;
    searchRuleDidChange();
}

void VellumoAppDelegate::searchRuleDidChange()
{
    m_view.searchMenuDidChange();
    reloadForSearch();
    if (useDataFilter()) updateStatusBarForRecordSelection();
}

// Navigation

void VellumoAppDelegate::OnSingleClickfileTree(const TreeItem& item)
{
    if (item.isNone()) return;
    if (item.isTable()) recordVisit(*item.table);
    refreshJumpBarMenu();
}

void VellumoAppDelegate::recordVisit(TAdmMDBTable& table)
{
    m_history.visit(table);
    m_view.navigationDidChange();
}

void VellumoAppDelegate::PreviousSelectedTable()
{
    auto* target = m_history.backTarget();
    if (target == nullptr) return;
    m_history.finishBack(showVisitedTable(*target));
    m_view.navigationDidChange();
}

void VellumoAppDelegate::NextSelectedTable()
{
    auto* target = m_history.nextTarget();
    if (target == nullptr) return;
    m_history.finishNext(showVisitedTable(*target));
    m_view.navigationDidChange();
}

bool VellumoAppDelegate::showVisitedTable(TAdmMDBTable& table)
{
    m_selectedTable = &table;
    m_selectedFile = table.file();
    m_performBackForward = true;
    updateJumpBarSelection();
    m_performBackForward = false;
    return m_jumpBar.selectedItem() == TreeItem::of(table);
}

// The tree follows, so that its selection is always what the window shows.
void VellumoAppDelegate::jumpBarDidSelectItem(const TreeItem& item)
{
    const auto listed = m_jumpBar.find(item);
    if (m_JumpBarMenuRefresh || listed.isNone()) return;
    selectWhereShown(listed);
    if (listed.isTable() && !m_performBackForward) recordVisit(*listed.table);
}

void VellumoAppDelegate::updateJumpBarSelection()
{
    const auto item = m_jumpBar.find({m_selectedFile, m_selectedTable});
    if (item.isNone()) return;
    m_jumpBar.select(item);
    m_view.jumpBarSelectionDidChange();
    jumpBarDidSelectItem(item);
}

void VellumoAppDelegate::refreshJumpBarMenu()
{
    m_JumpBarMenuRefresh = true;
    m_jumpBar.rebuild(recentFiles());
    m_view.jumpBarMenuDidChange();
    updateJumpBarSelection();
    m_JumpBarMenuRefresh = false;
    if (m_childWinManager) m_childWinManager->refreshChildJumpBarMenus();
}

// Export

bool VellumoAppDelegate::canExport() const
{
    const auto* file = exportTarget().file;
    return !m_exports.isExporting() && !m_isExportWaiting && (file == nullptr || !isInUse(*file));
}

void VellumoAppDelegate::Export(int tag)
{
    if (!canExport()) return;
    const auto item = exportTarget();
    if (item.isNone())
        m_desktop.alerts.show({localized("No MDB File selected."),
            localized("Please select a file from the file list first."), Alert::Style::Sheet});
    else
        exportItem(item, exportTypeByTag(tag));
    m_view.deselectAllForToolbarItems();
}

void VellumoAppDelegate::exportItem(const TreeItem& item, int exportType)
{
    const auto file = m_files.share(*item.file);
    if (file->active()) return m_exports.begin(file, item.table, exportType);
    m_isExportWaiting = true;
    openListed(file, [this, file, exportType](OpenResult result) {
        m_isExportWaiting = false;
        if (result == OpenResult::Failed) showOpenFailure(*file, Alert::Style::Sheet);
        if (result != OpenResult::Opened) return;
        reloadTree();
        refreshJumpBarMenu();
        m_exports.begin(file, nullptr, exportType);
    });
}

void VellumoAppDelegate::exportSheetDidEnd(int returnCode)
{
    m_exports.sheetDidEnd(returnCode);
    m_view.deselectAllForToolbarItems();
}

void VellumoAppDelegate::exportDidFinish() { m_exports.exportDidFinish(); }

// Table windows

void VellumoAppDelegate::OpenTableInNewWindow(TAdmMDBTable& table)
{
    if (!m_childWinManager) m_childWinManager = std::make_unique<ChildWindowManager>(*this);
    m_childWinManager->createChildWindow(table);
    m_childWinManager->AllAlwaysOnTop(m_view.isFullScreen());
}

void VellumoAppDelegate::OpenSelectedTableInNewWindow()
{
    if (m_clickedItem.isTable()) OpenTableInNewWindow(*m_clickedItem.table);
}

} // namespace vellumo
