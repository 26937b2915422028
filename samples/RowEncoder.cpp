// SPDX-License-Identifier: MIT
#include "samples/RowEncoder.h"

#include "samples/TextCodec.h"
#include "text/Format.h"

#include <algorithm>

namespace vellumo::samples {
namespace {

const Value nullValue;

bool isNull(const Value& value) { return std::holds_alternative<std::monostate>(value); }

// Letters: days and units with 19 digits each.
void appendExtendedDate(Bytes& out, const ExtendedDate& date)
{
    constexpr std::size_t width = 19;
    for (const auto number : {date.days, date.units}) {
        const auto digits = std::to_string(number);
        appendText(out, std::string(width - std::min(width, digits.size()), '0') + digits + ":");
    }
    appendText(out, std::string("7\0", 2));
}

// Appends a value of a type whose form does not depend on the column; false for an alternative of another type.
bool appendPlainValue(Bytes& out, ColumnType type, const Value& value)
{
    const auto* const number = std::get_if<std::int64_t>(&value);
    switch (type) {
    case ColumnType::Byte:
        if (number == nullptr || *number < 0 || *number > 255) return false;
        out.push_back(static_cast<std::uint8_t>(*number));
        return true;
    case ColumnType::Integer:
        if (number == nullptr || *number != static_cast<std::int16_t>(*number)) return false;
        appendNumber<std::int16_t>(out, static_cast<std::int16_t>(*number));
        return true;
    case ColumnType::Long:
    case ColumnType::Complex:
        if (number == nullptr || *number != static_cast<std::int32_t>(*number)) return false;
        appendNumber<std::int32_t>(out, static_cast<std::int32_t>(*number));
        return true;
    case ColumnType::BigInt:
        if (number == nullptr) return false;
        appendNumber<std::int64_t>(out, *number);
        return true;
    case ColumnType::DateTimeExtended:
        if (const auto* const date = std::get_if<ExtendedDate>(&value)) {
            appendExtendedDate(out, *date);
            return true;
        }
        return false;
    case ColumnType::Currency:
        if (const auto* const amount = std::get_if<Currency>(&value)) {
            appendNumber<std::int64_t>(out, amount->tenThousandths);
            return true;
        }
        return false;
    case ColumnType::Single:
        if (const auto* const single = std::get_if<float>(&value)) {
            appendSingle(out, *single);
            return true;
        }
        return false;
    case ColumnType::Double:
        if (const auto* const real = std::get_if<double>(&value)) {
            appendDouble(out, *real);
            return true;
        }
        return false;
    case ColumnType::DateTime:
        if (const auto* const date = std::get_if<Date>(&value)) {
            appendDouble(out, date->days);
            return true;
        }
        return false;
    default: return false;
    }
}

// The first three groups of the text form are numbers, stored low byte first.
void appendGuid(Bytes& out, const Guid& guid)
{
    for (const int index : {3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15})
        out.push_back(guid.bytes[static_cast<std::size_t>(index)]);
}

void appendNumeric(Bytes& out, const Numeric& numeric)
{
    out.push_back(numeric.negative ? 0x80 : 0);
    for (const auto word : numeric.magnitude)
        appendNumber<std::uint32_t>(out, word);
}

// Fixed texts are padded with blanks, everything else with zeros.
void padTo(Bytes& out, std::size_t end, const ColumnDescription& column, JetVersion version)
{
    const bool isText = column.type == ColumnType::Text;
    const bool isWide = isText && version == JetVersion::Jet4;
    while (out.size() < end) {
        out.push_back(isText ? ' ' : 0);
        if (isWide) out.push_back(0);
    }
}

} // namespace

RowEncoder::RowEncoder(const TableDescription& table, const TableShape& shape, JetVersion version,
    std::map<std::size_t, LongValues>& longValues)
    : m_table(table)
    , m_shape(shape)
    , m_version(version)
    , m_longValues(longValues)
{
}

ByteSpan RowEncoder::encode(const Row& row)
{
    const int columnCount = row.columnCount == 0 ? m_shape.columnCount : row.columnCount;
    if (columnCount < 0 || columnCount > m_shape.columnCount || row.slack < 0) {
        m_error = localizedFormat("A row of table <%@> states an impossible size.", {m_table.name});
        return {};
    }
    startRow(columnCount);
    if (!encodeFixed(row, columnCount) || !encodeVariable(row, columnCount)) return {};
    if (!m_offsets.empty()) { // the table had variable columns when the row was written
        const auto valuesEnd = m_row.size();
        m_row.resize(valuesEnd + static_cast<std::size_t>(row.slack));
        appendTrailer(valuesEnd);
    }
    appendBytes(m_row, m_mask);
    if (m_row.size() > RowPages::capacity(m_version)) {
        m_error = localizedFormat("A row of table <%@> is longer than a page.", {m_table.name});
        return {};
    }
    return m_row;
}

const Value& RowEncoder::valueOf(const Row& row, std::size_t column) const
{
    return column < row.values.size() ? row.values[column] : nullValue;
}

void RowEncoder::startRow(int columnCount)
{
    m_row.clear();
    m_offsets.clear();
    m_encodedLongValues.clear();
    m_row.push_back(static_cast<std::uint8_t>(columnCount));
    if (m_version == JetVersion::Jet4) m_row.push_back(0);
    m_mask.assign((static_cast<std::size_t>(columnCount) + 7) / 8, 0);
}

bool RowEncoder::encodeFixed(const Row& row, int columnCount)
{
    const auto start = m_row.size();
    for (const auto index : m_shape.numberOrder) {
        const auto& place = m_shape.places[index];
        if (!place.isFixed || place.number >= columnCount) continue;
        const auto& value = valueOf(row, index);
        if (m_table.columns[index].type == ColumnType::Boolean) {
            const auto* const flag = std::get_if<bool>(&value);
            if (flag == nullptr && !isNull(value)) return fail(index);
            if (flag != nullptr && *flag) setMask(place.number);
            continue;
        }
        const auto end = start + place.fixedOffset + place.size;
        if (isNull(value)) {
            m_row.resize(end);
            continue;
        }
        if (!appendValue(index, value) || m_row.size() > end) return fail(index);
        padTo(m_row, end, m_table.columns[index], m_version);
        setMask(place.number);
    }
    return true;
}

bool RowEncoder::encodeVariable(const Row& row, int columnCount)
{
    for (const auto index : m_shape.numberOrder) {
        const auto& place = m_shape.places[index];
        if (place.isFixed || place.number >= columnCount) continue;
        m_offsets.push_back(m_row.size());
        const auto& value = valueOf(row, index);
        const bool isCalculated = m_table.columns[index].calculated;
        if (isNull(value) && !isCalculated) continue;
        if (!(isCalculated ? appendCalculated(index, value) : appendValue(index, value))) return fail(index);
        setMask(place.number);
    }
    return true;
}

void RowEncoder::appendTrailer(std::size_t valuesEnd)
{
    if (m_version == JetVersion::Jet4) {
        appendNumber<std::uint16_t>(m_row, static_cast<std::uint16_t>(valuesEnd));
        for (auto at = m_offsets.rbegin(); at != m_offsets.rend(); ++at)
            appendNumber<std::uint16_t>(m_row, static_cast<std::uint16_t>(*at));
        appendNumber<std::uint16_t>(m_row, static_cast<std::uint16_t>(m_offsets.size()));
        return;
    }
    m_row.push_back(static_cast<std::uint8_t>(valuesEnd & 0xFF));
    for (auto at = m_offsets.rbegin(); at != m_offsets.rend(); ++at)
        m_row.push_back(static_cast<std::uint8_t>(*at & 0xFF));
    appendJumps(valuesEnd, 1 + m_mask.size());
    m_row.push_back(static_cast<std::uint8_t>(m_offsets.size()));
}

// Jump k, counted from the back, is the first value whose offset is 256 * (k + 1) or more. There is one for every 256
// bytes of the row, the jumps themselves included.
void RowEncoder::appendJumps(std::size_t valuesEnd, std::size_t trailerSize)
{
    const auto bare = m_row.size() + trailerSize;
    std::size_t count = 0;
    while ((bare + count - 1) / 256 > count)
        ++count;
    for (auto jump = count; jump > 0; --jump) {
        const auto found = std::lower_bound(m_offsets.begin(), m_offsets.end(), 256 * jump);
        const bool isPassed = found != m_offsets.end() || valuesEnd >= 256 * jump;
        m_row.push_back(isPassed ? static_cast<std::uint8_t>(found - m_offsets.begin()) : 0xFF);
    }
}

bool RowEncoder::appendValue(std::size_t column, const Value& value)
{
    const auto& description = m_table.columns[column];
    switch (description.type) {
    case ColumnType::Binary:
        if (const auto* const bytes = std::get_if<Bytes>(&value)) {
            appendBytes(m_row, *bytes);
            return true;
        }
        return false;
    case ColumnType::Text:
        if (const auto* const bytes = std::get_if<Bytes>(&value)) {
            appendBytes(m_row, *bytes);
            return true;
        }
        if (const auto* const text = std::get_if<std::string>(&value))
            return appendTextValue(description, *text, m_row);
        return false;
    case ColumnType::Ole:
    case ColumnType::Memo: return appendLongValue(column, value);
    case ColumnType::Guid:
        if (const auto* const guid = std::get_if<Guid>(&value)) {
            appendGuid(m_row, *guid);
            return true;
        }
        return false;
    case ColumnType::Numeric:
        if (const auto* const numeric = std::get_if<Numeric>(&value)) {
            appendNumeric(m_row, *numeric);
            return true;
        }
        return false;
    default: return appendPlainValue(m_row, description.type, value);
    }
}

// 16 bytes, u32 length, value, 3 bytes; null has no value, but the wrapper all the same. A memo keeps the whole of it
// where memos are kept.
bool RowEncoder::appendCalculated(std::size_t column, const Value& value)
{
    const auto& description = m_table.columns[column];
    Bytes result;
    if (!isNull(value) && !appendResult(description, value, result)) return false;
    Bytes wrapped(16);
    appendNumber<std::uint32_t>(wrapped, static_cast<std::uint32_t>(result.size()));
    appendBytes(wrapped, result);
    wrapped.resize(wrapped.size() + 3);
    if (description.type == ColumnType::Memo) return appendLongValue(column, wrapped);
    appendBytes(m_row, wrapped);
    return true;
}

bool RowEncoder::appendResult(const ColumnDescription& column, const Value& value, Bytes& out) const
{
    if (const auto* const text = std::get_if<std::string>(&value)) return appendTextValue(column, *text, out);
    if (const auto* const flag = std::get_if<bool>(&value)) {
        out.push_back(*flag ? 0xFF : 0);
        return true;
    }
    const auto* const numeric = std::get_if<Numeric>(&value);
    if (numeric == nullptr) return appendPlainValue(out, column.type, value);
    // u16 type, u8 scale, u8 sign, u32 high, u64 low.
    appendNumber<std::uint16_t>(out, 14);
    out.push_back(static_cast<std::uint8_t>(column.scale));
    out.push_back(numeric->negative ? 0x80 : 0);
    for (const auto word : {1, 3, 2})
        appendNumber<std::uint32_t>(out, numeric->magnitude[static_cast<std::size_t>(word)]);
    return true;
}

bool RowEncoder::appendLongValue(std::size_t column, const Value& value)
{
    const auto* const placed = std::get_if<LongValue>(&value);
    const auto* text = std::get_if<std::string>(&value);
    const auto* bytes = std::get_if<Bytes>(&value);
    if (placed != nullptr) {
        text = std::get_if<std::string>(&placed->content);
        bytes = std::get_if<Bytes>(&placed->content);
    }
    if (text != nullptr) {
        if (m_table.columns[column].type != ColumnType::Memo) return false;
        m_text.clear();
        if (!appendTextValue(m_table.columns[column], *text, m_text)) return false;
        bytes = &m_text;
    }
    if (bytes == nullptr) return false;
    auto& stored = m_encodedLongValues.emplace_back();
    stored.column = column;
    stored.headerOffset = m_row.size();
    return m_longValues.at(column).store(*bytes, placed != nullptr ? placed->storage : LongStorage::BySize,
        placed != nullptr ? placed->linkSize : 0, m_row, stored.pieces);
}

bool RowEncoder::appendTextValue(const ColumnDescription& column, const std::string& text, Bytes& out) const
{
    const bool mayCompress = column.compressed && m_version == JetVersion::Jet4 && column.placement != Placement::Fixed;
    if (mayCompress) {
        const auto units = toUtf16(text);
        const auto compressed = units ? compressText(*units) : std::nullopt;
        if (compressed) {
            appendBytes(out, *compressed);
            return true;
        }
    }
    const auto encoded = encodeText(text, m_version);
    if (!encoded) return false;
    appendBytes(out, *encoded);
    return true;
}

bool RowEncoder::fail(std::size_t column)
{
    m_error = localizedFormat(
        "A value of column <%@> in table <%@> cannot be stored.", {m_table.columns[column].name, m_table.name});
    return false;
}

} // namespace vellumo::samples
