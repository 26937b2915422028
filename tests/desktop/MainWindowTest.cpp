// SPDX-License-Identifier: MIT
#include "Program.h"

#include "desktop/QtText.h"
#include "desktop/window/WindowLayout.h"

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QStackedWidget>
#include <QTableWidget>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <functional>
#include <gmock/gmock.h>

namespace vellumo::test {

namespace {

using testing::ElementsAre;

constexpr const char* openDemo = "Shop*\n"
                                 "  Categories  (8)\n  Customers  (36)\n  Documents  (12)\n  Employees  (8)\n"
                                 "  Order Details  (1277)\n  Orders  (420)\n  Products  (40)\n  Suppliers  (10)\n";

class MainWindowTest : public testing::Test {
protected:
    // What the information pane shows below its title: labels and values of the property list.
    std::string properties(const char* page)
    {
        const auto& list = *m_program.find<QStackedWidget>(page).findChild<QTableWidget*>();
        std::string text;
        for (int row = 0; row < list.rowCount(); ++row)
            text += fromQString(list.item(row, 0)->text() + "=" + list.item(row, 1)->text() + "\n");
        return text;
    }

    Program m_program;
};

} // namespace

TEST_F(MainWindowTest, opensFilesByEveryRoute)
{
    struct Route {
        const char* name;
        std::function<void(const std::string&)> open;
    };
    const Route routes[] = {
        {"button of the placeholder",
            [&](const std::string& path) {
                m_program.filePanels.files = {{path}};
                QTest::mouseClick(
                    m_program.find<QWidget>("dropPlaceholder").findChild<QAbstractButton*>(), Qt::LeftButton);
            }},
        {"toolbar",
            [&](const std::string& path) {
                m_program.filePanels.files = {{path}};
                auto& bar = m_program.find<QToolBar>("toolbar");
                QTest::mouseClick(bar.widgetForAction(bar.findChild<QAction*>("open")), Qt::LeftButton);
            }},
        {"Ctrl+O",
            [&](const std::string& path) {
                m_program.filePanels.files = {{path}};
                m_program.press(Qt::Key_O, Qt::ControlModifier);
            }},
        {"drop among other files",
            [&](const std::string& path) {
                m_program.dropFiles({"/tmp/notes.txt", path});
            }},
        {"drop on a text field",
            [&](const std::string& path) { m_program.dropFiles({path}, &m_program.find<QWidget>("dataSearchField")); }},
        {"second start", [&](const std::string& path) { m_program.window().openFiles({path}); }},
        {"double click in the list",
            [&](const std::string& path) {
                m_program.recent.listed = {path};
                m_program.start();
                EXPECT_EQ(m_program.treeText(), "Shop\n");
                m_program.doubleClickTree("Shop");
            }},
        {"return key in the list",
            [&](const std::string& path) {
                m_program.recent.listed = {path};
                m_program.start();
                m_program.clickTree("Shop");
                QTest::keyClick(&m_program.find<QTreeView>("fileTree"), Qt::Key_Return);
            }},
    };
    for (const auto& [name, open] : routes) {
        SCOPED_TRACE(name);
        m_program.recent.listed.clear();
        std::filesystem::remove(m_program.folder.path("Shop.mdb"));
        const auto path = m_program.makeDemo();
        m_program.start();
        EXPECT_TRUE(m_program.find<QWidget>("dropPlaceholder").isVisible());
        open(path);
        m_program.finishOpening();
        EXPECT_EQ(m_program.treeText(), openDemo);
        EXPECT_EQ(m_program.statusText(), "1 of 1 file, contains 8 tables");
        EXPECT_THAT(m_program.recent.listed, ElementsAre(path));
        EXPECT_FALSE(m_program.find<QWidget>("dropPlaceholder").isVisible());
    }
}

TEST_F(MainWindowTest, keepsTheSearchFieldInSight)
{
    m_program.startWithDemo();
    const auto& field = m_program.find<QWidget>("dataSearchField");
    for (const int width : {1280, 800, 100}) {
        m_program.window().resize(width, 500);
        QApplication::processEvents();
        EXPECT_TRUE(field.isVisible()) << width;
        EXPECT_LE(field.mapTo(&m_program.window(), QPoint(field.width(), 0)).x(), m_program.window().width()) << width;
    }
}

TEST_F(MainWindowTest, workWithTheKeyboardBeginsInTheFileList)
{
    m_program.start();
    m_program.openFiles({m_program.makeDemo()}); // named at the start
    EXPECT_EQ(m_program.window().focusWidget()->objectName(), "fileTree");
    m_program.press(Qt::Key_Down);
    EXPECT_EQ(m_program.statusText(), "1 of 8 tables, contains 8 records");
    // Neither leads anywhere: the tree must not take them for its own.
    m_program.press(Qt::Key_Left, Qt::AltModifier);
    m_program.press(Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(m_program.statusText(), "1 of 8 tables, contains 8 records");
}

TEST_F(MainWindowTest, refusesADropWithoutDatabases)
{
    m_program.start();
    m_program.dropFiles({"/tmp/notes.txt"});
    EXPECT_TRUE(m_program.alerts.shown.empty());
    EXPECT_EQ(m_program.treeText(), "");
}

TEST_F(MainWindowTest, tellsOfAFileThatCannotBeOpened)
{
    const auto path = m_program.makeBrokenFile("Broken.mdb");
    m_program.start();
    m_program.dropFiles({path});
    ASSERT_EQ(m_program.alerts.shown.size(), 1U);
    EXPECT_EQ(m_program.alerts.shown[0].message, "File (Broken.mdb) cannot be opened");
    EXPECT_EQ(m_program.treeText(), "Broken\n");
}

TEST_F(MainWindowTest, showsEveryKindOfInformation)
{
    m_program.startWithDemo();
    EXPECT_THAT(properties("InfoView_File"), testing::HasSubstr("=2.5 MB\n"));
    m_program.clickTree("Orders");
    EXPECT_EQ(m_program.statusText(), "1 of 8 tables, contains 420 records");
    EXPECT_FALSE(m_program.find<QWidget>("InfoView_File_Button").isVisible());
    EXPECT_TRUE(m_program.find<QWidget>("InfoView_Table").isVisible());

    m_program.clickButton("InfoView_Column_Button");
    auto& columns = *m_program.find<QStackedWidget>("InfoView_Column").findChild<QListWidget*>();
    EXPECT_EQ(columns.count(), 10);
    columns.setFocus();
    m_program.press(Qt::Key_Down);
    EXPECT_EQ(columns.currentItem()->text(), "CustomerID");
    EXPECT_THAT(properties("InfoView_Column"), testing::HasSubstr("=Long Integer\n"));

    m_program.clickButton("InfoView_Relation_Button");
    EXPECT_EQ(m_program.find<QStackedWidget>("InfoView_Relation").findChild<QListWidget*>()->count(), 2);
    // The kind stays while other tables are selected; Categories refers to no other table.
    m_program.clickTree("Categories");
    const auto& page = m_program.find<QStackedWidget>("InfoView_Relation");
    EXPECT_EQ(qobject_cast<QLabel*>(page.currentWidget())->text(), "No forigen keys");
}

// Qt guesses whether a text is markup, wherever it is not told.
TEST_F(MainWindowTest, takesNoNameForMarkup)
{
    samples::DatabaseDescription description;
    description.tables.push_back({.name = "<b>Address</b>", .columns = {{.name = "<i>Street</i>"}}});
    m_program.start();
    m_program.openFiles({m_program.makeDatabase("<table>.mdb", description)});
    m_program.press(Qt::Key_4, Qt::ControlModifier); // jump bar
    m_program.clickTree("<b>Address</b>");
    m_program.clickButton("InfoView_Column_Button");
    QStringList tips{m_program.grid().model()->headerData(0, Qt::Horizontal, Qt::ToolTipRole).toString()};
    for (const auto* widget : m_program.window().findChildren<QWidget*>())
        tips << widget->toolTip();
    for (const auto* list : m_program.window().findChildren<QAbstractItemView*>())
        for (int row = 0; list->model() != nullptr && row < list->model()->rowCount(); ++row)
            tips << list->model()->index(row, 1).data(Qt::ToolTipRole).toString()
                 << list->model()->index(row, 0).data(Qt::ToolTipRole).toString();
    for (const auto& tip : tips)
        EXPECT_FALSE(tip.contains("<b>") || tip.contains("<i>") || tip.contains("<table>")) << fromQString(tip);
    EXPECT_GE(tips.filter("&lt;").size(), 4);
    for (const auto* label : m_program.window().findChildren<QLabel*>())
        EXPECT_TRUE(label->textFormat() == Qt::PlainText || !label->text().contains('<')) << fromQString(label->text());
}

TEST_F(MainWindowTest, filtersTheFileList)
{
    m_program.startWithDemo();
    m_program.clickTree("Orders");
    m_program.typeInto("fileSearchField", "ORD");
    EXPECT_EQ(m_program.treeText(), "Shop\n  Order Details  (1277)\n  Orders  (420)*\n");
    EXPECT_EQ(m_program.statusText(), "1 of 2 tables, contains 420 records");
    m_program.typeInto("fileSearchField", "no such name");
    EXPECT_EQ(m_program.treeText(), "");
    QTest::keyClick(&m_program.find<QWidget>("fileSearchField"), Qt::Key_Escape);
    EXPECT_THAT(m_program.treeText(), testing::HasSubstr("  Orders  (420)"));
}

TEST_F(MainWindowTest, saysInItsTitleWhatIsSelected)
{
    m_program.start();
    EXPECT_EQ(m_program.window().windowTitle(), "Vellumo");
    m_program.openFiles({m_program.makeDemo()});
    EXPECT_EQ(m_program.window().windowTitle(), "Shop – Vellumo");
    m_program.clickTree("Orders");
    EXPECT_EQ(m_program.window().windowTitle(), "Orders @Shop – Vellumo");
}

TEST_F(MainWindowTest, searchesRecordsInEveryMode)
{
    m_program.startWithDemo();
    m_program.clickTree("Employees");
    const struct {
        const char* name;
        const char* text;
        std::vector<const char*> choices; // of the search menu, one after the other
        std::vector<std::string> lastNames;
        const char* status;
    } cases[] = {
        {"contains", "ales", {}, {"Haddad", "O’Brien"}, "2 records"},
        {"no case", "SALES", {}, {"Haddad", "O’Brien"}, "2 records"},
        {"case honoured", "SALES", {"Ignore Case"}, {}, "0 records"},
        {"case ignored again", "SALES", {"Ignore Case"}, {"Haddad", "O’Brien"}, "2 records"},
        {"begins with", "o", {"Begins With"}, {"Fernandes", "Okafor", "O’Brien"}, "3 records"},
        {"equals", "buyer", {"Equals"}, {"Okafor"}, "1 record"},
        {"ends with", "ez", {"Ends With"}, {}, "0 records"},
    };
    for (const auto& [name, text, choices, lastNames, status] : cases) {
        SCOPED_TRACE(name);
        m_program.typeInto("dataSearchField", text);
        for (const auto* choice : choices) {
            QTest::keyClick(&m_program.find<QWidget>("dataSearchField"), Qt::Key_Down);
            m_program.choose(choice);
        }
        EXPECT_EQ(m_program.columnOfGrid(1), lastNames);
        EXPECT_EQ(m_program.statusText(), status);
    }
    QTest::keyClick(&m_program.find<QWidget>("dataSearchField"), Qt::Key_Escape);
    EXPECT_EQ(m_program.grid().model()->rowCount(), 8);
}

TEST_F(MainWindowTest, goesBackAndForth)
{
    m_program.startWithDemo();
    m_program.clickTree("Orders");
    EXPECT_FALSE(m_program.find<QAction>("navigationBack").isEnabled());
    m_program.clickTree("Products");
    m_program.press(Qt::Key_Left, Qt::AltModifier);
    EXPECT_THAT(m_program.treeText(), testing::HasSubstr("Orders  (420)*"));
    QTest::mouseClick(m_program.grid().viewport(), Qt::ForwardButton);
    EXPECT_THAT(m_program.treeText(), testing::HasSubstr("Products  (40)*"));
    QTest::mouseClick(m_program.grid().viewport(), Qt::BackButton);
    EXPECT_THAT(m_program.treeText(), testing::HasSubstr("Orders  (420)*"));
    EXPECT_FALSE(m_program.find<QAction>("navigationBack").isEnabled());
    EXPECT_TRUE(m_program.find<QAction>("navigationNext").isEnabled());
    // Pressed twice in quick succession, over a row that a double click would open.
    m_program.clickTree("Suppliers");
    m_program.clickTree("Products");
    auto& tree = m_program.find<QTreeView>("fileTree");
    const auto point = tree.visualRect(tree.currentIndex()).center();
    for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonDblClick}) {
        QMouseEvent event(type, point, tree.viewport()->mapToGlobal(point), Qt::BackButton, Qt::BackButton, {});
        QApplication::sendEvent(tree.viewport(), &event);
    }
    QApplication::processEvents();
    EXPECT_THAT(m_program.treeText(), testing::HasSubstr("Orders  (420)*"));
    EXPECT_EQ(m_program.window().app().childWinManager(), nullptr); // no table window
}

