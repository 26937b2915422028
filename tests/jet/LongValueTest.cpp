// SPDX-License-Identifier: MIT
#include "jet/LongValue.h"

#include "jet/PageBuilder.h"

#include <gtest/gtest.h>

namespace vellumo::jet {
namespace {

using namespace std::string_literals;
using namespace vellumo::test;

constexpr std::size_t inRow = 0x80000000;
constexpr std::size_t inOneRow = 0x40000000;

// Page 5: single rows; 6: chains; 7: a page of a table; 9: a deleted row.
void putLongValues(MemoryPages& pages)
{
    const auto& format = pages.format();
    pages.content[5] = longValuePage(format, {"whole value", "", "x"});
    pages.content[6] = longValuePage(format,
        {
            u32(0x601) + "first ", u32(0x602) + "second ", u32(0) + "third and slack", // 0 to 2
            u32(0x603) + "round",                                                      // to itself
            u32(0x605), u32(0x604),                                                    // 4, 5: a circle without bytes
            u32(0xFFFFFF00) + "lost",                                                  // leads out of the file
            "abc",                                                                     // no room for a pointer
            u32(0x609) + "start", u32(0x60A) + "a", u32(0x609) + "b", // 8 to 10: a circle behind a start
            u32(0x0700) + "then", u32(0x63F) + "gone",                // 11: to a table's page, 12: to no row
        });
    pages.content[9] = dataPage(format, longValueOwner, {{"of a value before", deletedRow}});
    pages.content[7] = dataPage(format, 2, {{u32(0) + "a row of a table"}});
}

TEST(LongValue, IsGatheredFromWhereItLies)
{
    const struct {
        const char* name;
        std::string stored;
        std::string expected;
        bool isComplete;
    } cases[] = {
        {"in the row", longValueHeader(inRow | 5, 0) + "hello", "hello", true},
        {"in the row, slack behind", longValueHeader(inRow | 2, 0) + "hello", "he", true},
        {"in the row, cut", longValueHeader(inRow | 6, 0) + "hello", "hello", false},
        {"empty in the row", longValueHeader(inRow, 0), "", true},
        {"empty elsewhere", longValueHeader(0, 0), "", true},
        {"header cut", longValueHeader(inRow, 0).substr(0, 11), "", false},
        {"no bytes at all", "", "", true},
        {"in one row", longValueHeader(inOneRow | 11, 0x500), "whole value", true},
        {"in one row, slack behind", longValueHeader(inOneRow | 5, 0x500), "whole", true},
        {"in one row that is too short", longValueHeader(inOneRow | 12, 0x500), "whole value", false},
        {"in the last row", longValueHeader(inOneRow | 1, 0x502), "x", true},
        {"in a row that is not there", longValueHeader(inOneRow | 1, 0x503), "", false},
        {"on a table's page", longValueHeader(inOneRow | 5, 0x700), "", false},
        {"on a page that cannot be read", longValueHeader(inOneRow | 5, 0x800), "", false},
        {"in a deleted row", longValueHeader(inOneRow | 5, 0x900), "", false},
        {"nowhere", longValueHeader(inOneRow | 5, 0), "", false},
        {"chain", longValueHeader(28, 0x600), "first second third and slack", true},
        {"chain, slack behind", longValueHeader(22, 0x600), "first second third and", true},
        {"chain that ends a byte early", longValueHeader(29, 0x600), "first second third and slack", false},
        {"chain that is long enough before it breaks", longValueHeader(4, 0x606), "lost", true},
        {"chain that leads out of the file", longValueHeader(5, 0x606), "lost", false},
        {"chain to itself", longValueHeader(500, 0x603), "roundround", false},
        {"circle behind a start", longValueHeader(500, 0x608), "startaba", false},
        {"circle without bytes", longValueHeader(12, 0x604), "", false},
        {"link without room for its pointer", longValueHeader(12, 0x607), "", false},
        {"chain into a table", longValueHeader(12, 0x60B), "then", false},
        {"chain to a row that is not there", longValueHeader(12, 0x60C), "gone", false},
    };
    for (const auto* format : {&jet3Pages, &jet4Pages}) {
        MemoryPages pages(*format);
        putLongValues(pages);
        LongValue::Budget budget = 10000;
        LongValue value(pages, budget);
        for (const auto& test : cases) {
            pages.reads = 0;
            value.read(spanOf(test.stored));
            EXPECT_EQ(textOf(value.bytes()), test.expected) << test.name;
            EXPECT_EQ(value.isComplete(), test.isComplete) << test.name;
            EXPECT_FALSE(value.isOverBudget()) << test.name;
            EXPECT_LE(pages.reads, 3U) << test.name;
        }
    }
}

TEST(LongValue, AllTogetherTakeNoMoreThanTheBudget)
{
    MemoryPages pages(jet4Pages);
    putLongValues(pages);
    LongValue::Budget budget = 50;
    const struct {
        const char* name;
        std::string stored;
        std::string expected;
        bool isComplete;
        bool isOverBudget;
    } cases[] = {
        {"what lies in the row costs nothing", longValueHeader(inRow | 2, 0) + "ab", "ab", true, false},
        {"28 of 50", longValueHeader(28, 0x600), "first second third and slack", true, false},
        {"11 of 22", longValueHeader(inOneRow | 11, 0x500), "whole value", true, false},
        {"another reader took a byte: 10 of 10", longValueHeader(inOneRow | 10, 0x500), "whole valu", true, false},
        {"one of none", longValueHeader(inOneRow | 1, 0x502), "", false, true},
        {"a chain of none", longValueHeader(28, 0x600), "", false, true},
        {"but an empty value takes none", longValueHeader(inOneRow, 0x500), "", true, false},
        {"and one in its row", longValueHeader(inRow | 2, 0) + "ab", "ab", true, false},
    };
    LongValue value(pages, budget);
    LongValue other(pages, budget);
    for (const auto& test : cases) {
        if (budget == 11) other.read(spanOf(longValueHeader(inOneRow | 1, 0x502)));
        value.read(spanOf(test.stored));
        EXPECT_EQ(textOf(value.bytes()), test.expected) << test.name;
        EXPECT_EQ(value.isComplete(), test.isComplete) << test.name;
        EXPECT_EQ(value.isOverBudget(), test.isOverBudget) << test.name;
    }
}

} // namespace
} // namespace vellumo::jet
