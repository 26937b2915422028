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
constexpr std::uint16_t columnChunk = 1;

constexpr int longType = 4;

std::string textOf(ByteSpan stored, const TextRules& rules)
{
    TextColumnBuilder text;
    appendStoredText(stored, rules, text);
    return std::string(text.openText());
}

// Whole numbers are stored in 1, 2 or 4 bytes, whatever their type says.
std::string numberText(ByteSpan stored)
{
    switch (stored.size()) {
    case 1: return std::to_string(stored[0]);
    case 2: return std::to_string(loadNumber<std::int16_t>(stored.data()));
    case 4: return std::to_string(loadNumber<std::int32_t>(stored.data()));
    default: return {};
    }
}

std::string valueText(int type, ByteSpan stored, const TextRules& rules)
{
    if (type == TypeCode::boolean) return !stored.empty() && stored[0] != 0 ? "yes" : "no";
    if (type == TypeCode::text || type == TypeCode::memo) return textOf(stored, rules);
    if (type > TypeCode::boolean && type <= longType) return numberText(stored);
    ColumnDef column;
    column.typeCode = type;
    TextColumnBuilder text;
    CellAppender(column, rules)(stored, text);
    return std::string(text.openText());
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

bool readColumn(ByteSpan body, const std::vector<std::string>& names, const TextRules& rules, ParsedProperties& parsed)
{
    ByteReader reader(body);
    reader.skip(4);
    const auto column = textOf(reader.take(reader.number<std::uint16_t>()), rules);
    auto& list = parsed.columns[column];
    bool isWhole = true;
    while (reader.isGood() && reader.position() < body.size()) {
        reader.skip(3); // length and flag
        const int type = reader.number<std::uint8_t>();
        const std::size_t name = reader.number<std::uint16_t>();
        const auto value = reader.take(reader.number<std::uint16_t>());
        if (reader.isGood() && name < names.size())
            list.emplace_back(names[name], valueText(type, value, rules));
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
        if (kind == columnChunk) isWhole = readColumn(body, names, rules, parsed) && isWhole;
    }
    parsed.isWhole = isWhole;
    return parsed;
}

} // namespace vellumo::jet
