// SPDX-License-Identifier: MIT
#include "browser/VellumoAppDelegate.h"

#include "browser/StatusTexts.h"
#include "browser/ToolbarDescription.h"
#include "text/Format.h"
#include "text/Messages.h"

namespace vellumo {

VellumoAppDelegate::VellumoAppDelegate(MainWindowView& mainWindow, const DesktopPorts& desktop)
    : m_view(mainWindow)
    , m_desktop(desktop)
    , m_files(mainWindow, desktop,
          {[this](TAdmMDBFile& file) { letGoOf(file); },
              [this](TAdmMDBFile& file) {
                  if (m_childWinManager) m_childWinManager->fileWillBeReadAgain(file);
              },
              [this](const TAdmMDBFile& file) { return m_exports.isExporting(file); },
              [this](const TAdmMDBFile& file) { return m_openChoices.optionsFor(file); }})
    , m_selection(m_files.list())
    , m_tree(m_files.list())
    , m_lookupTables(*this, desktop.mainThread)
    , m_dataView(mainWindow.dataView(), desktop, m_toggles.isShown(ViewToggle::TextView))
    , m_navigation(m_files.list())
    , m_exports(mainWindow, desktop)
    , m_openQuestions(mainWindow, desktop, m_openChoices)
{
    m_openQuestions.setChoiceListener([this] { m_view.partDidChange(WindowPart::Settings); });
    m_dataView.setSelectionListener([this] { updateStatusBarForRecordSelection(); });
    m_dataView.setOrderListener([this] { orderDidChange(m_dataView); });
    m_dataView.setRowsListener([this] { rowsDidCome(); });
}

void VellumoAppDelegate::applicationDidFinishLaunching()
{
    m_toggles.readFrom(m_desktop.defaults);
    m_openChoices.readFrom(m_desktop.defaults);
    for (const auto toggle : ViewToggles::all)
        applyToggle(toggle);
    showFileInformation();
    m_view.partDidChange(WindowPart::Navigation);
    m_view.partDidChange(WindowPart::SearchMenu);
    m_view.partDidChange(WindowPart::Settings);
    refreshRecentFiles(); // with nothing selected it tells the number of files
}

void VellumoAppDelegate::applicationWillTerminate() { storeSettings(); }

void VellumoAppDelegate::storeSettings()
{
    m_toggles.writeTo(m_desktop.defaults);
    m_openChoices.writeTo(m_desktop.defaults);
    if (!m_desktop.defaults.synchronize()) m_desktop.systemLog.log("The settings could not be stored.");
}

void VellumoAppDelegate::applicationShouldHandleReopen(bool hasVisibleWindows)
{
    if (!hasVisibleWindows) m_view.bringToFront();
}

// Selection and what it shows

TreeItem VellumoAppDelegate::treeSelection()
{
    const auto item = m_selection.item();
    return m_tree.contains(item) ? item : TreeItem();
}

void VellumoAppDelegate::outlineViewSelectionDidChange(const TreeItem& item)
{
    if (item != treeSelection()) selectionDidChange(item);
}

void VellumoAppDelegate::selectionDidChange(const TreeItem& item)
{
    m_selection.select(item);
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
    updateJumpBarSelection();
}

void VellumoAppDelegate::showFileInformation()
{
    refreshFileInfo();
    m_information.showFileType();
    m_view.informationDidChange(InformationChange::Bar, {});
}

void VellumoAppDelegate::showTableInformation()
{
    refreshTableInfo();
    refreshColumnInfo();
    refreshIndexInfo();
    refreshRelationInfo();
    m_information.showTableTypes();
    m_view.informationDidChange(InformationChange::Bar, {});
}

void VellumoAppDelegate::refreshFileInfo()
{
    m_information.refreshFileInfo(selectedFile(), !isSelectedFileOpen() && isSelectedFileMissing());
    m_view.informationDidChange(InformationChange::Lists, InformationType::File);
    m_information.refreshContentsInfo(selectedFile());
    m_view.informationDidChange(InformationChange::Lists, InformationType::Contents);
    m_view.informationDidChange(InformationChange::Bar, {}); // whether there are contents
}

void VellumoAppDelegate::refreshTableInfo()
{
    m_information.refreshTableInfo(selectedTable());
    m_view.informationDidChange(InformationChange::Lists, InformationType::Table);
}

void VellumoAppDelegate::refreshColumnInfo()
{
    m_information.refreshColumnInfo(selectedTable());
    m_view.informationDidChange(InformationChange::Lists, InformationType::Column);
}

void VellumoAppDelegate::refreshIndexInfo()
{
    m_information.refreshIndexInfo(selectedTable());
    m_view.informationDidChange(InformationChange::Lists, InformationType::Index);
}

void VellumoAppDelegate::refreshRelationInfo()
{
    m_information.refreshRelationInfo(selectedTable());
    m_view.informationDidChange(InformationChange::Lists, InformationType::Relation);
}

void VellumoAppDelegate::showInGrid(const TAdmMDBTable* table)
{
    m_dataView.updateDataTableToShowMDBTable(shownTable(table));
    m_dataView.displayTextViewContent({});
}

// The selection, and the panes that show what was selected.
void VellumoAppDelegate::clearSelection()
{
    m_selection.select({});
    showInGrid(nullptr);
    showFileInformation();
}

void VellumoAppDelegate::InformationTypeChange(InformationType type)
{
    m_information.selectType(type);
    m_view.informationDidChange(InformationChange::Bar, {});
}

void VellumoAppDelegate::informationEntryDidChange(InformationType type, std::size_t index)
{
    m_information.selectEntry(type, index);
    m_view.informationDidChange(InformationChange::Details, type);
}

std::string VellumoAppDelegate::selectionTitle() const
{
    const auto [file, table] = m_selection.item();
    if (file == nullptr) return {};
    return table == nullptr ? file->name() : format("%@ @%@", {table->name(), file->name()});
}

// Status bar

void VellumoAppDelegate::setStatusText(std::string text)
{
    m_statusText = std::move(text);
    m_isStatusOfRecords = false;
    m_view.partDidChange(WindowPart::StatusText);
}

void VellumoAppDelegate::updateStatusBarForNoSelection()
{
    setStatusText(statusForNoSelection(m_tree.fileEntities().size()));
}

void VellumoAppDelegate::updateStatusBarForFileSelection()
{
    setStatusText(statusForFile(m_tree.fileEntities().size(),
        isSelectedFileOpen() ? std::optional(selectedFile()->tables().size()) : std::nullopt));
}

void VellumoAppDelegate::updateStatusBarForTableSelection()
{
    const auto [file, table] = m_selection.item();
    if (table != nullptr) setStatusText(statusForTable(m_tree.tableEntities(*file).size(), table->rows().rowCount()));
}

void VellumoAppDelegate::updateStatusBarForRecordSelection()
{
    const auto& rows = m_dataView.selectedRows();
    setStatusText(statusForRecords(m_dataView.numberOfRows(), rows.count(), rows.first().value_or(0)));
    m_isStatusOfRecords = true;
}

void VellumoAppDelegate::rowsDidCome()
{
    if (m_isStatusOfRecords)
        updateStatusBarForRecordSelection();
    else
        m_view.partDidChange(WindowPart::StatusText);
}

// View toggles

void VellumoAppDelegate::toggle(ViewToggle toggle)
{
    m_toggles.flip(toggle);
    applyToggle(toggle);
    if (toggle == ViewToggle::NumRows) reloadTree();
    if (toggle == ViewToggle::LookupTexts || toggle == ViewToggle::Captions) showGridsAnew();
}

void VellumoAppDelegate::applyToggle(ViewToggle toggle)
{
    if (toggle == ViewToggle::TextView) m_dataView.ShowHideBottomTextView(m_toggles.isShown(toggle));
    if (toggle == ViewToggle::Captions) m_dataView.setCaptionsShown(m_toggles.isShown(toggle));
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

// While a filter hides what is selected the tree has no selected row; the rest of the window shows it all the same.
void VellumoAppDelegate::fileSearchDidChange(std::string text)
{
    m_tree.setFilterText(std::move(text));
    reloadTree();
    if (useFileFilter())
        for (auto* file : m_tree.fileEntities())
            if (file->active()) m_view.setTreeItemExpanded(*file, true);
    const auto selected = m_selection.item();
    m_dataView.updateDataTableToShowMDBTable(selected.table);
    m_view.treeSelectionDidChange();
    if (selected.isTable())
        updateStatusBarForTableSelection();
    else if (selected.isFile())
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

// The first of the selected records stays selected while the search finds it.
void VellumoAppDelegate::reloadForSearch()
{
    if (const auto selected = m_dataView.selectedRows().first()) m_dataView.selectRows(RowSelection::ofRow(*selected));
    m_dataView.setSearch(m_search);
    m_dataView.reloadData();
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

void VellumoAppDelegate::ClearSearch()
{
    dataSearchDidChange({});
    m_view.partDidChange(WindowPart::SearchMenu);
}

void VellumoAppDelegate::searchRuleDidChange()
{
    m_view.partDidChange(WindowPart::SearchMenu);
    reloadForSearch();
    if (useDataFilter()) updateStatusBarForRecordSelection();
}

// Navigation

void VellumoAppDelegate::OnSingleClickfileTree(const TreeItem& item)
{
    if (item.isNone()) return;
    if (item.isTable()) recordVisit(item);
    refreshJumpBarMenu();
}

void VellumoAppDelegate::recordVisit(const TreeItem& table)
{
    m_navigation.visit(table);
    m_view.partDidChange(WindowPart::Navigation);
}

void VellumoAppDelegate::PreviousSelectedTable()
{
    m_navigation.goBack([this](const TreeItem& table) { selectWhereShown(table); });
    m_view.partDidChange(WindowPart::Navigation);
}

void VellumoAppDelegate::NextSelectedTable()
{
    m_navigation.goForth([this](const TreeItem& table) { selectWhereShown(table); });
    m_view.partDidChange(WindowPart::Navigation);
}

void VellumoAppDelegate::jumpBarDidSelectItem(const TreeItem& item)
{
    const auto listed = m_navigation.jumpBar().find(item);
    if (listed.isNone()) return;
    selectWhereShown(listed);
    if (listed.isTable()) recordVisit(listed);
}

void VellumoAppDelegate::updateJumpBarSelection()
{
    m_navigation.jumpBar().select(m_selection.item());
    m_view.partDidChange(WindowPart::JumpBar);
}

void VellumoAppDelegate::refreshJumpBarMenu()
{
    m_navigation.jumpBar().rebuild();
    m_view.partDidChange(WindowPart::JumpBar);
    updateJumpBarSelection();
    if (m_childWinManager) m_childWinManager->refreshChildJumpBarMenus();
}

// Export

TreeItem VellumoAppDelegate::exportTarget()
{
    const auto clicked = m_selection.clickedItem();
    return clicked.isNone() ? treeSelection() : clicked;
}

bool VellumoAppDelegate::canExport()
{
    const auto* file = exportTarget().file;
    return !m_exports.isExporting() && !m_isExportWaiting && (file == nullptr || !m_files.isInUse(*file));
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
    if (item.file->active()) {
        const bool isOpen = item.table != nullptr && m_dataView.table() == item.table;
        auto shown = isOpen ? std::optional(tableShownBy(m_dataView)) : std::nullopt;
        return m_exports.begin(m_files.list().share(*item.file), item.table, exportType, std::move(shown));
    }
    openForExport(*item.file, exportType);
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

void VellumoAppDelegate::orderDidChange(const DataView& by)
{
    const auto follow = [&by](DataView& view) {
        if (&view != &by && view.table() == by.table()) view.orderDidChange();
    };
    follow(m_dataView);
    m_view.partDidChange(WindowPart::StatusText); // it says what the rows wait for
    if (!m_childWinManager) return;
    for (const auto& window : m_childWinManager->childWins())
        follow(window->dataView());
}

void VellumoAppDelegate::OpenSelectedTableInNewWindow()
{
    if (const auto clicked = m_selection.clickedItem(); clicked.isTable()) OpenTableInNewWindow(*clicked.table);
}

} // namespace vellumo