TEST_F(MainWindowTest, jumpsByTheJumpBar)
{
    m_program.startWithDemo();
    m_program.clickTree("Orders");
    m_program.press(Qt::Key_4, Qt::ControlModifier);
    m_program.clickAndChoose(m_program.find<QWidget>("jumpBarTable"), "Suppliers");
    EXPECT_THAT(m_program.treeText(), testing::HasSubstr("Suppliers  (10)*"));
    EXPECT_EQ(m_program.find<QToolButton>("jumpBarTable").text(), "Suppliers ▾");
    EXPECT_EQ(m_program.find<QToolButton>("jumpBarFile").text(), "Shop ▾");
}

TEST_F(MainWindowTest, closesAndRemovesFiles)
{
    m_program.recent.listed = {m_program.makeDemo("Shop.mdb"), m_program.makeDemo("Archive.mdb")};
    m_program.start();
    m_program.doubleClickTree("Shop");
    m_program.clickTree("Orders");
    m_program.chooseForTree("Shop", "Close");
    EXPECT_EQ(m_program.treeText(), "Archive\nShop\n");
    EXPECT_EQ(m_program.grid().model()->columnCount(), 0);
    m_program.doubleClickTree("Archive");
    m_program.chooseForTree("Archive", "Remove from List");
    EXPECT_EQ(m_program.treeText(), "Shop\n");
    EXPECT_THAT(m_program.recent.listed, ElementsAre(m_program.folder.path("Shop.mdb")));
    m_program.menuItem("Clear File List")->trigger();
    EXPECT_EQ(m_program.treeText(), "");
    EXPECT_TRUE(m_program.find<QWidget>("dropPlaceholder").isVisible());
}

