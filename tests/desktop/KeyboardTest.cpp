// SPDX-License-Identifier: MIT
#include "Program.h"

#include "desktop/tree/FileListPanel.h"

#include <QAbstractButton>
#include <QMenu>
#include <QMenuBar>
#include <QTableWidget>
#include <gmock/gmock.h>
#include <map>

namespace vellumo::test {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class KeyboardTest : public testing::Test {
protected:
    static std::string focusName()
    {
        const auto* focus = QApplication::focusWidget();
        if (focus == nullptr) return "nothing";
        return (focus->objectName().isEmpty() ? focus->accessibleName() : focus->objectName()).toStdString();
    }
    std::vector<std::string> pressed(int key, Qt::KeyboardModifiers modifiers, int times)
    {
        std::vector<std::string> places;
        for (int i = 0; i < times; ++i) {
            m_program.press(key, modifiers);
            places.push_back(focusName());
        }
        return places;
    }

    Program m_program;
};

} // namespace

TEST_F(KeyboardTest, beginsWithTheOneFileThereIs)
{
    for (const auto key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_Home, Qt::Key_Return}) {
        SCOPED_TRACE(key);
        std::filesystem::remove(m_program.folder.path("Shop.mdb"));
        m_program.recent.listed = {m_program.makeDemo()};
        m_program.start();
        m_program.press(key);
        m_program.finishOpening();
        EXPECT_THAT(m_program.treeText(), testing::StartsWith("Shop*\n"));
        EXPECT_EQ(m_program.treeText() != "Shop*\n", key == Qt::Key_Return) << "opened";
    }
}

TEST_F(KeyboardTest, goesFromPaneToPane)
{
    m_program.startWithDemo();
    m_program.press(Qt::Key_3, Qt::ControlModifier); // the text view
    m_program.clickTree("Orders");
    EXPECT_THAT(pressed(Qt::Key_F6, {}, 4), ElementsAre("Table Information", "dataTableView", "Value", "fileTree"));
    EXPECT_THAT(pressed(Qt::Key_F6, Qt::ShiftModifier, 2), ElementsAre("Value", "dataTableView"));
    m_program.press(Qt::Key_2, Qt::ControlModifier); // without information
    EXPECT_THAT(pressed(Qt::Key_F6, Qt::ShiftModifier, 2), ElementsAre("fileTree", "Value"));
}

TEST_F(KeyboardTest, theTabKeyFollowsTheEye)
{
    m_program.startWithDemo();
    m_program.press(Qt::Key_4, Qt::ControlModifier); // jump bar
    m_program.clickTree("Orders");
    m_program.find<QWidget>("dataSearchField").setFocus();
    // Of the buttons that exclude each other one takes the key.
    EXPECT_THAT(pressed(Qt::Key_Tab, {}, 8),
        ElementsAre("fileSearchField", "fileTree", "InfoView_Table_Button", "Table Information", "jumpBarFile",
            "jumpBarTable", "dataTableView", "Hide File List"));
}

TEST_F(KeyboardTest, movesToCellsAndSelectsTheirRows)
{
    m_program.startWithDemo();
    m_program.clickTree("Categories");
    m_program.clickCell(3, 1);
    const struct {
        int key;
        const char* selected;
        int column;
    } cases[] = {{Qt::Key_End, "7", 3}, {Qt::Key_Left, "7", 2}, {Qt::Key_Home, "0", 0}, {Qt::Key_Right, "0", 1}};
    for (const auto& [key, selected, column] : cases) {
        m_program.press(key, Qt::ControlModifier);
        EXPECT_EQ(m_program.selectedRows(), selected) << key;
        EXPECT_EQ(m_program.grid().currentIndex().column(), column) << key;
    }
}

TEST_F(KeyboardTest, aTableWhereOneStaysCountsAsVisited)
{
    m_program.startWithDemo();
    m_program.press(Qt::Key_Down);
    m_program.press(Qt::Key_Down); // passes by the first table
    const auto visits = [&] { return m_program.window().app().history().previousTables(); };
    EXPECT_TRUE(eventually([&] { return !visits().empty(); }));
    ASSERT_EQ(visits().size(), 1U);
    EXPECT_EQ(visits()[0].tableName, "Customers");
}

// Two controls with one key: neither does anything at the first press.
TEST_F(KeyboardTest, eachMnemonicIsUnique)
{
    m_program.startWithDemo();
    m_program.clickTree("Employees");
    m_program.press(Qt::Key_3, Qt::ControlModifier);
    m_program.clickCell(0, 7); // a picture
    std::map<std::string, std::string> owners;
    const auto add = [&](const QString& text) {
        const auto key = QKeySequence::mnemonic(text).toString().toStdString();
        if (key.empty()) return;
        const auto [owner, isNew] = owners.emplace(key, readText(text));
        EXPECT_TRUE(isNew) << key << ": " << owner->second << ", " << readText(text);
    };
    for (const auto* action : m_program.window().menuBar()->actions())
        add(action->text());
    for (const auto* button : m_program.window().findChildren<QAbstractButton*>())
        if (button->isVisible()) add(button->text());
    EXPECT_GE(owners.size(), 9U);
    for (const auto* menu : m_program.window().menuBar()->findChildren<QMenu*>()) {
        owners.clear();
        for (const auto* action : menu->actions())
            add(action->text());
    }
}

TEST_F(KeyboardTest, listsItsKeys)
{
    m_program.start();
    m_program.menuItem("Keyboard Shortcuts")->trigger();
    auto* dialog = QApplication::activeModalWidget();
    ASSERT_NE(dialog, nullptr);
    const auto& table = *dialog->findChild<QTableWidget*>("shortcuts");
    std::string text;
    for (int row = 0; row < table.rowCount(); ++row)
        for (int column = 0; column < 3; ++column)
            text += table.item(row, column)->text().toStdString() + (column < 2 ? "|" : "\n");
    EXPECT_THAT(text, HasSubstr("File|Open|Ctrl+O\n"));
    EXPECT_THAT(text, HasSubstr("View|Enter Full Screen|F11\n"));
    EXPECT_THAT(text, HasSubstr("Records|Show the first cell, show the last cell|Ctrl+Home, Ctrl+End\n"));
    dialog->close();
}

} // namespace vellumo::test
