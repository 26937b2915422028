// SPDX-License-Identifier: MIT
#include "jet/PageBuilder.h"

#include <algorithm>
#include <cstring>

namespace vellumo::test {

namespace {

using namespace std::string_literals;

void put16(std::string& bytes, std::size_t offset, std::size_t value) { bytes.replace(offset, 2, u16(value)); }

std::string nameBytes(bool isJet3, const std::string& name)
{
    if (isJet3) return u8(name.size()) + name;
    std::string wide;
    for (const auto letter : name)
        wide += letter + "\0"s;
    return u16(wide.size()) + wide;
}

std::string columnEntry(bool isJet3, const ColumnParts& column)
{
    const auto place = u16(column.number) + u16(column.variableIndex) + u16(column.number);
    const auto numeric = u8(column.precision) + u8(column.scale);
    const auto end = u16(column.offset) + u16(column.size);
    if (isJet3) return u8(column.type) + place + u16(1) + numeric + u16(1252) + u8(column.flags) + end;
    return u8(column.type) + u32(1625) + place + numeric + u16(0) + u8(column.flags) + u8(column.moreFlags) + u32(0)
        + end;
}

std::string physicalIndex(bool isJet3, const IndexParts& index)
{
    std::string keys;
    for (const auto& [number, isAscending] : index.keys)
        keys += u16(number) + u8(isAscending ? 1 : 0);
    while (keys.size() < 30)
        keys += "\xFF\xFF\0"s;
    const auto end = u32(0) + u32(index.root);
    return isJet3 ? keys + end + u8(index.flags)
                  : u32(1923) + keys + end + u32(0) + u8(index.flags) + std::string(5, 0);
}

std::string logicalIndex(bool isJet3, std::size_t number, const IndexParts& index)
{
    const auto entry = u32(number) + u32(number) + u8(0) + u32(0xFFFFFFFF) + u32(0) + u8(4) + u8(4) + u8(index.kind);
    return isJet3 ? entry : u32(1625) + entry + u32(0);
}

std::string definitionHeader(bool isJet3, const DefinitionParts& parts)
{
    const auto variable =
        std::ranges::count_if(parts.columns, [](const auto& column) { return column.flags % 2 == 0; });
    const auto indexes = parts.indexes.size();
    auto header = u32(parts.rows) + u32(0) + (isJet3 ? "" : u8(1) + std::string(15, '\0')) + "N"
        + u16(parts.columnLimit) + u16(static_cast<std::size_t>(variable)) + u16(parts.columns.size()) + u32(indexes)
        + u32(indexes) + u32(parts.mapPointer) + u32(parts.mapPointer + 1);
    for (std::size_t i = 0; i < indexes; ++i)
        header += std::string(isJet3 ? 8 : 12, '\0');
    return isJet3 ? header : u32(1625) + header;
}

} // namespace

std::string u8(std::size_t value) { return {static_cast<char>(value)}; }
std::string u16(std::size_t value) { return u8(value) + u8(value >> 8); }
std::string u32(std::size_t value) { return u16(value) + u16(value >> 16); }

jet::ByteSpan spanOf(std::string_view bytes)
{
    return {reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()};
}
std::string textOf(jet::ByteSpan bytes) { return {bytes.begin(), bytes.end()}; }

bool MemoryPages::readPage(std::uint32_t number, std::uint8_t* to)
{
    ++reads;
    const auto found = content.find(number);
    if (found == content.end()) return false;
    std::memcpy(to, found->second.data(), format().size);
    return true;
}

std::size_t rowEntry(const jet::PageFormat& format, std::size_t row) { return (format.isJet3 ? 10 : 14) + 2 * row; }

std::string dataPage(const jet::PageFormat& format, std::uint32_t owner, const std::vector<StoredRow>& rows)
{
    auto page = "\1\1"s + u16(0) + u32(owner) + (format.isJet3 ? "" : u32(0)) + u16(rows.size());
    page.resize(format.size);
    auto end = format.size;
    for (std::size_t row = 0; row < rows.size(); ++row) {
        end -= rows[row].bytes.size();
        page.replace(end, rows[row].bytes.size(), rows[row].bytes);
        put16(page, rowEntry(format, row), end | rows[row].flags);
    }
    return page;
}

std::string longValuePage(const jet::PageFormat& format, std::initializer_list<std::string> rows)
{
    std::vector<StoredRow> stored;
    for (const auto& row : rows)
        stored.push_back({row});
    return dataPage(format, 0x4C41564C, stored);
}

std::string longValueHeader(std::size_t lengthAndKind, std::uint32_t pointer)
{
    return u32(lengthAndKind) + u32(pointer) + u32(0);
}

std::string rowBytes(bool isJet3, const RowParts& parts)
{
    const auto number = isJet3 ? u8 : u16;
    auto row = number(parts.columns) + parts.fixed;
    if (!parts.values) return row + parts.mask;
    std::string offsets; // the last first
    for (const auto& value : *parts.values) {
        offsets.insert(0, number(row.size()));
        row += value;
    }
    row += number(row.size()) + offsets;
    for (auto jump = parts.jumps.rbegin(); jump != parts.jumps.rend(); ++jump)
        row += u8(*jump);
    return row + number(parts.values->size()) + parts.mask;
}

std::string definitionBytes(bool isJet3, const DefinitionParts& parts)
{
    auto body = definitionHeader(isJet3, parts);
    for (const auto& column : parts.columns)
        body += columnEntry(isJet3, column);
    for (const auto& column : parts.columns)
        body += nameBytes(isJet3, column.name);
    for (const auto& index : parts.indexes)
        body += physicalIndex(isJet3, index);
    for (std::size_t i = 0; i < parts.indexes.size(); ++i)
        body += logicalIndex(isJet3, i, parts.indexes[i]);
    for (const auto& index : parts.indexes)
        body += nameBytes(isJet3, index.name);
    for (const auto& column : parts.columns)
        if (column.type == 11 || column.type == 12) body += u16(column.number) + u32(0x0305) + u32(0x0306);
    body += u16(0xFFFF);
    return "\2\1"s + (isJet3 ? "VC" : u16(0)) + u32(0) + u32(12 + body.size()) + body;
}

void putDefinition(MemoryPages& pages, const std::string& definition, const std::vector<std::uint32_t>& numbers)
{
    const auto header = definition.substr(0, 4);
    std::size_t from = 8;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        auto page = header + u32(i + 1 < numbers.size() ? numbers[i + 1] : 0);
        page += definition.substr(std::min(from, definition.size()), pages.format().size - 8);
        page.resize(pages.format().size);
        pages.content[numbers[i]] = page;
        from += pages.format().size - 8;
    }
}

} // namespace vellumo::test
