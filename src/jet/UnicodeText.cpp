// SPDX-License-Identifier: MIT
#include "jet/UnicodeText.h"

#include "jet/ByteReader.h"

#include <algorithm>
#include <cstring>
#include <iconv.h>
#include <memory>
#include <utility>

namespace vellumo::jet {

namespace {

constexpr std::uint32_t replacement = 0xFFFD;

char* putUtf8(char* out, std::uint32_t character)
{
    const auto put = [&out](std::uint32_t byte) { *out++ = static_cast<char>(byte); };
    if (character < 0x80) {
        put(character);
    } else if (character < 0x800) {
        put(0xC0 | character >> 6);
        put(0x80 | (character & 0x3F));
    } else if (character < 0x10000) {
        put(0xE0 | character >> 12);
        put(0x80 | (character >> 6 & 0x3F));
        put(0x80 | (character & 0x3F));
    } else {
        put(0xF0 | character >> 18);
        put(0x80 | (character >> 12 & 0x3F));
        put(0x80 | (character >> 6 & 0x3F));
        put(0x80 | (character & 0x3F));
    }
    return out;
}

// Joins UTF-16 units to characters. Writes at most 3 bytes a unit. A zero becomes U+FFFD unless it is to be kept.
class UnitDecoder {
public:
    explicit UnitDecoder(char* out, bool keepsZeros = false)
        : m_out(out)
        , m_zero(keepsZeros ? 0 : replacement)
    {
    }
    void add(std::uint32_t unit)
    {
        if (m_high != 0) {
            const auto high = std::exchange(m_high, 0);
            if (unit >= 0xDC00 && unit < 0xE000) {
                m_out = putUtf8(m_out, 0x10000 + ((high - 0xD800) << 10) + (unit - 0xDC00));
                return;
            }
            m_out = putUtf8(m_out, replacement);
        }
        if (unit >= 0xD800 && unit < 0xDC00) {
            m_high = unit;
            return;
        }
        if (unit == 0) {
            m_hasZeros = true;
            m_out = putUtf8(m_out, m_zero);
            return;
        }
        m_out = putUtf8(m_out, unit >= 0xDC00 && unit < 0xE000 ? replacement : unit);
    }
    [[nodiscard]] bool hasZeros() const { return m_hasZeros; }
    [[nodiscard]] char* finish()
    {
        if (m_high != 0) m_out = putUtf8(m_out, replacement);
        m_high = 0;
        return m_out;
    }

private:
    char* m_out;
    std::uint32_t m_zero;
    bool m_hasZeros = false;
    std::uint32_t m_high = 0; // a high surrogate that waits for its other half
};

bool isPlainAscii(std::uint64_t fourUnits)
{
    constexpr std::uint64_t ones = 0x0001000100010001;
    const bool isAscii = (fourUnits & 0xFF80FF80FF80FF80) == 0;
    const bool hasZero = ((fourUnits - ones) & ~fourUnits & 0x8000800080008000) != 0;
    return isAscii && !hasZero;
}

// Copies the units of `stored` from the front while they are plain ASCII; returns how many.
std::size_t copyAsciiUnits(std::span<const std::uint8_t> stored, char* out)
{
    std::size_t unit = 0;
    const auto count = stored.size() / 2;
    for (; count - unit >= 4; unit += 4) {
        const auto four = loadNumber<std::uint64_t>(&stored[2 * unit]);
        if (!isPlainAscii(four)) break;
        out[unit] = static_cast<char>(four);
        out[unit + 1] = static_cast<char>(four >> 16);
        out[unit + 2] = static_cast<char>(four >> 32);
        out[unit + 3] = static_cast<char>(four >> 48);
    }
    return unit;
}

void decodeUnits(std::span<const std::uint8_t> stored, UnitDecoder& decoder)
{
    for (std::size_t i = 0; stored.size() - i >= 2; i += 2)
        decoder.add(load16(&stored[i]));
}

// The whole text, for the notes.
std::string textWithZeros(std::span<const std::uint8_t> units)
{
    std::string text(3 * (units.size() / 2), '\0');
    UnitDecoder decoder(text.data(), true);
    decodeUnits(units, decoder);
    text.resize(static_cast<std::size_t>(decoder.finish() - text.data()));
    return text;
}

// Without the zero units at the end, whose number is noted.
std::span<const std::uint8_t> withoutZerosBehind(std::span<const std::uint8_t> stored, TextColumnBuilder& out)
{
    std::size_t zeros = 0;
    for (; !stored.empty() && load16(&stored[stored.size() - 2]) == 0; ++zeros)
        stored = stored.first(stored.size() - 2);
    if (zeros > 0) out.noteZerosBehind(zeros);
    return stored;
}

bool appendUtf16(std::span<const std::uint8_t> stored, TextColumnBuilder& out)
{
    const bool isWhole = stored.size() % 2 == 0;
    const auto units = stored.first(stored.size() / 2 * 2);
    stored = isWhole ? withoutZerosBehind(units, out) : units;
    auto* start = out.room(3 * (stored.size() / 2) + 6);
    const auto copied = copyAsciiUnits(stored, start);
    UnitDecoder decoder(start + copied);
    decodeUnits(stored.subspan(2 * copied), decoder);
    auto* end = decoder.finish();
    if (!isWhole) end = putUtf8(end, replacement);
    out.commit(static_cast<std::size_t>(end - start));
    if (isWhole && decoder.hasZeros()) out.noteWholeText(textWithZeros(units));
    return isWhole;
}

bool isPlainAscii(std::span<const std::uint8_t> bytes)
{
    std::size_t i = 0;
    for (; bytes.size() - i >= 8; i += 8) {
        const auto eight = loadNumber<std::uint64_t>(&bytes[i]);
        constexpr std::uint64_t highBits = 0x8080808080808080;
        constexpr std::uint64_t ones = 0x0101010101010101;
        if (((eight | ((eight - ones) & ~eight)) & highBits) != 0) return false;
    }
    for (; i < bytes.size(); ++i)
        if (bytes[i] == 0 || bytes[i] >= 0x80) return false;
    return true;
}

// One byte a character, U+0001..U+00FF; a zero byte switches to two bytes a character and back, and so is never part of
// one.
bool appendCompressed(std::span<const std::uint8_t> stored, TextColumnBuilder& out)
{
    if (isPlainAscii(stored)) {
        out.append({reinterpret_cast<const char*>(stored.data()), stored.size()});
        return true;
    }
    auto* start = out.room(3 * stored.size() + 3);
    UnitDecoder decoder(start);
    bool isOneByte = true;
    bool isWhole = true;
    std::size_t i = 0;
    while (i < stored.size()) {
        if (stored[i] == 0) {
            isOneByte = !isOneByte;
            ++i;
        } else if (isOneByte) {
            decoder.add(stored[i++]);
        } else if (stored.size() - i >= 2) {
            decoder.add(load16(&stored[i]));
            i += 2;
        } else {
            decoder.add(replacement);
            isWhole = false;
            ++i;
        }
    }
    out.commit(static_cast<std::size_t>(decoder.finish() - start));
    return isWhole;
}

// The number of bytes when there is none.
std::size_t firstZero(std::span<const std::uint8_t> bytes)
{
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    return std::min(text.find('\0'), text.size());
}

struct IconvClose {
    void operator()(iconv_t converter) const { iconv_close(converter); }
};
using Iconv = std::unique_ptr<std::remove_pointer_t<iconv_t>, IconvClose>;

Iconv openConverter(const std::string& charset)
{
    auto* converter = iconv_open("UTF-8", charset.c_str());
    // The library reports a failure in this way. NOLINTNEXTLINE(performance-no-int-to-ptr)
    return Iconv(converter == reinterpret_cast<iconv_t>(-1) ? nullptr : converter);
}

// Code pages in which some characters take two bytes.
bool isMultiByte(int codePage)
{
    return codePage == 932 || codePage == 936 || codePage == 949 || codePage == 950 || codePage == 1361;
}

std::string iconvName(int codePage)
{
    if (codePage == 10000) return "MACINTOSH";
    if (codePage == 1361) return "JOHAB";
    auto name = "CP" + std::to_string(codePage);
    return openConverter(name) ? name : "CP1252";
}

} // namespace

bool appendJet4Text(std::span<const std::uint8_t> stored, TextColumnBuilder& out)
{
    const bool isCompressed = stored.size() >= 2 && stored[0] == 0xFF && stored[1] == 0xFE;
    return isCompressed ? appendCompressed(stored.subspan(2), out) : appendUtf16(stored, out);
}

const std::vector<int>& codePageNumbers()
{
    static const std::vector<int> numbers{437, 737, 775, 850, 852, 855, 857, 860, 861, 862, 863, 865, 866, 869, 874,
        932, 936, 949, 950, 1250, 1251, 1252, 1253, 1254, 1255, 1256, 1257, 1258, 1361, 10000};
    return numbers;
}

CodePage::CodePage(int number)
    : m_iconvName(iconvName(number))
    , m_isSingleByte(!isMultiByte(number))
{
    const auto converter = openConverter(m_iconvName);
    for (std::size_t byte = 0; byte < m_characters.size(); ++byte) {
        auto& character = m_characters[byte];
        auto in = static_cast<char>(byte);
        auto* from = &in;
        std::size_t fromLeft = 1;
        auto* to = character.bytes;
        std::size_t toLeft = sizeof character.bytes;
        // The second call gets out a letter that is held back because a mark could follow: Hebrew and Vietnamese.
        const bool isDone = byte != 0 && converter
            && iconv(converter.get(), &from, &fromLeft, &to, &toLeft) != static_cast<std::size_t>(-1)
            && iconv(converter.get(), nullptr, nullptr, &to, &toLeft) != static_cast<std::size_t>(-1);
        if (!isDone) {
            if (converter) iconv(converter.get(), nullptr, nullptr, nullptr, nullptr);
            to = putUtf8(character.bytes, replacement);
        }
        character.length = static_cast<std::uint8_t>(to - character.bytes);
    }
}

void CodePage::append(std::span<const std::uint8_t> stored, TextColumnBuilder& out) const
{
    auto rest = stored;
    while (!rest.empty() && rest.back() == 0)
        rest = rest.first(rest.size() - 1);
    if (rest.size() < stored.size()) out.noteZerosBehind(stored.size() - rest.size());
    appendCharacters(rest, out);
    if (firstZero(rest) < rest.size()) out.noteWholeText(textWithZeros(stored));
}

std::string CodePage::textWithZeros(std::span<const std::uint8_t> stored) const
{
    std::string text;
    while (true) {
        const auto zero = firstZero(stored);
        TextColumnBuilder piece;
        appendCharacters(stored.first(zero), piece);
        text += piece.openText();
        if (zero == stored.size()) return text;
        text += '\0';
        stored = stored.subspan(zero + 1);
    }
}

void CodePage::appendCharacters(std::span<const std::uint8_t> stored, TextColumnBuilder& out) const
{
    if (isPlainAscii(stored)) {
        out.append({reinterpret_cast<const char*>(stored.data()), stored.size()});
        return;
    }
    if (!m_isSingleByte) {
        appendMultiByte(stored, out);
        return;
    }
    auto* start = out.room(stored.size() * sizeof(Utf8::bytes));
    auto* to = start;
    for (const auto byte : stored) {
        const auto& character = m_characters[byte];
        std::memcpy(to, character.bytes, sizeof character.bytes);
        to += character.length;
    }
    out.commit(static_cast<std::size_t>(to - start));
}

void CodePage::appendMultiByte(std::span<const std::uint8_t> stored, TextColumnBuilder& out) const
{
    const auto converter = openConverter(m_iconvName);
    std::string in(reinterpret_cast<const char*>(stored.data()), stored.size());
    auto* from = in.data();
    std::size_t fromLeft = in.size();
    while (fromLeft > 0) {
        auto* start = out.room(4 * fromLeft + 16);
        auto* to = start;
        std::size_t toLeft = 4 * fromLeft + 16;
        const bool isDone = converter && *from != '\0'
            && iconv(converter.get(), &from, &fromLeft, &to, &toLeft) != static_cast<std::size_t>(-1);
        if (!isDone) {
            if (converter) iconv(converter.get(), nullptr, nullptr, nullptr, nullptr);
            to = putUtf8(to, replacement);
            ++from;
            --fromLeft;
        }
        out.commit(static_cast<std::size_t>(to - start));
    }
}

} // namespace vellumo::jet
