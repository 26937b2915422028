// SPDX-License-Identifier: MIT
#include "text/CaseFold.h"

#include "text/Ascii.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <unicode/bytestream.h>
#include <unicode/casemap.h>
#include <unicode/uchar.h>
#include <unicode/ustring.h>
#include <vector>

namespace vellumo {

namespace {

constexpr std::uint64_t highBits = 0x8080808080808080;

std::uint64_t load8(const char* bytes)
{
    std::uint64_t value = 0;
    std::memcpy(&value, bytes, sizeof value);
    return value;
}

void store8(std::uint64_t value, char* bytes) { std::memcpy(bytes, &value, sizeof value); }

// Eight ASCII bytes in lower case.
std::uint64_t foldAscii8(std::uint64_t bytes)
{
    constexpr std::uint64_t ones = 0x0101010101010101;
    const auto fromA = bytes + ones * (0x80 - 'A');       // high bit: at least 'A'
    const auto behindZ = bytes + ones * (0x80 - 'Z' - 1); // high bit: above 'Z'
    return bytes | (fromA & ~behindZ & highBits) >> 2;
}

// What a character folds to, in UTF-8.
struct Folding {
    std::uint8_t length = 0; // 0: to itself
    std::array<char, 7> bytes{};
};

// The foldings by page, a page being the 64 characters that differ in their last UTF-8 byte only. Letter case ends with
// the first supplementary plane.
class FoldTable {
public:
    FoldTable()
        : m_pages(1) // page 0 of the list: nothing folds
    {
        for (std::uint32_t page = 1; page < pageCount; ++page)
            addPage(page);
    }
    // `page`: the character's number without its lowest 6 bits, which are `low`.
    [[nodiscard]] const Folding& at(std::uint32_t page, std::uint32_t low) const
    {
        return m_pages[page < pageCount ? m_pageIndex[page] : 0][low];
    }

private:
    static constexpr std::uint32_t pageCount = 0x20000 >> 6;
    using Page = std::array<Folding, 64>;

    void addPage(std::uint32_t page)
    {
        Page foldings;
        bool isUsed = false;
        for (std::uint32_t low = 0; low < 64; ++low) {
            foldings[low] = foldingOf(static_cast<UChar32>(page << 6 | low));
            isUsed = isUsed || foldings[low].length > 0;
        }
        if (!isUsed) return;
        m_pageIndex[page] = static_cast<std::uint8_t>(m_pages.size());
        m_pages.push_back(foldings);
    }

    static Folding foldingOf(UChar32 character)
    {
        Folding folding;
        if (character >= 0xD800 && character <= 0xDFFF) return folding;
        std::array<UChar, 2> units{};
        std::int32_t count = 0;
        U16_APPEND_UNSAFE(units, count, character);
        std::array<UChar, 4> folded{}; // at most three characters, all of the basic plane when more than one
        UErrorCode status = U_ZERO_ERROR;
        const auto length =
            u_strFoldCase(folded.data(), folded.size(), units.data(), count, U_FOLD_CASE_DEFAULT, &status);
        if (U_FAILURE(status)
            || (length == count
                && std::memcmp(folded.data(), units.data(), sizeof(UChar) * static_cast<std::size_t>(length)) == 0))
            return folding;
        std::int32_t bytes = 0;
        u_strToUTF8(folding.bytes.data(), folding.bytes.size(), &bytes, folded.data(), length, &status);
        if (U_SUCCESS(status)) folding.length = static_cast<std::uint8_t>(bytes);
        return folding;
    }

    std::array<std::uint8_t, pageCount> m_pageIndex{};
    std::vector<Page> m_pages;
};

const FoldTable& foldTable()
{
    static const FoldTable table;
    return table;
}

struct Character {
    std::size_t length; // bytes; 1 for a malformed byte, which page 0 leaves as it is
    std::uint32_t page;
    std::uint32_t low;
};

// Decodes the character that starts with the non-ASCII byte at `position`.
Character characterAt(std::string_view text, std::size_t position)
{
    const auto byteAt = [&](std::size_t i) -> std::uint32_t {
        return position + i < text.size() ? static_cast<unsigned char>(text[position + i]) : 0;
    };
    const auto isTail = [&](std::size_t i) { return (byteAt(i) & 0xC0) == 0x80; };
    const auto lead = byteAt(0);
    if (lead >= 0xC2 && lead <= 0xDF && isTail(1)) return {2, lead & 0x1F, byteAt(1) & 0x3F};
    if ((lead & 0xF0) == 0xE0 && isTail(1) && isTail(2)) {
        const auto page = (lead & 0x0F) << 6 | (byteAt(1) & 0x3F);
        if (page >= 0x20) return {3, page, byteAt(2) & 0x3F};
    }
    if ((lead & 0xF8) == 0xF0 && isTail(1) && isTail(2) && isTail(3)) {
        const auto page = (lead & 0x07) << 12 | (byteAt(1) & 0x3F) << 6 | (byteAt(2) & 0x3F);
        if (page >= 0x400) return {4, page, byteAt(3) & 0x3F};
    }
    return {1, 0, 0};
}

} // namespace

bool isAscii(std::string_view text)
{
    std::size_t i = 0;
    for (; i + 32 <= text.size(); i += 32) {
        const auto* bytes = text.data() + i;
        if (((load8(bytes) | load8(bytes + 8) | load8(bytes + 16) | load8(bytes + 24)) & highBits) != 0) return false;
    }
    for (; i < text.size(); ++i)
        if (static_cast<unsigned char>(text[i]) >= 0x80) return false;
    return true;
}

FoldedEnd foldCaseInto(std::string_view text, char* out)
{
    const auto& table = foldTable();
    FoldedEnd result{out, true};
    std::size_t i = 0;
    while (i < text.size()) {
        constexpr std::size_t blockSize = 16;
        const auto* block = text.data() + i;
        if (i + blockSize <= text.size() && ((load8(block) | load8(block + 8)) & highBits) == 0) {
            store8(foldAscii8(load8(block)), result.end);
            store8(foldAscii8(load8(block + 8)), result.end + 8);
            result.end += blockSize;
            i += blockSize;
            continue;
        }
        if (static_cast<unsigned char>(text[i]) < 0x80) {
            *result.end++ = asciiLower(text[i++]);
            continue;
        }
        const auto character = characterAt(text, i);
        const auto& folding = table.at(character.page, character.low);
        const auto length = folding.length > 0 ? folding.length : character.length;
        std::memcpy(result.end, folding.length > 0 ? folding.bytes.data() : block, length);
        result.end += length;
        result.keepsLengths = result.keepsLengths && length == character.length;
        i += character.length;
    }
    return result;
}

std::string lowerCase(std::string_view text)
{
    std::string lower;
    icu::StringByteSink<std::string> sink(&lower);
    UErrorCode status = U_ZERO_ERROR;
    icu::CaseMap::utf8ToLower("", 0, {text.data(), static_cast<std::int32_t>(text.size())}, sink, nullptr, status);
    return lower;
}

std::string foldCase(std::string_view text)
{
    std::string folded(text.size() * foldGrowth, '\0');
    folded.resize(static_cast<std::size_t>(foldCaseInto(text, folded.data()).end - folded.data()));
    return folded;
}

bool isSameName(std::string_view left, std::string_view right) { return foldCase(left) == foldCase(right); }

} // namespace vellumo
