// SPDX-License-Identifier: MIT
#pragma once

#include "browser/ChildWindow.h"
#include "browser/DataView.h"
#include "browser/InformationPane.h"
#include "browser/TreeItem.h"
#include "browser/ViewToggles.h"

#include <cstdint>
#include <memory>

namespace vellumo {

class ChildWindow;
class DamageDetails;
class ExportWizard;
struct PasswordQuestion;

enum class InformationChange {
    Bar,     // which buttons are shown, and which one is selected
    Lists,   // everything of the type
    Details, // the property list beside the type's name list
};

// What is told of by its name alone.
enum class WindowPart {
    StatusText,
    Placeholder,
    Navigation, // whether Back and Next can be used, in toolbar and menu
    JumpBar,    // its items or its selection; so often that its menus are better made when they are about to open
    SearchMenu, // the text of the search field as well
    ChangeBar,  // whether the selected file has changed on disk
    Settings,   // what is settled for all files, or for the selected one
};

// The main window as the controller sees it. Each call says what changed; what it changed to is asked of the
// VellumoAppDelegate. No call waits for the user, and none calls back before it returns. Main thread only.
class MainWindowView {
public:
    virtual ~MainWindowView() = default;

    // The grid and the detail pane of the main window; lives as long as the view. Used already while the controller is
    // being made.
    [[nodiscard]] virtual DataViewPort& dataView() = 0;

    // Tree. The view keeps which files are expanded.
    // All rows anew; the selected row is VellumoAppDelegate::treeSelection().
    virtual void reloadTree() = 0;
    // The tables of this file go: the tree shows none of them and forgets them.
    virtual void fileWillClose(TAdmMDBFile& file) = 0;
    virtual void setTreeItemExpanded(TAdmMDBFile& file, bool isExpanded) = 0;
    virtual void treeSelectionDidChange() = 0;
    // To the selected row.
    virtual void scrollToTreeSelection() = 0;

    // Information pane. `type` means nothing for the bar.
    virtual void informationDidChange(InformationChange change, InformationType type) = 0;

    virtual void partDidChange(WindowPart part) = 0;
    // Shows or hides the part and gives its menu item and button their new looks.
    virtual void viewToggleDidChange(ViewToggle toggle) = 0;

    virtual void deselectAllForToolbarItems() = 0;

    virtual void focusDataSearchField() = 0;

    // The time while a file is opened; VellumoAppDelegate::StopOpening gives it up. Which commands can be used changes
    // with the first and the last.
    virtual void openDidBegin(const TAdmMDBFile& file) = 0;
    virtual void openDidProgress(std::uint64_t rowsDone, std::uint64_t rowsExpected) = 0; // as OpenObserver has them
    virtual void openDidEnd() = 0;

    // The time while the lookup texts of a large table are looked up; VellumoAppDelegate::StopLookingUp gives it up.
    virtual void lookupDidBegin(const TAdmMDBTable& table) = 0;
    virtual void lookupDidProgress(std::uint64_t rowsDone, std::uint64_t rowsExpected) = 0;
    virtual void lookupDidEnd() = 0;

    // What the selected file lost, as a sheet.
    virtual void beginDamageSheet(const std::shared_ptr<DamageDetails>& details) = 0;
    // Asks what to look for; it ends with VellumoAppDelegate::salvageSheetDidEnd, unless it is cancelled.
    virtual void beginSalvageSheet() = 0;

    // Asks for a password; it ends with VellumoAppDelegate::passwordSheetDidEnd at any rate.
    virtual void beginPasswordSheet(const PasswordQuestion& question) = 0;

    // The export dialog as a sheet; it ends with VellumoAppDelegate::exportSheetDidEnd.
    virtual void beginExportSheet(const std::shared_ptr<ExportWizard>& wizard) = 0;
    // The sheet with progress and Stop, on which the job reports.
    virtual void beginExportProgressSheet(const std::shared_ptr<ExportWizard>& wizard) = 0;

    // A window for one table. The port keeps `window` and may ask it from now on, but not yet during this call.
    [[nodiscard]] virtual std::unique_ptr<ChildWindowPort> createChildWindow(ChildWindow& window) = 0;
    [[nodiscard]] virtual bool isFullScreen() const = 0;
    virtual void bringToFront() = 0;
};

} // namespace vellumo
