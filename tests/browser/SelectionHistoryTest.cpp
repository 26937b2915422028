// SPDX-License-Identifier: MIT
#include "browser/Navigation.h"

#include <gtest/gtest.h>
#include <random>

namespace vellumo {
namespace {

using Tables = SelectionHistory::Tables;

// The rule for closing, one table after the other and step by step.
void dropEqualLastPairs(Tables& tables)
{
    while (tables.size() >= 2 && tables.back() == *(tables.end() - 2))
        tables.pop_back();
}

void removeStepByStep(const Tables& closing, Tables& previous, Tables& next)
{
    for (const auto& table : closing) {
        std::erase(previous, table);
        std::erase(next, table);
        dropEqualLastPairs(previous);
        dropEqualLastPairs(next);
        while (!previous.empty() && !next.empty() && previous.back() == next.back())
            next.pop_back();
    }
}

TEST(SelectionHistory, NextMakesBackUsableWithOneVisit)
{
    const ItemId gone{1, 0, "Gone"};
    const ItemId a{2, 0, "A"};
    const ItemId b{2, 1, "B"};
    SelectionHistory history;
    history.visit(gone);
    history.visit(a);
    history.removeTables({gone});
    EXPECT_EQ(history.previousTables(), Tables{a});
    EXPECT_TRUE(history.isBackEnabled()) << "closing disables Back only when nothing is left";
    EXPECT_EQ(history.backTarget(), a);
    history.finishBack(true);
    EXPECT_FALSE(history.isBackEnabled());
    EXPECT_EQ(history.nextTarget(), a);
    history.finishNext(true);
    EXPECT_EQ(history.previousTables(), Tables{a});
    EXPECT_TRUE(history.isBackEnabled());
    history.visit(a);
    EXPECT_FALSE(history.isBackEnabled()) << "a visit asks for two";
    history.visit(b);
    EXPECT_EQ(history.backTarget(), a);
    history.finishBack(false);
    EXPECT_EQ(history.previousTables(), (Tables{a, b})) << "the target could not be shown";
}

TEST(SelectionHistory, ClosingFilesLeavesWhatTheRuleLeavesStepByStep)
{
    std::mt19937 random(42);
    const auto pick = [&](std::size_t count) {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(random);
    };
    for (int round = 0; round < 2000; ++round) {
        std::vector<Tables> files;
        for (std::uint64_t f = 1; f <= 3; ++f)
            files.push_back({{f, 0, "A"}, {f, 1, "B"}, {f, 2, "C"}});
        SelectionHistory history;
        for (int i = 0; i < 40; ++i) {
            if (pick(3) > 0)
                history.visit(files[pick(3)][pick(3)]);
            else if (history.backTarget())
                history.finishBack(true);
        }
        for (auto f : {0U, 1U, 2U}) {
            auto previous = history.previousTables();
            auto next = history.nextTables();
            removeStepByStep(files[f], previous, next);
            history.removeTables(files[f]);
            ASSERT_EQ(history.previousTables(), previous) << "round " << round;
            ASSERT_EQ(history.nextTables(), next) << "round " << round;
            EXPECT_FALSE(previous.empty() && history.isBackEnabled());
            EXPECT_FALSE(next.empty() && history.isNextEnabled());
        }
    }
}

} // namespace
} // namespace vellumo
