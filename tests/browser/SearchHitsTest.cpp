// SPDX-License-Identifier: MIT
#include "browser/SearchHits.h"

#include <gtest/gtest.h>

namespace vellumo {
namespace {

TEST(SearchHits, AreThePartsForWhichATextIsFound)
{
    using enum SearchOption;
    const struct {
        std::string text;
        SearchSettings search;
        std::string marked; // the text with its hits in brackets
    } cases[] = {
        {"Anna and Hanna", {"ann", Contains, true}, "[Ann]a and H[ann]a"},
        {"Anna and Hanna", {"ann", Contains, false}, "Anna and H[ann]a"},
        {"aaaa", {"aa", Contains, true}, "[aa][aa]"},
        {"Straße", {"STRASSE", Equals, true}, "[Straße]"},
        {"Straße", {"ras", Contains, true}, "St[raß]e"}, // half of the letter
        {"Straße", {"sse", EndsWith, true}, "Stra[ße]"},
        {"ÄÖ ÄÖ", {"ö", EndsWith, true}, "ÄÖ Ä[Ö]"},
        {"tea time", {"tea", BeginsWith, true}, "[tea] time"},
        {"iced tea", {"tea", BeginsWith, true}, "iced tea"},
        {"tea", {"tea time", Contains, true}, "tea"},
        {"tea", {"te", Equals, true}, "tea"},
        {"", {"a", Contains, true}, ""},
        {"tea", {"", Contains, true}, "tea"},
    };
    for (const auto& [text, search, marked] : cases) {
        auto shown = text;
        auto hits = hitsIn(text, search);
        for (auto hit = hits.rbegin(); hit != hits.rend(); ++hit)
            shown.insert(hit->start + hit->length, "]").insert(hit->start, "[");
        EXPECT_EQ(shown, marked) << search.text;
    }
}

TEST(SearchHits, TheRuleIsNamed)
{
    EXPECT_EQ(searchRuleText({"a", SearchOption::EndsWith, true}), "Ends With, ignore case");
    EXPECT_EQ(searchRuleText({"a", SearchOption::Contains, false}), "Contains, match case");
}

} // namespace
} // namespace vellumo
