#include "jet/Properties.h"

#include "jet/ByteReader.h"

// Layout: a mark of 4 bytes, "KKD\0" or "MR2\0", then chunks: u32 length (its own 4 bytes included), u16 kind, body.
//   kind 0x80: the names of properties, each u16 length, text
//   kind 0 or 1, a table or a column: u32 6 + name length, u16 name length, name, then properties: u16 8 + value
//   length, u8 flag, u8 type, u16 number of the name, u16 value length, value
namespace vellumo::jet {

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::size_t markSize = 4;
constexpr std::size_t chunkHeaderSize = 6;
constexpr std::uint16_t namesChunk = 0x80;
constexpr std::uint16_t columnChunk = 1;

constexpr int booleanType = 1;
constexpr int memoType = 12;
constexpr int textType = 10;
constexpr int longType = 4;

std::string textOf(Bytes stored, const TextRules& rules)
{
    TextColumnBuilder text;
    appendStoredText(stored, rules, text);
    return std::string(text.openText());
}

// Whole numbers are stored in 1, 2 or 4 bytes, whatever their type says.
std::string numberText(Bytes stored)
{
    switch (stored.size()) {
    case 1: return std::to_string(stored[0]);
    case 2: return std::to_string(loadNumber<std::int16_t>(stored.data()));
    case 4: return std::to_string(loadNumber<std::int32_t>(stored.data()));
    default: return {};
    }
}

std::string valueText(int type, Bytes stored, const TextRules& rules)
{
    if (type == booleanType) return !stored.empty() && stored[0] != 0 ? "yes" : "no";
    if (type == textType || type == memoType) return textOf(stored, rules);
    if (type > booleanType && type <= longType) return numberText(stored);
    ColumnDef column;
    column.typeCode = type;
    TextColumnBuilder text;
    appendCellText(column, stored, rules, text);
    return std::string(text.openText());
}

std::vector<std::string> readNames(Bytes body, const TextRules& rules)
{
    std::vector<std::string> names;
    ByteReader reader(body);
    while (reader.position() < body.size()) {
        const auto name = reader.take(reader.number<std::uint16_t>());
        if (!reader.isGood()) break;
        names.push_back(textOf(name, rules));
    }
    return names;
}

void readColumn(Bytes body, const std::vector<std::string>& names, const TextRules& rules, ColumnProperties& properties)
{
    ByteReader reader(body);
    reader.skip(4);
    const auto column = textOf(reader.take(reader.number<std::uint16_t>()), rules);
    auto& list = properties[column];
    while (reader.isGood() && reader.position() < body.size()) {
        reader.skip(3); // length and flag
        const int type = reader.number<std::uint8_t>();
        const std::size_t name = reader.number<std::uint16_t>();
        const auto value = reader.take(reader.number<std::uint16_t>());
        if (reader.isGood() && name < names.size()) list.emplace_back(names[name], valueText(type, value, rules));
    }
}

} // namespace

ColumnProperties parseProperties(Bytes bytes, const TextRules& rules)
{
    ColumnProperties properties;
    std::vector<std::string> names;
    ByteReader reader(bytes);
    reader.skip(markSize);
    while (reader.isGood() && reader.position() < bytes.size()) {
        const std::size_t length = reader.number<std::uint32_t>();
        const auto kind = reader.number<std::uint16_t>();
        if (length < chunkHeaderSize) break;
        const auto body = reader.take(length - chunkHeaderSize);
        if (!reader.isGood()) break;
        if (kind == namesChunk) names = readNames(body, rules);
        if (kind == columnChunk) readColumn(body, names, rules, properties);
    }
    return properties;
}

} // namespace vellumo::jet
