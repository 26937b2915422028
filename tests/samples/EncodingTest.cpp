#include "samples/LongValues.h"
#include "samples/Properties.h"
#include "samples/Rc4.h"
#include "samples/RowEncoder.h"
#include "samples/TextCodec.h"

#include <gtest/gtest.h>
#include <string>

namespace vellumo::samples {
namespace {

std::string hexOf(ByteSpan bytes)
{
    constexpr char digits[] = "0123456789abcdef";
    std::string text;
    for (const auto byte : bytes) {
        text += digits[byte >> 4];
        text += digits[byte & 15];
    }
    return text;
}

TEST(TextCodec, CompressesOnlyWhatBecomesShorter)
{
    const struct {
        const char* name;
        std::u16string_view text;
        const char* expected; // null = stays as it is
    } cases[] = {
        {"empty", u"", nullptr},
        {"two characters: as long as before", u"ab", nullptr},
        {"three", u"abc", "fffe616263"},
        {"Latin letters up to U+00FF", u"é\u00FFx", "fffee9ff78"},
        {"a wide one at the end", u"abcd\u03B1", "fffe6162636400b103"},
        {"a wide one in between", u"abc\u20ACdefg", "fffe61626300ac200064656667"},
        {"starts wide", u"\u03B1abcdef", "fffe00b10300616263646566"},
        {"all wide", u"\u03B1\u03B2\u03B3\u03B4", nullptr},
        {"low byte zero", u"abcdef\u0100", nullptr},
    };
    for (const auto& test : cases) {
        const auto compressed = compressText(test.text);
        ASSERT_EQ(compressed.has_value(), test.expected != nullptr) << test.name;
        EXPECT_EQ(hexOf(compressed.value_or(Bytes{})), test.expected == nullptr ? "" : test.expected) << test.name;
    }
}

TEST(TextCodec, EncodesOrRefuses)
{
    const struct {
        const char* name;
        const char* text;
        JetVersion version;
        const char* expected; // null = refused
    } cases[] = {
        {"code page 1252", "aé€ž", JetVersion::Jet3, "61e9809e"},
        {"not in the code page", "α", JetVersion::Jet3, nullptr},
        {"a control of Latin 1", "\xC2\x81", JetVersion::Jet3, nullptr},
        {"UTF-16", "aé€", JetVersion::Jet4, "6100e900ac20"},
        {"beyond U+FFFF", "\xF0\x9F\x98\x80", JetVersion::Jet4, "3dd800de"},
        {"cut off", "a\xE2\x82", JetVersion::Jet4, nullptr},
        {"overlong", "\xC0\x80", JetVersion::Jet4, nullptr},
        {"overlong, three bytes", "\xE0\x80\x80", JetVersion::Jet4, nullptr},
        {"a surrogate", "\xED\xA0\x80", JetVersion::Jet4, nullptr},
    };
    for (const auto& test : cases) {
        const auto encoded = encodeText(test.text, test.version);
        ASSERT_EQ(encoded.has_value(), test.expected != nullptr) << test.name;
        EXPECT_EQ(hexOf(encoded.value_or(Bytes{})), test.expected == nullptr ? "" : test.expected) << test.name;
    }
}

TEST(Rc4, GivesTheKeyStreamOfTheFileHeader)
{
    constexpr std::uint8_t key[] = {0xC7, 0xDA, 0x39, 0x6B};
    Bytes zeros(12);
    applyRc4(zeros, key);
    EXPECT_EQ(hexOf(zeros), "b56f03626108c255eba96772");
}

// One row through the encoder. The file is needed only for long values.
Bytes encoded(const TableDescription& table, JetVersion version, const Row& row)
{
    const auto file = PageFile::create("/dev/null", version, 0);
    std::map<std::size_t, LongValues> longValues;
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        if (table.columns[i].type == ColumnType::Memo) longValues.emplace(i, *file);
    }
    const TableShape shape(table, version);
    RowEncoder encoder(table, shape, version, longValues);
    const auto bytes = encoder.encode(row);
    return {bytes.begin(), bytes.end()};
}

// Stored order c, a, flag, b; number order a, b, c, flag.
TableDescription smallTable()
{
    TableDescription table;
    table.columns = {{.name = "c", .type = ColumnType::Text, .number = 2},
        {.name = "a", .type = ColumnType::Integer, .number = 0},
        {.name = "flag", .type = ColumnType::Boolean, .number = 3},
        {.name = "b", .type = ColumnType::Binary, .number = 1}};
    return table;
}

TEST(RowEncoder, LaysOutARow)
{
    auto fixedOnly = smallTable();
    fixedOnly.columns = {fixedOnly.columns[1]};
    const struct {
        const char* name;
        JetVersion version;
        TableDescription table;
        Row row;
        const char* expected;
    } cases[] = {
        {"Jet 4: count, fixed, b, c, end, offsets, number, mask", JetVersion::Jet4, smallTable(),
            {{"xy", 258, true, Bytes{9}}},
            "0400"
            "0201"
            "09"
            "78007900"
            "0900"
            "0500"
            "0400"
            "0200"
            "0f"},
        {"Jet 3: the same in bytes", JetVersion::Jet3, smallTable(), {{"xy", 258, true, Bytes{9}}},
            "04"
            "0201"
            "09"
            "7879"
            "06"
            "04"
            "03"
            "02"
            "0f"},
        {"nulls leave no bytes but the fixed ones", JetVersion::Jet4, smallTable(), {{}},
            "0400"
            "0000"
            "0400"
            "0400"
            "0400"
            "0200"
            "00"},
        {"an empty text is not null", JetVersion::Jet4, smallTable(), {{""}},
            "0400"
            "0000"
            "0400"
            "0400"
            "0400"
            "0200"
            "04"},
        {"written before c and flag were added", JetVersion::Jet4, smallTable(),
            {{"xy", 1, true, Bytes{9}}, RowState::Live, 2},
            "0200"
            "0100"
            "09"
            "0500"
            "0400"
            "0100"
            "03"},
        {"slack before the offsets", JetVersion::Jet3, smallTable(), {{"x", 1, false, {}}, RowState::Live, 0, 2},
            "04"
            "0100"
            "78"
            "0000"
            "04"
            "03"
            "03"
            "02"
            "05"},
        {"no variable column: no trailer", JetVersion::Jet3, fixedOnly, {{-2}},
            "01"
            "feff"
            "01"},
    };
    for (const auto& test : cases)
        EXPECT_EQ(hexOf(encoded(test.table, test.version, test.row)), test.expected) << test.name;
}

// The bytes from the end of the values on.
TEST(RowEncoder, AddsJumpsToLongJet3Rows)
{
    TableDescription table;
    table.columns = {{.name = "x", .type = ColumnType::Text}, {.name = "y", .type = ColumnType::Text}};
    const auto text = [](int size) { return std::string(static_cast<std::size_t>(size), 't'); };
    const struct {
        const char* name;
        int first;
        int second;
        const char* trailer;
    } cases[] = {
        // 1 + 249 + end + 2 offsets + number + mask = 255 bytes
        {"255 bytes: no jump", 100, 149,
            "fa"
            "65"
            "01"
            "02"
            "03"},
        {"256 bytes: no jump", 100, 150,
            "fb"
            "65"
            "01"
            "02"
            "03"},
        {"257 bytes: passed in the trailer only", 100, 151,
            "fc"
            "65"
            "01"
            "ff"
            "02"
            "03"},
        {"the end of the values is the first beyond", 100, 155,
            "00"
            "65"
            "01"
            "02"
            "02"
            "03"},
        {"y starts beyond", 255, 20,
            "14"
            "00"
            "01"
            "01"
            "02"
            "03"},
        {"two jumps, the second in the trailer only", 255, 255,
            "ff"
            "00"
            "01"
            "ff"
            "01"
            "02"
            "03"},
        {"both beyond 512", 255, 257,
            "01"
            "00"
            "01"
            "02"
            "01"
            "02"
            "03"},
        {"one value passes two boundaries", 600, 5,
            "5e"
            "59"
            "01"
            "01"
            "01"
            "02"
            "03"},
    };
    for (const auto& test : cases) {
        const auto row = encoded(table, JetVersion::Jet3, {{text(test.first), text(test.second)}});
        const auto valuesEnd = static_cast<std::size_t>(1 + test.first + test.second);
        EXPECT_EQ(hexOf(ByteSpan(row).subspan(valuesEnd)), test.trailer) << test.name;
    }
}

TEST(RowEncoder, StoresEachTypeAsTheFormatDoes)
{
    const struct {
        const char* name;
        ColumnDescription column;
        Value value;
        const char* expected; // without column count and mask; empty = refused
    } cases[] = {
        {"byte", {.name = "v", .type = ColumnType::Byte}, 200, "c8"},
        {"byte too large", {.name = "v", .type = ColumnType::Byte}, 256, ""},
        {"integer", {.name = "v", .type = ColumnType::Integer}, -2, "feff"},
        {"long", {.name = "v", .type = ColumnType::Long}, 16909060, "04030201"},
        {"currency", {.name = "v", .type = ColumnType::Currency}, Currency{-1}, "ffffffffffffffff"},
        {"single", {.name = "v", .type = ColumnType::Single}, 1.5F, "0000c03f"},
        {"double", {.name = "v", .type = ColumnType::Double}, -2.0, "00000000000000c0"},
        {"date", {.name = "v", .type = ColumnType::DateTime}, dateOf(1900, 1, 1, 12), "0000000000000440"},
        {"guid", {.name = "v", .type = ColumnType::Guid}, Guid{{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15}},
            "030201000504070608090a0b0c0d0e0f"},
        {"numeric", {.name = "v", .type = ColumnType::Numeric}, numericOf(-4294967298),
            "80000000000000000001000000"
            "02000000"},
        {"fixed text", {.name = "v", .type = ColumnType::Text, .size = 3, .placement = Placement::Fixed}, "é",
            "e90020002000"},
        {"fixed text too long", {.name = "v", .type = ColumnType::Text, .size = 3, .placement = Placement::Fixed},
            "four", ""},
        {"a text is no number", {.name = "v", .type = ColumnType::Long}, "7", ""},
    };
    for (const auto& test : cases) {
        TableDescription table;
        table.columns = {test.column};
        const auto row = encoded(table, JetVersion::Jet4, {{test.value}});
        const std::string expected = test.expected;
        EXPECT_EQ(hexOf(row), expected.empty() ? "" : "0100" + expected + "01") << test.name;
    }
}

TEST(Properties, FollowTheirNames)
{
    const std::vector<Property> ofTable = {textProperty("D", "hi")};
    const std::vector<Property> ofColumn = {booleanProperty("R", true), memoProperty("D", "")};
    const auto block = encodeProperties({{"", &ofTable}, {"C", &ofColumn}}, JetVersion::Jet3);
    ASSERT_TRUE(block);
    EXPECT_EQ(hexOf(*block),
        "4b4b4400" // KKD
        "0c000000"
        "8000"
        "0100"
        "44"
        "0100"
        "52" // names D, R
        "16000000"
        "0000"
        "06000000"
        "0000" // the table
        "0a00"
        "01"
        "0a"
        "0000"
        "0200"
        "6869" //   D
        "1e000000"
        "0100"
        "07000000"
        "0100"
        "43" // column C
        "0900"
        "01"
        "01"
        "0100"
        "0100"
        "01" //   R
        "0800"
        "01"
        "0c"
        "0000"
        "0000"); //   D
}

} // namespace
} // namespace vellumo::samples
