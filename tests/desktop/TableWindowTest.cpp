// SPDX-License-Identifier: MIT
#include "Program.h"

#include "desktop/window/TableWindow.h"

#include <QAction>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QToolButton>
#include <gmock/gmock.h>

namespace vellumo::test {

namespace {

std::vector<QWidget*> tableWindows()
{
    std::vector<QWidget*> windows;
    for (auto* widget : QApplication::topLevelWidgets())
        if (widget->objectName() == "tableWindow" && widget->isVisible()) windows.push_back(widget);
    return windows;
}

class TableWindowTest : public testing::Test {
protected:
    // By the title; null when it is not open.
    static QWidget* windowTitled(const QString& title)
    {
        for (auto* window : tableWindows())
            if (window->windowTitle() == title) return window;
        return nullptr;
    }

    static std::string cell(const QWidget& window, int row, int column)
    {
        return window.findChild<QTableView*>()->model()->index(row, column).data().toString().toStdString();
    }

    Program m_program;
};

} // namespace

TEST_F(TableWindowTest, showsTablesSideBySide)
{
    m_program.startWithDemo();
    m_program.doubleClickTree("Categories");
    m_program.chooseForTree("Employees", "Open in New Window");
    const auto* categories = windowTitled("Categories @Shop");
    const auto* employees = windowTitled("Employees @Shop");
    ASSERT_TRUE(categories != nullptr && employees != nullptr);
    EXPECT_EQ(cell(*categories, 1, 1), "Coffee");
    EXPECT_EQ(cell(*employees, 1, 1), "Okafor");

    // No search applies here.
    m_program.clickTree("Employees");
    m_program.typeInto("dataSearchField", "Sales");
    EXPECT_EQ(m_program.grid().model()->rowCount(), 2);
    EXPECT_EQ(employees->findChild<QTableView*>()->model()->rowCount(), 8);

    // Another table in the same window.
    m_program.clickAndChoose(*employees->findChild<QToolButton*>("jumpBarTable"), "Suppliers");
    EXPECT_EQ(employees->windowTitle(), "Suppliers @Shop");
}

TEST_F(TableWindowTest, sharesTheOrderAndSaysSo)
{
    m_program.startWithDemo();
    m_program.clickTree("Categories");
    m_program.clickCell(2, 1); // Preserves
    m_program.clickHeader(0);
    m_program.doubleClickTree("Categories");
    auto& other = *windowTitled("Categories @Shop")->findChild<QTableView*>();
    auto& header = *other.horizontalHeader();
    const QPoint name(header.sectionViewportPosition(1) + 20, header.height() / 2);
    QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, name);
    for (auto* grid : {&other, &m_program.grid()}) {
        EXPECT_EQ(grid->model()->index(0, 1).data().toString(), "Candles");
        EXPECT_EQ(grid->horizontalHeader()->sortIndicatorSection(), 1);
    }
    EXPECT_EQ(m_program.selectedRows(), "4");
    EXPECT_EQ(m_program.statusText(), "Record 5 of 8");
}

TEST_F(TableWindowTest, hasCommandsOfItsOwn)
{
    m_program.startWithDemo();
    m_program.doubleClickTree("Categories");
    auto* window = windowTitled("Categories @Shop");
    ASSERT_NE(window, nullptr);
    auto& grid = *window->findChild<QTableView*>();
    const auto isUsable = [window](const QString& title) {
        for (const auto* action : window->actions())
            if (action->text() == title) return action->isEnabled();
        throw std::out_of_range(title.toStdString());
    };
    QApplication::processEvents();
    EXPECT_EQ(window->focusWidget(), &grid);
    EXPECT_TRUE(isUsable("&Jump to Row…"));
    EXPECT_FALSE(isUsable("&Deselect All"));
    EXPECT_EQ(window->findChild<QPlainTextEdit*>()->toPlainText(), "No fields selected");
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, grid.visualRect(grid.model()->index(2, 1)).center());
    EXPECT_EQ(window->findChild<QPlainTextEdit*>()->toPlainText(), "Preserves");
    EXPECT_TRUE(isUsable("&Deselect All"));
    QTest::keyClick(&grid, Qt::Key_C, Qt::ControlModifier);
    ASSERT_EQ(m_program.pasteboard.texts.size(), 1U);
    EXPECT_THAT(m_program.pasteboard.texts[0], testing::StartsWith("3\tPreserves\t"));
    // A file without a table has no rows.
    m_program.window().app().childWinManager()->childWins().front()->showTable(nullptr);
    QApplication::processEvents();
    EXPECT_EQ(window->windowTitle(), "");
    EXPECT_FALSE(isUsable("&Jump to Row…"));
    EXPECT_FALSE(isUsable("&Deselect All"));
    QTest::keySequence(window, QKeySequence::Close);
    EXPECT_TRUE(eventually([this] { return m_program.window().app().childWinManager()->childWins().empty(); }, 3000));
    EXPECT_TRUE(tableWindows().empty());
}

