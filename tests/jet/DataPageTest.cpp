// SPDX-License-Identifier: MIT
#include "jet/DataPage.h"

#include "jet/PageBuilder.h"

#include <gtest/gtest.h>

namespace vellumo::jet {
namespace {

using namespace std::string_literals;
using namespace vellumo::test;

// "live:bytes" for each row, in order.
std::string rowsOf(const std::string& page, const PageFormat& format)
{
    constexpr const char* states[] = {"live", "here", "away", "deleted", "damaged"};
    RowPlaces places(spanOf(page), format);
    std::string rows;
    for (std::size_t i = 0; i < places.count(); ++i) {
        const auto place = places.next();
        rows += states[static_cast<std::size_t>(place.state)] + ":"s + textOf(place.bytes) + ' ';
    }
    return rows;
}

// Three rows, the bytes of which stand at the end of the page as "cccBBBaaa".
std::string threeRows(const PageFormat& format, unsigned secondFlags = 0)
{
    return dataPage(format, 7, {{"aaa"}, {"BBB", secondFlags}, {"ccc"}});
}

TEST(DataPage, RowsLieWhereTheirOffsetsSay)
{
    for (const auto* format : {&jet3Pages, &jet4Pages}) {
        const auto size = format->size;
        const auto tableEnd = rowEntry(*format, 3); // rows start here at the earliest
        const struct {
            const char* name;
            std::size_t row;
            std::size_t entry;
            const char* rows;
        } cases[] = {
            {"as written", 1, size - 6, "live:aaa live:BBB live:ccc "},
            {"no bytes at the page's end", 0, size, "live: live:BBBaaa live:ccc "},
            {"behind the page's end", 0, size + 1, "damaged: damaged: live:ccc "},
            {"no bytes", 1, size - 3, "live:aaa live: live:cccBBB "},
            {"above the row before", 1, size - 2, "live:aaa damaged: damaged: "},
            {"in the table of offsets", 1, tableEnd - 1, "live:aaa damaged: damaged: "},
            {"last in the table of offsets", 2, tableEnd - 1, "live:aaa live:BBB damaged: "},
            {"moved here", 1, (size - 6) | movedHere, "live:aaa here:BBB live:ccc "},
            {"moved away", 1, (size - 6) | movedAway, "live:aaa away:BBB live:ccc "},
            {"deleted, its bytes there", 1, (size - 6) | deletedRow, "live:aaa deleted:BBB live:ccc "},
            {"deleted, no bytes", 1, (size - 3) | deletedRow, "live:aaa deleted: live:cccBBB "},
            {"deleted, its place damaged", 1, 1 | deletedRow, "live:aaa deleted: damaged: "},
            {"an unused flag", 1, (size - 6) | 0x2000, "live:aaa live:BBB live:ccc "},
        };
        for (const auto& test : cases) {
            auto page = threeRows(*format);
            page.replace(rowEntry(*format, test.row), 2, u16(test.entry));
            EXPECT_EQ(rowsOf(page, *format), test.rows) << test.name << ", pages of " << size;
        }
        auto page = threeRows(*format);
        page.replace(rowEntry(*format, 2), 2, u16(tableEnd));
        EXPECT_EQ(rowsOf(page, *format).size(), "live:aaa live:BBB live: "s.size() + size - 6 - tableEnd)
            << "right behind the table of offsets";
    }
}

TEST(DataPage, HasAsManyRowsAsCanBe)
{
    for (const auto* format : {&jet3Pages, &jet4Pages}) {
        for (const std::size_t count : {0U, 255U, 256U, 0xFFFFU}) {
            auto page = dataPage(*format, 7, {});
            page.replace(rowEntry(*format, 0) - 2, 2, u16(count));
            RowPlaces places(spanOf(page), *format);
            EXPECT_EQ(places.count(), std::min<std::size_t>(count, 255));
            EXPECT_EQ(places.isCountPlausible(), count <= 255);
            for (std::size_t i = 0; i < places.count(); ++i)
                EXPECT_EQ(places.next().state, RowState::Damaged) << "offset 0";
        }
    }
}

TEST(DataPage, PointersLeadToRowsThatThereAre)
{
    const auto page = threeRows(jet4Pages, deletedRow);
    EXPECT_EQ(textOf(rowAt(spanOf(page), jet4Pages, 0x1200)->bytes), "aaa");
    EXPECT_EQ(rowAt(spanOf(page), jet4Pages, 0x1201)->state, RowState::Deleted);
    EXPECT_EQ(textOf(rowAt(spanOf(page), jet4Pages, 0x1202)->bytes), "ccc");
    EXPECT_FALSE(rowAt(spanOf(page), jet4Pages, 0x1203));
    EXPECT_FALSE(rowAt(spanOf(page), jet4Pages, 0x12FF));
    EXPECT_EQ(ownerOf(spanOf(page)), 7U);
    EXPECT_TRUE(isDataPage(spanOf(page)));
    EXPECT_FALSE(isDataPage({}));
}

} // namespace
} // namespace vellumo::jet
