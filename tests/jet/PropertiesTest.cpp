// SPDX-License-Identifier: MIT
#include "jet/Properties.h"
#include "jet/UnicodeText.h"

#include <gmock/gmock.h>

namespace vellumo::jet {
namespace {

using namespace std::string_literals;
using testing::ElementsAre;
using testing::Pair;

std::string u16(std::size_t value) { return {static_cast<char>(value), static_cast<char>(value >> 8)}; }

std::string chunk(std::uint8_t kind, const std::string& body)
{
    return u16(body.size() + 6) + "\0\0"s + static_cast<char>(kind) + "\0"s + body;
}

std::string names(const std::vector<std::string>& texts)
{
    std::string body;
    for (const auto& text : texts)
        body += u16(text.size()) + text;
    return chunk(0x80, body);
}

std::string property(std::uint8_t type, std::size_t name, const std::string& value)
{
    return u16(8 + value.size()) + "\1"s + static_cast<char>(type) + u16(name) + u16(value.size()) + value;
}

std::string column(const std::string& name, const std::string& properties)
{
    return chunk(1, u16(6 + name.size()) + "\0\0"s + u16(name.size()) + name + properties);
}

ParsedProperties parseWhole(const std::string& bytes)
{
    const CodePage codePage(1252);
    return parseProperties({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()}, {true, &codePage});
}

auto parse(const std::string& bytes) { return parseWhole(bytes).columns; }

TEST(Properties, AreReadByColumnAndType)
{
    const auto bytes = "KKD\0"s + names({"Required", "Description", "DecimalPlaces", "Width", "GUID"})
        + chunk(0, "\6\0\0\0\0\0"s + property(10, 1, "of the table"))
        + column("Gr", property(1, 0, "\1") + property(10, 1, "caf\xE9"))
        + column("B", property(2, 2, "\xFF") + property(4, 3, "\xFF\xFF\xFF\xFF") + property(9, 4, "\x01\xAB"));
    const auto parsed = parseWhole(bytes);
    EXPECT_EQ(parsed.table, (PropertyList{{"Description", "of the table"}}));
    EXPECT_EQ(parsed.columns.at("B"),
        (PropertyList{{"DecimalPlaces", std::int64_t{255}}, {"Width", std::int64_t{-1}}, {"GUID", "01ab"}}));
    EXPECT_EQ(parsed.columns.at("Gr"), (PropertyList{{"Required", true}, {"Description", "café"}}));
}

TEST(Properties, OfADamagedValueEndWhereItBreaks)
{
    const auto good = "KKD\0"s + names({"Required", "Description"}) + column("A", property(1, 0, "\0"s));
    const struct {
        const char* name;
        std::string bytes;
        bool hasColumn;
        bool isWhole;
    } cases[] = {
        {"good", good, true, true},
        {"chunk of length zero", good + std::string(20, '\0'), true, false},
        {"chunk of length zero in front", "KKD\0"s + std::string(6, '\0') + good.substr(4), false, false},
        {"chunk longer than the rest", good + u16(500) + "\0\0\1\0"s, true, false},
        {"a name that is not in the list", good + column("B", property(1, 2, "\0"s)), true, false},
        {"a name as long as can be", "KKD\0"s + names({std::string(192, 'n'), "B"}) + column("A", property(1, 1, "\1")),
            true, true},
        {"a name that is longer", "KKD\0"s + names({"B", std::string(193, 'n')}) + column("A", property(1, 0, "\1")),
            true, false},
        {"only a mark", "KKD\0"s, false, true},
        {"the other version's mark", "MR2\0"s + good.substr(4), false, false},
        {"nothing", "", false, false},
    };
    for (const auto& test : cases) {
        const auto parsed = parseWhole(test.bytes);
        EXPECT_EQ(parsed.columns.contains("A"), test.hasColumn) << test.name;
        EXPECT_EQ(parsed.isWhole, test.isWhole) << test.name;
    }

    const auto cutName = parse("KKD\0"s + chunk(0x80, u16(8) + "Required" + u16(99) + "x")
        + column("A", property(1, 0, "\1") + property(1, 1, "\1")));
    EXPECT_THAT(cutName.at("A"), ElementsAre(Pair("Required", PropertyValue(true)))) << "the second name is not there";
    const auto cutProperty = parse("KKD\0"s + names({"Required"}) + column("A", property(1, 0, "\1") + u16(9) + "\1"));
    EXPECT_THAT(cutProperty.at("A"), ElementsAre(Pair("Required", PropertyValue(true))));
    for (std::size_t size = 0; size < good.size(); ++size)
        parse(good.substr(0, size));
}

} // namespace
} // namespace vellumo::jet