TEST_F(TableWindowTest, findsRecordsWithoutHidingOthers)
{
    m_program.startWithDemo();
    m_program.doubleClickTree("Employees");
    auto& window = *windowTitled("Employees @Shop");
    const auto label = [&](const char* name) { return window.findChild<QLabel*>(name)->text().toStdString(); };
    QTest::keyClick(window.focusWidget(), Qt::Key_F, Qt::ControlModifier);
    auto& field = *window.findChild<QLineEdit*>("findField");
    EXPECT_EQ(window.focusWidget(), &field);
    QTest::keyClicks(&field, "sales");
    EXPECT_EQ(label("searchText"), "“sales”: 2 of 8 records");
    std::string found;
    for (const auto modifier : {Qt::NoModifier, Qt::NoModifier, Qt::NoModifier, Qt::ShiftModifier}) {
        QTest::keyClick(&field, Qt::Key_Return, modifier);
        found += label("statusText") + "; ";
    }
    EXPECT_EQ(found, "Record 7 of 8; Record 8 of 8; Record 7 of 8; Record 8 of 8; ");
    EXPECT_EQ(window.findChild<QPlainTextEdit*>()->toPlainText(), "Sales");
    QTest::keyClick(&field, Qt::Key_F11);
    EXPECT_TRUE(window.isFullScreen());
    QTest::keyClick(&field, Qt::Key_Escape);
    EXPECT_EQ(label("searchText"), "");
    EXPECT_EQ(window.focusWidget()->objectName(), "dataTableView");
}

TEST_F(TableWindowTest, keepsItsSizeHoweverItGoes)
{
    m_program.startWithDemo();
    m_program.doubleClickTree("Categories");
    windowTitled("Categories @Shop")->resize(520, 410);
    m_program.start(); // ends the run with the window open
    m_program.doubleClickTree("Shop");
    m_program.doubleClickTree("Categories");
    EXPECT_EQ(windowTitled("Categories @Shop")->size(), QSize(520, 410));
    windowTitled("Categories @Shop")->resize(530, 420);
    m_program.chooseForTree("Shop", "Close");
    m_program.doubleClickTree("Shop");
    m_program.doubleClickTree("Orders");
    EXPECT_EQ(windowTitled("Orders @Shop")->size(), QSize(530, 420));
}

TEST_F(TableWindowTest, closesWithItsFileAndNoOther)
{
    m_program.recent.listed = {m_program.makeDemo("Shop.mdb"), m_program.makeDemo("Archive.mdb")};
    m_program.start();
    m_program.doubleClickTree("Shop");
    m_program.doubleClickTree("Orders");
    m_program.chooseForTree("Shop", "Close");
    EXPECT_TRUE(tableWindows().empty());
    m_program.doubleClickTree("Archive");
    m_program.doubleClickTree("Orders");
    m_program.chooseForTree("Shop", "Open");
    m_program.chooseForTree("Shop", "Close");
    EXPECT_NE(windowTitled("Orders @Archive"), nullptr);
    m_program.quit();
    EXPECT_TRUE(tableWindows().empty());
}

} // namespace vellumo::test
