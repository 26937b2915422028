// SPDX-License-Identifier: MIT
#include "Program.h"

#include <QLineEdit>
#include <gmock/gmock.h>

namespace vellumo::test {

namespace {

class FileListTest : public testing::Test {
protected:
    Program m_program;
};

} // namespace

TEST_F(FileListTest, showsThatAFileIsNotThereAnyMore)
{
    m_program.recent.listed = {m_program.makeDemo(), m_program.folder.path("Gone.mdb")};
    m_program.start();
    const auto& model = *m_program.find<QTreeView>("fileTree").model();
    for (const int row : {0, 1}) { // Gone, Shop
        const auto index = model.index(row, 0);
        EXPECT_EQ(index.data(Qt::ForegroundRole).isValid(), row == 0);
        EXPECT_EQ(index.data(Qt::ToolTipRole).toString().contains("not there any more"), row == 0);
    }
}

TEST_F(FileListTest, readsAFileAgain)
{
    m_program.startWithDemo();
    m_program.clickTree("Suppliers");
    auto& bar = m_program.find<QWidget>("changeBar");
    EXPECT_FALSE(bar.isVisible());
    samples::DatabaseDescription description;
    description.tables.push_back({.name = "Suppliers", .columns = {{.name = "New"}}});
    m_program.makeDatabase("Shop.mdb", description);
    m_program.clickTree("Orders");
    EXPECT_TRUE(eventually([&] { return bar.isVisible(); }));
    m_program.clickTree("Suppliers");
    m_program.press(Qt::Key_F5);
    m_program.finishOpening();
    EXPECT_EQ(m_program.treeText(), "Shop\n  Suppliers  (0)*\n");
    EXPECT_EQ(m_program.grid().model()->columnCount(), 1);
    EXPECT_FALSE(bar.isVisible());
}

TEST_F(FileListTest, listsManyTablesToTypeIn)
{
    samples::DatabaseDescription description;
    for (int i = 1; i <= 31; ++i)
        description.tables.push_back({.name = "Table " + std::to_string(i), .columns = {{.name = "A"}}});
    m_program.start();
    m_program.openFiles({m_program.makeDatabase("Many.mdb", description)});
    m_program.press(Qt::Key_4, Qt::ControlModifier);
    m_program.clickTree("Table 7");
    for (const auto& [button, typed, chosen] : {std::tuple{"jumpBarTable", "TABLE 2", "Table 20"},
             {"jumpBarFile", "TABLE 31", "Table 31"}, {"jumpBarTable", "no such table", "Table 31"}}) {
        m_program.clickButton(button);
        auto* list = QApplication::activePopupWidget();
        ASSERT_TRUE(list != nullptr && list->objectName() == "jumpList") << button;
        auto& field = *list->findChild<QLineEdit*>("jumpFilter");
        QTest::keyClicks(&field, typed);
        if (chosen == std::string("Table 20")) QTest::keyClick(&field, Qt::Key_Down); // behind Table 2
        QTest::keyClick(&field, Qt::Key_Return);
        if (list->isVisible()) QTest::keyClick(&field, Qt::Key_Escape);
        QApplication::processEvents();
        EXPECT_THAT(m_program.treeText(), testing::HasSubstr(chosen + std::string("  (0)*"))) << typed;
    }
}

} // namespace vellumo::test
