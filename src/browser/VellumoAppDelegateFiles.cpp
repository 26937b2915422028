// The file list half of the controller: bringing files in, closing and removing them, and the tree that shows them.

#include "browser/DamageDetails.h"
#include "browser/DamageTexts.h"
#include "browser/DroppedPath.h"
#include "browser/VellumoAppDelegate.h"
#include "text/Format.h"

#include <algorithm>
#include <filesystem>

namespace vellumo {

// Bringing files in

TAdmMDBFile& VellumoAppDelegate::createNewMDBFile(std::string_view path, bool insertFront)
{
    return m_files.createNewMDBFile(path, insertFront);
}

TAdmMDBFile& VellumoAppDelegate::findMDBFileByPath(std::string_view path)
{
    auto* listed = m_files.findByFolderAndName(path);
    // The old entry lives until the tree has let go of it.
    const auto old = listed == nullptr ? nullptr : dropEntry(*listed);
    auto& file = createNewMDBFile(path, true);
    reloadTree();
    return file;
}

void VellumoAppDelegate::OpenFile()
{
    const auto paths = m_desktop.filePanels.openFiles({"accdb", "mdb"});
    for (const auto& path : paths.value_or(std::vector<std::string>()))
        m_opener.enqueue([this, path] { bringIn(path); });
    m_opener.enqueue([this] {
        refreshRecentFiles();
        m_view.deselectAllForToolbarItems();
    });
}

void VellumoAppDelegate::applicationOpenFiles(const std::vector<std::string>& paths)
{
    refreshRecentFiles();
    bringInDatabases(paths);
}

bool VellumoAppDelegate::validateDrop(const std::vector<std::string>& paths) const
{
    return std::any_of(paths.begin(), paths.end(), isDatabasePath);
}

void VellumoAppDelegate::acceptDrop(const std::vector<std::string>& paths) { bringInDatabases(paths); }

void VellumoAppDelegate::bringInDatabases(const std::vector<std::string>& paths)
{
    for (const auto& dropped : paths) {
        const auto path = pathOutsideContainer(dropped, m_desktop.homeFolder);
        if (!isDatabasePath(path)) continue;
        m_opener.enqueue([this, path] { bringIn(path); });
        m_opener.enqueue([this] { refreshRecentFiles(); });
    }
}

// A step of the opener, so that an entry of the same name that is being opened is replaced only afterwards.
void VellumoAppDelegate::bringIn(const std::string& path)
{
    // One spelling of a path: the recent documents and the list are compared by it.
    const auto file = m_files.share(findMDBFileByPath(std::filesystem::path(path).lexically_normal().string()));
    showNewEntry();
    m_opener.open(file, Salvage::None, [this, file](OpenResult result) { didBringIn(*file, result); });
}

// The file is seen while it is opened, and what was shown of an entry that it replaces is not.
void VellumoAppDelegate::showNewEntry()
{
    setPlaceholderShown(false);
    const auto selected = m_selection.item();
    if (selected.isNone()) {
        deselectAll();
        updateStatusBarForNoSelection();
    } else if (selected.isFile()) {
        updateStatusBarForFileSelection();
    }
}

void VellumoAppDelegate::didBringIn(TAdmMDBFile& file, OpenResult result)
{
    if (result == OpenResult::Stopped) return;
    if (result == OpenResult::Failed) {
        clearSelection();
        // What is seen beside the alert agrees with the empty grid.
        deselectAll();
        updateStatusBarForNoSelection();
        return showOpenFailure(file, Alert::Style::Modal);
    }
    m_desktop.recentDocuments.note(file.fullPath());
    reloadTree();
    m_view.expandTreeItem(file);
    selectWhereShown(TreeItem::of(file));
    m_view.scrollToTreeSelection();
}

void VellumoAppDelegate::showOpenFailure(const TAdmMDBFile& file, Alert::Style style)
{
    m_desktop.alerts.show(openFailureAlert(file, style));
}

// Commands on a file of the list

// While it is opened a file's place in the list and its content are the opener's; an export reads from its file.
bool VellumoAppDelegate::isInUse(const TAdmMDBFile& file) const
{
    return m_opener.isOpening(file) || m_exports.isExporting(file);
}

TAdmMDBFile* VellumoAppDelegate::targetFile(Sender sender) const
{
    return sender == Sender::TreeMenu ? m_selection.clickedItem().file : selectedFile();
}

TAdmMDBFile* VellumoAppDelegate::freeTargetFile(Sender sender) const
{
    auto* target = targetFile(sender);
    return target == nullptr || isInUse(*target) ? nullptr : target;
}

bool VellumoAppDelegate::canUse(FileCommand command, Sender sender) const
{
    if (command == FileCommand::ShowInFinder) return targetFile(sender) != nullptr;
    if (command == FileCommand::LookForLostRows) sender = Sender::Other;
    const auto* target = freeTargetFile(sender);
    if (target == nullptr) return false;
    const auto isOtherInUse = [&](const auto& file) { return file.get() != target && isInUse(*file); };
    switch (command) {
    case FileCommand::Open: return !target->active();
    case FileCommand::Close:
    case FileCommand::LookForLostRows: return target->active();
    case FileCommand::RemoveOthers:
        return recentFiles().size() > 1 && std::ranges::none_of(recentFiles(), isOtherInUse);
    default: return true;
    }
}

bool VellumoAppDelegate::canClearRecentDocuments() const
{
    return !m_files.empty() && std::ranges::none_of(recentFiles(), [&](const auto& file) { return isInUse(*file); });
}

// Opens a file of the list that is closed. It counts as stopped if it has left the list before its turn comes.
void VellumoAppDelegate::openListed(const std::shared_ptr<TAdmMDBFile>& file, FileOpener::Done done)
{
    m_opener.enqueue([this, file, done = std::move(done)] {
        if (m_files.contains(file.get()))
            m_opener.open(file, Salvage::None, done);
        else
            done(OpenResult::Stopped);
    });
}

void VellumoAppDelegate::OpenSelectedFile(Sender sender)
{
    auto* target = freeTargetFile(sender);
    if (target == nullptr) return;
    const auto file = m_files.share(*target);
    if (file->active()) return didOpenSelectedFile(*file, OpenResult::Opened);
    openListed(file, [this, file](OpenResult result) { didOpenSelectedFile(*file, result); });
}

void VellumoAppDelegate::didOpenSelectedFile(TAdmMDBFile& file, OpenResult result)
{
    if (result == OpenResult::Failed) showOpenFailure(file, Alert::Style::Sheet);
    if (result != OpenResult::Opened) return;
    m_desktop.recentDocuments.note(file.fullPath());
    refreshRecentFiles();
    m_view.expandTreeItem(file);
    if (treeSelection().isNone()) selectTreeItem(TreeItem::of(file));
    updateStatusBarForFileSelection();
}

void VellumoAppDelegate::OnDoubleClickFileTree()
{
    const auto item = treeSelection();
    if (item.isNone()) return;
    if (item.isTable())
        OpenTableInNewWindow(*item.table);
    else
        OpenSelectedFile(Sender::Other);
    refreshJumpBarMenu();
}

void VellumoAppDelegate::ShowInFinder(Sender sender)
{
    if (const auto* target = targetFile(sender)) m_desktop.workspace.revealFile(target->fullPath());
}

// The tables of the file are about to go: who shows one, or leads to one, lets go of it.
void VellumoAppDelegate::letGoOf(TAdmMDBFile& file)
{
    m_history.removeTables(m_files.tableIds(file));
    m_view.navigationDidChange();
    if (m_childWinManager) m_childWinManager->closeChildrenForFile(file);
    m_jumpBar.clear();
    m_view.jumpBarMenuDidChange();
    m_tree.removeTablesOf(file);
    m_selection.fileWillClose(file);
    if (m_dataView.table() != nullptr && m_dataView.table()->file() == &file) showInGrid(nullptr);
}

void VellumoAppDelegate::closeFile(TAdmMDBFile& file)
{
    letGoOf(file);
    if (selectedFile() == nullptr) showInGrid(nullptr);
    m_view.fileWillClose(file);
    file.close();
}

// Takes the file out of the list. It lives as long as the result, which is to be kept until the tree was reloaded.
std::shared_ptr<TAdmMDBFile> VellumoAppDelegate::dropEntry(TAdmMDBFile& file)
{
    letGoOf(file);
    if (file.active()) m_view.fileWillClose(file);
    return m_files.remove(file);
}

void VellumoAppDelegate::CloseSelectedFile(Sender sender)
{
    auto* target = freeTargetFile(sender);
    if (target == nullptr) return;
    const bool isSelected = target == selectedFile();
    if (isSelected) clearSelection();
    closeFile(*target);
    reloadTree();
    refreshJumpBarMenu();
    // Another file's row stays selected, wherever it has moved.
    if (isSelected) deselectAll();
    updateStatusBarForFileSelection();
}

void VellumoAppDelegate::RemoveSelectedFile(Sender sender)
{
    auto* target = freeTargetFile(sender);
    if (target == nullptr) return;
    const auto path = target->fullPath();
    if (target == selectedFile()) clearSelection();
    closeFile(*target);
    const auto removed = dropEntry(*target);
    auto documents = m_desktop.recentDocuments.paths();
    m_desktop.recentDocuments.clear();
    std::erase(documents, path);
    // Noting puts a document at the front: backwards, so that the order survives.
    for (auto document = documents.rbegin(); document != documents.rend(); ++document)
        m_desktop.recentDocuments.note(*document);
    refreshRecentFiles();
    updateStatusBarForNoSelection();
}

void VellumoAppDelegate::RemoveOtherFiles(Sender sender)
{
    if (!canUse(FileCommand::RemoveOthers, sender)) return;
    auto* target = targetFile(sender);
    if (target != selectedFile()) clearSelection();
    FileList::Files removed;
    for (const auto& file : FileList::Files(recentFiles())) {
        if (file.get() == target) continue;
        closeFile(*file);
        removed.push_back(dropEntry(*file));
    }
    m_desktop.recentDocuments.clear();
    // The extension is left off here, unlike anywhere else.
    m_desktop.recentDocuments.note(format("%@/%@.", {target->path(), target->name()}));
    refreshRecentFiles();
    updateStatusBarForFileSelection();
}

// What a damaged file lost

std::string VellumoAppDelegate::damageBarText() const { return vellumo::damageBarText(m_selection.item()); }

void VellumoAppDelegate::ShowDamage()
{
    if (isSelectedFileOpen()) m_view.beginDamageSheet(std::make_shared<DamageDetails>(*selectedFile(), m_desktop));
}

void VellumoAppDelegate::LookForLostRows()
{
    if (!canUse(FileCommand::LookForLostRows, Sender::Other)) return;
    m_salvageItem = m_files.idOf(m_selection.item());
    m_view.beginSalvageSheet();
}

void VellumoAppDelegate::salvageSheetDidEnd(Salvage salvage)
{
    m_opener.enqueue([this, id = m_salvageItem, salvage] { this->salvage(id, salvage); });
}

// A step of the opener. While it is opened again the window shows the closed file.
void VellumoAppDelegate::salvage(const ItemId& id, Salvage salvage)
{
    auto* file = m_files.find(id).file;
    if (file == nullptr || !file->active() || isInUse(*file)) return;
    const bool isSelected = selectedFile() == file;
    if (isSelected) clearSelection();
    closeFile(*file);
    reloadTree();
    refreshJumpBarMenu();
    if (isSelected) selectWhereShown(TreeItem::of(*file));
    m_opener.open(m_files.share(*file), salvage,
        [this, file, salvage, id](OpenResult result) { didSalvage(*file, salvage, id, result); });
}

// Comes back to the table unless something else has been selected meanwhile.
void VellumoAppDelegate::didSalvage(TAdmMDBFile& file, Salvage salvage, const ItemId& id, OpenResult result)
{
    reloadTree();
    if (file.active()) m_view.expandTreeItem(file);
    if (selectedFile() == &file) {
        selectWhereShown(m_files.find(id));
        m_view.scrollToTreeSelection();
    }
    refreshJumpBarMenu();
    if (result == OpenResult::Failed) showOpenFailure(file, Alert::Style::Sheet);
    if (result == OpenResult::Opened) m_desktop.alerts.show(salvageResult(file, salvage));
}

// The recent documents

void VellumoAppDelegate::clearRecentDocuments()
{
    if (std::ranges::any_of(recentFiles(), [&](const auto& file) { return isInUse(*file); })) return;
    m_desktop.recentDocuments.clear();
    clearSelection();
    for (const auto& file : recentFiles())
        closeFile(*file);
    const auto removed = m_files.removeAll();
    reloadTree();
    refreshJumpBarMenu();
    updateStatusBarForFileSelection();
    setPlaceholderShown(true);
}

void VellumoAppDelegate::refreshRecentFiles()
{
    const auto removed = reconcile(m_desktop.recentDocuments.paths());
    m_files.sortByName();
    reloadTree();
    if (selectedFile() == nullptr) {
        deselectAll();
        // The number of files may be another one.
        updateStatusBarForNoSelection();
    }
    refreshFileInfo(); // size and dates may be others
    restoreTreeSelection();
    refreshJumpBarMenu();
    setPlaceholderShown(m_files.empty());
}

// Returns the files that left the list.
FileList::Files VellumoAppDelegate::reconcile(const std::vector<std::string>& documents)
{
    const auto [vanished, unlisted] = m_files.compareWith(documents);
    if (!vanished.empty() || !unlisted.empty()) m_files.sortByLastOpenDate();
    FileList::Files removed;
    for (auto* file : vanished) {
        if (isInUse(*file)) continue; // goes the next time
        if (file->active()) {
            m_view.collapseTreeItem(*file);
            closeFile(*file);
        }
        removed.push_back(dropEntry(*file));
    }
    for (const auto& document : unlisted)
        m_files.addDocument(document);
    return removed;
}

// A table whose row a filter hides gives its place to its file.
void VellumoAppDelegate::restoreTreeSelection()
{
    const auto selected = m_selection.item();
    if (m_tree.contains(selected))
        m_view.treeSelectionDidChange();
    else if (selected.isTable())
        selectTreeItem(TreeItem::of(*selected.file));
    m_view.scrollToTreeSelection();
}

// Tree

TreeItemText VellumoAppDelegate::objectValueByItem(const TreeItem& item) const
{
    return m_tree.objectValueByItem(item, m_toggles.isShown(ViewToggle::NumRows));
}

void VellumoAppDelegate::reloadTree()
{
    m_tree.reload();
    m_view.reloadTree();
}

// As if the user had selected the row; one that the tree does not show cannot be selected.
void VellumoAppDelegate::selectTreeItem(const TreeItem& item)
{
    if (m_tree.contains(item)) selectWhereShown(item);
}

// Shows an item whether or not the tree has a row for it. No other row stays selected.
void VellumoAppDelegate::selectWhereShown(const TreeItem& item)
{
    selectionDidChange(item);
    m_view.treeSelectionDidChange();
}

void VellumoAppDelegate::deselectAll() { selectWhereShown({}); }

void VellumoAppDelegate::setPlaceholderShown(bool isShown)
{
    m_isPlaceholderShown = isShown;
    m_view.placeholderDidChange();
}

} // namespace vellumo
