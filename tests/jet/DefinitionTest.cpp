// SPDX-License-Identifier: MIT
#include "jet/Definition.h"

#include "jet/PageBuilder.h"

#include <functional>
#include <gmock/gmock.h>

namespace vellumo::jet {
namespace {

using namespace std::string_literals;
using namespace vellumo::test;
using testing::ElementsAre;

std::optional<ParsedDefinition> parse(std::string_view bytes, bool isJet3)
{
    return parseDefinition(spanOf(bytes), isJet3, [isJet3](ByteSpan stored) {
        std::string name;
        for (std::size_t i = 0; i < stored.size(); i += isJet3 ? 1 : 2)
            name += static_cast<char>(stored[i]);
        return name;
    });
}

// A number, a memo, and the indexes of a key and of a relation.
const DefinitionParts smallTable{.rows = 61,
    .columnLimit = 2,
    .mapPointer = 0x0301,
    .columns = {{.name = "Note", .type = 12, .number = 1, .flags = 0x80},
        {.name = "Id", .type = 4, .number = 0, .offset = 0, .size = 4, .flags = 5}},
    .indexes = {{"PK", {{0, true}, {1, false}}, 9, 9, 1}, {"Rel", {{0, true}}, 10, 0, 2}}};

// Where its parts stand in both versions.
struct Places {
    bool isJet3;
    std::size_t columns, names, physical, logical, indexNames, longValueMaps, end;
};
constexpr Places places[] = {{true, 59, 95, 103, 181, 221, 228, 240}, {false, 87, 137, 153, 257, 313, 327, 339}};

TEST(Definition, TellsColumnsAndIndexes)
{
    for (const auto& at : places) {
        const auto bytes = definitionBytes(at.isJet3, smallTable);
        ASSERT_EQ(bytes.size(), at.end);
        const auto parsed = parse(bytes, at.isJet3);
        ASSERT_TRUE(parsed && parsed->isSound);
        const auto& table = parsed->table;
        EXPECT_EQ(table.statedRowCount, 61U);
        EXPECT_EQ(table.columnLimit, 2U);
        EXPECT_EQ(table.pageMapPointer, 0x0301U);
        ASSERT_EQ(table.columns.size(), 2U);
        const auto& note = table.columns[0];
        EXPECT_TRUE(note.name == "Note" && note.type == ColumnType::Memo && note.number == 1 && note.isHyperlink);
        EXPECT_FALSE(note.isFixed || note.isCalculated);
        const auto& id = table.columns[1];
        EXPECT_TRUE(
            id.name == "Id" && id.type == ColumnType::LongInteger && id.size == 4 && id.isFixed && !id.isHyperlink);
        EXPECT_THAT(table.indexRoots, ElementsAre(9, 10));
        ASSERT_EQ(table.indices.size(), 2U);
        const auto& key = table.indices[0];
        EXPECT_TRUE(key.name == "PK" && key.type == 1 && key.flags == 9 && key.keys.size() == 2);
        EXPECT_TRUE(key.keys[0].column == 1 && key.keys[0].isAscending) << "the place in the list, not the number";
        EXPECT_TRUE(key.keys[1].column == 0 && !key.keys[1].isAscending);
        EXPECT_TRUE(table.indices[1].name == "Rel" && table.indices[1].keys.empty());
    }
}

TEST(Definition, ColumnsHaveFlagsOfTheirVersion)
{
    const DefinitionParts table{.columnLimit = 255,
        .columns = {{.name = "N",
            .type = 16,
            .number = 254,
            .variableIndex = 300,
            .offset = 500,
            .size = 17,
            .moreFlags = 0xC0,
            .precision = 18,
            .scale = 4}}};
    for (const bool isJet3 : {true, false}) {
        const auto parsed = parse(definitionBytes(isJet3, table), isJet3);
        ASSERT_TRUE(parsed && parsed->isSound);
        const auto& column = parsed->table.columns.front();
        EXPECT_TRUE(column.number == 254 && column.precision == 18 && column.scale == 4 && column.size == 17);
        EXPECT_TRUE(column.variableIndex == 300 && column.fixedOffset == 500 && !column.isFixed);
        EXPECT_EQ(column.isCalculated, !isJet3);
    }
}

// A history is no column of the table; the keys of indexes count the columns that are.
TEST(Definition, ColumnsOfSeveralValues)
{
    DefinitionParts table{.columnLimit = 4,
        .columns = {{.name = "H", .type = 18, .number = 0, .size = 4, .flags = 7, .moreFlags = 0x20, .precision = 5},
            {.name = "V", .type = 18, .number = 1, .size = 4, .flags = 7, .precision = 7, .scale = 1},
            {.name = "K", .type = 4, .number = 2, .moreFlags = 8}, {.name = "B", .type = 17, .number = 3, .size = 6}},
        .indexes = {{"I", {{2, true}, {1, true}}, 9, 0, 0}, {"J", {{0, true}}, 9, 0, 0}}};
    const auto parsed = parse(definitionBytes(false, table), false);
    ASSERT_TRUE(parsed && parsed->isSound);
    const auto& columns = parsed->table.columns;
    ASSERT_EQ(columns.size(), 3U);
    EXPECT_TRUE(columns[0].name == "V" && columns[0].complexId == 0x107 && !columns[0].isAutoNumber);
    EXPECT_TRUE(columns[1].isGroupKey && !columns[1].isValueKey && columns[2].type == ColumnType::Binary);
    ASSERT_EQ(parsed->table.histories.size(), 1U);
    EXPECT_EQ(parsed->table.histories[0].column.complexId, 5U);
    const auto& indices = parsed->table.indices;
    ASSERT_TRUE(indices.size() == 2 && indices[0].keys.size() == 2 && indices[1].keys.empty());
    EXPECT_TRUE(indices[0].keys[0].column == 1 && indices[0].keys[1].column == 0);
}

TEST(Definition, CutAnywhereKeepsWhatIsWhole)
{
    for (const auto& at : places) {
        const auto bytes = definitionBytes(at.isJet3, smallTable) + "slack";
        for (std::size_t size = 0; size <= bytes.size(); ++size) {
            const auto parsed = parse(std::string_view(bytes).substr(0, size), at.isJet3);
            ASSERT_EQ(parsed.has_value(), size >= at.physical) << size;
            if (!parsed) continue;
            EXPECT_EQ(parsed->table.columns.size(), 2U) << size;
            EXPECT_EQ(parsed->table.indices.size(), size >= at.longValueMaps ? 2U : 0U) << size;
            EXPECT_EQ(parsed->isSound, size >= at.end) << size;
        }
    }
}

enum Outcome { Lost, Unsound, Sound };

TEST(Definition, ClaimsAreHeldAgainstWhatIsThere)
{
    struct Change {
        std::size_t jet3, jet4; // offset
        std::string bytes;
    };
    const std::size_t second3 = 59 + 18;
    const std::size_t second4 = 87 + 25;
    const struct {
        const char* name;
        std::vector<Change> changes;
        Outcome outcome;
    } cases[] = {
        {"nothing changed", {}, Sound},
        {"columns: none", {{25, 45, u16(0)}}, Unsound},
        {"columns: 3", {{25, 45, u16(3)}}, Lost},
        {"columns: 256", {{25, 45, u16(256)}}, Lost},
        {"numbers up to 1", {{21, 41, u16(1)}}, Lost},
        {"numbers up to 3", {{21, 41, u16(3)}}, Sound},
        {"a number twice", {{second3 + 1, second4 + 5, u16(1)}}, Lost},
        {"number 255", {{21, 41, u16(256)}, {second3 + 1, second4 + 5, u16(255)}}, Sound},
        {"number 256", {{21, 41, u16(257)}, {second3 + 1, second4 + 5, u16(256)}}, Lost},
        {"logical indexes: 1", {{27, 47, u32(1)}}, Unsound},
        {"logical indexes: more than bytes", {{27, 47, u32(0xFFFFFFFF)}}, Lost},
        {"logical indexes: too many", {{27, 47, u32(10)}}, Unsound},
        {"physical indexes: more than bytes", {{31, 51, u32(0xFFFFFFFF)}}, Lost},
        {"a name as long as can be said", {{95, 137, "\xFF\xFF"s}}, Lost},
        {"an index name that goes too far", {{221, 313, "\xFF\xFF"s}}, Unsound},
        {"no end mark", {{238, 337, "\1\0"s}}, Unsound},
    };
    for (const auto& test : cases) {
        for (const auto& at : places) {
            auto bytes = definitionBytes(at.isJet3, smallTable);
            for (const auto& change : test.changes)
                bytes.replace(at.isJet3 ? change.jet3 : change.jet4, change.bytes.size(), change.bytes);
            const auto parsed = parse(bytes, at.isJet3);
            EXPECT_EQ(!parsed         ? Lost
                    : parsed->isSound ? Sound
                                      : Unsound,
                test.outcome)
                << test.name << (at.isJet3 ? ", Jet 3" : ", Jet 4");
        }
    }
}

TEST(Definition, LengthAndKeysFitTheRest)
{
    for (const auto& at : places) {
        for (const auto length : {at.end - 1, at.end + 1}) {
            auto bytes = definitionBytes(at.isJet3, smallTable);
            bytes.replace(8, 4, u32(length));
            EXPECT_FALSE(parse(bytes, at.isJet3)->isSound);
        }
        auto noColumn = definitionBytes(at.isJet3, smallTable);
        noColumn.replace(at.physical + (at.isJet3 ? 0 : 4), 2, u16(77));
        EXPECT_EQ(parse(noColumn, at.isJet3)->table.indices[0].keys.size(), 1U);
        auto noIndex = definitionBytes(at.isJet3, smallTable);
        noIndex.replace(at.logical + (at.isJet3 ? 4 : 8), 4, u32(2));
        EXPECT_TRUE(parse(noIndex, at.isJet3)->table.indices[0].keys.empty());
    }
}

// More than a page of columns.
DefinitionParts wideTable()
{
    DefinitionParts table{.columnLimit = 100};
    for (unsigned number = 0; number < 100; ++number)
        table.columns.push_back({.name = "A column of number " + std::to_string(number),
            .type = 4,
            .number = number,
            .offset = 4 * number,
            .size = 4,
            .flags = 1});
    return table;
}

TEST(Definition, GoesOnOnFurtherPages)
{
    for (const auto* format : {&jet3Pages, &jet4Pages}) {
        const auto bytes = definitionBytes(format->isJet3, wideTable());
        const struct {
            const char* name;
            std::function<void(MemoryPages&)> damage;
            bool isComplete;
            bool isThere; // of it enough for the columns
        } cases[] = {
            {"whole", [](auto&) {}, true, true},
            {"another type on the last page", [](auto& pages) { pages.content[9][0] = '\1'; }, false, false},
            {"the last page cannot be read", [](auto& pages) { pages.content.erase(9); }, false, false},
            {"another type on the first page", [](auto& pages) { pages.content[5][0] = '\1'; }, false, false},
            {"goes round", [](auto& pages) { pages.content[9].replace(4, 4, u32(5)); }, false, true},
            {"goes on out of the file", [](auto& pages) { pages.content[9].replace(4, 4, u32(100)); }, false, true},
            {"goes on where it is", [](auto& pages) { pages.content[9].replace(4, 4, u32(9)); }, false, true},
            {"ends early", [](auto& pages) { pages.content[5].replace(4, 4, u32(0)); }, true, false},
        };
        for (std::size_t i = 0; i < 2 * std::size(cases); ++i) {
            const auto& test = cases[i / 2];
            MemoryPages pages(*format, i % 2 == 0 ? 100 : 10'000);
            putDefinition(pages, bytes, {5, 9});
            test.damage(pages);
            PageBuffer buffer;
            const auto definition = readDefinition(pages, buffer, 5);
            EXPECT_EQ(definition.isComplete, test.isComplete) << test.name;
            EXPECT_FALSE(readDefinition(pages, buffer, 0).isComplete) << "page 0 is none";
            EXPECT_LE(pages.reads, std::min<std::size_t>(pages.count(), (1U << 20) / (format->size - 8) + 1))
                << test.name;
            const auto parsed = parse(textOf(definition.bytes), format->isJet3);
            ASSERT_EQ(parsed.has_value(), test.isThere) << test.name;
            EXPECT_TRUE(!parsed || parsed->table.columns.back().name == "A column of number 99") << test.name;
        }
    }
}

} // namespace
} // namespace vellumo::jet
