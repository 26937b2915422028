// SPDX-License-Identifier: MIT
#pragma once

#include "browser/ChildWindow.h"
#include "browser/DataView.h"
#include "browser/DesktopPorts.h"
#include "browser/ExportLauncher.h"
#include "browser/Files.h"
#include "browser/InformationPane.h"
#include "browser/LookupTables.h"
#include "browser/MainWindowView.h"
#include "browser/Navigation.h"
#include "browser/OpenQuestions.h"
#include "browser/RecordSearch.h"
#include "browser/Selection.h"
#include "browser/TreeDataSource.h"
#include "browser/ViewToggles.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vellumo {

// The program's controller: the list of files, what is selected, and what all parts of the main window show. The window
// forwards what the user does and asks for what it draws. Three parts keep the state, Files, Selection and Navigation;
// this class tells them what the user wants and the window what came of it. Paths are absolute. Main thread only.
//
// Files are opened on another thread, one after the other; a command that opens one returns before it is open. What
// would change a file that is being opened or exported cannot be used until then: canUse and its like tell, and the
// command does nothing.
class VellumoAppDelegate : private LookupListener {
public:
    // Where a command on a file comes from: the menu of a tree row, which means the row clicked, or anything else,
    // which means the file selected. A table's row stands for its file.
    enum class Sender { TreeMenu, Other };
    enum class SearchField { File, Data };
    using FileCommand = vellumo::FileCommand;

    // `mainWindow` and the interfaces outlive the controller.
    VellumoAppDelegate(MainWindowView& mainWindow, const DesktopPorts& desktop);
    VellumoAppDelegate(const VellumoAppDelegate&) = delete;
    VellumoAppDelegate& operator=(const VellumoAppDelegate&) = delete;

    // --- The program's life ---
    void applicationDidFinishLaunching();
    // The program was asked to end: the file that is being opened is given up, and none is begun any more.
    void applicationShouldTerminate() { m_files.opener().stopForGood(); }
    // Stores the settings. Waits for nothing: the worker of an opening is waited for when the controller goes.
    void applicationWillTerminate();
    // At the end, and whenever something was changed that the next run is to have.
    void storeSettings();
    void applicationShouldHandleReopen(bool hasVisibleWindows);
    // Files that the desktop hands over.
    void applicationOpenFiles(const std::vector<std::string>& paths);

    // --- File list ---
    [[nodiscard]] const FileList& fileList() const { return m_files.list(); }
    [[nodiscard]] const FileList::Files& recentFiles() const { return m_files.list().recentFiles(); }
    TAdmMDBFile& createNewMDBFile(std::string_view path, bool insertFront);
    // A new, unopened entry at the front. An entry listed under the same folder and name is dropped with all that was
    // shown of it: its tables leave the history, and their windows close.
    TAdmMDBFile& findMDBFileByPath(std::string_view path);
    // Brings the list in line with the recent documents.
    void refreshRecentFiles();
    void clearRecentDocuments();
    void OpenFile();
    void OpenSelectedFile(Sender sender);
    // The file stays in the list, unopened.
    void closeFile(TAdmMDBFile& file);
    void CloseSelectedFile(Sender sender);
    void RemoveSelectedFile(Sender sender);
    void RemoveOtherFiles(Sender sender);
    void ShowInFinder(Sender sender);
    // Gives up the file that is being opened; it stays in the list, unopened. Those that wait come next.
    void StopOpening() { m_files.opener().stop(); }
    // Whether a file is being opened, or waits to be.
    [[nodiscard]] bool isOpening() const { return m_files.opener().isBusy(); }
    // Whether the command has something to work on, and may. LookForLostRows means the selected file at any rate.
    [[nodiscard]] bool canUse(FileCommand command, Sender sender) const;
    [[nodiscard]] bool canClearRecentDocuments() const;
    // Files dragged onto the tree: accepted (and copied) when at least one is a database, wherever they are dropped.
    [[nodiscard]] bool validateDrop(const std::vector<std::string>& paths) const;
    void acceptDrop(const std::vector<std::string>& paths);
    // The selected file, which is open: the list of what it lost; and opening it again to look for rows that the file
    // has no way to any more. What is found is shown as tables of their own.
    void ShowDamage();
    void LookForLostRows();
    void salvageSheetDidEnd(Salvage salvage);
    // Whether files of Access 2007 to 2019 are opened without a question.
    [[nodiscard]] bool opensNewerFiles() const { return m_openChoices.opensNewerFiles(); }
    void SetOpensNewerFiles(bool opens);
    // An answer to MainWindowView::beginPasswordSheet; nullopt: the user does not want to.
    void passwordSheetDidEnd(std::optional<std::string> password);
    // The encoding of the texts of the selected file, which is opened again for another one. Only for a file of
    // Access 97; nullopt: as the file states.
    [[nodiscard]] bool canSetTextEncoding() const;
    [[nodiscard]] std::optional<int> textEncoding() const;
    void SetTextEncoding(std::optional<int> codePage);
    // Reads the selected file again, or opens it when it is closed; what was selected stays so.
    void ReadAgain();
    // Looks whether the selected file has changed on disk; what comes of it is told by WindowPart::ChangeBar.
    void lookAtDisk();
    // That the selected file has changed on disk since it was read; "" when that was not seen.
    [[nodiscard]] std::string changeBarText() const;
    // What the bar above the grid tells of the selected file; "" for no bar.
    [[nodiscard]] std::string damageBarText() const;
    [[nodiscard]] bool isPlaceholderShown() const { return m_isPlaceholderShown; }

