// SPDX-License-Identifier: MIT
#pragma once

#include "browser/DataView.h"
#include "browser/JumpBarMenu.h"

#include <memory>
#include <string>
#include <vector>

namespace vellumo {

enum class WindowLevel { Normal, ModalPanel };

// The widgets of a table window. Destroying the port destroys the window. Main thread only.
class ChildWindowPort {
public:
    virtual ~ChildWindowPort() = default;

    // Lives as long as the port.
    [[nodiscard]] virtual DataViewPort& dataView() = 0;
    virtual void setTitle(const std::string& title) = 0;
    virtual void setLevel(WindowLevel level) = 0;
    // Brings the window to the front and gives it the keyboard.
    virtual void makeKey() = 0;
    virtual void jumpBarMenuDidChange() = 0;
    virtual void jumpBarSelectionDidChange() = 0;
};

class ChildWindowManager;
class MainWindowView;

// A window that shows one table. The sort order is the table's own, no search applies. Lives until it is closed.
class ChildWindow {
public:
    // Shows the table with the text pane open and takes the keyboard. `manager`, `mainWindow`, `files` and the
    // interfaces outlive the window.
    ChildWindow(ChildWindowManager& manager, MainWindowView& mainWindow, const FileList& files,
        const DesktopPorts& desktop, TAdmMDBTable* tableToShow);
    // The widgets go first: they may ask for what they show until they are gone.
    ~ChildWindow() { m_port.reset(); }
    ChildWindow(const ChildWindow&) = delete;
    ChildWindow& operator=(const ChildWindow&) = delete;

    // Null: an empty grid and an empty title.
    void showTable(TAdmMDBTable* table);
    // The same table, in the form and with the headers that are wanted now.
    void showTableAnew();
    // The tables of the file go and come again: shows none, and then the one that has come in its place. False: there
    // is none.
    void awaitTable();
    [[nodiscard]] bool showAwaitedTable();
    [[nodiscard]] TAdmMDBTable* tableToShow() const { return m_tableToShow; }
    // "Orders @Sales"; "" without a table.
    [[nodiscard]] const std::string& title() const { return m_title; }

    [[nodiscard]] DataView& dataView() { return m_dataView; }
    [[nodiscard]] const JumpBarMenu& jumpBar() const { return m_jumpBar; }
    [[nodiscard]] ChildWindowPort& port() { return *m_port; }

    // The jump bar: its menu is rebuilt for the listed files; a selection by the user shows the table, a file none.
    void refreshChildJumpBarMenu();
    void clearJumpBarMenu();
    void jumpBarDidSelectItem(const TreeItem& item);

    // To be called when the user closes the window. This object and its port are gone afterwards.
    void windowWillClose();

private:
    void updateJumpBarSelection();

    ChildWindowManager& m_manager;
    std::unique_ptr<ChildWindowPort> m_port;
    DataView m_dataView;
    JumpBarMenu m_jumpBar;
    TAdmMDBTable* m_tableToShow = nullptr;
    ItemId m_awaited; // none while nothing is awaited
    std::string m_title;
};

class VellumoAppDelegate;

// The table windows that are open, in the order in which they were opened.
class ChildWindowManager {
public:
    // The delegate outlives the manager.
    explicit ChildWindowManager(VellumoAppDelegate& delegate)
        : m_delegate(delegate)
    {
    }

    [[nodiscard]] const std::vector<std::unique_ptr<ChildWindow>>& childWins() const { return m_childWins; }

    // A new window, also for a table that is shown in one already.
    void createChildWindow(TAdmMDBTable& table);
    // Closes the windows that show a table of the file.
    void closeChildrenForFile(const TAdmMDBFile& file);
    // The windows of a file that is read again stay open, but for those whose table does not come again.
    void fileWillBeReadAgain(const TAdmMDBFile& file);
    void fileWasReadAgain();
    // The window object is gone afterwards.
    void removeChild(const ChildWindow& window);
    void AllAlwaysOnTop(bool isOnTop);

    void refreshChildJumpBarMenus();
    // A click in this view has changed the order of its table: every other window that shows it follows.
    void orderDidChange(const DataView& by);
    void showTablesAnew();
    // In the windows that show this one.
    void showTableAnew(const TAdmMDBTable& table);
    [[nodiscard]] VellumoAppDelegate& delegate() { return m_delegate; }

private:
    VellumoAppDelegate& m_delegate;
    std::vector<std::unique_ptr<ChildWindow>> m_childWins;
};

} // namespace vellumo
