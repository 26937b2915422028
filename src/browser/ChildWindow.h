#pragma once

#include "browser/ChildWindowPort.h"
#include "browser/DataView.h"
#include "browser/JumpBarMenu.h"

#include <memory>

namespace vellumo {

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
    std::string m_title;
};

} // namespace vellumo