    // --- Tree ---
    [[nodiscard]] TreeDataSource& tree() { return m_tree; }
    [[nodiscard]] TreeItemText objectValueByItem(const TreeItem& item) const;
    // The selected row; none while a filter hides what is selected.
    [[nodiscard]] TreeItem treeSelection();
    // The user selected a row, or none.
    void outlineViewSelectionDidChange(const TreeItem& item);
    // The row under the pointer while a menu of the tree is open; none otherwise.
    void setClickedTreeItem(const TreeItem& item) { m_selection.setClickedItem(item); }
    void OnSingleClickfileTree(const TreeItem& item);
    void OnDoubleClickFileTree();

    // --- Selection and what it shows ---
    // Borrowed until the file closes or leaves the list; null for none.
    [[nodiscard]] TAdmMDBFile* selectedFile() const { return m_selection.item().file; }
    [[nodiscard]] TAdmMDBTable* selectedTable() const { return m_selection.item().table; }
    // Selects the item, and everything but the tree's row shows it.
    void selectionDidChange(const TreeItem& item);
    [[nodiscard]] const InformationPane& information() const { return m_information; }
    void InformationTypeChange(InformationType type);
    // A row of the name list of columns, indexes or relations was selected.
    void informationEntryDidChange(InformationType type, std::size_t index);
    // The SQL of the query that is selected in the contents.
    void CopyContentsText();
    // Rows are selected, headers clicked and so on at the data view itself.
    [[nodiscard]] DataView& dataView() { return m_dataView; }
    [[nodiscard]] const std::string& statusText() const { return m_statusText; }
    // What is selected, for the window's title: "Orders @Sales", "Sales"; "" for nothing.
    [[nodiscard]] std::string selectionTitle() const;
    void updateStatusBarForNoSelection();
    void updateStatusBarForFileSelection();
    void updateStatusBarForTableSelection();
    void updateStatusBarForRecordSelection();

    // --- View toggles ---
    [[nodiscard]] const ViewToggles& toggles() const { return m_toggles; }
    void ToggleTreeView() { toggle(ViewToggle::FileTree); }
    void ToggleInformationView() { toggle(ViewToggle::InformationView); }
    void ToggleTextView() { toggle(ViewToggle::TextView); }
    void ToggleJumpBar() { toggle(ViewToggle::JumpBar); }
    void ToggleNumRows() { toggle(ViewToggle::NumRows); }
    void ToggleLookupTexts() { toggle(ViewToggle::LookupTexts); }
    // Whether lookup texts are being looked up, of which nothing is shown until then.
    [[nodiscard]] bool isLookingUp() const { return m_lookupTables.isBusy(); }
    // Gives that up: lookup texts are not shown any more.
    void StopLookingUp();
    void ToggleCaptions() { toggle(ViewToggle::Captions); }
    // What a grid shows of the table.
    [[nodiscard]] const TAdmMDBTable* shownTable(const TAdmMDBTable* table);

    // --- Search ---
    void controlTextDidChange(SearchField field, std::string text);
    void Find();
    [[nodiscard]] const SearchSettings& search() const { return m_search; }
    // `tag` of an option item; another one does nothing.
    void SetSearchOption(int tag);
    void SetCaseForSearch();
    void ClearSearch();
    // "“ann”: 3 of 12 records" while a search is on and a table is shown.
    [[nodiscard]] std::string searchText() { return m_dataView.searchText(); }
    [[nodiscard]] bool useFileFilter() const { return m_tree.useFileFilter(); }
    [[nodiscard]] bool useDataFilter() const { return !m_search.text.empty(); }

    // --- Navigation ---
    [[nodiscard]] const SelectionHistory& history() const { return m_navigation.history(); }
    void PreviousSelectedTable();
    void NextSelectedTable();
    [[nodiscard]] const JumpBarMenu& jumpBar() const { return m_navigation.jumpBar(); }
    // An item of the jump bar was selected.
    void jumpBarDidSelectItem(const TreeItem& item);
    void refreshJumpBarMenu();
    void updateJumpBarSelection();

