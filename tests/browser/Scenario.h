// SPDX-License-Identifier: MIT
#pragma once

#include "Session.h"

#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace vellumo::test {

// Something the user does, and what is to be seen afterwards.
struct Step {
    const char* name;
    std::function<void()> act;
    Sight expected;
};

class Scenario : public ::testing::Test {
protected:
    Session s;

    void play(const std::vector<Step>& steps)
    {
        for (const auto& step : steps) {
            step.act();
            s.finishOpening();
            EXPECT_EQ(s.sight(), step.expected) << step.name;
        }
    }
    // "Sales" with Customers (2 rows) and Orders (1 row); "Stock" with Items (0 rows).
    const std::string sales = s.makeDatabase("Sales.mdb", {{"Customers", 2}, {"Orders", 1}});
    const std::string stock = s.makeDatabase("Stock.mdb", {{"Items", 0}});
};

} // namespace vellumo::test
