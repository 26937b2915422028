// SPDX-License-Identifier: MIT
#include "browser/DataView.h"
#include "FakeWindow.h"
#include "support/FakeDesktop.h"
#include "support/ModelBuilder.h"

#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vellumo {
namespace {

using namespace test;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

// A grid over one table: a key column, a text column and an object column.
class DataViewTest : public ::testing::Test, protected FakeDesktop<> {
protected:
    void show(const std::vector<test::Row>& rows)
    {
        m_table = makeTable("T", {{"Id", "Long Integer", true}, {"Text", "Text"}, {"Object", "OLE"}}, rows);
        m_table->columns()[1]->setTextAlign(2);
        view.updateDataTableToShowMDBTable(m_table.get());
        port.events.clear();
    }

    FakeDataView port;
    DataView view{port, ports, false};

private:
    std::unique_ptr<TAdmMDBTable> m_table;
};

std::string tags(const DataView& view)
{
    std::string tags;
    for (const auto& column : view.columns())
        tags += column.identifier + std::to_string(column.headerTag) + " ";
    return tags;
}

TEST_F(DataViewTest, EmptyGridTellsWhy)
{
    EXPECT_EQ(view.placeholder(), "No tables selected");
    show({});
    EXPECT_EQ(view.placeholder(), "No records");
    show({test::Row{"1", "a", nullptr}});
    EXPECT_EQ(view.placeholder(), "");
    view.setSearch({"b", SearchOption::Contains, true});
    view.reloadData();
    EXPECT_EQ(view.placeholder(),
        "No records found\nThe search for “b” (Contains, ignore case) hides every record of this table.");
}

TEST_F(DataViewTest, ColumnsTellHowTheyLook)
{
    show({});
    const auto& columns = view.columns();
    ASSERT_EQ(columns.size(), 3U);
    EXPECT_TRUE(columns[0].hasKeyImage);
    EXPECT_FALSE(columns[1].hasKeyImage);
    EXPECT_EQ(columns[0].alignment, TextAlignment::Natural);
    EXPECT_EQ(columns[1].alignment, TextAlignment::Center);
    EXPECT_FALSE(columns[1].isImageAndText);
    EXPECT_TRUE(columns[2].isImageAndText);
    view.updateDataTableToShowMDBTable(nullptr);
    EXPECT_THAT(view.columns(), IsEmpty());
    EXPECT_EQ(view.numberOfRows(), 0U);
}

TEST_F(DataViewTest, ClicksTurnOneHeaderAndClearTheOthers)
{
    show({{"10", "b", null}, {"9", "a", null}, {"-5", "c", null}});
    const struct {
        std::size_t column;
        const char* tags;
        const char* ids;
    } clicks[] = {
        {0, "Id1 Text0 Object0 ", "-5 9 10 "},
        {0, "Id-1 Text0 Object0 ", "10 9 -5 "},
        {0, "Id0 Text0 Object0 ", "10 9 -5 "},
        {0, "Id1 Text0 Object0 ", "-5 9 10 "},
        {1, "Id0 Text1 Object0 ", "9 10 -5 "},
    };
    for (const auto& click : clicks) {
        view.didClickTableColumn(click.column);
        EXPECT_EQ(tags(view), click.tags);
        std::string ids;
        for (std::size_t row = 0; row < view.numberOfRows(); ++row)
            ids += cellDisplayText(view.getValueForTableColumn(0, row)) + " ";
        EXPECT_EQ(ids, click.ids) << click.tags;
    }
    view.updateDataTableToShowMDBTable(view.table());
    EXPECT_EQ(tags(view), "Id0 Text1 Object0 ") << "restored from the table";
    view.didClickTableColumn(7);
    EXPECT_EQ(tags(view), "Id0 Text1 Object0 ");
}

TEST_F(DataViewTest, DetailPaneTellsValuesFromPlaceholders)
{
    show({{"1", "[NULL]", makeBlob("IMAGE...", "png")}, {null, "long\ttext", makeBlob("plain", "txt")},
        {"3", null, makeBlob(std::string_view("\x01\x02", 2), "bin")},
        {"4", null, makeBlob("[NON-TEXTUAL DATA]", "txt")}});
    const struct {
        const char* name;
        std::size_t row;
        std::size_t column;
        const char* text;
        bool isGrey;
    } cells[] = {
        {"text", 1, 1, "long\ttext", false},
        {"null", 1, 0, "[NULL]", true},
        {"a text that reads like null", 0, 1, "[NULL]", false},
        {"an object that reads like one that has no text", 3, 2, "[NON-TEXTUAL DATA]", false},
        {"object with text", 1, 2, "plain", false},
        {"object without text", 2, 2, "[NON-TEXTUAL DATA]", true},
    };
    for (const auto& cell : cells) {
        view.setEditedColumn(cell.column, cell.row);
        EXPECT_EQ(view.detail().text, cell.text) << cell.name;
        EXPECT_EQ(view.detail().isGrey, cell.isGrey) << cell.name;
        EXPECT_EQ(view.detail().image, nullptr) << cell.name;
    }
    view.setEditedColumn(2, 0);
    EXPECT_NE(view.detail().image, nullptr);
    view.openBlobAsFile();
    EXPECT_EQ(workspace.opened.size(), 1U);
    view.displayTextViewContent({});
    EXPECT_EQ(view.detail().text, "No fields selected");
    EXPECT_TRUE(view.detail().isGrey);
    view.openBlobAsFile();
    EXPECT_EQ(workspace.opened.size(), 1U) << "no picture is shown any longer";
}

TEST_F(DataViewTest, ADamagedObjectSaysSoInThePaneAndInItsName)
{
    const auto whole = makeBlob("abc", "jpg");
    const auto damaged = std::make_shared<TAdmBlobData>(
        std::vector(whole->data().begin(), whole->data().end()), "jpg", ObjectFacts{ObjectState::Damaged, "", ""});
    show({{"1", "a", whole}, {"2", "b", damaged}});
    for (const std::size_t row : {0, 1}) {
        view.displayCell(2, row);
        view.saveObjectAs();
        EXPECT_EQ(view.detail().objectNote, row == 0 ? "" : "This object is damaged.");
    }
    EXPECT_THAT(filePanels.asked, ElementsAre("save txt Object-1.txt", "save txt Object-2.damaged.txt"));
    view.displayCell(1, 1); // a text
    EXPECT_EQ(view.detail().objectNote, "");
}

TEST_F(DataViewTest, CopiesRowsAsLinesOfTabbedFields)
{
    show({{"a", "b\tc", null}, {"1", "two\nlines\r", makeBlob("x\ty", "txt")},
        {null, "[NULL]", makeBlob(std::string_view("\x01\x02", 2), "bin")}});
    const std::string first = "a\tb c\t\n";
    const std::string second = "1\ttwo lines\r\tx y\n";
    const std::string third = "\t[NULL]\t\n";
    const struct {
        const char* name;
        std::vector<RowSelection::Range> selected;
        std::optional<std::size_t> clicked;
        std::vector<std::string> copied;
    } cases[] = {
        {"nothing", {}, {}, {}},
        {"clicked alone", {}, 0, {first}},
        {"selected alone", {{1, 1}}, {}, {second}},
        {"clicked among the selected", {{2, 2}, {0, 0}}, 2, {first + third}},
        {"clicked beside the selected", {{0, 1}}, 2, {third}},
        {"all", {{0, 2}}, {}, {first + second + third}},
    };
    for (const auto& test : cases) {
        pasteboard.texts.clear();
        view.tableViewSelectionDidChange(RowSelection(test.selected));
        view.setClickedRow(test.clicked);
        view.copy();
        EXPECT_EQ(pasteboard.texts, test.copied) << test.name;
    }
    view.setDisplayOrder({1, 0, 2});
    view.setClickedRow(0);
    view.tableViewSelectionDidChange({});
    view.copy();
    EXPECT_EQ(pasteboard.texts.back(), "b c\ta\t\n") << "columns moved by the user";
}

TEST_F(DataViewTest, ArrowsLeadToTheFarColumn)
{
    show({{"1", "a", nullptr}});
    view.setDisplayOrder({1, 0, 2});
    EXPECT_FALSE(view.keyDown(125));
    EXPECT_TRUE(view.keyDown(123) && view.keyDown(124));
    EXPECT_THAT(port.events, testing::IsSupersetOf({"focus 2,0", "focus 1,0"}));
}

TEST_F(DataViewTest, GoesNowhereWithoutRows)
{
    show({});
    EXPECT_FALSE(view.keyDown(123));
    view.JumpToRow();
    for (const long number : {-1L, 0L, 1L})
        view.jumpToRowConfirmed(number);
    EXPECT_EQ(alerts.beeps, 3);
    EXPECT_THAT(port.events, ElementsAre("Jump to row / Row:"));
}

TEST_F(DataViewTest, AJumpShowsTheRowInTheCurrentColumn)
{
    show({{"1", "a", null}, {"2", "b", null}, {"3", "c", null}});
    view.setDisplayOrder({1, 0, 2});
    const struct {
        const char* name;
        std::function<void()> before;
        long number;
        const char* shown;
    } cases[] = {
        {"no current column: the first displayed", [] {}, 2, "b"},
        {"the column of the cell shown", [&] { view.displayCell(0, 0); }, 3, "3"},
        {"the row that is selected already", [&] { view.displayCell(0, 0); }, 3, "3"},
        {"no such row", [] {}, 4, "3"},
    };
    for (const auto& test : cases) {
        test.before();
        view.jumpToRowConfirmed(test.number);
        EXPECT_EQ(view.detail().text, test.shown) << test.name;
    }
    view.updateDataTableToShowMDBTable(nullptr);
    show({{"9", "z", null}});
    view.jumpToRowConfirmed(1);
    EXPECT_EQ(view.detail().text, "z") << "another table has no current column; its columns are as they were left";
}

TEST_F(DataViewTest, MenuItemsAreEnabledForWhatThereIs)
{
    using enum GridCommand;
    const auto enabled = [&] {
        std::string names;
        for (const auto& [command, name] :
            {std::pair{SelectAll, "all "}, {DeselectAll, "none "}, {Copy, "copy "}, {JumpToRow, "jump "}, {Other, "?"}})
            if (view.validateMenuItem(command)) names += name;
        return names;
    };
    show({});
    EXPECT_EQ(enabled(), "");
    show({{"1", "a", null}});
    EXPECT_EQ(enabled(), "all jump ");
    view.setClickedRow(0);
    EXPECT_EQ(enabled(), "all copy jump ");
    view.setClickedRow({});
    view.tableViewSelectionDidChange(RowSelection::ofRow(0));
    EXPECT_EQ(enabled(), "all none copy jump ");
}

TEST_F(DataViewTest, IconClicksDragAnyObjectAndOpenSafeOnes)
{
    using enum IconClick::Outcome;
    show({{"1", "a", makeBlob("IMAGE", "png")}, {"2", "b", makeBlob("IMAGE", "exe")}, {"3", "c", makeBlob("x", "TXT")},
        {"4", "d", null}});
    const struct {
        const char* name;
        std::size_t column;
        std::size_t row;
        int clicks;
        IconClick::Outcome outcome;
        std::size_t openedSoFar;
    } cases[] = {
        {"drag", 2, 1, 1, DragFile, 0},
        {"open a program that looks like a picture", 2, 1, 2, LeftToGrid, 0},
        {"open a picture", 2, 0, 2, Opened, 1},
        {"open a text", 2, 2, 2, Opened, 2},
        {"null", 2, 3, 1, LeftToGrid, 2},
        {"text cell", 1, 0, 2, LeftToGrid, 2},
        {"third click", 2, 2, 3, LeftToGrid, 2},
    };
    for (const auto& test : cases) {
        const auto click = view.handleDragIconWithColumn(test.column, test.row, test.clicks);
        EXPECT_EQ(click.outcome, test.outcome) << test.name;
        EXPECT_EQ(std::filesystem::exists(click.path), test.outcome == DragFile) << test.name;
        EXPECT_EQ(workspace.opened.size(), test.openedSoFar) << test.name;
    }
}

TEST_F(DataViewTest, SelectionAndPaneFollowTheirRecords)
{
    show({{"1", "c", null}, {"2", "a", null}, {"3", "b", null}, {"4", "ab", null}});
    int told = 0;
    view.setSelectionListener([&told] { ++told; });
    view.displayCell(1, 0);
    view.tableViewSelectionDidChange(RowSelection({{0, 0}, {2, 2}}));
    EXPECT_EQ(told, 1);
    view.didClickTableColumn(1); // a, ab, b, c
    EXPECT_EQ(view.selectedRows(), RowSelection({{2, 3}}));
    EXPECT_EQ(view.rowShown(), 3U);
    EXPECT_EQ(told, 2);
    view.setSearch({"b", SearchOption::Contains, true});
    EXPECT_EQ(view.numberOfRows(), 2U) << "whoever asks first";
    view.reloadData();
    EXPECT_EQ(view.selectedRows(), RowSelection::ofRow(1));
    EXPECT_EQ(view.detail().text, "No fields selected") << "its record is hidden";
    EXPECT_EQ(view.rowShown(), std::nullopt);
    view.updateDataTableToShowMDBTable(view.table());
    EXPECT_EQ(view.selectedRows(), RowSelection::ofRow(1)) << "the same table shown again";
    view.setSearch({});
    view.reloadData();
    EXPECT_EQ(view.selectedRows(), RowSelection::ofRow(2)) << "the record, in the order of the sort";
}

TEST_F(DataViewTest, FindingBeginsAtTheEndThatItComesFrom)
{
    show({{"1", "a", null}, {"2", "b", null}, {"3", "a", null}});
    view.setFind({"a", SearchOption::Contains, true});
    for (const auto& [step, row] : {std::pair{1, 0U}, {1, 2U}, {1, 0U}}) {
        ASSERT_TRUE(view.findNext(step));
        EXPECT_EQ(view.selectedRows(), RowSelection::ofRow(row));
    }
    view.selectRows({});
    ASSERT_TRUE(view.findNext(-1));
    EXPECT_EQ(view.selectedRows(), RowSelection::ofRow(2));
}

TEST(RowSelection, JoinsRanges)
{
    const RowSelection rows({{7, 9}, {0, 1}, {2, 3}, {8, 12}, {10, 11}});
    EXPECT_EQ(rows.ranges(), (std::vector<RowSelection::Range>{{0, 3}, {7, 12}}));
    EXPECT_EQ(rows.count(), 10U);
    std::string members;
    for (std::size_t row = 0; row < 15; ++row)
        members += rows.contains(row) ? 'x' : '.';
    EXPECT_EQ(members, "xxxx...xxxxxx..");
    for (const auto& [rowCount, left] : {std::pair{20, 10}, {13, 10}, {12, 9}, {7, 4}, {3, 3}, {0, 0}}) {
        auto clipped = rows;
        clipped.clipTo(static_cast<std::size_t>(rowCount));
        EXPECT_EQ(clipped.count(), static_cast<std::size_t>(left)) << rowCount;
    }
}

} // namespace
} // namespace vellumo