TEST_F(MainWindowTest, removesAFileByKeyOnlyFromTheList)
{
    m_program.startWithDemo();
    m_program.clickTree("Orders");
    for (const auto* name : {"dataSearchField", "fileSearchField"}) {
        SCOPED_TRACE(name);
        auto& field = m_program.find<QLineEdit>(name);
        field.setFocus();
        field.setText("tea coffee");
        m_program.press(Qt::Key_Backspace, Qt::ControlModifier);
        EXPECT_EQ(field.text(), "tea ");
        EXPECT_THAT(m_program.recent.listed, testing::SizeIs(1));
        field.clear();
    }
    m_program.find<QWidget>("fileTree").setFocus();
    m_program.press(Qt::Key_Backspace, Qt::ControlModifier);
    EXPECT_THAT(m_program.recent.listed, testing::IsEmpty());
}

TEST_F(MainWindowTest, remembersViewsAndFilesForTheNextStart)
{
    m_program.startWithDemo();
    m_program.press(Qt::Key_2, Qt::ControlModifier); // information
    m_program.press(Qt::Key_3, Qt::ControlModifier); // text view
    m_program.press(Qt::Key_5, Qt::ControlModifier); // row counts
    EXPECT_FALSE(m_program.find<QWidget>("InfoView_File").isVisible());
    EXPECT_TRUE(m_program.find<QWidget>("bottomTextView").isVisible());
    m_program.start();
    EXPECT_EQ(m_program.treeText(), "Shop\n");
    m_program.doubleClickTree("Shop");
    EXPECT_THAT(m_program.treeText(), testing::HasSubstr("  Orders\n"));
    EXPECT_FALSE(m_program.find<QWidget>("InfoView_File").isVisible());
    EXPECT_TRUE(m_program.find<QWidget>("bottomTextView").isVisible());
    EXPECT_NE(m_program.menuItem("Show Information View"), nullptr);
}

