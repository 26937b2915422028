// SPDX-License-Identifier: MIT
#include "jet/TableReader.h"

#include "embedded/TAdmBlobData.h"
#include "jet/PageBuilder.h"
#include "jet/UnicodeText.h"

#include <gmock/gmock.h>

namespace vellumo::jet {
namespace {

using namespace std::string_literals;
using namespace vellumo::test;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::size_t inRow = 0x80000000;
constexpr std::size_t inOneRow = 0x40000000;

// A long, a boolean, a text, a memo and an object; pages 10 to 12 of which 13 is not listed.
TableDef mixedTable()
{
    TableDef table{.definitionPage = 2, .columnLimit = 5};
    table.columns = {{.name = "Id", .type = ColumnType::LongInteger, .size = 4, .number = 0, .isFixed = true},
        {.name = "Flag", .type = ColumnType::Boolean, .size = 1, .number = 1, .isFixed = true},
        {.name = "Text", .type = ColumnType::Text, .number = 2, .variableIndex = 0},
        {.name = "Memo", .type = ColumnType::Memo, .number = 3, .variableIndex = 1},
        {.name = "Object", .type = ColumnType::Ole, .number = 4, .variableIndex = 2}};
    table.dataPages.pages = {10, 11, 12};
    return table;
}

std::string compressed(const std::string& text) { return "\xFF\xFE"s + text; }

struct MixedRow {
    std::size_t id;
    std::string text{};
    std::string memo{};
    std::string object{};
};
// Null where nothing is given; the boolean is true.
std::string bytesOf(const MixedRow& row, bool isJet3 = false)
{
    const auto text = isJet3 || row.text.empty() ? row.text : compressed(row.text);
    const auto mask = 3U | (text.empty() ? 0U : 4U) | (row.memo.empty() ? 0U : 8U) | (row.object.empty() ? 0U : 16U);
    return rowBytes(isJet3, {5, u32(row.id), {{text, row.memo, row.object}}, u8(mask)});
}

struct Reading {
    std::vector<std::string> rows;   // "1|1|text|memo|whole:object"
    std::vector<std::string> damage; // "value Text page 10 row 3"
};

std::string objectText(const std::shared_ptr<TAdmBlobData>& object)
{
    if (!object) return "";
    const auto data = object->data();
    return (object->state() == ObjectState::Damaged ? "damaged:" : "whole:")
        + std::string(reinterpret_cast<const char*>(data.data()), data.size());
}

DecodedObject keepStored(ByteSpan stored, bool isWhole)
{
    if (stored.empty()) return {};
    const auto bytes = std::as_bytes(stored);
    return {std::make_shared<TAdmBlobData>(std::vector<std::byte>(bytes.begin(), bytes.end()), "bin",
                ObjectFacts{.state = isWhole ? ObjectState::Whole : ObjectState::Damaged}),
        textOf(stored) == "too much"};
}

Reading readTable(MemoryPages& pages, const TableDef& table, RowChoice choice = RowChoice::Live)
{
    LongValue::Budget budget = 100;
    const CodePage codePage(1252);
    TableReader reader(table, {pages, {pages.format().isJet3, &codePage}, budget, keepStored}, choice);
    RowRun run;
    for (const auto page : table.dataPages.pages)
        reader.readPage(page, run);
    reader.finish(run);
    Reading reading;
    for (const auto& group : run.groups)
        for (std::uint32_t row = 0; row < group.rowCount; ++row) {
            std::string text;
            for (std::size_t column = 0; column < 4; ++column)
                text += std::string(group.texts[column].text(row)) + '|';
            reading.rows.push_back(text + objectText(group.blobs[4][row]));
        }
    EXPECT_EQ(reading.rows.size(), run.rowCount);
    for (const auto& record : run.damage.records()) {
        auto text = std::string(damageKindName(record.kind)) + (record.column.empty() ? "" : " " + record.column)
            + " page " + std::to_string(record.page);
        reading.damage.push_back(record.row == 0 ? text : text + " row " + std::to_string(record.row));
    }
    return reading;
}

TEST(TableReader, RowsArriveInTheOrderOfTheirPages)
{
    for (const auto* format : {&jet3Pages, &jet4Pages}) {
        const bool isJet3 = format->isJet3;
        const auto memo = longValueHeader(inRow | (isJet3 ? 4 : 6), 0) + (isJet3 ? "memo"s : compressed("memo"));
        MemoryPages pages(*format);
        pages.content[10] = dataPage(*format, 2, {{bytesOf({1, "one"}, isJet3)}, {bytesOf({2}, isJet3)}});
        pages.content[11] = dataPage(*format, 2, {});
        pages.content[12] =
            dataPage(*format, 2, {{bytesOf({3, "three", memo, longValueHeader(inOneRow | 5, 0x1400)}, isJet3)}});
        pages.content[20] = longValuePage(*format, {"object"});
        const auto reading = readTable(pages, mixedTable());
        EXPECT_THAT(reading.rows, ElementsAre("1|1|one||", "2|1|||", "3|1|three|memo|whole:objec"));
        EXPECT_THAT(reading.damage, IsEmpty());
    }
}

TEST(TableReader, ABadRowOrPageCostsItself)
{
    const auto row = [](std::size_t id) { return StoredRow{bytesOf({id})}; };
    const StoredRow tooManyColumns{"\6\0"s + bytesOf({9}).substr(2)};
    MemoryPages pages(jet4Pages);
    pages.content[10] = dataPage(jet4Pages, 2, {row(1), tooManyColumns, row(2), {"\5"}, row(3)});
    pages.content[12] = dataPage(jet4Pages, 2, {row(4), row(5), row(6)});
    pages.content[12].replace(rowEntry(jet4Pages, 1), 2, u16(0x1FFF));
    auto reading = readTable(pages, mixedTable());
    EXPECT_THAT(reading.rows, ElementsAre("1|1|||", "2|1|||", "3|1|||", "4|1|||"));
    EXPECT_THAT(
        reading.damage, ElementsAre("row page 10", "row page 10", "page page 11", "row page 12", "row page 12"));

    // Pages that are none of the table's.
    auto index = dataPage(jet4Pages, 2, {row(7)});
    index[0] = '\4';
    auto tooManyRows = dataPage(jet4Pages, 2, {row(8)});
    tooManyRows.replace(12, 2, u16(256));
    pages.content[10] = index;
    pages.content[11] = dataPage(jet4Pages, 3, {row(7)});
    pages.content[12] = tooManyRows;
    reading = readTable(pages, mixedTable());
    EXPECT_THAT(reading.rows, ElementsAre("8|1|||"));
    EXPECT_THAT(
        std::span(reading.damage).first(4), ElementsAre("page page 10", "page page 11", "page page 12", "row page 12"));
}

TEST(TableReader, ADamagedCellIsShownAndCounted)
{
    const auto memoAt = [](std::size_t length, std::uint32_t pointer) { return longValueHeader(length, pointer); };
    auto textOutside = bytesOf({3, "text"});
    textOutside.replace(textOutside.size() - 5, 2, u16(1)); // the offset of the first value, before number and mask
    const auto halfCharacter = rowBytes(false, {5, u32(4), {{"a\0b\0c"s, "", ""}}, "\7"});
    auto noValues = bytesOf({7, "", "m", "o"});
    noValues.replace(noValues.size() - 3, 2, u16(0));
    MemoryPages pages(jet4Pages);
    pages.content[10] = dataPage(jet4Pages, 2, {{bytesOf({1})}, {bytesOf({2})}});
    pages.content[11] = dataPage(jet4Pages, 2,
        {{textOutside}, {halfCharacter}, {bytesOf({5, "", memoAt(500, 0x1400), memoAt(500, 0x1400)})},
            {bytesOf({6, "", memoAt(9, 0x1700), memoAt(inOneRow | 9, 0x1700)})}, {noValues},
            {bytesOf({8, "", "short", "short"})}});
    pages.content[12] = dataPage(jet4Pages, 2,
        {{bytesOf({9, "", memoAt(inOneRow | 99, 0x1401), memoAt(inOneRow | 99, 0x1401)})},
            {bytesOf({10, "", "", longValueHeader(inRow | 8, 0) + "too much"})}});
    pages.content[20] = longValuePage(jet4Pages, {u32(0x1499) + "\xFF\xFEpart"s, std::string(99, 'x')});
    const auto reading = readTable(pages, mixedTable());
    EXPECT_THAT(reading.rows,
        ElementsAre("1|1|||", "2|1|||", "3|1|\uFFFD||", "4|1|ab\uFFFD||", "5|1||part\uFFFD|damaged:\xFF\xFEpart",
            "6|1||\uFFFD|damaged:", "7|1||\uFFFD|damaged:", "8|1||\uFFFD|damaged:", "9|1||\uFFFD|damaged:",
            "10|1|||whole:too much"));
    EXPECT_THAT(reading.damage,
        testing::UnorderedElementsAre("value Text page 11 row 3", "value Text page 11 row 4",
            "longText Memo page 11 row 5", "longText Memo page 11 row 6", "longText Memo page 11 row 7",
            "longText Memo page 11 row 8", "object Object page 11 row 5", "object Object page 11 row 6",
            "object Object page 11 row 7", "object Object page 11 row 8", "budget Memo page 12 row 9",
            "budget Object page 12 row 9", "budget Object page 12 row 10"));
}

TEST(TableReader, MovedRowsAreReadOnceOrMissed)
{
    const auto there = StoredRow{bytesOf({7}), movedHere};
    const struct {
        const char* name;
        std::string pointer;
        bool isThere;
    } cases[] = {
        {"on a later page", u32(0x0B00), true},
        {"deleted there", u32(0x0B01), false},
        {"no such row", u32(0x0B02), false},
        {"a page that is not the table's", u32(0x0C00), false},
        {"a page that is not listed", u32(0x0D00), false},
        {"a page that cannot be read", u32(0x0E00), false},
        {"half a pointer", "\0\x0B\0"s, false},
    };
    for (const auto& test : cases) {
        MemoryPages pages(jet4Pages);
        pages.content[10] = dataPage(jet4Pages, 2, {{bytesOf({1})}, {test.pointer, movedAway}});
        pages.content[11] = dataPage(jet4Pages, 2, {there, {there.bytes, deletedRow}});
        pages.content[12] = dataPage(jet4Pages, 3, {there});
        pages.content[13] = dataPage(jet4Pages, 2, {there});
        auto table = mixedTable();
        table.dataPages.pages = {10, 11, 14};
        if (test.name == "a page that is not the table's"s) table.dataPages.pages = {10, 11, 12};
        const auto reading = readTable(pages, table);
        EXPECT_THAT(reading.rows, ElementsAre("1|1|||", "7|1|||")) << test.name;
        EXPECT_EQ(reading.damage.size(), test.isThere ? 1U : 2U) << test.name << ", beside the third page";
        EXPECT_EQ(reading.damage.front() == "row page 10", !test.isThere) << test.name;
    }
}

TEST(TableReader, DeletedRowsComeOnRequest)
{
    MemoryPages pages(jet4Pages);
    pages.content[10] = dataPage(jet4Pages, 2,
        {{bytesOf({1})}, {bytesOf({2, "still there"}), deletedRow}, {"", deletedRow}, {"\6\0xxxx"s, deletedRow},
            {u32(0x0B00), movedAway}, {bytesOf({3}), movedHere}, {"damaged"}});
    auto table = mixedTable();
    table.dataPages.pages = {10};
    const auto reading = readTable(pages, table, RowChoice::Deleted);
    EXPECT_THAT(reading.rows, ElementsAre("2|1|still there||"));
    EXPECT_THAT(reading.damage, IsEmpty());
}

} // namespace
} // namespace vellumo::jet
