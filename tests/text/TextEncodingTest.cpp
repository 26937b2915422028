// SPDX-License-Identifier: MIT
#include "text/TextEncoding.h"

#include <gtest/gtest.h>

#include <set>

namespace vellumo {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

std::uint32_t identifierOf(std::string_view name) { return findTextEncoding(name).value_or(0); }

TEST(TextEncoding, ListHasUniqueIdentifiersAndNamesAndAllCanBeOpened)
{
    std::set<std::uint32_t> identifiers;
    std::set<std::string> names;
    for (const auto& encoding : availableTextEncodings()) {
        EXPECT_TRUE(identifiers.insert(encoding.identifier).second) << encoding.registeredName;
        EXPECT_TRUE(names.insert(encoding.name).second) << encoding.name;
        EXPECT_TRUE(TextEncoder::create(encoding.identifier)) << encoding.registeredName;
        EXPECT_EQ(textEncodingName(encoding.identifier), encoding.name);
    }
    for (const std::uint32_t common : {1, 3, 4, 5, 8, 9, 10, 11, 12, 13, 14, 15, 21, 30, 104, 120, 145})
        EXPECT_TRUE(identifiers.contains(common)) << common;
    EXPECT_FALSE(TextEncoder::create(2));
}

TEST(TextEncoding, IsFoundByAnyOfItsNames)
{
    const struct {
        std::string_view name;
        std::uint32_t identifier;
    } cases[] = {
        {"UTF-8", 4},
        {"utf8", 4},
        {"unicode (utf-8)", 4},
        {"ISO-8859-1", 5},
        {"latin1", 5},
        {"Windows-1252", 12},
        {"cp1252", 12},
        {"us-ascii", 1},
        {"UTF-16", 10},
        {"utf-16le", 101},
        {"sjis", 8},
        {"koi8-r", 130},
    };
    for (const auto& c : cases)
        EXPECT_EQ(identifierOf(c.name), c.identifier) << c.name;
    for (const auto* name : {"", "nonsense", "utf-8,version=1", " "})
        EXPECT_FALSE(findTextEncoding(name)) << name;
}

TEST(TextEncoding, ConvertsStrictly)
{
    const struct {
        const char* name;
        std::string_view encoding;
        std::string_view text;
        std::optional<std::string_view> bytes; // nullopt: cannot be represented
    } cases[] = {
        {"UTF-8 stays", "utf-8", "a\u00E9\U0001F600", "a\xC3\xA9\xF0\x9F\x98\x80"},
        {"ASCII", "us-ascii", "abc", "abc"},
        {"not ASCII", "us-ascii", "ab\u00E9", std::nullopt},
        {"Latin 1", "latin1", "\u00E9", "\xE9"},
        {"the euro is not in Latin 1", "latin1", "\u20AC", std::nullopt},
        {"the euro is in windows-1252", "windows-1252", "a\u20AC", "a\x80"},
        {"Cyrillic is not", "windows-1252", "\u0416", std::nullopt},
        {"soft hyphen is not dropped", "us-ascii", "a\u00ADb", std::nullopt},
        {"zero width joiner is not dropped", "windows-1252", "a\u200Db", std::nullopt},
        {"no fallback: full width A", "windows-1252", "\uFF21", std::nullopt},
        {"no mark, little-endian", "utf-16", "A\u20AC", "A\0\xAC\x20"sv},
        {"big-endian", "utf-16be", "A", "\0A"sv},
        {"surrogates", "utf-16le", "\U0001F600", "\x3D\xD8\x00\xDE"sv},
        {"32 bits, no mark", "utf-32", "A", "A\0\0\0"sv},
        {"shift states are closed", "iso-2022-jp", "\u3042", "\x1B$B\x24\x22\x1B(B"},
        {"Shift JIS", "shift_jis", "\u3042", "\x82\xA0"},
        {"a digit in EBCDIC", "IBM037", "1", "\xF1"},
        {"nothing", "windows-1252", "", ""},
        {"nothing in UTF-16", "utf-16", "", ""},
    };
    for (const auto& c : cases) {
        auto encoder = TextEncoder::create(identifierOf(c.encoding));
        ASSERT_TRUE(encoder) << c.name;
        std::string out = "<";
        EXPECT_EQ(encoder->append(c.text, out), c.bytes.has_value()) << c.name;
        EXPECT_EQ(out, "<" + std::string(c.bytes.value_or(""))) << c.name;
        // A refused text leaves no state behind.
        out.clear();
        EXPECT_TRUE(encoder->append("", out)) << c.name;
        EXPECT_EQ(out, "") << c.name;
    }
}

TEST(TextEncoding, LongTextsAreCutBetweenCharacters)
{
    auto encoder = TextEncoder::create(encodingUTF16);
    std::string text = "x";
    std::string expected = "x\0"s;
    for (int i = 0; i < 100'000; ++i) {
        text += "\u20AC";
        expected += "\xAC\x20";
    }
    std::string out;
    ASSERT_TRUE(encoder->append(text, out));
    EXPECT_EQ(out, expected);
    EXPECT_TRUE(isWellFormedUTF8(text));
}

// Whoever skips the conversion of ASCII texts relies on `keeps`: every pair of ASCII characters, in every encoding.
TEST(TextEncoding, KeepsOnlyWhatConversionWouldGive)
{
    std::string pairs;
    for (char first = 0; first >= 0; ++first) {
        for (char second = 0; second >= 0; ++second) {
            pairs += {first, second};
            if (second == 127) break;
        }
        if (first == 127) break;
    }
    for (const auto& encoding : availableTextEncodings()) {
        auto encoder = TextEncoder::create(encoding.identifier);
        if (!encoder->keeps(pairs)) continue;
        // The character behind keeps `append` from taking the short way.
        for (const auto* behind : {"\u00E9", "\u0416", "\u05D0", "\u0628", "\u03B1", "\u0E01", "\u0151"}) {
            std::string out;
            if (!encoder->append(pairs + behind, out)) continue;
            EXPECT_EQ(out.substr(0, pairs.size()), pairs) << encoding.registeredName;
        }
    }
    EXPECT_TRUE(TextEncoder::create(encodingWindows1252)->keeps("abc"));
    EXPECT_FALSE(TextEncoder::create(encodingWindows1252)->keeps("ab\u00E9"));
    EXPECT_FALSE(TextEncoder::create(encodingUTF16)->keeps("abc"));
    EXPECT_FALSE(TextEncoder::create(identifierOf("IBM037"))->keeps("abc"));
    EXPECT_FALSE(TextEncoder::create(identifierOf("iso-2022-jp"))->keeps("abc"));
}

TEST(TextEncoding, TellsMalformedUTF8)
{
    for (const auto text : {"\x80"sv, "a\xC3"sv, "\xC0\x80"sv, "\xED\xA0\x80"sv, "\xF4\x90\x80\x80"sv})
        EXPECT_FALSE(isWellFormedUTF8(text));
    for (const auto text : {""sv, "a\0b"sv, "\u20AC\U0010FFFF"sv})
        EXPECT_TRUE(isWellFormedUTF8(text));
}

} // namespace
} // namespace vellumo