TEST(WindowLayout, windowComesBackWithinItsScreen)
{
    QWidget window; // where and as large as it was on another screen
    const auto room = window.screen()->availableGeometry();
    for (const auto& place : {room.adjusted(60, 40, 300, 200), room.translated(-500, room.height() - 40),
             QRect(room.left() - 50, room.top() - 50, 300, 200), QRect(room.right(), room.bottom(), 300, 200)}) {
        window.setGeometry(place);
        boundToScreen(window);
        EXPECT_TRUE(room.contains(window.geometry())) << place.width();
        EXPECT_GT(window.geometry().top(), room.top()) << "for the title bar";
        EXPECT_EQ(window.width(), std::min(place.width(), room.width()));
    }
    const QRect fitting(room.left() + 40, room.top() + 60, 300, 200);
    window.setGeometry(fitting);
    boundToScreen(window);
    EXPECT_EQ(window.geometry(), fitting);
}

TEST_F(MainWindowTest, keepsFilesThatComeWhileAnExportDialogIsOpen)
{
    m_program.startWithDemo();
    m_program.clickTree("Orders");
    m_program.find<QAction>("exportCsv").trigger();
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(dialog, nullptr);
    m_program.window().openFiles({m_program.makeDemo("Later.mdb")});
    EXPECT_THAT(m_program.treeText(), testing::Not(testing::HasSubstr("Later")));
    dialog->reject();
    m_program.finishOpening();
    EXPECT_THAT(m_program.treeText(), testing::StartsWith("Later*\n"));
}

