// SPDX-License-Identifier: MIT
#include "jet/Properties.h"

#include "jet/ByteReader.h"
#include "jet/Limits.h"

#include <algorithm>
#include <string_view>

// Layout: a mark of 4 bytes, "KKD\0" or "MR2\0", then chunks: u32 length (its own 4 bytes included), u16 kind, body.
//   kind 0x80: the names of properties, each u16 length, text
//   kind 0 or 1, a table or a column: u32 6 + name length, u16 name length, name, then properties: u16 8 + value
//   length, u8 flag, u8 type, u16 number of the name, u16 value length, value
namespace vellumo::jet {

namespace {

constexpr std::string_view jet3Mark("KKD\0", 4);
constexpr std::string_view jet4Mark("MR2\0", 4);
constexpr std::size_t chunkHeaderSize = 6;
constexpr std::uint16_t namesChunk = 0x80;
constexpr std::uint16_t tableChunk = 0;
constexpr std::uint16_t columnChunk = 1;

std::string textOf(ByteSpan stored, const TextRules& rules)
{
    TextColumnBuilder text;
    appendStoredText(stored, rules, text);
    return std::string(text.openText());
}

// Whole numbers are stored in 1, 2 or 4 bytes, whatever their type says.
PropertyValue wholeNumber(ByteSpan stored)
{
    switch (stored.size()) {
    case 1: return std::int64_t{stored[0]};
    case 2: return std::int64_t{loadNumber<std::int16_t>(stored.data())};
    case 4: return std::int64_t{loadNumber<std::int32_t>(stored.data())};
    default: return std::string();
    }
}

PropertyValue cellText(ColumnType type, ByteSpan stored, const TextRules& rules)
{
    ColumnDef column;
    column.type = type;
    TextColumnBuilder text;
    CellAppender(column, rules)(stored, text);
    return std::string(text.openText());
}

PropertyValue valueOf(ColumnType type, ByteSpan stored, const TextRules& rules)
{
    switch (type) {
    case ColumnType::Boolean: return !stored.empty() && stored[0] != 0;
    case ColumnType::Byte:
    case ColumnType::Integer:
    case ColumnType::LongInteger: return wholeNumber(stored);
    case ColumnType::Text:
    case ColumnType::Memo: return textOf(stored, rules);
    default: return cellText(type, stored, rules);
    }
}

// What stands before a damaged place is kept. False, as below, when there is one.
bool readNames(ByteSpan body, const TextRules& rules, std::vector<std::string>& names)
{
    names.clear();
    ByteReader reader(body);
    while (reader.position() < body.size()) {
        const auto name = reader.take(reader.number<std::uint16_t>());
        auto text = textOf(name, rules);
        if (!reader.isGood() || text.size() > 3 * mostPropertyNameLength) return false;
        names.push_back(std::move(text));
    }
    return true;
}

// `isTable`: they are those of the table, else of the column that is named first.
bool readProperties(ByteSpan body, bool isTable, const std::vector<std::string>& names, const TextRules& rules,
    ParsedProperties& parsed)
{
    ByteReader reader(body);
    reader.skip(4);
    const auto owner = textOf(reader.take(reader.number<std::uint16_t>()), rules);
    auto& list = isTable ? parsed.table : parsed.columns[owner];
    bool isWhole = true;
    while (reader.isGood() && reader.position() < body.size()) {
        reader.skip(3); // length and flag
        const auto type = columnTypeOfCode(reader.number<std::uint8_t>());
        const std::size_t name = reader.number<std::uint16_t>();
        const auto value = reader.take(reader.number<std::uint16_t>());
        if (reader.isGood() && name < names.size())
            list.emplace_back(names[name], valueOf(type, value, rules));
        else
            isWhole = false;
    }
    return reader.isGood() && isWhole;
}

} // namespace

ParsedProperties parseProperties(ByteSpan bytes, const TextRules& rules)
{
    ParsedProperties parsed;
    std::vector<std::string> names;
    bool isWhole = true;
    ByteReader reader(bytes);
    const auto mark = reader.take(jet4Mark.size());
    if (!std::ranges::equal(mark, rules.isJet3 ? jet3Mark : jet4Mark)) return parsed;
    while (reader.position() < bytes.size()) {
        const std::size_t length = reader.number<std::uint32_t>();
        const auto kind = reader.number<std::uint16_t>();
        if (length < chunkHeaderSize) return parsed;
        const auto body = reader.take(length - chunkHeaderSize);
        if (!reader.isGood()) return parsed;
        if (kind == namesChunk) isWhole = readNames(body, rules, names) && isWhole;
        if (kind == tableChunk || kind == columnChunk)
            isWhole = readProperties(body, kind == tableChunk, names, rules, parsed) && isWhole;
    }
    parsed.isWhole = isWhole;
    return parsed;
}

} // namespace vellumo::jet
