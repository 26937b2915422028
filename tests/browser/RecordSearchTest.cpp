// SPDX-License-Identifier: MIT
#include "browser/RecordSearch.h"

#include "browser/ColumnMaker.h"

#include <array>
#include <gmock/gmock.h>
#include <random>
#include <unicode/bytestream.h>
#include <unicode/casemap.h>
#include <unicode/uchar.h>

namespace vellumo {
namespace {

using test::makeColumn;
using test::makeTable;
using test::null;
using ::testing::ElementsAre;
using Found = std::vector<std::uint32_t>;

constexpr auto contains = SearchOption::Contains;
constexpr auto begins = SearchOption::BeginsWith;
constexpr auto equals = SearchOption::Equals;
constexpr auto ends = SearchOption::EndsWith;

TEST(RecordSearch, FindsWhatIsWritten)
{
    const struct {
        const char* name;
        SearchSettings settings;
        std::vector<std::string> texts;
        Found expected;
    } cases[] = {
        {"no text finds all", {"", equals, true}, {"a", "", "b"}, {0, 1, 2}},
        {"across two cells is no hit", {"ab", contains, true}, {"a", "b", "xa", "bx", "ab"}, {4}},
        {"across two cells, overlapping a true hit", {"aa", contains, false}, {"a", "aa", "a"}, {1}},
        {"across three cells", {"abc", contains, true}, {"a", "b", "c"}, {}},
        {"null is never found", {"NULL", contains, true}, {"", "NULL"}, {1}},
        {"a bracket is not a brace", {"[", contains, true}, {"{", "["}, {1}},
        {"a digit has no case", {"1", contains, true}, {"\x11", "1"}, {1}},
        {"umlauts, any case", {"MÜLLER", contains, true}, {"Frau Müller", "Mueller"}, {0}},
        {"umlauts, this case", {"Ü", contains, false}, {"ü", "Ü"}, {1}},
        {"Kelvin sign for k", {"k", equals, true}, {"\u212A", "K", "x"}, {0, 1}},
        {"k for the Kelvin sign", {"\u212A", equals, true}, {"k", "x"}, {0}},
        {"long s for s", {"MESS", contains, true}, {"meſs"}, {0}},
        {"sharp s for two", {"strasse", equals, true}, {"Straße", "STRASSE", "STRAẞE", "Strase"}, {0, 1, 2}},
        {"two for sharp s", {"ß", begins, true}, {"SSx", "ßx", "sx"}, {0, 1}},
        {"dotted capital I for i", {"i", begins, true}, {"\u0130x"}, {0}},
        {"a cell behind one that grew", {"x", ends, true}, {"\u0130", "\u0130x", "y"}, {1}},
        {"a ligature for its letters", {"ffi", contains, true}, {"o\uFB03ce"}, {0}},
        {"final sigma", {"ΣΟΦΟΣ", equals, true}, {"σοφος", "σοφοσ"}, {0, 1}},
        {"letters beyond the basic plane", {"\U00010400", equals, true}, {"\U00010428"}, {0}},
        {"broken bytes match themselves", {"\xC3", ends, true}, {"a\xC3", "\xC3\x84"}, {0}},
    };
    for (const auto& test : cases)
        EXPECT_EQ(filterData(makeColumn("Text", test.texts)->rows(), test.settings), test.expected) << test.name;
}

TEST(RecordSearch, LooksAtEveryColumnButObjects)
{
    const auto table = makeTable("T", {{"A", "Text"}, {"O", "OLE"}, {"N", "Long Integer"}},
        {{"x", test::makeBlob("2", "bmp"), "1"}, {"bmp", null, "2"}, {"y", test::makeBlob("x", "x"), "21"},
            {null, null, null}});
    EXPECT_THAT(filterData(table->rows(), {"bmp", contains, true}), ElementsAre(1));
    EXPECT_THAT(filterData(table->rows(), {"2", contains, true}), ElementsAre(1, 2));
    const Found candidates = {0, 2, 3};
    EXPECT_THAT(filterData(table->rows(), {"2", contains, true}, candidates), ElementsAre(2));
}

// The same search written the slow way, with ICU's own folding of each cell.
bool agreesSlowly(const std::string& cell, const SearchSettings& settings)
{
    const auto folded = [&](const std::string& text) {
        if (!settings.ignoreCase) return text;
        std::string out;
        icu::StringByteSink<std::string> sink(&out);
        UErrorCode status = U_ZERO_ERROR;
        icu::CaseMap::utf8Fold(U_FOLD_CASE_DEFAULT, text, sink, nullptr, status);
        return out;
    };
    const auto text = folded(cell);
    const auto pattern = folded(settings.text);
    if (cell.empty()) return false;
    switch (settings.searchOption) {
    case contains: return text.find(pattern) != std::string::npos;
    case begins: return text.starts_with(pattern);
    case equals: return text == pattern;
    case ends: return text.ends_with(pattern);
    }
    return false;
}

std::string randomText(std::mt19937& random, std::size_t longest)
{
    // Few characters, so that patterns are found; among them those whose folding changes its length.
    static const std::vector<std::string> letters = {
        "a", "A", "b", "B", "k", "S", "s", "1", " ", "ä", "Ä", "ß", "\u212A", "\u0130", "ſ", "и", "И", "漢"};
    std::string text;
    const auto plain = random() % 2 == 0; // half of the texts are ASCII
    for (auto length = random() % (longest + 1); length > 0; --length)
        text += letters[random() % (plain ? 9 : letters.size())];
    return text;
}

TEST(RecordSearch, AgreesWithTheSlowSearchOnRandomTables)
{
    std::mt19937 random(20240229);
    for (int round = 0; round < 300; ++round) {
        // Some tables hold texts long enough for the search's wide steps, or more cells than it takes at once.
        const auto longest = round % 3 == 0 ? 90U : 7U;
        std::vector<std::array<std::string, 2>> cells(round % 10 == 0 ? 1300 : 60);
        std::vector<test::Row> rows;
        for (auto& row : cells) {
            row = {randomText(random, longest), randomText(random, 3)};
            rows.push_back({row[0], row[1]});
        }
        const auto table = makeTable("T", {{"A", "Text"}, {"B", "Memo/Hyperlink"}}, rows, 700);
        const SearchSettings settings{
            randomText(random, 2) + "s", static_cast<SearchOption>(random() % 4), random() % 2 == 0};
        Found expected;
        Found candidates;
        Found expectedAmongCandidates;
        for (std::uint32_t row = 0; row < cells.size(); ++row) {
            const auto agrees = agreesSlowly(cells[row][0], settings) || agreesSlowly(cells[row][1], settings);
            const auto isCandidate = random() % 2 == 0;
            if (agrees) expected.push_back(row);
            if (isCandidate) candidates.push_back(row);
            if (agrees && isCandidate) expectedAmongCandidates.push_back(row);
        }
        ASSERT_EQ(filterData(table->rows(), settings), expected) << "round " << round << ": " << settings.text;
        ASSERT_EQ(filterData(table->rows(), settings, candidates), expectedAmongCandidates) << "round " << round;
    }
}

TEST(RecordSearch, KnowsWhenASearchOnlyNarrows)
{
    const struct {
        const char* name;
        SearchSettings previous;
        SearchSettings next;
        bool expected;
    } cases[] = {
        {"a letter more", {"ab", contains, true}, {"abc", contains, true}, true},
        {"a letter in front", {"ab", contains, true}, {"xab", contains, true}, true},
        {"a letter less", {"ab", contains, true}, {"a", contains, true}, false},
        {"another case setting", {"ab", contains, true}, {"abc", contains, false}, false},
        {"from begins", {"ab", begins, true}, {"abc", contains, true}, false},
        {"longer ends", {"ab", ends, true}, {"abc", ends, true}, false},
    };
    for (const auto& test : cases)
        EXPECT_EQ(isNarrower(test.next, test.previous), test.expected) << test.name;
}

} // namespace
} // namespace vellumo
