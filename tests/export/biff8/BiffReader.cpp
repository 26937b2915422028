// SPDX-License-Identifier: MIT
#include "export/biff8/BiffReader.h"

#include "embedded/cfb/Storage.h"
#include "embedded/cfb/Stream.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace vellumo::test {

namespace {

constexpr std::uint16_t continueId = 0x3C;

// UTF-16 units as UTF-8. As the name of a file the standard library converts them, and throws where a surrogate is
// alone.
std::string utf8Of(const std::u16string& units) { return std::filesystem::path(units).string(); }

// Walks over the data of a record and those that continue it.
class StringCursor {
public:
    explicit StringCursor(const std::vector<Record>& records, std::size_t first)
        : m_records(records)
        , m_index(first)
    {
    }
    SharedString next()
    {
        if (left() == 0) nextRecord();
        EXPECT_GE(left(), 3U) << "a string's head is split";
        SharedString string;
        string.offset = m_records[m_index].offset + 4 + static_cast<std::uint32_t>(m_at);
        string.offsetInRecord = 4 + static_cast<std::uint32_t>(m_at);
        const auto count = take(2);
        auto unitSize = takeFlag();
        std::u16string units;
        if (count > 0) {
            EXPECT_GE(left(), unitSize) << "no unit in the record of the head";
        }
        while (units.size() < count) {
            if (left() < unitSize) {
                EXPECT_FALSE(!units.empty() && units.back() >= 0xD800 && units.back() < 0xDC00) << "pair is split";
                nextRecord();
                unitSize = takeFlag();
            }
            units.push_back(static_cast<char16_t>(take(unitSize)));
        }
        string.text = utf8Of(units);
        return string;
    }
    std::uint64_t take(std::size_t size)
    {
        const auto value = numberAt(m_records[m_index].data, m_at, size);
        m_at += size;
        return value;
    }

private:
    std::size_t left() const { return m_records[m_index].data.size() - m_at; }
    std::size_t takeFlag()
    {
        const auto flag = take(1);
        EXPECT_LE(flag, 1U);
        return flag == 1 ? 2 : 1;
    }
    void nextRecord()
    {
        ++m_index;
        m_at = 0;
        if (m_records.at(m_index).id != continueId) throw std::runtime_error("strings end too early");
    }

    const std::vector<Record>& m_records;
    std::size_t m_index;
    std::size_t m_at = 0;
};

std::string nameIn(const std::string& boundSheet)
{
    const auto length = numberAt(boundSheet, 6, 1);
    const std::size_t unitSize = boundSheet.at(7) == 0 ? 1 : 2;
    EXPECT_EQ(boundSheet.size(), 8 + length * unitSize);
    std::u16string units;
    for (std::size_t i = 0; i < length; ++i)
        units.push_back(static_cast<char16_t>(numberAt(boundSheet, 8 + i * unitSize, unitSize)));
    return utf8Of(units);
}

std::string printed(double value)
{
    char text[40];
    std::snprintf(text, sizeof text, "%.17g", value);
    return text;
}

std::string packedNumber(std::uint64_t rk)
{
    EXPECT_EQ(rk & 1, 0U) << "divided by 100";
    if ((rk & 2) != 0) return std::to_string(static_cast<std::int32_t>(rk) >> 2);
    return printed(std::bit_cast<double>(rk << 32));
}

void readCell(const Record& record, const std::vector<SharedString>& strings, ReadSheet& sheet)
{
    const auto& data = record.data;
    if (data.size() < 6) return;
    const auto row = static_cast<unsigned>(numberAt(data, 0, 2));
    auto column = static_cast<unsigned>(numberAt(data, 2, 2));
    const auto put = [&](std::string value) {
        EXPECT_TRUE(sheet.cells.emplace(std::pair(row, column), std::move(value)).second) << row << "," << column;
    };
    switch (record.id) {
    case 0xFD: return put("'" + strings.at(numberAt(data, 6, 4)).text + "'");
    case 0x203: return put(printed(std::bit_cast<double>(numberAt(data, 6, 8))));
    case 0x27E: return put(packedNumber(numberAt(data, 6, 4)));
    case 0x201: return put("blank");
    case 0x205: return put(data.substr(6) == std::string("\x24\x01") ? "#NUM!" : "error");
    case 0xBD:
        for (std::size_t at = 4; at + 2 < data.size(); at += 6, ++column)
            put(packedNumber(numberAt(data, at + 2, 4)));
        break;
    case 0xBE:
        for (std::size_t at = 4; at + 2 < data.size(); at += 2, ++column)
            put("blank");
        break;
    default: return;
    }
    EXPECT_EQ(numberAt(data, data.size() - 2, 2), column - 1) << "last column of a run";
}

} // namespace

std::uint64_t numberAt(std::string_view bytes, std::size_t offset, std::size_t size)
{
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < size; ++i)
        value |= std::uint64_t{static_cast<unsigned char>(bytes.at(offset + i))} << (8 * i);
    return value;
}

std::vector<Record> recordsOf(std::string_view stream)
{
    std::vector<Record> records;
    for (std::size_t at = 0; at < stream.size();) {
        const auto size = numberAt(stream, at + 2, 2);
        EXPECT_LE(size, 8224U);
        records.push_back({static_cast<std::uint32_t>(at), static_cast<std::uint16_t>(numberAt(stream, at, 2)),
            std::string(stream.substr(at + 4, size))});
        at += 4 + size;
        EXPECT_LE(at, stream.size());
    }
    return records;
}

std::vector<SharedString> sharedStringsOf(const std::vector<Record>& records)
{
    std::size_t first = 0;
    while (records.at(first).id != 0xFC)
        ++first;
    StringCursor cursor(records, first);
    cursor.take(4);
    const auto count = cursor.take(4);
    std::vector<SharedString> strings;
    while (strings.size() < count)
        strings.push_back(cursor.next());
    return strings;
}

std::vector<ReadSheet> sheetsOf(std::string_view stream)
{
    const auto records = recordsOf(stream);
    const auto strings = sharedStringsOf(records);
    std::map<std::uint32_t, std::size_t> sheetAt; // by the offset of its BOF
    std::vector<ReadSheet> sheets;
    for (const auto& record : records) {
        if (record.id != 0x85) continue;
        sheetAt[static_cast<std::uint32_t>(numberAt(record.data, 0, 4))] = sheets.size();
        sheets.push_back({nameIn(record.data), {}});
    }
    ReadSheet* current = nullptr;
    for (const auto& record : records) {
        const auto found = sheetAt.find(record.offset);
        if (found != sheetAt.end()) {
            EXPECT_EQ(record.id, 0x809);
            current = &sheets[found->second];
        }
        if (current != nullptr) readCell(record, strings, *current);
    }
    return sheets;
}

std::string workbookStreamOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    cfb::Storage storage({reinterpret_cast<const std::byte*>(bytes.data()), bytes.size()});
    storage.open();
    cfb::Stream stream(storage, "Workbook");
    std::string content(stream.size(), '\0');
    content.resize(stream.read({reinterpret_cast<std::byte*>(content.data()), content.size()}));
    return content;
}

} // namespace vellumo::test
