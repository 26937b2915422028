// SPDX-License-Identifier: MIT
// Tables whose search and order take their time: the rows come later, and what happens meanwhile.
#include "FakeWindow.h"
#include "Session.h"
#include "browser/DataView.h"
#include "support/ModelBuilder.h"

#include <gmock/gmock.h>

namespace vellumo {
namespace {

using namespace test;
using ::testing::IsEmpty;

constexpr std::size_t rowCount = 90'000;

// Row n holds the text of n * 7919 % rowCount with five digits, so each number up to rowCount is there once.
class LargeTableTest : public ::testing::Test, protected FakeDesktop<> {
protected:
    LargeTableTest()
    {
        std::vector<test::Row> rows;
        for (std::size_t i = 0; i < rowCount; ++i)
            rows.push_back({std::to_string(10'000 + i * 7919 % rowCount)});
        m_table = makeTable("T", {{"Text", "Text"}}, rows);
        view.setRowsListener([this] { ++arrivals; });
        view.updateDataTableToShowMDBTable(m_table.get());
    }
    void search(const std::string& text)
    {
        view.setSearch({text, SearchOption::BeginsWith, true});
        view.reloadData();
    }
    void awaitRows()
    {
        mainThread.runUntil([this] { return !view.areRowsToCome(); });
    }
    [[nodiscard]] std::string textAt(std::size_t row)
    {
        return std::string(std::get<std::string_view>(view.getValueForTableColumn(0, row)));
    }

    FakeDataView port;
    std::unique_ptr<TAdmMDBTable> m_table;
    DataView view{port, ports, false};
    int arrivals = 0;
};

TEST_F(LargeTableTest, GridKeepsItsRowsUntilTheOthersCome)
{
    view.selectRows(RowSelection::ofRow(1)); // 17919
    view.displayCell(0, 1);
    port.events.clear();
    search("1791");
    EXPECT_EQ(view.numberOfRows(), rowCount);
    EXPECT_EQ(view.searchText(), "Searching…");
    EXPECT_THAT(port.events, IsEmpty());
    awaitRows();
    EXPECT_EQ(arrivals, 1);
    EXPECT_EQ(view.searchText(), "“1791”: 10 of 90000 records");
    EXPECT_EQ(view.detail().text, "17919");
    EXPECT_EQ(textAt(view.selectedRows().first().value()), "17919");

    view.didClickTableColumn(0);
    EXPECT_EQ(view.searchText(), "Sorting…");
    awaitRows();
    EXPECT_EQ(view.selectedRows().first(), 9U);
    for (std::size_t row = 0; row < 10; ++row)
        EXPECT_EQ(textAt(row), std::to_string(17910 + row));
    // Neither a known order nor the end of a search takes time.
    view.didClickTableColumn(0);
    search("");
    EXPECT_FALSE(view.areRowsToCome());
    for (std::size_t row = 0; row < rowCount; ++row)
        ASSERT_EQ(textAt(row), std::to_string(10'000 + rowCount - 1 - row));
    EXPECT_EQ(arrivals, 2);
}

TEST_F(LargeTableTest, TheLastWishCounts)
{
    search("2");
    search("23");
    search("999");
    awaitRows();
    EXPECT_EQ(view.numberOfRows(), 100U); // 99900 to 99999
    EXPECT_EQ(arrivals, 1);
}

TEST_F(LargeTableTest, WhoLetsGoOrComesBackWaitsForNothing)
{
    search("2");
    search("");
    EXPECT_FALSE(view.areRowsToCome());
    EXPECT_EQ(view.numberOfRows(), rowCount);
    view.didClickTableColumn(0);
    view.updateDataTableToShowMDBTable(nullptr);
    m_table.reset();
    EXPECT_EQ(view.numberOfRows(), 0U);
    EXPECT_EQ(view.searchText(), "");
    mainThread.runUntil([] { return true; });
    EXPECT_EQ(arrivals, 0);
}

TEST_F(LargeTableTest, AnotherTableHasNoRowsUntilThen)
{
    const auto other = makeTable("U", {{"Text", "Text"}}, {{"a"}});
    view.updateDataTableToShowMDBTable(other.get());
    m_table->columns()[0]->setSortOrder(-1);
    view.updateDataTableToShowMDBTable(m_table.get());
    EXPECT_EQ(view.numberOfRows(), 0U);
    EXPECT_EQ(view.placeholder(), "Sorting…");
    EXPECT_FALSE(view.hidesAllRows());
    view.awaitRows();
    EXPECT_EQ(view.placeholder(), "");
    EXPECT_EQ(textAt(0), "99999");
    view.updateDataTableToShowMDBTable(nullptr);
}

TEST_F(LargeTableTest, FindingGoesOnFromTheRecordsFound)
{
    view.setFind({"5000", SearchOption::EndsWith, true});
    EXPECT_EQ(view.searchText(), "Searching…");
    ASSERT_TRUE(view.findNext(1));
    EXPECT_EQ(arrivals, 1);
    EXPECT_TRUE(textAt(view.selectedRows().first().value()).ends_with("5000"));
    EXPECT_EQ(view.searchText(), "“5000”: 9 of 90000 records");
    view.setFind({});
    EXPECT_EQ(view.searchText(), "");
    EXPECT_FALSE(view.findNext(1));
}

// What is closed and opened around a search that runs.
class LargeFileTest : public ::testing::Test, protected Session {
protected:
    LargeFileTest()
    {
        const auto path = makeDatabase("Large.mdb", {{"Rows", 30'000}});
        start();
        openByPanel({path});
        click("Large/Rows");
    }
    void search(const std::string& text) { app().controlTextDidChange(VellumoAppDelegate::SearchField::Data, text); }
};

TEST_F(LargeFileTest, StatusTellsOfTheRecordsWhenTheyHaveCome)
{
    search("r29999");
    EXPECT_EQ(app().statusText(), "30000 records");
    EXPECT_EQ(app().searchText(), "Searching…");
    mainThread.runUntil([this] { return !app().dataView().areRowsToCome(); });
    EXPECT_EQ(app().statusText(), "1 record");
}

TEST_F(LargeFileTest, ExportTakesTheRowsThatWereAskedFor)
{
    search("r29999");
    app().Export(1);
    EXPECT_EQ(app().dataView().numberOfRows(), 1U);
    app().exportSheetDidEnd(0);
}

TEST_F(LargeFileTest, FileMayGoOrBeReadAgainMeanwhile)
{
    app().OpenSelectedTableInNewWindow();
    search("r2");
    app().ReadAgain();
    finishOpening();
    EXPECT_EQ(app().selectedTable()->name(), "Rows");
    mainThread.runUntil([this] { return !app().dataView().areRowsToCome(); });
    EXPECT_EQ(app().dataView().numberOfRows(), 11'111U); // r2, r20 to r29, and so on, r20000 to r29999
    search("r1");
    clickMenu("Large", &VellumoAppDelegate::CloseSelectedFile);
    EXPECT_EQ(app().dataView().table(), nullptr);
    openByPanel({folder.path("Large.mdb")});
    click("Large/Rows");
    search("r3");
    quit();
}

} // namespace
} // namespace vellumo
