// SPDX-License-Identifier: MIT
#include "browser/RowOrder.h"

#include "browser/ColumnMaker.h"
#include "text/FinderCompare.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <numeric>
#include <random>

namespace vellumo {
namespace {

using test::makeColumn;
using Rows = std::vector<std::uint32_t>;

RowOrder orderOf(const TAdmMDBTable& table) { return {table.rows(), 0, factsOf(table.columns()[0]->type()).sortKind}; }

TEST(RowOrder, OrdersByWhatTheColumnHolds)
{
    const struct {
        const char* name;
        const char* dataType;
        std::vector<std::string> texts;
        Rows ascending;
        Rows descending;
    } cases[] = {
        {"texts as the file browser does", "Text", {"file10", "B", "file2", "a", "A"}, {3, 4, 1, 2, 0},
            {0, 2, 1, 4, 3}},
        {"nulls first, last when turned round", "Text", {"b", "", "a", ""}, {1, 3, 2, 0}, {0, 2, 1, 3}},
        {"equal texts keep their order both ways", "Memo/Hyperlink", {"b", "a1", "a01", "é", "e\u0301", "a1"},
            {1, 2, 5, 0, 3, 4}, {3, 4, 0, 1, 2, 5}},
        {"equal for eight bytes and more", "Text",
            {"Customer 0000010", "Customer 0000009", "Customer", "Customer 0000010"}, {2, 1, 0, 3}, {0, 3, 1, 2}},
        {"whole numbers", "Long Integer", {"10", "9", "-5", "-3", "0", "-10", "100"}, {5, 2, 3, 4, 1, 0, 6},
            {6, 0, 1, 4, 3, 2, 5}},
        {"negative numbers that start alike", "Double", {"-1.5", "-1.25", "-1", "-1.255", "-1.2"}, {0, 3, 1, 4, 2},
            {2, 4, 1, 3, 0}},
        {"booleans", "Boolean", {"1", "0", "1", "0"}, {1, 3, 0, 2}, {0, 2, 1, 3}},
        {"currency", "Currency", {"99.9500", "-0.0001", "922337203685477.5807", "922337203685477.5806"}, {1, 0, 3, 2},
            {2, 3, 0, 1}},
        {"decimals beyond any machine number", "Numeric",
            {"1234567890123456789012345679", "1234567890123456789012345678", "-0.0000", "0.0000",
                "0.0000000000000000000000000001"},
            {2, 3, 4, 1, 0}, {0, 1, 4, 2, 3}},
        {"doubles with exponents", "Double",
            {"1e+20", "2.5e-300", "99999", "-1.7976931348623157e+308", "1e+300", "0.3"}, {3, 1, 5, 2, 0, 4},
            {4, 0, 2, 5, 1, 3}},
        {"equal values written differently", "Double", {"100", "1e+2", "100.0", "-0", "0"}, {3, 4, 0, 1, 2},
            {0, 1, 2, 3, 4}},
        {"what is no number", "Single", {"nan", "inf", "1", "-inf", "\uFFFD", "1.2.3", "-"}, {3, 2, 1, 6, 5, 0, 4},
            {4, 0, 5, 6, 1, 2, 3}},
        {"dates by time", "DateTime",
            {"02/01/1999 00:00:00", "01/02/2020 00:00:00", "12/30/1899 10:00:00", "01/02/2020 00:00:01", "x",
                "01/01/0100 00:00:00"},
            {5, 2, 0, 1, 3, 4}, {4, 3, 1, 0, 2, 5}},
        {"replication ids as texts", "Replication ID", {"{B}", "{A}"}, {1, 0}, {0, 1}},
        {"objects are all alike", "OLE", {"png", "", "bmp", ""}, {1, 3, 0, 2}, {0, 2, 1, 3}},
        {"no rows", "Text", {}, {}, {}},
    };
    for (const auto& test : cases) {
        const auto order = orderOf(*makeColumn(test.dataType, test.texts));
        EXPECT_EQ(order.rows(1), test.ascending) << test.name;
        EXPECT_EQ(order.rows(-1), test.descending) << test.name;
    }
}

TEST(RowOrder, TextsWithKeysLongerThanAreKept)
{
    const std::string common(3000, 'x');
    const std::vector<std::string> texts = {common + "b", common + "a", common, common + "b", common.substr(1)};
    const auto order = orderOf(*makeColumn("Memo/Hyperlink", texts));
    EXPECT_EQ(order.rows(1), (Rows{4, 2, 1, 0, 3}));
    EXPECT_EQ(order.rows(-1), (Rows{0, 3, 1, 2, 4}));
}

TEST(RowOrder, AgreesWithAStableSortByFinderCompare)
{
    std::mt19937 random(11);
    const std::vector<std::string> pieces = {"a", "A", "b", "é", "1", "01", "10", " ", "-", "file", "Ａ", "漢", ""};
    for (int round = 0; round < 40; ++round) {
        std::vector<std::string> texts(200);
        for (auto& text : texts)
            for (auto count = random() % 5; count > 0; --count)
                text += pieces[random() % pieces.size()];
        for (const auto direction : {1, -1}) {
            Rows expected(texts.size());
            std::iota(expected.begin(), expected.end(), 0U);
            std::stable_sort(expected.begin(), expected.end(),
                [&](auto a, auto b) { return direction * finderCompare(texts[a], texts[b]) < 0; });
            ASSERT_EQ(orderOf(*makeColumn("Text", texts)).rows(direction), expected) << round << ' ' << direction;
        }
    }
}

} // namespace
} // namespace vellumo
