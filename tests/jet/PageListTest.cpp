// SPDX-License-Identifier: MIT
#include "jet/Pages.h"

#include "jet/PageBuilder.h"
#include "jet/PageSurvey.h"

#include <gmock/gmock.h>

namespace vellumo::jet {
namespace {

using namespace std::string_literals;
using namespace vellumo::test;
using testing::ElementsAreArray;

struct Listed {
    std::vector<std::uint32_t> pages;
    std::uint64_t beyondEnd;
    std::vector<std::pair<std::uint32_t, std::uint32_t>> gaps;
};

struct ListCase {
    const char* name;
    std::string map;
    std::uint32_t pageCount;
    Listed expected;
};

// A page of bitmaps with the bits of the first, the ninth and the last page it can name.
std::string bitmapPage(const PageFormat& format)
{
    auto page = "\5\1\0\0\1\1"s;
    page.resize(format.size);
    page.back() = '\x80';
    return page;
}

void expectLists(const PageFormat& format, const std::vector<ListCase>& cases)
{
    for (const auto& test : cases) {
        MemoryPages pages(format, test.pageCount);
        pages.content[3] = bitmapPage(format);
        pages.content[4] = dataPage(format, 0, {});
        PageBuffer buffer;
        const auto list = readPageList(spanOf(test.map), pages, buffer);
        EXPECT_THAT(list.pages, ElementsAreArray(test.expected.pages)) << test.name;
        EXPECT_EQ(list.beyondEnd, test.expected.beyondEnd) << test.name;
        std::vector<std::pair<std::uint32_t, std::uint32_t>> gaps;
        for (const auto& gap : list.gaps)
            gaps.emplace_back(gap.first, gap.end);
        EXPECT_EQ(gaps, test.expected.gaps) << test.name;
    }
}

TEST(PageList, OfAMapInTheRow)
{
    const auto map = "\0\x0A\0\0\0\x05\x80"s;
    expectLists(jet4Pages,
        {
            {"three pages", map, 26, {{10, 12, 25}, 0, {}}},
            {"the last behind the end of the file", map, 25, {{10, 12}, 1, {}}},
            {"all but one behind the end", map, 11, {{10}, 2, {}}},
            {"page 0 is the header", "\0\0\0\0\0\x03"s, 100, {{1}, 0, {}}},
            {"a start that no file reaches", "\0\xFF\xFF\xFF\xFF\x03"s, 100, {{}, 2, {}}},
            {"no bitmap", "\0\x0A\0\0\0"s, 100, {{}, 0, {}}},
            {"too short", "\0\x0A\0\0"s, 100, {{}, 0, {{1, 100}}}},
            {"nothing", "", 100, {{}, 0, {{1, 100}}}},
            {"no such type", "\2\x0A\0\0\0\x05"s, 100, {{}, 0, {{1, 100}}}},
        });
}

TEST(PageList, OfBitmapPages)
{
    // A bitmap page names 16352 pages in Jet 3, 32736 in Jet 4.
    expectLists(jet3Pages,
        {
            {"first", "\1"s + u32(3), 16352, {{8, 16351}, 0, {}}},
            {"first, the last page behind the end", "\1"s + u32(3), 16351, {{8}, 1, {}}},
            {"second", "\1"s + u32(0) + u32(3), 40000, {{16352, 16360, 32703}, 0, {}}},
            {"both the same", "\1"s + u32(3) + u32(3), 16353, {{8, 16351, 16352}, 2, {}}},
        });
    expectLists(jet4Pages,
        {
            {"second", "\1"s + u32(0) + u32(3), 65472, {{32736, 32744, 65471}, 0, {}}},
            {"half an entry at the end", "\1"s + u32(3) + "\3\0\0"s, 40000, {{8, 32735}, 0, {}}},
            {"not read", "\1"s + u32(5) + u32(3), 40000, {{32736, 32744}, 1, {{0, 32736}}}},
            {"none of bitmaps", "\1"s + u32(3) + u32(4), 40000, {{8, 32735}, 0, {{32736, 40000}}}},
            {"out of the file", "\1"s + u32(40000), 40000, {{}, 0, {{0, 32736}}}},
            {"not read, and behind the end", "\1"s + u32(0) + u32(5), 32736, {{}, 1, {}}},
            {"not read, begins with the last page", "\1"s + u32(0) + u32(5), 32737, {{}, 0, {{32736, 32737}}}},
        });
}

TEST(PageList, MapsMayLieInTheBufferThatIsReadInto)
{
    MemoryPages pages(jet4Pages);
    pages.content[2] = dataPage(jet4Pages, 0, {{"\1"s + u32(3) + u32(0) + u32(3)}});
    pages.content[3] = bitmapPage(jet4Pages);
    PageBuffer buffer;
    const auto row = pages.read(2, buffer).last(13);
    EXPECT_THAT(readPageList(row, pages, buffer).pages, testing::ElementsAre(8));
    EXPECT_EQ(readPageList(pages.read(2, buffer).last(13), pages, buffer).beyondEnd, 4U);
}

std::string definitionPage(const PageFormat& format, std::uint32_t next)
{
    auto page = "\2\1\0\0"s + u32(next);
    page.resize(format.size);
    return page;
}

TEST(PageSurvey, TellsOwnersAndFirstPagesOfDefinitions)
{
    MemoryPages pages(jet3Pages, 12);
    pages.content[2] = definitionPage(jet3Pages, 9); // its further pages lie before and behind others
    pages.content[3] = definitionPage(jet3Pages, 0);
    pages.content[4] = dataPage(jet3Pages, 2, {});
    pages.content[5] = dataPage(jet3Pages, 3, {});
    pages.content[6] = definitionPage(jet3Pages, 0);
    pages.content[7] = dataPage(jet3Pages, 2, {});
    pages.content[8] = std::string(jet3Pages.size, '\0');
    pages.content[9] = definitionPage(jet3Pages, 6);
    PageMarks leftOut(12);
    const auto goesOn = [] { return true; };
    auto survey = surveyPages(pages, leftOut, goesOn).value();
    EXPECT_THAT(survey.definitions, testing::ElementsAre(2, 3));
    const std::map<std::uint32_t, std::vector<std::uint32_t>> all = {{2, {4, 7}}, {3, {5}}};
    EXPECT_EQ(survey.dataPages, all);
    leftOut[3] = leftOut[4] = leftOut[2] = true;
    survey = surveyPages(pages, leftOut, goesOn).value();
    EXPECT_THAT(survey.definitions, testing::ElementsAre(9)) << "no page leads to it that was looked at";
    EXPECT_THAT(survey.dataPages.at(2), testing::ElementsAre(7));
    MemoryPages many(jet3Pages, 5000);
    EXPECT_FALSE(surveyPages(many, PageMarks(5000), [] { return false; }));
}

// The map of the free pages is the first row of page 1.
TEST(FreePages, AreThoseOfTheMapAndAllBehindIt)
{
    const auto none = std::vector<std::uint32_t>();
    const struct {
        const char* name;
        StoredRow map;
        std::vector<std::uint32_t> free; // of 24 pages
    } cases[] = {
        {"a bit a page, and the file is longer", {"\0\0\0\0\0\x30\x80"s}, {4, 5, 15, 16, 17, 18, 19, 20, 21, 22, 23}},
        {"bits behind the end", {"\0\x10\0\0\0\x81\xFF"s}, {16, 23}},
        {"large, of no bitmap", {"\1"s + u32(0)}, none},
        {"large", {"\1"s + u32(3)}, {8}},
        {"deleted", {"\0\0\0\0\0\x30\x80"s, deletedRow}, none},
        {"of no known form", {"\2\0\0\0\0\x30"s}, none},
        {"too short", {"\0\0"s}, none},
    };
    for (const auto& test : cases) {
        MemoryPages pages(jet4Pages, 24);
        pages.content[1] = dataPage(jet4Pages, 1, {test.map});
        pages.content[3] = bitmapPage(jet4Pages);
        std::vector<std::uint32_t> found;
        const auto free = freePages(pages);
        for (std::uint32_t page = 1; page < 24; ++page)
            if (free[page]) found.push_back(page);
        EXPECT_EQ(found, test.free) << test.name;
    }
    MemoryPages pages(jet4Pages, 24);
    EXPECT_THAT(freePages(pages), testing::Each(false)) << "no page 1";
}

} // namespace
} // namespace vellumo::jet
