// SPDX-License-Identifier: MIT
#include "Program.h"

#include "desktop/QtText.h"
#include "desktop/grid/GridModel.h"

#include <QClipboard>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <gmock/gmock.h>

namespace vellumo::test {

namespace {

class GridTest : public testing::Test {
protected:
    void SetUp() override
    {
        m_program.startWithDemo();
        m_program.press(Qt::Key_3, Qt::ControlModifier); // the text view
    }

    Program m_program;
};

} // namespace

TEST_F(GridTest, showsCellsAsTheyAre)
{
    m_program.clickTree("Employees");
    auto& grid = m_program.grid();
    const auto& model = *grid.model();
    EXPECT_EQ(m_program.cell(0, 1), "Fernandes");
    EXPECT_EQ(m_program.cell(0, 6), "[NULL]");
    const auto grey = QGuiApplication::palette().color(QPalette::PlaceholderText);
    EXPECT_EQ(model.index(0, 6).data(Qt::ForegroundRole).value<QColor>(), grey);
    EXPECT_FALSE(model.index(0, 1).data(Qt::ForegroundRole).isValid());
    // The key column has a key in its title, object cells have an icon.
    EXPECT_FALSE(model.headerData(0, Qt::Horizontal, Qt::DecorationRole).value<QIcon>().isNull());
    EXPECT_FALSE(model.headerData(1, Qt::Horizontal, Qt::DecorationRole).isValid());
    EXPECT_FALSE(model.index(0, 7).data(Qt::DecorationRole).value<QIcon>().isNull());
    EXPECT_THAT(m_program.cell(0, 7), testing::MatchesRegex("\\.[a-z]+ \\[[0-9.]+ [KM]?B.*\\]"));
}

TEST(CellLineTest, isOneLineThatIsNotTooLong)
{
    EXPECT_EQ(cellLine("one\r\ntwo\tthree"), "one  two three");
    EXPECT_EQ(cellLine(""), "");
    // 401 bytes: the letter of two bytes at the cut goes as a whole.
    EXPECT_EQ(cellLine(std::string(399, 'x') + "é"), QString(399, 'x') + QChar(0x2026));
    EXPECT_EQ(cellLine(std::string(400, 'x')), QString(400, 'x'));
}

TEST_F(GridTest, sortsByThreeClicksOnATitle)
{
    m_program.clickTree("Categories");
    const auto& header = *m_program.grid().horizontalHeader();
    const std::vector<std::string> stored{
        "Tea", "Coffee", "Preserves", "Ceramics", "Candles", "Stationery", "Garden", "Textiles"};
    const std::vector<std::string> ascending{
        "Candles", "Ceramics", "Coffee", "Garden", "Preserves", "Stationery", "Tea", "Textiles"};
    m_program.clickHeader(1);
    EXPECT_EQ(m_program.columnOfGrid(1), ascending);
    EXPECT_EQ(header.sortIndicatorSection(), 1);
    EXPECT_EQ(header.sortIndicatorOrder(), Qt::AscendingOrder);
    m_program.clickHeader(1);
    EXPECT_EQ(m_program.columnOfGrid(1), std::vector(ascending.rbegin(), ascending.rend()));
    EXPECT_EQ(header.sortIndicatorOrder(), Qt::DescendingOrder);
    m_program.clickHeader(1);
    EXPECT_EQ(m_program.columnOfGrid(1), stored);
    EXPECT_EQ(header.sortIndicatorSection(), -1);
}

TEST_F(GridTest, showsTheCurrentCellInFull)
{
    m_program.clickTree("Employees");
    EXPECT_EQ(m_program.detailText(), "No fields selected");
    m_program.clickCell(0, 8);
    EXPECT_EQ(m_program.detailText(), "Founded the shop with one shelf of tea.");
    m_program.press(Qt::Key_Down);
    EXPECT_EQ(m_program.detailText(), "Speaks English, Igbo and French.");
    EXPECT_EQ(m_program.statusText(), "Record 2 of 8");
    m_program.press(Qt::Key_Right); // leads to the first column
    EXPECT_EQ(m_program.detailText(), "2");
    m_program.press(Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(m_program.detailText(), "Okafor");
    m_program.press(Qt::Key_Left); // leads to the last column
    EXPECT_EQ(m_program.detailText(), "Speaks English, Igbo and French.");
}

TEST_F(GridTest, showsLongValuesStepByStep)
{
    samples::DatabaseDescription description;
    const std::string memo = std::string(400'000, 'x') + " end\r\nof it";
    description.tables.push_back({.name = "Long",
        .columns = {{.name = "Memo", .type = samples::ColumnType::Memo}},
        .rows = samples::rowsOf({std::vector<samples::Value>{samples::Value(memo)}, {samples::Value("short")}})});
    m_program.openFiles({m_program.makeDatabase("Texts.mdb", description)});
    m_program.clickTree("Long");
    auto& text = *m_program.find<QWidget>("bottomTextView").findChild<QPlainTextEdit*>();
    const auto copied = [&text] {
        text.selectAll();
        text.copy();
        return fromQString(QGuiApplication::clipboard()->text());
    };
    QElapsedTimer time;
    time.start();
    m_program.clickCell(0, 0);
    QApplication::processEvents();
    // Laid out as one line it takes many times as long.
    EXPECT_LT(time.elapsed(), 2000);
    EXPECT_LT(text.document()->characterCount(), 100'000);
    EXPECT_EQ(copied(), memo) << "all that is shown stands for the value";
    auto part = text.textCursor();
    part.setPosition(1990);
    part.setPosition(6010, QTextCursor::KeepAnchor);
    text.setTextCursor(part);
    text.copy();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QString(4017, 'x')) << "lines were broken in between";

    m_program.clickButton("showAll");
    EXPECT_TRUE(eventually([&] { return !m_program.find<QWidget>("cutBar").isVisible(); }));
    EXPECT_TRUE(text.toPlainText().endsWith(" end\nof it"));
    m_program.clickCell(1, 0);
    EXPECT_EQ(m_program.detailText(), "short");
    // A pane that nobody sees is left alone.
    m_program.press(Qt::Key_3, Qt::ControlModifier);
    m_program.clickCell(0, 0);
    EXPECT_EQ(text.toPlainText(), "short");
    m_program.press(Qt::Key_3, Qt::ControlModifier);
    EXPECT_TRUE(text.toPlainText().startsWith("xx"));
}

TEST_F(GridTest, showsPicturesAndOpensThem)
{
    m_program.clickTree("Employees");
    m_program.clickCell(0, 7);
    auto& picture = *m_program.find<QWidget>("bottomTextView").findChild<QAbstractScrollArea*>("pictureView");
    EXPECT_TRUE(picture.isVisible());
    EXPECT_THAT(fromQString(picture.accessibleDescription()), testing::MatchesRegex("[0-9]+ × [0-9]+ pixels"));
    QTest::mouseDClick(picture.viewport(), Qt::LeftButton);
    ASSERT_EQ(m_program.workspace.opened.size(), 1U);
    EXPECT_TRUE(std::filesystem::exists(m_program.workspace.opened[0]));
    EXPECT_FALSE(picture.horizontalScrollBarPolicy() == Qt::ScrollBarAsNeeded);
    m_program.clickButton("fullSize");
    EXPECT_TRUE(picture.horizontalScrollBarPolicy() == Qt::ScrollBarAsNeeded);
}

TEST_F(GridTest, opensAndSavesDocuments)
{
    m_program.clickTree("Documents");
    m_program.clickCell(2, 5);
    EXPECT_THAT(m_program.detailText(), testing::StartsWith("%PDF-1.1"));
    m_program.clickButton("openObject");
    ASSERT_EQ(m_program.workspace.opened.size(), 1U);
    EXPECT_THAT(m_program.workspace.opened[0], testing::EndsWith(".pdf"));

    m_program.filePanels.file = m_program.folder.path("terms.pdf");
    m_program.clickButton("saveObject");
    EXPECT_THAT(m_program.filePanels.asked, testing::ElementsAre("save pdf terms.pdf"));
    EXPECT_THAT(m_program.folder.read("terms.pdf").value_or(""),
        testing::AllOf(testing::StartsWith("%PDF-1.1"), testing::HasSubstr("%%EOF")));

    // A file that had no extension could be a program.
    m_program.clickCell(3, 5);
    EXPECT_FALSE(m_program.find<QPushButton>("openObject").isEnabled());
    m_program.filePanels.file = m_program.folder.path("no/such/folder");
    m_program.clickButton("saveObject");
    EXPECT_THAT(m_program.alerts.shown,
        testing::ElementsAre(Alert{"Error", "File (" + *m_program.filePanels.file + ") cannot be written"}));

    m_program.clickCell(3, 1); // a text cell has no such buttons
    EXPECT_FALSE(m_program.find<QPushButton>("openObject").isVisible());
}

TEST_F(GridTest, copiesRows)
{
    m_program.clickTree("Categories");
    m_program.clickCell(0, 1);
    m_program.clickCell(2, 1, Qt::ControlModifier);
    EXPECT_EQ(m_program.statusText(), "2 of 8 records");
    m_program.press(Qt::Key_C, Qt::ControlModifier);
    ASSERT_EQ(m_program.pasteboard.texts.size(), 1U);
    EXPECT_THAT(m_program.pasteboard.texts[0],
        testing::MatchesRegex("1\tTea\tLoose leaf and tins[^\n]*\n3\tPreserves\tJams[^\n]*\n"));
    m_program.press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(m_program.statusText(), "8 of 8 records");
    // Columns are copied as the user has put them.
    m_program.grid().horizontalHeader()->moveSection(1, 0);
    m_program.clickCell(0, 1);
    m_program.press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_THAT(m_program.pasteboard.texts.back(), testing::StartsWith("Tea\t1\tLoose"));
}

TEST_F(GridTest, copiesTheRowUnderTheMenu)
{
    m_program.clickTree("Categories");
    m_program.clickCell(0, 1);
    const auto point = m_program.grid().visualRect(m_program.grid().model()->index(4, 1)).center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, point, m_program.grid().viewport()->mapToGlobal(point));
    QApplication::sendEvent(m_program.grid().viewport(), &event);
    m_program.choose("Copy");
    ASSERT_EQ(m_program.pasteboard.texts.size(), 1U);
    EXPECT_THAT(m_program.pasteboard.texts[0], testing::StartsWith("5\tCandles\t"));
}

TEST_F(GridTest, jumpsToARow)
{
    m_program.clickTree("Orders");
    const struct {
        const char* typed;
        const char* selected;
        const char* detail;
        int beeps;
    } cases[] = {{"421", "", "No fields selected", 1}, {"0", "", "No fields selected", 2}, {"420", "419", "10420", 2},
        {"1", "0", "10001", 2}};
    for (const auto& [typed, selected, detail, beeps] : cases) {
        SCOPED_TRACE(typed);
        m_program.press(Qt::Key_G, Qt::ControlModifier);
        auto* sheet = QApplication::activeModalWidget();
        ASSERT_NE(sheet, nullptr);
        EXPECT_EQ(sheet->windowTitle(), "Jump to row");
        QTest::keyClicks(sheet->findChild<QLineEdit*>("rowNumber"), typed);
        QTest::keyClick(sheet, Qt::Key_Return);
        QApplication::processEvents();
        EXPECT_EQ(m_program.selectedRows(), selected);
        EXPECT_EQ(m_program.detailText(), detail);
        EXPECT_EQ(m_program.alerts.beeps, beeps);
    }
    EXPECT_EQ(m_program.window().focusWidget(), &m_program.grid());
    EXPECT_EQ(m_program.grid().currentIndex(), m_program.grid().model()->index(0, 0));
}

TEST_F(GridTest, staysWhereItIsWhenMoreRowsAreSelected)
{
    m_program.clickTree("Orders");
    auto& grid = m_program.grid();
    const auto topRow = [&grid] { return grid.rowAt(0); };
    m_program.clickCell(200, 1);
    const auto top = topRow();
    EXPECT_GT(top, 100);
    m_program.press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(m_program.statusText(), "420 of 420 records");
    EXPECT_EQ(topRow(), top);
    EXPECT_EQ(grid.currentIndex(), grid.model()->index(200, 1));
    // Without a current row, too.
    m_program.clickTree("Products");
    m_program.clickTree("Orders");
    QApplication::processEvents();
    grid.scrollTo(grid.model()->index(300, 0), QAbstractItemView::PositionAtTop);
    m_program.press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(topRow(), 300);
}

TEST_F(GridTest, keepsTheColumnsOfATableAsTheyWereLeft)
{
    m_program.clickTree("Categories");
    const auto isKept = [&] {
        return m_program.grid().columnWidth(1) == 231 && m_program.grid().horizontalHeader()->visualIndex(2) == 0;
    };
    m_program.grid().setColumnWidth(1, 231);
    m_program.grid().horizontalHeader()->moveSection(2, 0);
    m_program.typeInto("fileSearchField", "cat");
    EXPECT_TRUE(isKept());
    m_program.typeInto("fileSearchField", "");
    m_program.clickTree("Suppliers");
    EXPECT_FALSE(isKept());
    m_program.clickTree("Categories");
    EXPECT_TRUE(isKept());
    m_program.start(); // the next run
    m_program.doubleClickTree("Shop");
    m_program.clickTree("Categories");
    EXPECT_TRUE(isKept());
}

TEST_F(GridTest, fitsColumnsToAllRows)
{
    m_program.clickTree("Employees");
    auto& grid = m_program.grid();
    const auto fitted = [&] {
        grid.setColumnWidth(8, 40);
        const auto& header = *grid.horizontalHeader();
        grid.scrollTo(grid.model()->index(0, 8));
        const QPoint border(header.sectionViewportPosition(8) + 39, header.height() / 2);
        QTest::mouseDClick(header.viewport(), Qt::LeftButton, {}, border);
        return grid.columnWidth(8);
    };
    const auto width = fitted();
    EXPECT_GE(width, grid.fontMetrics().horizontalAdvance("Founded the shop with one shelf of tea."));
    m_program.typeInto("dataSearchField", "Okafor");
    EXPECT_EQ(fitted(), width) << "though the longest text is hidden";
    grid.setColumnWidth(8, 40);
    QApplication::processEvents(); // the command takes its new state
    m_program.menuItem("Fit Columns")->trigger();
    EXPECT_EQ(grid.columnWidth(8), width);
}

TEST_F(GridTest, keepsRecordAndColumnThroughASort)
{
    m_program.clickTree("Categories");
    m_program.clickCell(2, 1); // Preserves
    m_program.clickHeader(1);
    EXPECT_EQ(m_program.selectedRows(), "4");
    EXPECT_EQ(m_program.statusText(), "Record 5 of 8");
    EXPECT_EQ(m_program.grid().currentIndex(), m_program.grid().model()->index(4, 1));
    EXPECT_EQ(m_program.detailText(), "Preserves");
}

TEST_F(GridTest, showsWhatASearchHasFoundAndWhatItHides)
{
    m_program.clickTree("Employees");
    const auto label = [&](const char* name) { return fromQString(m_program.find<QLabel>(name).text()); };
    EXPECT_EQ(label("searchRule"), "Contains, ignore case");
    EXPECT_EQ(label("searchText"), "");
    m_program.typeInto("dataSearchField", "sales");
    EXPECT_EQ(label("searchText"), "“sales”: 2 of 8 records");
    const auto hits = [&](int column) {
        return m_program.grid().model()->index(0, column).data(GridModel::HitsRole).value<QList<QPoint>>();
    };
    EXPECT_EQ(m_program.cell(0, 3), "Sales");
    EXPECT_EQ(hits(3), QList{QPoint(0, 5)});
    EXPECT_TRUE(hits(1).isEmpty());
    EXPECT_FALSE(m_program.find<QWidget>("clearSearch").isVisible());
    QTest::keyClick(&m_program.find<QWidget>("dataSearchField"), Qt::Key_Down);
    m_program.choose("Ignore Case");
    EXPECT_EQ(label("searchRule"), "Contains, match case");
    EXPECT_EQ(label("searchText"), "“sales”: 0 of 8 records");
    EXPECT_TRUE(m_program.find<QWidget>("clearSearch").isVisible());
    m_program.clickButton("clearSearch");
    EXPECT_EQ(m_program.find<QLineEdit>("dataSearchField").text(), "");
    EXPECT_EQ(m_program.grid().model()->rowCount(), 8);
    EXPECT_EQ(label("searchText"), "");
}

TEST_F(GridTest, alignsNumbersAndDatesOnTheRight)
{
    m_program.clickTree("Orders");
    const auto isOnTheRight = [&](int column) {
        const auto& model = *m_program.grid().model();
        const auto cell = model.index(0, column).data(Qt::TextAlignmentRole).value<Qt::Alignment>();
        EXPECT_EQ(model.headerData(column, Qt::Horizontal, Qt::TextAlignmentRole).value<Qt::Alignment>(), cell);
        return cell.testFlag(Qt::AlignTrailing);
    };
    for (int column = 0; column < m_program.grid().model()->columnCount(); ++column) {
        const auto& type =
            m_program.window().app().selectedTable()->columns()[static_cast<std::size_t>(column)]->type();
        EXPECT_EQ(
            isOnTheRight(column), type != ColumnType::Text && type != ColumnType::Memo && type != ColumnType::Boolean)
            << column;
    }
}

TEST_F(GridTest, followsTheSelectedRecordThroughASearch)
{
    m_program.clickTree("Employees");
    m_program.clickCell(6, 1); // Haddad
    m_program.typeInto("dataSearchField", "Sales");
    EXPECT_EQ(m_program.selectedRows(), "0");
    EXPECT_EQ(m_program.statusText(), "Record 1 of 2");
    EXPECT_EQ(m_program.detailText(), "Haddad");
    m_program.typeInto("dataSearchField", "");
    EXPECT_EQ(m_program.selectedRows(), "6");
    m_program.typeInto("dataSearchField", "Buyer");
    EXPECT_EQ(m_program.selectedRows(), "");
    EXPECT_EQ(m_program.detailText(), "No fields selected");
}

} // namespace vellumo::test
