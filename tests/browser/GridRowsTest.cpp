// SPDX-License-Identifier: MIT
#include "browser/GridRows.h"

#include "support/ModelBuilder.h"

#include <gmock/gmock.h>

namespace vellumo {
namespace {

using test::makeTable;
using ::testing::ElementsAre;

std::vector<std::uint32_t> listOf(GridRows& grid)
{
    std::vector<std::uint32_t> rows(grid.rowCount());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        rows[i] = grid.rowAt(i);
        EXPECT_EQ(grid.positionOfRow(rows[i]), i);
    }
    return rows;
}

class GridRowsTest : public ::testing::Test {
protected:
    GridRowsTest() { grid.setTable(table.get()); }
    void sortBy(std::size_t column, int order)
    {
        for (std::size_t i = 0; i < table->columns().size(); ++i)
            table->columns()[i]->setSortOrder(i == column ? order : 0);
    }

    std::unique_ptr<TAdmMDBTable> table = makeTable("T", {{"Name", "Text"}, {"Price", "Currency"}, {"Place", "Text"}},
        {{"Pear", "10.0000", "Rome"}, {"apple", "9.0000", "Paris"}, {"Plum", "", "Rome"}, {"pear", "9.0000", ""},
            {"Fig", "100.0000", "Peru"}});
    GridRows grid;
};

TEST_F(GridRowsTest, FollowsSearchAndSortThroughASession)
{
    EXPECT_THAT(listOf(grid), ElementsAre(0, 1, 2, 3, 4));
    sortBy(1, 1);
    EXPECT_THAT(listOf(grid), ElementsAre(2, 1, 3, 0, 4));
    grid.setSearch({"P", SearchOption::Contains, true});
    EXPECT_THAT(listOf(grid), ElementsAre(2, 1, 3, 0, 4));
    grid.setSearch({"Pe", SearchOption::Contains, true});
    EXPECT_THAT(listOf(grid), ElementsAre(3, 0, 4));
    EXPECT_EQ(grid.positionOfRow(1), std::nullopt);
    sortBy(1, -1);
    EXPECT_THAT(listOf(grid), ElementsAre(4, 0, 3));
    grid.setSearch({"Pe", SearchOption::Contains, false});
    EXPECT_THAT(listOf(grid), ElementsAre(4, 0));
    sortBy(0, 0);
    EXPECT_THAT(listOf(grid), ElementsAre(0, 4));
    grid.setSearch({"P", SearchOption::Contains, false});
    EXPECT_THAT(listOf(grid), ElementsAre(0, 1, 2, 4));
    grid.setSearch({"P", SearchOption::BeginsWith, false});
    EXPECT_THAT(listOf(grid), ElementsAre(0, 1, 2, 4));
    grid.setSearch({"Rom", SearchOption::Equals, true});
    EXPECT_THAT(listOf(grid), ElementsAre());
    grid.setSearch({"", SearchOption::Equals, true});
    sortBy(0, 1);
    EXPECT_THAT(listOf(grid), ElementsAre(1, 4, 3, 0, 2));
}

TEST_F(GridRowsTest, TheFirstSortedColumnDecides)
{
    table->columns()[0]->setSortOrder(-1);
    table->columns()[1]->setSortOrder(1);
    EXPECT_THAT(listOf(grid), ElementsAre(2, 0, 3, 4, 1));
}

TEST_F(GridRowsTest, ColumnsSortedBeforeMoreThanAreKept)
{
    const std::vector<std::uint32_t> expected[] = {{1, 4, 3, 0, 2}, {2, 1, 3, 0, 4}, {3, 1, 4, 0, 2}};
    for (const std::size_t column : {0U, 1U, 2U, 1U, 0U, 2U, 0U}) {
        sortBy(column, 1);
        EXPECT_EQ(listOf(grid), expected[column]) << column;
    }
}

TEST_F(GridRowsTest, AnotherTableOrNoneStartsAfresh)
{
    sortBy(0, 1);
    grid.setSearch({"pear", SearchOption::Equals, true});
    EXPECT_THAT(listOf(grid), ElementsAre(3, 0));
    const auto second = makeTable("T", {{"Name", "Text"}}, {{"x"}, {"Pear"}});
    grid.setTable(second.get());
    EXPECT_THAT(listOf(grid), ElementsAre(1));
    grid.setTable(nullptr);
    EXPECT_THAT(listOf(grid), ElementsAre());
    EXPECT_EQ(grid.positionOfRow(0), std::nullopt);
}

} // namespace
} // namespace vellumo