TEST_F(MainWindowTest, keepsFilesThatComeWhileAMenuOrADialogIsOpen)
{
    m_program.startWithDemo();
    m_program.clickTree("Orders");
    m_program.press(Qt::Key_4, Qt::ControlModifier); // jump bar
    const auto handOver = [&](const char* name) {
        m_program.window().openFiles({m_program.folder.path("Shop.mdb"), m_program.makeDemo(name)});
        QApplication::processEvents();
        EXPECT_THAT(m_program.treeText(), testing::Not(testing::HasSubstr(std::string(name, 4)))) << name;
    };
    QTest::mouseClick(&m_program.find<QWidget>("jumpBarTable"), Qt::LeftButton);
    handOver("Menu.mdb");
    QStringList titles;
    QObject::connect(&m_program.window(), &QWidget::windowTitleChanged, [&](const QString& title) { titles << title; });
    m_program.choose("Suppliers");
    EXPECT_EQ(titles.value(0), "Suppliers @Shop – Vellumo"); // the files may have come by now
    QObject::disconnect(&m_program.window(), &QWidget::windowTitleChanged, nullptr, nullptr);
    const auto isListed = [&](const char* name) { return m_program.treeText().find(name) != std::string::npos; };
    EXPECT_TRUE(eventually([&] { return isListed("Menu*"); }));

    QDialog dialog(&m_program.window());
    dialog.open();
    handOver("Sheet.mdb");
    dialog.close();
    EXPECT_TRUE(eventually([&] { return isListed("Sheet*"); }));
}

