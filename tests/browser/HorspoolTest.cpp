// SPDX-License-Identifier: MIT
#include "browser/HorspoolStringSearcher.h"

#include <gtest/gtest.h>
#include <random>

namespace vellumo {
namespace {

constexpr std::ptrdiff_t none = -1;

std::ptrdiff_t findIn(std::string_view text, std::string_view pattern)
{
    std::string assertion;
    const auto searcher = HorspoolStringSearcher::initWithCString(pattern, assertion);
    if (!searcher) return -2;
    const auto* found = searcher->findWithinCharString(text);
    return found == nullptr ? none : found - text.data();
}

TEST(HorspoolStringSearcher, FindsTheFirstMatch)
{
    using namespace std::string_view_literals;
    const struct {
        const char* name;
        std::string_view text;
        std::string_view pattern;
        std::ptrdiff_t expected;
    } cases[] = {
        {"one byte above 0x7F", "ha\xE9", "\xE9", 2},
        {"last byte above 0x7F", "caf\xE9 caf\xE9", "af\xE9", 1},
        {"zero bytes", "a\0b\0c"sv, "b\0c"sv, 2},
        {"empty pattern", "abc", "", none},
        {"empty text", "", "a", none},
    };
    for (const auto& test : cases)
        EXPECT_EQ(findIn(test.text, test.pattern), test.expected) << test.name;
}

TEST(HorspoolStringSearcher, AgreesWithAPlainSearch)
{
    std::mt19937 random(7);
    for (int round = 0; round < 2000; ++round) {
        std::string text;
        for (auto length = random() % 40; length > 0; --length)
            text += "abc\xE9"[random() % 4];
        std::string pattern;
        for (auto length = 1 + random() % 4; length > 0; --length)
            pattern += "abc"[random() % 3];
        const auto expected = text.find(pattern);
        EXPECT_EQ(findIn(text, pattern), expected == std::string::npos ? none : static_cast<std::ptrdiff_t>(expected))
            << text << " / " << pattern;
    }
}

TEST(HorspoolStringSearcher, AssertsAboutThePattern)
{
    const struct {
        const char* name;
        std::string pattern;
        const char* expected; // "": accepted
    } cases[] = {
        {"255 bytes", std::string(255, 'a'), ""},
        {"256 bytes", std::string(256, 'a'), "Search target two long in algorithm -- initWithCharString:length:"},
        {"high byte inside", "a\x80z", "Search target contain character that is out-of-bound"},
        {"high byte at the start", "\x80z", "Search target contain character that is out-of-bound"},
        {"high byte at the end", "az\x80", ""},
    };
    for (const auto& test : cases) {
        std::string assertion;
        const auto searcher = HorspoolStringSearcher::initWithCString(test.pattern, assertion);
        EXPECT_EQ(searcher.has_value(), *test.expected == '\0') << test.name;
        EXPECT_EQ(assertion, test.expected) << test.name;
    }
    EXPECT_EQ(findIn(std::string(300, 'a') + 'b', std::string(254, 'a') + 'b'), 46);
}

} // namespace
} // namespace vellumo
