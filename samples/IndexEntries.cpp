// SPDX-License-Identifier: MIT
#include "samples/IndexEntries.h"

#include <algorithm>

namespace vellumo::samples {
namespace {

const Value nullValue;

constexpr std::uint8_t signBit = 0x80;
constexpr std::uint8_t mark = 0x7F; // of a value that is not null; its complement in a descending column

template <std::unsigned_integral T> void appendHighFirst(Bytes& out, T number)
{
    for (std::size_t i = sizeof(T); i-- > 0;)
        out.push_back(static_cast<std::uint8_t>(number >> (8 * i)));
}

// Numbers of fixed size: the sign bit is turned over, so that negative ones come first.
template <std::signed_integral T> void appendWhole(Bytes& out, T number)
{
    const auto at = out.size();
    appendHighFirst(out, static_cast<std::make_unsigned_t<T>>(number));
    out[at] ^= signBit;
}

// Of negative ones all bits are turned over, since a greater magnitude comes first.
template <std::unsigned_integral T> void appendReal(Bytes& out, T bits)
{
    constexpr T sign = T{1} << (8 * sizeof(T) - 1);
    appendHighFirst(out, (bits & sign) != 0 ? static_cast<T>(~bits) : static_cast<T>(bits | sign));
}

// What the general sort order weighs digits and letters with; upper and lower case weigh the same.
constexpr std::uint8_t jet3Weights[] = {0x56, 0x57, 0x58, 0x59, 0x5A, 0x5B, 0x5C, 0x5D, 0x5E, 0x5F, //
    0x60, 0x61, 0x62, 0x64, 0x66, 0x67, 0x68, 0x69, 0x6A, 0x6B, 0x6C, 0x6D, 0x6F, 0x70, 0x72, 0x73, 0x74, 0x75, 0x76,
    0x77, 0x78, 0x7A, 0x7B, 0x7C, 0x7D, 0x7E};
constexpr std::uint8_t jet4Weights[] = {0x36, 0x38, 0x3A, 0x3C, 0x3E, 0x40, 0x42, 0x44, 0x46, 0x48, //
    0x4A, 0x4C, 0x4D, 0x4F, 0x51, 0x53, 0x55, 0x57, 0x59, 0x5B, 0x5C, 0x5E, 0x60, 0x62, 0x64, 0x66, 0x68, 0x69, 0x6B,
    0x6D, 0x6F, 0x71, 0x73, 0x75, 0x76, 0x78};

bool appendText(Bytes& out, const std::string& text, JetVersion version)
{
    const auto* const weights = version == JetVersion::Jet3 ? jet3Weights : jet4Weights;
    for (const char character : text) {
        const auto lower = static_cast<char>(character | 0x20);
        if (character >= '0' && character <= '9')
            out.push_back(weights[character - '0']);
        else if (lower >= 'a' && lower <= 'z')
            out.push_back(weights[10 + lower - 'a']);
        else
            return false;
    }
    if (version == JetVersion::Jet4) out.push_back(1);
    out.push_back(0);
    return true;
}

bool appendNumber(Bytes& out, ColumnType type, std::int64_t number)
{
    switch (type) {
    case ColumnType::Byte: out.push_back(static_cast<std::uint8_t>(number)); return true;
    case ColumnType::Integer: appendWhole(out, static_cast<std::int16_t>(number)); return true;
    case ColumnType::Complex:
    case ColumnType::Long: appendWhole(out, static_cast<std::int32_t>(number)); return true;
    default: return false;
    }
}

// Everything behind the mark, as in an ascending column; false when it is not known here.
bool appendValue(Bytes& out, ColumnType type, const Value& value, JetVersion version)
{
    if (const auto* const number = std::get_if<std::int64_t>(&value)) return appendNumber(out, type, *number);
    if (const auto* const text = std::get_if<std::string>(&value))
        return type == ColumnType::Text && appendText(out, *text, version);
    if (const auto* const flag = std::get_if<bool>(&value))
        out.push_back(*flag ? 0 : 0xFF);
    else if (const auto* const amount = std::get_if<Currency>(&value))
        appendWhole(out, amount->tenThousandths);
    else if (const auto* const single = std::get_if<float>(&value))
        appendReal(out, std::bit_cast<std::uint32_t>(*single));
    else if (const auto* const real = std::get_if<double>(&value))
        appendReal(out, std::bit_cast<std::uint64_t>(*real));
    else if (const auto* const date = std::get_if<Date>(&value))
        appendReal(out, std::bit_cast<std::uint64_t>(date->days));
    else
        return false;
    return true;
}

bool isNull(const Value& value) { return std::holds_alternative<std::monostate>(value); }

} // namespace

void IndexEntries::add(const Row& row, const RowPlace& place)
{
    if (m_isLeftEmpty || isLeftOut(row)) return;
    Bytes entry;
    if (!appendKey(entry, row)) {
        m_isLeftEmpty = true;
        m_entries.clear();
        return;
    }
    appendHighFirst(entry, place.pointer());
    m_entries.push_back(std::move(entry));
}

std::vector<Bytes> IndexEntries::take()
{
    std::sort(m_entries.begin(), m_entries.end());
    return std::move(m_entries);
}

// A column that was added after the row was written is null in it.
const Value& IndexEntries::valueOf(const Row& row, std::size_t column) const
{
    const bool isKnown = row.columnCount == 0 || m_shape.places[column].number < row.columnCount;
    return isKnown && column < row.values.size() ? row.values[column] : nullValue;
}

bool IndexEntries::isLeftOut(const Row& row) const
{
    if ((m_index.flags & PhysicalIndex::IgnoreNulls) == 0) return false;
    return std::all_of(m_index.keys.begin(), m_index.keys.end(),
        [&](const IndexKey& key) { return isNull(valueOf(row, columnWithNumber(m_shape, key.columnNumber))); });
}

bool IndexEntries::appendKey(Bytes& entry, const Row& row) const
{
    for (const auto& key : m_index.keys) {
        const auto column = columnWithNumber(m_shape, key.columnNumber);
        const auto type = m_table.columns[column].type;
        if (type == ColumnType::Text && !key.ascending) return false;
        const auto start = entry.size();
        const Value& value = valueOf(row, column);
        if (!isNull(value) || type == ColumnType::Boolean) { // a boolean is never null
            entry.push_back(mark);
            if (!appendValue(entry, type, isNull(value) ? Value(false) : value, m_version)) return false;
        } else {
            entry.push_back(0);
        }
        if (key.ascending) continue;
        for (auto at = start; at < entry.size(); ++at)
            entry[at] = static_cast<std::uint8_t>(~entry[at]);
    }
    return true;
}

} // namespace vellumo::samples
