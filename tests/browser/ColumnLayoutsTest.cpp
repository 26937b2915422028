// SPDX-License-Identifier: MIT
#include "browser/ColumnLayouts.h"

#include "browser/LongestTexts.h"
#include "support/FakeDesktop.h"
#include "support/ModelBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vellumo {
namespace {

using namespace test;
using ::testing::UnorderedElementsAre;

TEST(ColumnLayouts, AreKeptByTheNamesOfTableAndColumns)
{
    FakeDefaults defaults;
    const auto table = makeTable("A =\n%B", {{"Id", "Text"}, {"Größe =", "Text"}, {"Id", "Text"}}, {});
    ColumnLayouts(defaults).keep(*table, {{2, 1, 0}, {10, 0, 30}});
    const struct {
        const char* name;
        std::vector<ColumnSpec> columns;
        std::optional<ColumnLayout> found;
    } cases[] = {
        {"A =\n%B", {{"Id", "Text"}, {"Größe =", "Text"}, {"Id", "Text"}}, ColumnLayout{{0, 1, 2}, {30, 0, 10}}},
        {"A =\n%B", {{"New", "Text"}, {"Id", "Text"}, {"Größe =", "Text"}}, ColumnLayout{{1, 2, 0}, {0, 30, 0}}},
        {"A =\n%B", {}, ColumnLayout{}},
        {"A", {{"Id", "Text"}}, std::nullopt},
    };
    for (const auto& [name, columns, found] : cases) {
        const auto other = makeTable(name, columns, {});
        EXPECT_EQ(ColumnLayouts(defaults).find(*other), found) << name << columns.size();
    }
}

TEST(ColumnLayouts, ForgetTheOldestWhenThereAreTooMany)
{
    FakeDefaults defaults;
    ColumnLayouts layouts(defaults);
    const auto tableNumber = [](int i) {
        return makeTable(std::string(1000, 'x') + std::to_string(i), {{"Id", "Text"}}, {});
    };
    for (int i = 0; i < 100; ++i) {
        layouts.keep(*tableNumber(i), {{0}, {i}});
        layouts.keep(*tableNumber(0), {{0}, {7}}); // changed again and again
    }
    EXPECT_LE(defaults.string(ColumnLayouts::defaultsKey)->size(), ColumnLayouts::mostBytes);
    EXPECT_TRUE(layouts.find(*tableNumber(0)) && layouts.find(*tableNumber(99)) && layouts.find(*tableNumber(60)));
    EXPECT_FALSE(layouts.find(*tableNumber(1)));
}

TEST(LongestTexts, AreFoundInEveryGroup)
{
    const auto table = makeTable("T", {{"Text", "Text"}, {"Object", "OLE"}}, {});
    setRows(*table,
        {{"aaa", null}, {"b", null}, {null, null}, {"dddd", makeBlob("x", "txt")}, {"cccc", null}, {"é", null}}, 2);
    EXPECT_THAT(longestTexts(table->rows(), 0, 3), UnorderedElementsAre(0, 3, 4));
    EXPECT_THAT(longestTexts(table->rows(), 0, 9), UnorderedElementsAre(0, 1, 2, 3, 4, 5));
    EXPECT_THAT(longestTexts(table->rows(), 1, 3), UnorderedElementsAre());
}

} // namespace
} // namespace vellumo