TEST_F(MainWindowTest, choosesNothingThatHasGoneWhileItsMenuWasOpen)
{
    m_program.startWithDemo();
    m_program.doubleClickTree("Orders");
    QMenu* windows = nullptr;
    for (auto* menu : m_program.window().menuBar()->findChildren<QMenu*>())
        if (menu->actions().contains(m_program.menuItem("Hide Vellumo"))) windows = menu;
    ASSERT_NE(windows, nullptr);
    auto* files = qobject_cast<QMenu*>(m_program.window().menuBar()->actions().first()->menu());
    files->popup({0, 0});
    m_program.find<QTreeView>("fileTree").clearSelection(); // as the end of an opening may
    QApplication::processEvents();
    EXPECT_FALSE(files->isVisible());
    m_program.clickTree("Orders");

    windows->popup({0, 0});
    m_program.window().app().childWinManager()->childWins()[0]->windowWillClose();
    m_program.choose("Orders @Shop");
    EXPECT_TRUE(m_program.window().app().childWinManager()->childWins().empty());

    // The menu of a jump bar, in this window and in one that goes with the file.
    m_program.press(Qt::Key_4, Qt::ControlModifier);
    for (const bool isTableWindow : {false, true}) {
        SCOPED_TRACE(isTableWindow);
        m_program.doubleClickTree("Orders");
        auto* window = QApplication::activeWindow();
        ASSERT_EQ(window->objectName(), "tableWindow");
        if (!isTableWindow) window = &m_program.window();
        QTest::mouseClick(&child<QWidget>(*window, "jumpBarTable"), Qt::LeftButton);
        m_program.window().app().CloseSelectedFile(VellumoAppDelegate::Sender::Other);
        if (isTableWindow)
            EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
        else
            m_program.choose("Suppliers");
        EXPECT_EQ(m_program.treeText(), "Shop\n");
        EXPECT_EQ(m_program.grid().model()->columnCount(), 0);
        m_program.doubleClickTree("Shop");
    }
}

// A key that means two things means nothing: Qt calls it ambiguous and does neither.
TEST_F(MainWindowTest, givesEachKeyOneMeaning)
{
    m_program.start();
    QStringList keys;
    for (const auto* action : m_program.window().findChildren<QAction*>())
        for (const auto& shortcut : action->shortcuts())
            keys << shortcut.toString();
    EXPECT_TRUE(keys.contains("Ctrl+Q") && keys.contains("F11"));
    EXPECT_EQ(keys.removeDuplicates(), 0) << fromQString(keys.join(" "));
    m_program.press(Qt::Key_F11);
    EXPECT_TRUE(m_program.window().isFullScreen());
    EXPECT_NE(m_program.menuItem("Exit Full Screen"), nullptr);
    m_program.press(Qt::Key_Q, Qt::ControlModifier);
    EXPECT_FALSE(m_program.window().isVisible());
}

TEST_F(MainWindowTest, asksForAFileBeforeAnExport)
{
    m_program.start();
    m_program.find<QAction>("exportXml").trigger();
    EXPECT_THAT(m_program.alerts.shown,
        ElementsAre(
            Alert{"No MDB File selected.", "Please select a file from the file list first.", Alert::Style::Sheet}));
}

} // namespace vellumo::test
