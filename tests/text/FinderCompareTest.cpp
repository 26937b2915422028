// SPDX-License-Identifier: MIT
#include "text/FinderCompare.h"

#include <gtest/gtest.h>

namespace vellumo {
namespace {

int sign(int value) { return value < 0 ? -1 : value > 0 ? 1 : 0; }

TEST(FinderCompare, OrdersAsTheFileBrowserAndSoDoTheKeys)
{
    const struct {
        const char* name;
        const char* left;
        const char* right;
        int expected;
    } cases[] = {
        {"digits are numbers", "file2", "file10", -1},
        {"case counts", "a", "A", -1},
        {"case is weaker than the letters", "B", "a", 1},
        {"composed and decomposed", "e\u0301", "\u00E9", 0},
        {"full width letter", "\uFF21", "A", 0},
        {"full width keeps its case", "\uFF41", "A", -1},
        {"full width digit in a number", "file\uFF12", "file10", -1},
        {"ideographic space", "a\u3000b", "a b", 0},
        {"half width katakana with its mark", "\uFF76\uFF9E", "\u30AC", 0},
        {"hiragana is not katakana", "\u3042", "\u30A2", -1},
        {"punctuation counts", "a-b", "ab", -1},
        {"a ligature is not its letters", "\uFB01", "fi", 1},
        {"a long text after its own start", "Orders", "OrdersArchive", -1},
        {"empty first", "", "a", -1},
    };
    for (const auto& test : cases) {
        EXPECT_EQ(finderCompare(test.left, test.right), test.expected) << test.name;
        EXPECT_EQ(finderCompare(test.right, test.left), -test.expected) << test.name;
        std::string leftKey;
        std::string rightKey;
        appendFinderSortKey(test.left, leftKey);
        appendFinderSortKey(test.right, rightKey);
        EXPECT_EQ(sign(leftKey.compare(rightKey)), test.expected) << test.name;
    }
}

TEST(FinderCompare, KeyOfALongTextIsWhole)
{
    const std::string text(5000, 'x');
    std::string shorter = "before";
    std::string longer;
    appendFinderSortKey(text, shorter);
    EXPECT_TRUE(shorter.starts_with("before"));
    appendFinderSortKey(text + "\u4E00", longer);
    EXPECT_LT(shorter.substr(6), longer);
}

} // namespace
} // namespace vellumo
