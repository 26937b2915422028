// SPDX-License-Identifier: MIT
#include "jet/RowLayout.h"

#include "jet/PageBuilder.h"

#include <gtest/gtest.h>

namespace vellumo::jet {
namespace {

using namespace std::string_literals;
using namespace vellumo::test;

ColumnDef fixedColumn(unsigned number, std::size_t offset, std::size_t size)
{
    return {.size = size, .number = number, .isFixed = true, .fixedOffset = offset};
}
ColumnDef variableColumn(unsigned number, std::size_t index) { return {.number = number, .variableIndex = index}; }

// The cells of a row, separated by blanks: their bytes, "-" for null, "!" for damaged; "no row".
std::string cellsOf(const TableDef& table, bool isJet3, const std::string& row)
{
    const RowLayout layout(table, isJet3);
    RowFrame frame;
    if (!layout.frame(spanOf(row), frame)) return "no row";
    std::string cells;
    for (const auto& column : table.columns) {
        const auto cell = layout.cell(frame, column);
        if (&column != &table.columns.front()) cells += ' ';
        cells += cell.state == CellState::Null ? "-" : cell.state == CellState::Damaged ? "!" : textOf(cell.bytes);
    }
    return cells;
}

struct RowCase {
    const char* name;
    RowParts row;
    const char* cells;
};

void expectCells(const TableDef& table, std::initializer_list<RowCase> cases)
{
    for (const bool isJet3 : {true, false})
        for (const auto& test : cases)
            EXPECT_EQ(cellsOf(table, isJet3, rowBytes(isJet3, test.row)), test.cells)
                << test.name << (isJet3 ? ", Jet 3" : ", Jet 4");
}

TEST(RowLayout, RowsAreReadAsOldAsTheyAre)
{
    const TableDef textAdded{.columnLimit = 2, .columns = {fixedColumn(0, 0, 4), variableColumn(1, 0)}};
    expectCells(textAdded,
        {
            {"before the text was there", {1, "long", {}, "\1"}, "long -"},
            {"and null", {1, "long", {}, "\0"s}, "- -"},
            // The last value byte, which stands where the number of the variable values would, must not be taken for
            // it.
            {"with value bytes like a trailer", {1, "\1\1\1\1", {}, "\1"}, "\1\1\1\1 -"},
            {"a bit behind its columns", {1, "long", {}, "\3"}, "long -"},
            {"afterwards", {2, "long", {{"text"}}, "\3"}, "long text"},
            {"afterwards, empty", {2, "long", {{""}}, "\3"}, "long "},
            {"afterwards, null", {2, "long", {{""}}, "\1"}, "long -"},
        });
    // Column 3 was deleted, 8 added behind a full byte of the mask.
    TableDef pastEight{.columnLimit = 9};
    for (const auto number : {0U, 2U, 4U, 7U, 8U})
        pastEight.columns.push_back(fixedColumn(number, number, 1));
    expectCells(pastEight,
        {
            {"before", {8, "abcdefgh", {}, "\xFF"}, "a c e h -"},
            {"before, some null", {8, "abcdefgh", {}, "\x81"}, "a - - h -"},
            {"afterwards", {9, "abcdefghi", {}, "\xFF\1"}, "a c e h i"},
            {"afterwards, last null", {9, "abcdefghi", {}, "\xFF\xFE"}, "a c e h -"},
        });
    const TableDef grown{
        .columnLimit = 5, .columns = {variableColumn(1, 0), variableColumn(4, 2), variableColumn(3, 1)}};
    expectCells(grown,
        {
            {"two values of three", {4, "", {{"one", "two"}}, "\x0A"}, "one - two"},
            {"one value", {2, "", {{"one"}}, "\x02"}, "one - -"},
            {"all", {5, "", {{"one", "two", "three"}}, "\x1A"}, "one three two"},
            {"a value said to be there that is not", {5, "", {{"one", "two"}}, "\x1A"}, "one ! two"},
        });
}

TEST(RowLayout, ARowHasItsCountAndItsMask)
{
    TableDef table{.columnLimit = 16, .columns = {fixedColumn(0, 0, 4), fixedColumn(15, 4, 2)}};
    expectCells(table,
        {
            {"just the count", {1, "", {}, ""}, "no row"},
            {"no columns", {0, "long", {}, "\1"}, "no row"},
            {"count and mask", {1, "", {}, "\0"s}, "- -"},
            {"count and mask of 8", {8, "", {}, "\0"s}, "- -"},
            {"mask of 9 cut", {9, "", {}, "\0"s}, "no row"},
            {"mask of 9", {9, "", {}, "\0\0"s}, "- -"},
            {"all columns", {16, "longin", {}, "\1\x80"}, "long in"},
            {"one more than the table ever had", {17, "longin", {}, "\1\x80\0"s}, "no row"},
            {"fixed values to the mask", {1, "long", {}, "\1"}, "long -"},
            {"one byte behind it", {1, "lon", {}, "\1"}, "! -"},
            {"from the mask on", {16, "long", {}, "\1\x80"}, "long !"},
        });
    EXPECT_EQ(cellsOf(table, false, ""), "no row");
    EXPECT_EQ(cellsOf(table, false, "\1"), "no row") << "half a count";
    table.columns = {fixedColumn(0, 0xFFFF, 0xFFFF)};
    expectCells(table, {{"far outside", {1, "long", {}, "\1"}, "!"}});
}

TEST(RowLayout, AnOffsetThatMakesNoSenseCostsItsCellOnly)
{
    // "one" from 2, "two" from 5, "three" from 8 to the trailer at 13.
    const TableDef table{
        .columnLimit = 3, .columns = {variableColumn(0, 0), variableColumn(1, 1), variableColumn(2, 2)}};
    const auto good = rowBytes(false, {3, "", {{"one", "two", "three"}}, "\7"});
    const struct {
        const char* name;
        std::size_t offset; // of the end, then of the offsets from the last to the first, then of their number
        std::size_t value;
        const char* cells;
    } cases[] = {
        {"good", 13, 13, "one two three"},
        {"slack behind the values", 13, 12, "one two thre"},
        {"end behind the trailer", 13, 14, "one two !"},
        {"end before the last value", 13, 7, "one two !"},
        {"last value empty", 15, 13, "one twothree "},
        {"last value behind the trailer", 15, 14, "one ! !"},
        {"second before the first", 17, 1, "! ! three"},
        {"second behind the third", 17, 9, "onetwot ! three"},
        {"second as long as can be", 17, 2, " onetwo three"},
        {"first in the count", 19, 1, "! two three"},
        {"far out", 19, 0xFFFF, "! two three"},
        {"no values", 21, 0, "! ! !"},
        {"more offsets than there is room for", 21, 10, "! ! !"},
        {"no such number", 21, 0xFFFF, "! ! !"},
    };
    ASSERT_EQ(good.size(), 24U);
    for (const auto& test : cases) {
        auto row = good;
        row.replace(test.offset, 2, u16(test.value));
        EXPECT_EQ(cellsOf(table, false, row), test.cells) << test.name;
    }
    expectCells({.columnLimit = 1, .columns = {variableColumn(0, 0)}},
        {
            {"no variable part", {1, "", {}, "\1"}, "!"},
            {"a number and nothing else", {1, "\1\0"s, {}, "\1"}, "!"},
            {"the smallest variable part", {1, "", {{""}}, "\1"}, ""},
        });
}

// Offsets of one byte, and how many times 256 each of them has to be raised.
TEST(RowLayout, Jet3OffsetsGoBeyondOneByte)
{
    const TableDef table{.columnLimit = 2, .columns = {variableColumn(0, 0), variableColumn(1, 1)}};
    const struct {
        std::size_t rowSize;
        std::size_t first; // bytes of the values, which begin at 1
        std::size_t second;
        std::vector<unsigned> jumps;
    } cases[] = {
        {255, 10, 239, {}}, {256, 10, 240, {}}, {257, 10, 240, {0xFF}}, // only the trailer passes 256
        {262, 10, 245, {2}},                                            // the end is 256
        {511, 10, 494, {2}},                                            // the end is 505
        {511, 254, 250, {2}},                                           // the second begins at 255
        {511, 255, 249, {1}},                                           // at 256
        {512, 300, 205, {1}},                                           //
        {513, 300, 205, {1, 0xFF}},                                     // the end is 506
        {518, 300, 210, {1, 0xFF}},                                     // 511
        {519, 300, 211, {1, 2}},                                        // 512
        {600, 520, 72, {1, 1}},                                         // the second begins at 521
        {2000, 0, 1987, {2, 2, 2, 2, 2, 2, 2}},                         // the end is 1988
    };
    for (const auto& test : cases) {
        const std::string first(test.first, 'a');
        const std::string second(test.second, 'b');
        const auto row = rowBytes(true, {2, "", {{first, second}}, "\3", test.jumps});
        ASSERT_EQ(row.size(), test.rowSize);
        EXPECT_EQ(cellsOf(table, true, row), first + ' ' + second) << test.rowSize << " bytes, first " << test.first;
    }
}

} // namespace
} // namespace vellumo::jet
