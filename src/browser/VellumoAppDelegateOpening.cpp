// SPDX-License-Identifier: MIT
// How files are opened: what is asked first, opening again in another way, and opening for an export; and in what form
// their tables are shown.

#include "browser/DamageDetails.h"
#include "browser/VellumoAppDelegate.h"
#include "text/Format.h"
#include "text/Messages.h"

namespace vellumo {

void VellumoAppDelegate::openDidFail(TAdmMDBFile& file, Alert::Style style, Files::Once once, Files::Done done)
{
    // The answer may come when the file has left the list.
    auto retry = [this, shared = m_files.list().share(file), once, done = std::move(done)](
                     std::optional<std::string> password) mutable {
        if (!shared || !m_files.list().contains(shared.get()) || m_files.isInUse(*shared)) return;
        once.password = std::move(password);
        m_files.open(*shared, once, done);
    };
    m_openQuestions.openDidFail(file, style, std::move(retry));
}

void VellumoAppDelegate::passwordSheetDidEnd(std::optional<std::string> password)
{
    m_openQuestions.passwordSheetDidEnd(std::move(password));
}

void VellumoAppDelegate::SetOpensNewerFiles(bool opens)
{
    m_openChoices.setOpensNewerFiles(opens);
    m_view.partDidChange(WindowPart::Settings);
}

bool VellumoAppDelegate::canSetTextEncoding() const
{
    return canUse(FileCommand::LookForLostRows, Sender::Other) && selectedFile()->format().version == 0;
}

std::optional<int> VellumoAppDelegate::textEncoding() const
{
    return selectedFile() == nullptr ? std::nullopt : m_openChoices.codePage(selectedFile()->fullPath());
}

void VellumoAppDelegate::SetTextEncoding(std::optional<int> codePage)
{
    if (!canSetTextEncoding() || textEncoding() == codePage) return;
    m_openChoices.setCodePage(selectedFile()->fullPath(), codePage);
    m_view.partDidChange(WindowPart::Settings);
    openAgain(m_files.list().idOf(m_selection.item()), Salvage::None);
}

// While it is opened again the window shows the closed file.
void VellumoAppDelegate::openAgain(const ItemId& id, Salvage salvage)
{
    const auto begun = [this](TAdmMDBFile& file) {
        reloadTree();
        refreshJumpBarMenu();
        if (selectedFile() == &file) selectWhereShown(TreeItem::of(file));
    };
    m_files.openAgain(id, salvage, begun,
        [this, salvage, id](TAdmMDBFile& file, OpenResult result) { didOpenAgain(file, salvage, id, result); });
}

// Comes back to the table unless something else has been selected meanwhile.
void VellumoAppDelegate::didOpenAgain(TAdmMDBFile& file, Salvage salvage, const ItemId& id, OpenResult result)
{
    reloadTree();
    if (file.active()) m_view.setTreeItemExpanded(file, true);
    if (selectedFile() == &file) {
        selectWhereShown(m_files.list().find(id));
        m_view.scrollToTreeSelection();
    }
    if (m_childWinManager) m_childWinManager->fileWasReadAgain();
    refreshJumpBarMenu();
    if (result == OpenResult::Failed)
        openDidFail(file, Alert::Style::Sheet, {.salvage = salvage},
            [this, salvage, id](TAdmMDBFile& again, OpenResult next) { didOpenAgain(again, salvage, id, next); });
    if (result == OpenResult::Opened && salvage != Salvage::None) m_desktop.alerts.show(salvageResult(file, salvage));
}

void VellumoAppDelegate::openForExport(TAdmMDBFile& file, int exportType)
{
    m_isExportWaiting = true;
    m_files.open(file,
        [this, exportType](TAdmMDBFile& opened, OpenResult result) { didOpenForExport(opened, result, exportType); });
}

void VellumoAppDelegate::didOpenForExport(TAdmMDBFile& file, OpenResult result, int exportType)
{
    m_isExportWaiting = false;
    if (result == OpenResult::Failed)
        openDidFail(file, Alert::Style::Sheet, {},
            [this, exportType](TAdmMDBFile& again, OpenResult next) { didOpenForExport(again, next, exportType); });
    if (result != OpenResult::Opened) return;
    reloadTree();
    refreshJumpBarMenu();
    if (!m_exports.isExporting()) m_exports.begin(m_files.list().share(file), nullptr, exportType);
}

// Contents and lookup texts

void VellumoAppDelegate::CopyContentsText()
{
    const auto* entry = m_information.selectedEntryOf(InformationType::Contents);
    if (entry != nullptr && !entry->text.empty()) m_desktop.pasteboard.setText(entry->text);
}

const TAdmMDBTable* VellumoAppDelegate::shownTable(const TAdmMDBTable* table)
{
    return table != nullptr && m_toggles.isShown(ViewToggle::LookupTexts) ? m_lookupTables.find(*table) : table;
}

void VellumoAppDelegate::showGridsAnew()
{
    m_dataView.showInstead(shownTable(selectedTable()));
    if (m_childWinManager) m_childWinManager->showTablesAnew();
    if (!m_toggles.isShown(ViewToggle::LookupTexts)) m_lookupTables.forgetAll();
}

void VellumoAppDelegate::lookupDidFind(const TAdmMDBTable& table)
{
    if (m_dataView.table() == &table) m_dataView.showInstead(shownTable(&table));
    if (m_childWinManager) m_childWinManager->showTableAnew(table);
}

void VellumoAppDelegate::lookupDidFail(const TAdmMDBTable& table)
{
    m_desktop.alerts.show({localized("The lookup texts cannot be shown."),
        localizedFormat("There is too little memory for those of the table %@.", {table.name()})});
}

void VellumoAppDelegate::StopLookingUp()
{
    if (isLookingUp()) ToggleLookupTexts();
}

} // namespace vellumo