    // --- Export ---
    // Not while another export runs or its file is being opened. True with nothing selected: Export tells of it.
    [[nodiscard]] bool canExport();
    // `tag` of the toolbar item or menu item: 1 CSV, 2 TXT, 3 XML, 4 XLS, 5 SQL, 6 SQLite.
    void Export(int tag);
    // The dialog ended with this code, and its wizard's call has returned.
    void exportSheetDidEnd(int returnCode);
    // The report was shown, and the wizard's call has returned.
    void exportDidFinish();
    [[nodiscard]] bool isExporting() const { return m_exports.isExporting(); }
    // Null when there is none.
    [[nodiscard]] const std::shared_ptr<ExportWizard>& exportWizard() const { return m_exports.wizard(); }

    // --- Table windows ---
    void OpenTableInNewWindow(TAdmMDBTable& table);
    // The table of the clicked row.
    void OpenSelectedTableInNewWindow();
    // A click in this view has changed the order of its table: every other window that shows it follows.
    void orderDidChange(const DataView& by);
    // Null before the first window.
    [[nodiscard]] ChildWindowManager* childWinManager() { return m_childWinManager.get(); }

    [[nodiscard]] MainWindowView& mainWindow() { return m_view; }
    [[nodiscard]] const DesktopPorts& desktop() const { return m_desktop; }

private:
    // Files.
    [[nodiscard]] TAdmMDBFile* targetFile(Sender sender) const;
    [[nodiscard]] TAdmMDBFile* freeTargetFile(Sender sender) const;
    void bringInDatabases(const std::vector<std::string>& paths);
    void bringIn(const std::string& path);
    void afterOpening(std::function<void()> step) { m_files.opener().enqueue(std::move(step)); }
    void showNewEntry();
    void didBringIn(TAdmMDBFile& file, OpenResult result);
    void didOpenSelectedFile(TAdmMDBFile& file, OpenResult result);
    void didOpenAgain(TAdmMDBFile& file, Salvage salvage, const ItemId& id, OpenResult result);
    void openDidFail(TAdmMDBFile& file, Alert::Style style, Files::Once once, Files::Done done);
    void openForExport(TAdmMDBFile& file, int exportType);
    void didOpenForExport(TAdmMDBFile& file, OpenResult result, int exportType);
    void openAgain(const ItemId& id, Salvage salvage);
    void showGridsAnew();
    void lookupDidBegin(const TAdmMDBTable& table) override { m_view.lookupDidBegin(table); }
    void lookupDidProgress(std::uint64_t rowsDone, std::uint64_t rowsExpected) override
    {
        m_view.lookupDidProgress(rowsDone, rowsExpected);
    }
    void lookupDidEnd() override { m_view.lookupDidEnd(); }
    void lookupDidFind(const TAdmMDBTable& table) override;
    void lookupDidFail(const TAdmMDBTable& table) override;
    [[nodiscard]] bool isSelectedFileOpen() const { return selectedFile() != nullptr && selectedFile()->active(); }
    [[nodiscard]] bool isSelectedFileMissing() const;
    void letGoOf(TAdmMDBFile& file);
    void restoreTreeSelection();

    // Tree and selection.
    void reloadTree();
    void selectTreeItem(const TreeItem& item);
    void selectWhereShown(const TreeItem& item);
    void deselectAll();
    void clearSelection();
    void showFileInformation();
    void showTableInformation();
    void showInGrid(const TAdmMDBTable* table);
    void refreshFileInfo();
    void refreshTableInfo();
    void refreshColumnInfo();
    void refreshIndexInfo();
    void refreshRelationInfo();
    void setStatusText(std::string text);
    void setPlaceholderShown(bool isShown);

    // The rest.
    void toggle(ViewToggle toggle);
    void applyToggle(ViewToggle toggle);
    void fileSearchDidChange(std::string text);
    void dataSearchDidChange(std::string text);
    void reloadForSearch();
    void rowsDidCome();
    void searchRuleDidChange();
    void recordVisit(const TreeItem& table);
    [[nodiscard]] TreeItem exportTarget();
    void exportItem(const TreeItem& item, int exportType);

    MainWindowView& m_view;
    DesktopPorts m_desktop;
    Files m_files;
    Selection m_selection;
    TreeDataSource m_tree;
    ViewToggles m_toggles;       // before the data view, which asks it
    LookupTables m_lookupTables; // before the data view, which shows them
    DataView m_dataView;
    InformationPane m_information;
    Navigation m_navigation;
    ExportLauncher m_exports;
    OpenChoices m_openChoices;
    OpenQuestions m_openQuestions;
    std::unique_ptr<ChildWindowManager> m_childWinManager;

    ItemId m_salvageItem;           // what was selected when the sheet began
    bool m_isExportWaiting = false; // for its file to be opened
    SearchSettings m_search;
    std::string m_statusText;
    bool m_isStatusOfRecords = false;
    bool m_isPlaceholderShown = false;
};

} // namespace vellumo
