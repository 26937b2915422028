// SPDX-License-Identifier: MIT
#pragma once

#include "FakeWindow.h"
#include "browser/VellumoAppDelegate.h"
#include "support/FakeDesktop.h"
#include "support/RecordingLoadErrorWindow.h"
#include "support/TempFolder.h"

#include <iosfwd>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace vellumo::test {

// What a person could tell of the program at one moment, each as one line of text.
struct Sight {
    std::string tree;   // "Sales[Customers Orders*] Stock": open files with their tables, the selected row starred
    std::string status; // the status bar
    std::string
        history; // "Customers Orders | Items <>": visited, then next tables; < and > while Back, Next can be used
    std::string recent; // file names of the recent documents
    std::string alerts; // since the step before: "modal Error: ...", joined by "; "

    bool operator==(const Sight&) const = default;
};
void PrintTo(const Sight& sight, std::ostream* out);

// The program with stand-ins for desktop and window, and real database files in a folder of its own.
class Session : public FakeDesktop<> {
public:
    // A database in the folder, with tables of so many rows; their one text column "Name" holds "r1", "r2" and so on.
    // Returns its path.
    std::string makeDatabase(const std::string& fileName, const std::vector<std::pair<std::string, int>>& tables);
    // A file that is no database.
    std::string makeBrokenFile(const std::string& fileName);

    // A new run of the program; ends the one before.
    void start();
    void quit();
    [[nodiscard]] VellumoAppDelegate& app() { return *m_app; }

    // By the name of a file, or "file/table".
    [[nodiscard]] TreeItem item(const std::string& name) const;
    // What a click on a tree row does.
    void click(const std::string& name);
    // Opens them and waits.
    void openByPanel(const std::vector<std::string>& paths);
    // Runs the main thread until every file that is being opened, or waits to be, is done with. Before that nothing of
    // an opening arrives.
    void finishOpening();
    // Opens the menu of a tree row around a command, and waits for what it opens.
    void clickMenu(const std::string& name, void (VellumoAppDelegate::*command)(VellumoAppDelegate::Sender));

    [[nodiscard]] Sight sight();
    [[nodiscard]] std::string tableNames(const SelectionHistory::Tables& tables) const;

    TempFolder folder;
    RecordingLoadErrorWindow loadErrorWindow;
    FakeWindow window;

private:
    std::unique_ptr<VellumoAppDelegate> m_app;
};

} // namespace vellumo::test
