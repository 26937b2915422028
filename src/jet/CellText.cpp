// SPDX-License-Identifier: MIT
#include "jet/CellText.h"

#include "jet/ByteReader.h"
#include "jet/UnicodeText.h"
#include "text/Format.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cmath>
#include <optional>

namespace vellumo::jet {

namespace {

__extension__ using Magnitude = unsigned __int128;

constexpr std::size_t longestNumber = 48; // characters of any number, date or GUID text

// Lets `write` put at most longestNumber characters and commits them. `write` returns the end of what it wrote.
template <typename Write> void appendShort(TextColumnBuilder& out, Write write)
{
    auto* start = out.room(longestNumber);
    out.commit(static_cast<std::size_t>(write(start) - start));
}

template <typename T> bool appendInteger(ByteSpan stored, TextColumnBuilder& out)
{
    appendShort(
        out, [&](char* to) { return std::to_chars(to, to + longestNumber, +loadNumber<T>(stored.data())).ptr; });
    return true;
}

// Exactly `width` digits of `value`, zeros in front.
char* putDigits(char* to, std::uint64_t value, int width)
{
    for (int i = width - 1; i >= 0; --i) {
        to[i] = static_cast<char>('0' + value % 10);
        value /= 10;
    }
    return to + width;
}

bool appendCurrency(ByteSpan stored, TextColumnBuilder& out)
{
    const auto scaled = loadNumber<std::int64_t>(stored.data());
    const auto magnitude = scaled < 0 ? 0 - static_cast<std::uint64_t>(scaled) : static_cast<std::uint64_t>(scaled);
    appendShort(out, [&](char* to) {
        if (scaled < 0) *to++ = '-';
        to = std::to_chars(to, to + longestNumber, magnitude / 10000).ptr;
        *to++ = '.';
        return putDigits(to, magnitude % 10000, 4);
    });
    return true;
}

// Rewrites "d.ddde+XX" (any number of digits) in the notation of %.<precision>g: without an exponent where that is
// from -4 to precision - 1. The digits stay as they are.
char* putGeneral(char* to, const char* first, const char* last, int precision)
{
    if (*first == '-') *to++ = *first++;
    const auto* e = std::find(first, last, 'e');
    int exponent = 0;
    std::from_chars(e + (e[1] == '+' ? 2 : 1), last, exponent);
    if (exponent < -4 || exponent >= precision) return std::copy(first, last, to);
    const auto fraction = e - first > 1 ? e - first - 2 : 0; // digits behind the point
    const auto* digits = first + 2;
    if (exponent < 0) {
        to = std::copy_n("0.0000", 1 - exponent, to);
        *to++ = *first;
        return std::copy_n(digits, fraction, to);
    }
    *to++ = *first;
    const auto whole = std::min<std::ptrdiff_t>(fraction, exponent);
    to = std::copy_n(digits, whole, to);
    to = std::fill_n(to, exponent - whole, '0');
    if (fraction <= exponent) return to;
    *to++ = '.';
    return std::copy_n(digits + whole, fraction - whole, to);
}

template <typename T, int precision> bool appendFloating(ByteSpan stored, TextColumnBuilder& out)
{
    const auto value = loadNumber<T>(stored.data());
    if (!std::isfinite(value)) {
        out.append(std::isnan(value) ? "nan" : value < 0 ? "-inf" : "inf");
        return true;
    }
    char scientific[longestNumber];
    const auto* end = std::to_chars(scientific, scientific + longestNumber, value, std::chars_format::scientific).ptr;
    appendShort(out, [&](char* to) { return putGeneral(to, scientific, end, precision); });
    return true;
}

constexpr int secondsPerDay = 86400;

// The text has whole seconds only; what a value is beyond the one of its text, to the millisecond, is noted.
void noteFraction(double timeOfDay, int second, TextColumnBuilder& out)
{
    if (std::abs(timeOfDay * secondsPerDay - second) < 0.0005) return;
    const auto milliseconds = static_cast<int>(std::llround(timeOfDay * (secondsPerDay * 1000.0))) - second * 1000;
    if (milliseconds != 0) out.note(std::min(milliseconds, 999));
}

char* putDate(char* to, std::chrono::sys_days day)
{
    const std::chrono::year_month_day date(day);
    to = putDigits(to, static_cast<unsigned>(date.month()), 2);
    *to++ = '/';
    to = putDigits(to, static_cast<unsigned>(date.day()), 2);
    *to++ = '/';
    return putDigits(to, static_cast<unsigned>(static_cast<int>(date.year())), 4);
}

char* putTime(char* to, unsigned second)
{
    to = putDigits(to, second / 3600, 2);
    *to++ = ':';
    to = putDigits(to, second / 60 % 60, 2);
    *to++ = ':';
    return putDigits(to, second % 60, 2);
}

// Days since 1899-12-30 and a time of day: before that day the whole part is negative while the time still counts
// forward from midnight.
bool appendDate(ByteSpan stored, TextColumnBuilder& out)
{
    constexpr double firstDay = -657434; // 0100-01-01
    constexpr double lastDay = 2958465;  // 9999-12-31
    const auto value = loadNumber<double>(stored.data());
    auto day = std::trunc(value);
    if (!(day >= firstDay && day <= lastDay)) {
        out.append(replacementCharacter);
        return false;
    }
    const auto timeOfDay = std::abs(value - day);
    auto second = static_cast<int>(std::lround(timeOfDay * secondsPerDay));
    // The last half second of a day belongs to the next one; behind the last day there is none.
    if (second == secondsPerDay && day == lastDay) --second;
    noteFraction(timeOfDay, second, out);
    if (second == secondsPerDay) {
        second = 0;
        ++day;
    }
    constexpr std::chrono::sys_days origin = std::chrono::year(1899) / 12 / 30;
    appendShort(out, [&](char* to) {
        to = putDate(to, origin + std::chrono::days(static_cast<int>(day)));
        *to++ = ' ';
        return putTime(to, static_cast<unsigned>(second));
    });
    return true;
}

// Exactly 19 digits; nullopt for anything else, and beyond `most`.
std::optional<std::uint64_t> longNumber(ByteSpan digits, std::uint64_t most)
{
    std::uint64_t number = 0; // 19 digits fit
    for (const auto digit : digits) {
        if (digit < '0' || digit > '9') return std::nullopt;
        number = number * 10 + (digit - unsigned{'0'});
    }
    return number <= most ? std::optional(number) : std::nullopt;
}

// In letters: 19 digits of days since 0001-01-01, ":", 19 digits of 100 ns of the day, ":7", NUL.
bool appendExtendedDate(ByteSpan stored, TextColumnBuilder& out)
{
    constexpr std::size_t digits = 19;
    constexpr std::uint64_t lastDay = 3652058; // 9999-12-31
    constexpr std::uint64_t unitsPerSecond = 10'000'000;
    constexpr std::uint64_t lastUnit = 86400 * unitsPerSecond - 1;
    const auto day = longNumber(stored.first(digits), lastDay);
    const auto unit = longNumber(stored.subspan(digits + 1, digits), lastUnit);
    constexpr std::string_view end(":7");
    if (!day || !unit || stored[digits] != ':'
        || !std::ranges::equal(stored.subspan(2 * digits + 1, end.size()), end)) {
        out.append(replacementCharacter);
        return false;
    }
    constexpr std::chrono::sys_days origin = std::chrono::year(1) / 1 / 1;
    appendShort(out, [&](char* to) {
        to = putDate(to, origin + std::chrono::days(static_cast<int>(*day)));
        *to++ = ' ';
        to = putTime(to, static_cast<unsigned>(*unit / unitsPerSecond));
        *to++ = '.';
        return putDigits(to, *unit % unitsPerSecond, 7);
    });
    return true;
}

bool appendBinary(ByteSpan stored, TextColumnBuilder& out)
{
    const auto length = toHex(nullptr, 0, stored.data(), stored.size());
    out.commit(toHex(out.room(length), length, stored.data(), stored.size()));
    return true;
}

// Two groups of the sixteen bytes are little-endian numbers, the rest stands as written.
bool appendGuid(ByteSpan stored, TextColumnBuilder& out)
{
    constexpr int order[] = {3, 2, 1, 0, -1, 5, 4, -1, 7, 6, -1, 8, 9, -1, 10, 11, 12, 13, 14, 15};
    constexpr char digits[] = "0123456789ABCDEF";
    appendShort(out, [&](char* to) {
        *to++ = '{';
        for (const auto byte : order) {
            if (byte < 0) {
                *to++ = '-';
                continue;
            }
            *to++ = digits[stored[static_cast<std::size_t>(byte)] >> 4];
            *to++ = digits[stored[static_cast<std::size_t>(byte)] & 15];
        }
        *to++ = '}';
        return to;
    });
    return true;
}

// `scale` decimals.
void appendDecimal(bool isNegative, Magnitude magnitude, int scale, TextColumnBuilder& out)
{
    // 2^128 has 39 digits; a scale above 28 is damage, and needs no more zeros than fit.
    constexpr int mostDigits = 40;
    scale = std::min(scale, mostDigits - 1);
    char digits[mostDigits];
    int count = 0;
    while (magnitude != 0 || count <= scale) {
        digits[mostDigits - ++count] = static_cast<char>('0' + static_cast<int>(magnitude % 10));
        magnitude /= 10;
    }
    const auto* first = digits + mostDigits - count;
    appendShort(out, [&](char* to) {
        if (isNegative) *to++ = '-';
        to = std::copy_n(first, count - scale, to);
        if (scale == 0) return to;
        *to++ = '.';
        return std::copy_n(first + count - scale, scale, to);
    });
}

// A sign byte, then a 128-bit magnitude as four 32-bit words, the most significant first, each little-endian.
void appendNumeric(const ColumnDef& column, ByteSpan stored, TextColumnBuilder& out)
{
    Magnitude magnitude = 0;
    for (std::size_t word = 0; word < 4; ++word)
        magnitude = magnitude << 32 | load32(&stored[1 + 4 * word]);
    appendDecimal(stored[0] != 0, magnitude, column.scale, out);
}

// The result of a calculation: u16, u8 scale, u8 sign, u32 high and u64 low part of a 96-bit magnitude.
bool appendCalculatedNumeric(ByteSpan stored, TextColumnBuilder& out)
{
    constexpr int mostScale = 28;
    const int scale = stored[2];
    if (scale > mostScale) {
        out.append(replacementCharacter);
        return false;
    }
    const auto magnitude = Magnitude{load32(&stored[4])} << 64 | loadNumber<std::uint64_t>(&stored[8]);
    appendDecimal(stored[3] != 0, magnitude, scale, out);
    return true;
}

bool appendCalculatedBoolean(ByteSpan stored, TextColumnBuilder& out)
{
    out.append(stored[0] != 0 ? "1" : "0");
    return true;
}

// A value of at least `size` bytes, which `append` needs.
template <std::size_t size, auto append>
bool appendSized(const ColumnDef&, ByteSpan stored, const TextRules&, TextColumnBuilder& out)
{
    if (stored.size() < size) {
        out.append(replacementCharacter);
        return false;
    }
    return append(stored, out);
}

bool appendNumericCell(const ColumnDef& column, ByteSpan stored, const TextRules&, TextColumnBuilder& out)
{
    constexpr std::size_t size = 17;
    if (stored.size() < size) {
        out.append(replacementCharacter);
        return false;
    }
    appendNumeric(column, stored, out);
    return true;
}

bool appendTextCell(const ColumnDef&, ByteSpan stored, const TextRules& rules, TextColumnBuilder& out)
{
    return appendStoredText(stored, rules, out);
}

} // namespace

bool appendStoredText(ByteSpan stored, const TextRules& rules, TextColumnBuilder& out)
{
    if (!rules.isJet3) return appendJet4Text(stored, out);
    rules.codePage->append(stored, out);
    return true;
}

CellAppender::CellAppender(const ColumnDef& column, const TextRules& rules)
    : m_column(column)
    , m_rules(rules)
    , m_append(appendFor(column))
{
}

CellAppender::Append CellAppender::appendFor(const ColumnDef& column)
{
    if (column.isWrapped && column.type == ColumnType::Boolean) return appendSized<1, appendCalculatedBoolean>;
    if (column.isWrapped && column.type == ColumnType::Numeric) return appendSized<16, appendCalculatedNumeric>;
    return appendFor(column.type);
}

CellAppender::Append CellAppender::appendFor(ColumnType type)
{
    switch (type) {
    case ColumnType::Byte: return appendSized<1, appendInteger<std::uint8_t>>;
    case ColumnType::Integer: return appendSized<2, appendInteger<std::int16_t>>;
    case ColumnType::LongInteger:
    case ColumnType::ComplexAutoNumber: return appendSized<4, appendInteger<std::int32_t>>;
    case ColumnType::Currency: return appendSized<8, appendCurrency>;
    case ColumnType::Single: return appendSized<4, appendFloating<float, 8>>;
    case ColumnType::Double: return appendSized<8, appendFloating<double, 16>>;
    case ColumnType::DateTime: return appendSized<8, appendDate>;
    case ColumnType::BigInt: return appendSized<8, appendInteger<std::int64_t>>;
    case ColumnType::DateTimeExtended: return appendSized<41, appendExtendedDate>;
    case ColumnType::Text: return appendTextCell;
    case ColumnType::ReplicationId: return appendSized<16, appendGuid>;
    case ColumnType::Numeric: return appendNumericCell;
    // Binary, and whatever type a newer program may have left behind: no byte is lost.
    default: return appendSized<0, appendBinary>;
    }
}

} // namespace vellumo::jet
