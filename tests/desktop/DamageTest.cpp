// SPDX-License-Identifier: MIT
#include "Program.h"

#include "desktop/QtText.h"

#include <QAccessible>
#include <QCheckBox>
#include <QDialog>
#include <gmock/gmock.h>

namespace vellumo::test {
namespace {

class DamageTest : public testing::Test {
protected:
    DamageTest()
    {
        m_program.startWithDemo();
        auto& file = *m_program.window().app().recentFiles().front();
        DamageReport report;
        for (std::uint32_t page = 1; page <= 3000; ++page)
            report.add({.kind = DamageKind::Page, .table = "Orders " + std::to_string(page), .page = page});
        report.add({.kind = DamageKind::MissingRows, .table = "Orders", .count = 480});
        file.setDamage(report);
    }
    QWidget& bar() { return m_program.find<QWidget>("damageBar"); }

    Program m_program;
};

TEST_F(DamageTest, tellsOfADamagedFileAboveTheGrid)
{
    EXPECT_FALSE(bar().isVisible());
    m_program.clickTree("Orders");
    EXPECT_TRUE(bar().isVisible());
    const auto text = "Orders: 480 rows are missing. In the whole file: 480 rows are missing.";
    EXPECT_EQ(fromQString(QAccessible::queryAccessibleInterface(&bar())->text(QAccessible::Name)), text);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&bar())->role(), QAccessible::AlertMessage);

    m_program.window().app().OpenTableInNewWindow(*m_program.window().app().selectedTable());
    const auto* window = m_program.window().app().childWinManager();
    ASSERT_EQ(window->childWins().size(), 1U);
    bool isTold = false;
    for (auto* widget : QApplication::topLevelWidgets())
        for (auto* other : widget->findChildren<QWidget*>("damageBar"))
            isTold = isTold || (widget->objectName() == "tableWindow" && other->isVisible());
    EXPECT_TRUE(isTold);

    m_program.window().app().CloseSelectedFile(VellumoAppDelegate::Sender::Other);
    m_program.doubleClickTree("Shop");
    EXPECT_FALSE(bar().isVisible()); // a sound file
}

TEST_F(DamageTest, marksWhatIsDamagedInTheTree)
{
    const auto& model = *m_program.find<QTreeView>("fileTree").model();
    const auto file = model.index(0, 0);
    const auto spoken = [](const QModelIndex& index) {
        return fromQString(index.data(Qt::AccessibleTextRole).toString());
    };
    EXPECT_EQ(spoken(file), "Shop, 480 rows are missing.");
    EXPECT_EQ(spoken(model.index(5, 0, file)), "Orders  (420), 480 rows are missing.");
    EXPECT_EQ(spoken(model.index(6, 0, file)), "Products  (40)");
    EXPECT_THAT(fromQString(model.index(5, 0, file).data(Qt::ToolTipRole).toString()), testing::HasSubstr("480 rows"));
}

TEST_F(DamageTest, listsAndCopiesThousandsOfRecords)
{
    m_program.clickTree("Shop");
    m_program.clickButton("damageDetails");
    auto& sheet = m_program.find<QDialog>("damageSheet");
    const auto& list = *sheet.findChild<QTableView*>("damageList")->model();
    ASSERT_EQ(list.rowCount(), 3001);
    const auto text = [&](int row, int column) { return fromQString(list.index(row, column).data().toString()); };
    EXPECT_EQ(text(2999, 1) + "|" + text(2999, 4), "Orders 3000|3000");
    EXPECT_EQ(text(3000, 0) + "|" + text(3000, 5), "480 rows are missing.|480");
    m_program.clickButton("copyDamage", &sheet);
    ASSERT_EQ(m_program.pasteboard.texts.size(), 1U);
    EXPECT_EQ(std::ranges::count(m_program.pasteboard.texts[0], '\n'), 3001);
    sheet.close();
}

TEST_F(DamageTest, asksBeforeItLooksForLostRows)
{
    m_program.clickTree("Orders");
    m_program.clickButton("lookForLostRows");
    m_program.find<QCheckBox>("withDeletedRows").setChecked(true);
    m_program.find<QDialog>("salvageSheet").accept();
    EXPECT_TRUE(eventually([&] { return !m_program.alerts.shown.empty(); }));
    EXPECT_THAT(m_program.alerts.shown,
        testing::ElementsAre(Alert{"No lost rows were found.", "Lost and deleted rows were looked for.",
            Alert::Style::Sheet, "", Alert::Kind::Notice}));
    EXPECT_THAT(m_program.treeText(), testing::HasSubstr("  Orders  (420)*"));
}

TEST_F(DamageTest, aLongWordInTheBarTakesNoRoomFromTheFileList)
{
    auto& window = m_program.window();
    const auto& list = m_program.find<QWidget>("fileTree");
    window.resize(800, 500);
    m_program.clickTree("Categories");
    QApplication::processEvents();
    const auto listWidth = list.width();
    const std::string longName(64, 'W');
    auto& file = *window.app().recentFiles().front();
    file.tables()[0]->setName(longName);
    auto report = file.damage();
    report.add({.kind = DamageKind::Row, .table = longName});
    file.setDamage(report);
    window.app().updateStatusBarForTableSelection();
    QApplication::processEvents();
    window.resize(801, 500); // everything is laid out anew
    QApplication::processEvents();
    EXPECT_TRUE(bar().isVisible());
    EXPECT_EQ(window.width(), 801);
    EXPECT_EQ(list.width(), listWidth);
}

} // namespace
} // namespace vellumo::test
