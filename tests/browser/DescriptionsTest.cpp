// SPDX-License-Identifier: MIT
#include "browser/DroppedPath.h"
#include "browser/RecordSearch.h"

#include <gtest/gtest.h>

namespace vellumo {
namespace {

TEST(DroppedPath, LeadsOutOfAContainerHome)
{
    const struct {
        const char* path;
        const char* home;
        const char* expected;
    } cases[] = {
        {"/Users/a/Library/Containers/v/Data/x.mdb", "/Users/a/Library/Containers/v/Data", "/Users/a/x.mdb"},
        {"/Volumes/b/x.mdb", "/Users/a/Library/Containers/v/Data", "/Volumes/b/x.mdb"},
        {"/home/a/x.mdb", "/home/a", "/home/a/x.mdb"},
        {"/home/a/Library/Containers/x.mdb", "/home/a", "/home/a/Library/Containers/x.mdb"},
        {"/x.mdb", "", "/x.mdb"},
    };
    for (const auto& test : cases)
        EXPECT_EQ(pathOutsideContainer(test.path, test.home), test.expected) << test.path;
}

TEST(SearchMenu, ChecksTheOptionAndTheCaseInForce)
{
    const auto checked = [](const SearchSettings& settings) {
        std::string tags;
        for (const auto& item : searchMenu(settings))
            tags += std::to_string(item.tag) + (item.isChecked ? "x " : " ");
        return tags;
    };
    EXPECT_EQ(checked({}), "100x 101 0x 1 2 3 ");
    EXPECT_EQ(checked({"", SearchOption::EndsWith, false}), "100 101 0 1 2 3x ");
}

} // namespace
} // namespace vellumo
