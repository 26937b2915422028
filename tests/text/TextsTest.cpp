// SPDX-License-Identifier: MIT
#include "text/CaseFold.h"
#include "text/DateText.h"
#include "text/Format.h"
#include "text/TerminalText.h"

#include <cstdlib>
#include <ctime>
#include <gtest/gtest.h>

namespace vellumo {
namespace {

TEST(Format, FillsPlaceholdersInOrderAndKeepsTheRest)
{
    const struct {
        const char* format;
        const char* expected;
    } cases[] = {
        {"<%@> %@: %@", "<a> 7: %@"},
        {"%d of %ld files", "a of 7 files"},
        {"100%% %x %", "100% %x %"},
        {"%@%@", "a7"},
        {"", ""},
    };
    for (const auto& test : cases)
        EXPECT_EQ(format(test.format, {"a", 7}), test.expected) << test.format;
    EXPECT_EQ(format("%@ left", {"%@"}), "%@ left") << "an argument is not searched for placeholders";
}

TEST(CaseFold, FoldsCharactersAndLeavesMalformedBytes)
{
    const struct {
        std::string_view text;
        std::string_view folded;
    } cases[] = {
        {"Stra\xC3\x9F \xC3\x84", "strass \xC3\xA4"},
        {"\xE1\xBA\x80 \xF0\x90\x90\x80", "\xE1\xBA\x81 \xF0\x90\x90\xA8"}, // W with grave, Deseret long I
        {"\xE1\xBA@", "\xE1\xBA@"},                                         // its last byte is missing
        {"\xE1\xC3\x84", "\xE1\xC3\xA4"},
        {"\xC1\x81 \xC0\x81 \xE0\x81\x81", "\xC1\x81 \xC0\x81 \xE0\x81\x81"}, // "A" in too many bytes
        {"\x84\xC3", "\x84\xC3"},
    };
    for (const auto& test : cases)
        EXPECT_EQ(foldCase(test.text), test.folded);
}

TEST(TerminalText, EscapesWhatATerminalObeys)
{
    const struct {
        const char* text;
        const char* escaped;
    } cases[] = {
        {"a\\b~\u00A0\u00E4\U0001F600\xFF\x9B", "a\\b~\u00A0\u00E4\U0001F600\xFF\x9B"},
        {"\t\n\r\x1F \x7F", "\t\\u{A}\\u{D}\\u{1F} \\u{7F}"},
        {"\u0080\u009F", "\\u{80}\\u{9F}"},
        {"\u061B\u061C\u061D", "\u061B\\u{61C}\u061D"},
        {"\u200D\u200E\u200F\u2010", "\u200D\\u{200E}\\u{200F}\u2010"},
        {"\u2027\u2028\u202E\u202F", "\u2027\\u{2028}\\u{202E}\u202F"},
        {"\u2065\u2066\u2069\u206A", "\u2065\\u{2066}\\u{2069}\u206A"},
    };
    for (const auto& test : cases)
        EXPECT_EQ(escapedText(test.text, "\t"), test.escaped);
    EXPECT_EQ(escapedText({"\0", 1}), "\\u{0}");
}

TEST(FileSize, ChangesUnitJustAbove1023)
{
    const struct {
        std::uint64_t bytes;
        const char* expected;
    } cases[] = {
        {0, "0 KB"},
        {1, "1 KB"},
        {1024, "1 KB"},
        {1025, "2 KB"},
        {1047552, "1023 KB"},
        {1047553, "1.0 MB"},
        {1023ULL << 20, "1023.0 MB"},
        {(1023ULL << 20) + 1, "1.0 GB"},
        {5ULL << 40, "5120.0 GB"},
    };
    for (const auto& test : cases)
        EXPECT_EQ(formatComputerFileSize(test.bytes), test.expected) << test.bytes;
}

TEST(Hex, WritesAllOrNothing)
{
    const std::uint8_t bytes[] = {0x00, 0x9A, 0xFF};
    char out[8] = "untouch";
    EXPECT_EQ(toHex(nullptr, 0, bytes, 3), 6U);
    EXPECT_EQ(toHex(out, 5, bytes, 3), 0U);
    EXPECT_STREQ(out, "untouch");
    EXPECT_EQ(toHex(out, 6, bytes, 3), 6U);
    EXPECT_STREQ(out, "009affh");
}

class DateTextTest : public testing::Test {
protected:
    void SetUp() override
    {
        setenv("TZ", "UTC-2", 1); // two hours ahead of UTC
        tzset();
    }
    void TearDown() override
    {
        unsetenv("TZ");
        tzset();
    }
    static Timestamp at(long long seconds) { return Timestamp(std::chrono::seconds(seconds)); }
};

TEST_F(DateTextTest, NamesTheDayByTheRoundedUtcDay)
{
    constexpr long long hour = 3600;
    constexpr long long day = 24 * hour;
    constexpr long long midnight = 16134 * day; // 2014-03-05 00:00 UTC
    const struct {
        const char* name;
        long long date;
        long long now;
        const char* expected;
    } cases[] = {
        {"same moment", midnight, midnight, "Today 2:00 AM"},
        {"UTC noon starts a new rounded day", midnight + day / 2 - 1, midnight + day / 2, "Yesterday 1:59 PM"},
        {"before and after midnight are one rounded day", midnight - hour, midnight + hour, "Today 1:00 AM"},
        {"two days ago", midnight - day, midnight + day, "4/3/2014 2:00 AM"},
        {"in the future", midnight + 19 * hour + 7 * hour / 60, midnight - day, "5/3/2014 9:07 PM"},
        {"noon", midnight + 10 * hour, midnight - 9 * day, "5/3/2014 12:00 PM"},
        {"midnight local", midnight + 22 * hour, midnight - 9 * day, "6/3/2014 12:00 AM"},
    };
    for (const auto& test : cases)
        EXPECT_EQ(dateWithFinderFormat(at(test.date), at(test.now)), test.expected) << test.name;
    EXPECT_EQ(dateWithFinderFormat(std::nullopt, at(0)), "");
}

TEST(TerminalText, ANameKeepsOnlyTheCharactersThatAreSeen)
{
    EXPECT_EQ(withoutObeyed("a\x1B\xFF\u202E\u00E9"), "a\u00E9");
}

} // namespace
} // namespace vellumo
