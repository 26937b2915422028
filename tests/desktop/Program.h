// SPDX-License-Identifier: MIT
#pragma once

#include "desktop/ports/QtImageDecoder.h"
#include "desktop/ports/QtMainThread.h"
#include "desktop/window/MainWindow.h"
#include "samples/Description.h"
#include "support/FakeDesktop.h"
#include "support/QtApplication.h"
#include "support/TempFolder.h"

#include <QAbstractItemView>
#include <QTableView>
#include <QTest>
#include <QTreeView>
#include <memory>
#include <string>
#include <vector>

namespace vellumo::test {

// The program's real main window over real database files, and a person in front of it: what can be seen, and what
// hands can do with mouse and keyboard.
class Program : public FakeDesktop<SystemFileFacts, QtImageDecoder, QtMainThread> {
public:
    // A database in the folder; returns its path.
    std::string makeDatabase(const std::string& fileName, const samples::DatabaseDescription& description);
    // The demo database in the folder; returns its path.
    std::string makeDemo(const std::string& fileName = "Shop.mdb");
    std::string makeBrokenFile(const std::string& fileName);

    // A new run of the program; ends the one before.
    void start();
    void quit();
    [[nodiscard]] MainWindow& window() { return *m_window; }
    // Handles events until no file is being opened.
    void finishOpening();
    // Opens files as a second start does, and waits.
    void openFiles(const std::vector<std::string>& paths);
    // Starts it with the demo database open.
    void startWithDemo();

    // What can be seen. The tree: a line a row, tables indented, with their counts; the selected one starred.
    [[nodiscard]] std::string treeText();
    [[nodiscard]] std::string statusText();
    [[nodiscard]] QTableView& grid();
    [[nodiscard]] std::string cell(int row, int column);
    [[nodiscard]] std::vector<std::string> columnOfGrid(int column);
    [[nodiscard]] std::string detailText();
    [[nodiscard]] std::string selectedRows();

    // What hands can do. Rows of the tree by name.
    void clickTree(const std::string& name);
    void doubleClickTree(const std::string& name);
    void clickCell(int row, int column, Qt::KeyboardModifiers modifiers = {});
    void clickHeader(int column);
    void typeInto(const char* fieldName, const std::string& text);
    void clickButton(const char* name, QWidget* in = nullptr);
    // Chooses an item of the menu that is open.
    void choose(const std::string& title);
    void clickAndChoose(QWidget& button, const std::string& title);
    // Opens the context menu of a row of the tree, chooses an item, and waits for what it opens.
    void chooseForTree(const std::string& name, const std::string& title);
    void press(int key, Qt::KeyboardModifiers modifiers = {});
    // Onto the window, or onto a part of it. As file managers do, offers the paths as a text, too.
    void dropFiles(const std::vector<std::string>& paths, QWidget* onto = nullptr);
    // An item of the menu bar.
    [[nodiscard]] QAction* menuItem(const std::string& title);

    // By object name.
    template <typename Widget> [[nodiscard]] Widget& find(const char* name) { return child<Widget>(*m_window, name); }

    TempFolder folder;

private:
    [[nodiscard]] QTreeView& tree() { return find<QTreeView>("fileTree"); }
    [[nodiscard]] QModelIndex treeIndex(const std::string& name);
    [[nodiscard]] QPoint treePoint(const std::string& name);

    std::unique_ptr<MainWindow> m_window;
};

// The text of a label, button or action as a person reads it: without mnemonics.
[[nodiscard]] std::string readText(QString text);

} // namespace vellumo::test
