// SPDX-License-Identifier: MIT
#include "jet/CellText.h"
#include "jet/UnicodeText.h"

#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>

namespace vellumo::jet {
namespace {

using namespace std::string_literals;

template <typename T> std::string raw(T value)
{
    std::string bytes(sizeof value, '\0');
    std::memcpy(bytes.data(), &value, sizeof value);
    return bytes;
}

std::span<const std::uint8_t> bytesOf(const std::string& text)
{
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

std::string cellText(int type, const std::string& stored, int scale = 0)
{
    ColumnDef column;
    column.type = columnTypeOfCode(type);
    column.scale = scale;
    TextColumnBuilder out;
    const TextRules rules;
    CellAppender(column, rules)(bytesOf(stored), out);
    return std::string(out.openText());
}

struct NumberCase {
    const char* name;
    int type;
    std::string stored;
    const char* expected;
};

TEST(CellText, NumbersAreShortAndExact)
{
    const NumberCase cases[] = {
        {"byte", 2, raw<std::uint8_t>(255), "255"},
        {"integer", 3, raw<std::int16_t>(-32768), "-32768"},
        {"long", 4, raw<std::int32_t>(std::numeric_limits<std::int32_t>::min()), "-2147483648"},
        {"complex value", 18, raw<std::int32_t>(7), "7"},
        {"large number", 19, raw(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808"},
        {"currency below one", 5, raw<std::int64_t>(-5), "-0.0005"},
        {"currency whole", 5, raw<std::int64_t>(120000), "12.0000"},
        {"smallest currency", 5, raw<std::int64_t>(std::numeric_limits<std::int64_t>::min()), "-922337203685477.5808"},
        {"float needs nine digits", 6, raw(16777216.0F * 1.0000001F), "16777218"},
        {"float tenth", 6, raw(0.1F), "0.1"},
        {"float beyond eight digits", 6, raw(123456792.0F), "1.2345679e+08"},
        {"float with nine digits kept", 6, raw(1.00000012F), "1.0000001"},
        {"double that fifteen digits lose", 7, raw(0.1 + 0.2), "0.30000000000000004"},
        {"double third", 7, raw(1.0 / 3), "0.3333333333333333"},
        {"double whole", 7, raw(100.0), "100"},
        {"double largest without exponent", 7, raw(1234567890123456.0), "1234567890123456"},
        {"double smallest with exponent", 7, raw(1e16), "1e+16"},
        {"double small without exponent", 7, raw(0.0001), "0.0001"},
        {"double small with exponent", 7, raw(0.000012), "1.2e-05"},
        {"double least", 7, raw(5e-324), "5e-324"},
        {"double negative zero", 7, raw(-0.0), "-0"},
        {"double infinite", 7, raw(-HUGE_VAL), "-inf"},
        {"double not a number", 7, raw(std::nan("")), "nan"},
        {"too few bytes", 7, "abc", "\uFFFD"},
        {"binary", 9, "\x00\xAB\x01"s, "00ab01"},
        {"guid", 15, "\x33\x22\x11\x00\x55\x44\x77\x66\x88\x99\xAA\xBB\xCC\xDD\xEE\xFF"s,
            "{00112233-4455-6677-8899-AABBCCDDEEFF}"},
    };
    for (const auto& test : cases)
        EXPECT_EQ(cellText(test.type, test.stored), test.expected) << test.name;
}

TEST(CellText, NumericKeepsItsScale)
{
    const auto numeric = [](std::uint8_t sign, std::uint32_t high, std::uint32_t low) {
        return raw(sign) + raw(high) + raw<std::uint32_t>(0) + raw<std::uint32_t>(0) + raw(low);
    };
    EXPECT_EQ(cellText(16, numeric(0x80, 0, 12345), 2), "-123.45");
    EXPECT_EQ(cellText(16, numeric(0, 0, 5), 4), "0.0005");
    EXPECT_EQ(cellText(16, numeric(0, 0, 0), 0), "0");
    EXPECT_EQ(cellText(16, numeric(0x80, 0, 0), 2), "-0.00");
    EXPECT_EQ(cellText(16, numeric(0, 1, 0), 28), "7.9228162514264337593543950336");
    EXPECT_EQ(cellText(16, numeric(0, 0xFFFFFFFF, 0xFFFFFFFF), 0), "340282366841710300949110269842519228415");
    EXPECT_EQ(cellText(16, numeric(0, 0, 1), 255).size(), 41U) << "a damaged scale";
}

TEST(CellText, DatesOfTheWholeRange)
{
    const struct {
        const char* name;
        double days;
        const char* expected;
    } cases[] = {
        {"origin", 0, "12/30/1899 00:00:00"},
        {"before the origin the time still counts forward", -1.25, "12/29/1899 06:00:00"},
        {"time alone", 0.5, "12/30/1899 12:00:00"},
        {"leap day", 36585.999988425926, "02/29/2000 23:59:59"},
        {"half a second is rounded up", 1.0 + 1.5 / 86400, "12/31/1899 00:00:02"},
        {"the last half second belongs to the next day", 36585.9999999, "03/01/2000 00:00:00"},
        {"and before the origin too", -2.9999999, "12/29/1899 00:00:00"},
        {"first", -657434, "01/01/0100 00:00:00"},
        {"last", 2958465.9999884, "12/31/9999 23:59:59"},
        {"nothing behind the last", 2958465.9999999, "12/31/9999 23:59:59"},
        {"beyond what the library can do", 1000001.5, "11/27/4637 12:00:00"},
        {"too early", -657435, "\uFFFD"},
        {"too late", 2958466, "\uFFFD"},
        {"not a number", std::nan(""), "\uFFFD"},
        {"far out", 1e300, "\uFFFD"},
    };
    for (const auto& test : cases)
        EXPECT_EQ(cellText(8, raw(test.days)), test.expected) << test.name;
}

std::string utf16(std::u16string_view text) { return {reinterpret_cast<const char*>(text.data()), 2 * text.size()}; }

TEST(CellText, Jet4TextLosesNoCharacter)
{
    const struct {
        const char* name;
        std::string stored;
        std::string expected;
    } cases[] = {
        {"plain", utf16(u"Customers 123"), "Customers 123"},
        {"several scripts", utf16(u"Aé€Жあ"), "Aé€Жあ"},
        {"beyond U+FFFF", utf16(u"a😀b"), "a😀b"},
        {"not ASCII in the middle of eight", utf16(u"abcdefg\u0100ijklmn"), "abcdefg\u0100ijklmn"},
        {"high half alone",
            utf16({u"a\xD83D"
                   u"b",
                3}),
            "a\uFFFDb"},
        {"high half at the end", utf16({u"a\xD83D", 2}), "a\uFFFD"},
        {"low half alone", utf16({u"\xDE00", 1}), "\uFFFD"},
        {"two high halves", utf16({u"\xD83D\xD83D\xDE00", 3}), "\uFFFD😀"},
        {"zero at the end", utf16({u"abc\0\0", 5}), "abc"},
        {"zero inside", utf16({u"abcd\0efg", 8}), "abcd\uFFFDefg"},
        {"half a character", utf16(u"ab") + "c", "ab\uFFFD"},
        {"compressed", "\xFF\xFE"s + "Customers", "Customers"},
        {"compressed Latin", "\xFF\xFE"s + "caf\xE9 \x80", "café \u0080"},
        {"compressed with a wide run", "\xFF\xFE"s + "ab\0"s + utf16(u"Жы") + "\0cd"s, "abЖыcd"},
        {"a pair in a wide run", "\xFF\xFE"s + "\0"s + utf16(u"😁"), "😁"},
        {"a pair cut by a switch", "\xFF\xFE\0"s + utf16({u"\xD83D", 1}) + "\0x"s, "\uFFFDx"},
        {"wide run cut short", "\xFF\xFE\0\x16"s, "\uFFFD"},
        {"only the mark", "\xFF\xFE", ""},
        {"empty", "", ""},
    };
    for (const auto& test : cases)
        EXPECT_EQ(cellText(10, test.stored), test.expected) << test.name;
}

// The note of a row with the value; "" for none, the number, or the whole text.
std::string noteOf(ColumnType type, const std::string& stored, const TextRules& rules)
{
    ColumnDef column;
    column.type = type;
    TextColumnBuilder out;
    out.endText(); // another row in front
    CellAppender(column, rules)(bytesOf(stored), out);
    out.noteUnlessTold();
    out.endText();
    const auto chunk = out.take();
    if (chunk.notes() == nullptr) return "";
    const auto number = chunk.notes()->at(1);
    if (!number) return "of another row";
    return type == ColumnType::DateTime || *number < 0 ? std::to_string(*number) : chunk.notes()->wholeText(*number);
}

TEST(CellText, WhatTheTextDoesNotTellIsNoted)
{
    const CodePage western(1252);
    const TextRules jet3{true, &western};
    const auto date = [](double days) { return raw(days); };
    const struct {
        const char* name;
        ColumnType type;
        std::string stored;
        std::string expected;
        TextRules rules = {};
    } cases[] = {
        {"a text", ColumnType::Text, "a\0b\0"s, ""},
        {"empty, but no null", ColumnType::Text, "", "-1"},
        {"empty, compressed", ColumnType::Text, "\xFF\xFE", "-1"},
        {"two zeros behind", ColumnType::Text, "a\0\0\0\0\0"s, "-3"},
        {"a zero alone", ColumnType::Text, "\0\0"s, "-2"},
        {"zeros inside and behind", ColumnType::Text, "a\0\0\0b\0\0\0"s, "a\0b\0"s},
        {"Jet 3: zeros behind", ColumnType::Text, "ab\0\0"s, "-3", jet3},
        {"Jet 3: zeros inside and behind", ColumnType::Text, "\xE9\0b\0"s, "\u00E9\0b\0"s, jet3},
        {"no bytes", ColumnType::Binary, "", "-1"},
        {"noon", ColumnType::DateTime, date(36526.5), ""},
        {"a second that days cannot tell exactly", ColumnType::DateTime, date(36526 + 12345 / 86400.0), ""},
        {"123 ms past a second", ColumnType::DateTime, date(36526 + 12345.123 / 86400), "123"},
        {"rounded up to the next second", ColumnType::DateTime, date(36526 + 12345.877 / 86400), "-123"},
        {"before 1899 the time still counts forward", ColumnType::DateTime, date(-2 - 12345.123 / 86400), "123"},
        {"rounded up to the next day", ColumnType::DateTime, date(36527 - 0.25 / 86400), "-250"},
        {"there is no next day", ColumnType::DateTime, date(2958466 - 0.25 / 86400), "750"},
        {"nor a next second", ColumnType::DateTime, date(2958466 - 0.0001 / 86400), "999"},
    };
    for (const auto& test : cases)
        EXPECT_EQ(noteOf(test.type, test.stored, test.rules), test.expected) << test.name;
}

TEST(CellText, Jet3TextFollowsItsCodePage)
{
    const struct {
        const char* name;
        int codePage;
        std::string stored;
        const char* expected;
    } cases[] = {
        {"Western", 1252, "caf\xE9 \x80", "café €"},
        {"a byte that the code page leaves out", 1252, "a\x81"s + "b", "a\uFFFDb"},
        {"Hebrew", 1255, "\xF9\xEC\xE5\xED", "שלום"},
        {"Vietnamese, whose marks follow their letters", 1258, "L\xEA O\xD2", "Lê O\u0309"},
        {"Cyrillic", 1251, "\xC6\xFB", "Жы"},
        {"unknown page", 7, "\xE9", "é"},
        {"Japanese", 932, "\x82\xA0x\xB1", "あxｱ"},
        {"half a Japanese character", 932, "x\x82", "x\uFFFD"},
        {"padding", 1252, "ab\0\0"s, "ab"},
    };
    for (const auto& test : cases) {
        const CodePage codePage(test.codePage);
        TextColumnBuilder out;
        appendStoredText(bytesOf(test.stored), {true, &codePage}, out);
        EXPECT_EQ(out.openText(), test.expected) << test.name;
    }
}

} // namespace
} // namespace vellumo::jet
