// SPDX-License-Identifier: MIT
// The file list half of the controller: bringing files in, closing and removing them, and the tree that shows them.

#include "browser/DamageDetails.h"
#include "browser/DroppedPath.h"
#include "browser/VellumoAppDelegate.h"
#include "text/Format.h"

#include <algorithm>

namespace vellumo {

// Bringing files in

TAdmMDBFile& VellumoAppDelegate::createNewMDBFile(std::string_view path, bool insertFront)
{
    return m_files.list().createNewMDBFile(path, insertFront);
}

TAdmMDBFile& VellumoAppDelegate::findMDBFileByPath(std::string_view path)
{
    auto& file = m_files.replace(path);
    reloadTree();
    return file;
}

void VellumoAppDelegate::OpenFile()
{
    // Beside the file that was opened last.
    const auto documents = m_desktop.recentDocuments.paths();
    const auto last = documents.empty() ? std::string() : documents.front();
    const auto paths = m_desktop.filePanels.openFiles({"accdb", "mdb"}, last.substr(0, last.rfind('/')));
    for (const auto& path : paths.value_or(std::vector<std::string>()))
        bringIn(path);
    afterOpening([this] {
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
        bringIn(path);
        afterOpening([this] { refreshRecentFiles(); });
    }
}

void VellumoAppDelegate::bringIn(const std::string& path)
{
    m_files.bringIn(
        path, [this] { showNewEntry(); }, [this](TAdmMDBFile& file, OpenResult result) { didBringIn(file, result); });
}

// The file is seen while it is opened, and what was shown of an entry that it replaces is not.
void VellumoAppDelegate::showNewEntry()
{
    reloadTree();
    refreshJumpBarMenu();
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
        return openDidFail(
            file, Alert::Style::Modal, {}, [this](TAdmMDBFile& again, OpenResult next) { didBringIn(again, next); });
    }
    m_desktop.recentDocuments.note(file.fullPath());
    reloadTree();
    m_view.setTreeItemExpanded(file, true);
    selectWhereShown(TreeItem::of(file));
    m_view.scrollToTreeSelection();
}

// Commands on a file of the list

TAdmMDBFile* VellumoAppDelegate::targetFile(Sender sender) const
{
    return sender == Sender::TreeMenu ? m_selection.clickedItem().file : selectedFile();
}

// The target of a command that changes it; null also when that has to wait.
TAdmMDBFile* VellumoAppDelegate::freeTargetFile(Sender sender) const
{
    auto* target = targetFile(sender);
    return target == nullptr || m_files.isInUse(*target) ? nullptr : target;
}

bool VellumoAppDelegate::canUse(FileCommand command, Sender sender) const
{
    return m_files.canUse(command, targetFile(command == FileCommand::LookForLostRows ? Sender::Other : sender));
}

bool VellumoAppDelegate::canClearRecentDocuments() const { return !recentFiles().empty() && !m_files.isAnyInUse(); }

void VellumoAppDelegate::OpenSelectedFile(Sender sender)
{
    auto* target = freeTargetFile(sender);
    if (target == nullptr) return;
    if (target->active()) return didOpenSelectedFile(*target, OpenResult::Opened);
    m_files.open(*target, [this](TAdmMDBFile& file, OpenResult result) { didOpenSelectedFile(file, result); });
}

void VellumoAppDelegate::didOpenSelectedFile(TAdmMDBFile& file, OpenResult result)
{
    if (result == OpenResult::Failed)
        openDidFail(file, Alert::Style::Sheet, {},
            [this](TAdmMDBFile& again, OpenResult next) { didOpenSelectedFile(again, next); });
    if (result != OpenResult::Opened) return;
    m_desktop.recentDocuments.note(file.fullPath());
    refreshRecentFiles();
    m_view.setTreeItemExpanded(file, true);
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
    m_navigation.fileWillClose(file);
    m_view.partDidChange(WindowPart::Navigation);
    if (m_childWinManager) m_childWinManager->closeChildrenForFile(file);
    m_view.partDidChange(WindowPart::JumpBar);
    m_tree.removeTablesOf(file);
    m_selection.fileWillClose(file);
    const auto* shown = m_dataView.table();
    if (selectedFile() == nullptr || (shown != nullptr && shown->file() == &file)) showInGrid(nullptr);
    m_lookupTables.forget(file);
}

void VellumoAppDelegate::closeFile(TAdmMDBFile& file) { m_files.close(file); }

void VellumoAppDelegate::CloseSelectedFile(Sender sender)
{
    auto* target = freeTargetFile(sender);
    if (target == nullptr) return;
    if (target == selectedFile()) clearSelection();
    closeFile(*target);
    reloadTree();
    refreshJumpBarMenu();
    updateStatusBarForFileSelection();
}

void VellumoAppDelegate::RemoveSelectedFile(Sender sender)
{
    auto* target = freeTargetFile(sender);
    if (target == nullptr) return;
    const auto path = target->fullPath();
    if (target == selectedFile()) clearSelection();
    closeFile(*target);
    m_files.drop(*target);
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
    m_files.dropAllBut(target);
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
    m_salvageItem = m_files.list().idOf(m_selection.item());
    m_view.beginSalvageSheet();
}

void VellumoAppDelegate::salvageSheetDidEnd(Salvage salvage) { openAgain(m_salvageItem, salvage); }

void VellumoAppDelegate::ReadAgain()
{
    if (canUse(FileCommand::Open, Sender::Other)) return OpenSelectedFile(Sender::Other);
    if (canUse(FileCommand::Close, Sender::Other)) openAgain(m_files.list().idOf(m_selection.item()), Salvage::None);
}

void VellumoAppDelegate::lookAtDisk()
{
    if (isSelectedFileOpen()) m_files.lookAtDisk(*selectedFile());
}

bool VellumoAppDelegate::isSelectedFileMissing() const
{
    return selectedFile() != nullptr && m_files.list().isMissing(*selectedFile());
}

std::string VellumoAppDelegate::changeBarText() const
{
    const auto* file = selectedFile();
    if (file == nullptr || m_files.isInUse(*file) || !m_files.hasChangedOnDisk(*file)) return {};
    return localizedFormat("“%@” has changed on disk since it was read.", {file->label()});
}

// The recent documents

void VellumoAppDelegate::clearRecentDocuments()
{
    if (m_files.isAnyInUse()) return;
    m_desktop.recentDocuments.clear();
    clearSelection();
    m_files.dropAllBut(nullptr);
    reloadTree();
    refreshJumpBarMenu();
    updateStatusBarForFileSelection();
    setPlaceholderShown(true);
}

void VellumoAppDelegate::refreshRecentFiles()
{
    m_files.reconcile(m_desktop.recentDocuments.paths());
    reloadTree();
    if (selectedFile() == nullptr) {
        deselectAll();
        // The number of files may be another one.
        updateStatusBarForNoSelection();
    }
    refreshFileInfo(); // size and dates may be others
    restoreTreeSelection();
    refreshJumpBarMenu();
    setPlaceholderShown(recentFiles().empty());
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
    m_files.forgetDropped();
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
    m_view.partDidChange(WindowPart::Placeholder);
}

} // namespace vellumo
