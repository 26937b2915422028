#include "browser/SelectionHistory.h"
#include "support/ModelBuilder.h"

#include <gtest/gtest.h>
#include <random>

namespace vellumo {
namespace {

using namespace test;
using Tables = SelectionHistory::Tables;

// The rule for closing, one table after the other and step by step.
void dropEqualLastPairs(Tables& tables)
{
    while (tables.size() >= 2 && tables.back() == *(tables.end() - 2))
        tables.pop_back();
}

void removeStepByStep(const TAdmMDBFile& file, Tables& previous, Tables& next)
{
    for (const auto& table : file.tables()) {
        std::erase(previous, table.get());
        std::erase(next, table.get());
        dropEqualLastPairs(previous);
        dropEqualLastPairs(next);
        while (!previous.empty() && !next.empty() && previous.back() == next.back())
            next.pop_back();
    }
}

TEST(SelectionHistory, NextMakesBackUsableWithOneVisit)
{
    const auto closing = makeFile("/d/Closing.mdb", makeTable("Gone", {}));
    const auto file = makeFile("/d/F.mdb", makeTable("A", {}), makeTable("B", {}));
    auto* a = file->tables()[0].get();
    auto* b = file->tables()[1].get();
    SelectionHistory history;
    history.visit(*closing->tables()[0]);
    history.visit(*a);
    history.removeTablesOf(*closing);
    EXPECT_EQ(history.previousTables(), Tables{a});
    EXPECT_TRUE(history.isBackEnabled()) << "closing disables Back only when nothing is left";
    EXPECT_EQ(history.backTarget(), a);
    history.finishBack(true);
    EXPECT_FALSE(history.isBackEnabled());
    EXPECT_EQ(history.nextTarget(), a);
    history.finishNext(true);
    EXPECT_EQ(history.previousTables(), Tables{a});
    EXPECT_TRUE(history.isBackEnabled());
    history.visit(*a);
    EXPECT_FALSE(history.isBackEnabled()) << "a visit asks for two";
    history.visit(*b);
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
        std::vector<std::unique_ptr<TAdmMDBFile>> files;
        for (int f = 0; f < 3; ++f)
            files.push_back(makeFile("/d/F.mdb", makeTable("A", {}), makeTable("B", {}), makeTable("C", {})));
        SelectionHistory history;
        for (int i = 0; i < 40; ++i) {
            if (pick(3) > 0)
                history.visit(*files[pick(3)]->tables()[pick(3)]);
            else if (history.backTarget() != nullptr)
                history.finishBack(true);
        }
        for (auto f : {0U, 1U, 2U}) {
            auto previous = history.previousTables();
            auto next = history.nextTables();
            removeStepByStep(*files[f], previous, next);
            history.removeTablesOf(*files[f]);
            ASSERT_EQ(history.previousTables(), previous) << "round " << round;
            ASSERT_EQ(history.nextTables(), next) << "round " << round;
            EXPECT_FALSE(previous.empty() && history.isBackEnabled());
            EXPECT_FALSE(next.empty() && history.isNextEnabled());
        }
    }
}

} // namespace
} // namespace vellumo
