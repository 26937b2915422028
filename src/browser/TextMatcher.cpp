// SPDX-License-Identifier: MIT
#include "browser/TextMatcher.h"

#include "text/Ascii.h"
#include "text/CaseFold.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace vellumo {

namespace {

bool isLowerLetter(std::uint8_t byte) { return byte >= 'a' && byte <= 'z'; }

// How often a byte is to be expected in a table's texts, the most frequent last: any order finds the pattern, a fair
// guess finds it with fewer false alarms.
int frequencyRank(std::uint8_t byte)
{
    constexpr std::string_view frequent = "zqxjkvwybpgfmculdhrsintoae/.,:-987654321 0";
    const auto rank = frequent.find(asciiLower(static_cast<char>(byte)));
    return rank == std::string_view::npos ? -1 : static_cast<int>(rank);
}

} // namespace

PatternScanner::PatternScanner(std::string pattern, bool ignoreAsciiCase)
    : m_pattern(std::move(pattern))
    , m_ignoreCase(ignoreAsciiCase)
{
    chooseAnchors();
}

PatternScanner::Anchor PatternScanner::anchorAt(std::size_t offset) const
{
    const auto byte = static_cast<std::uint8_t>(m_pattern[offset]);
    return {offset, static_cast<std::uint8_t>(m_ignoreCase && isLowerLetter(byte) ? 0x20 : 0), byte};
}

void PatternScanner::chooseAnchors()
{
    std::size_t first = 0;
    std::size_t second = m_pattern.size() - 1;
    const auto rank = [this](
                          std::size_t offset) { return frequencyRank(static_cast<std::uint8_t>(m_pattern[offset])); };
    if (rank(second) < rank(first)) std::swap(first, second);
    for (std::size_t i = 1; i + 1 < m_pattern.size(); ++i) {
        if (rank(i) < rank(first)) {
            second = std::exchange(first, i);
        } else if (rank(i) < rank(second)) {
            second = i;
        }
    }
    m_first = anchorAt(first);
    m_second = anchorAt(second);
}

bool PatternScanner::isEqual(const char* text) const
{
    if (!m_ignoreCase) return std::memcmp(text, m_pattern.data(), m_pattern.size()) == 0;
    for (std::size_t i = 0; i < m_pattern.size(); ++i)
        if (asciiLower(text[i]) != m_pattern[i]) return false;
    return true;
}

std::size_t PatternScanner::find(std::string_view text, std::size_t from) const
{
    if (text.size() < m_pattern.size()) return std::string_view::npos;
    const auto starts = text.size() - m_pattern.size() + 1; // places where the pattern could begin
    auto place = from;
#ifdef __SSE2__
    const auto firstValue = _mm_set1_epi8(static_cast<char>(m_first.value));
    const auto firstCase = _mm_set1_epi8(static_cast<char>(m_first.caseBit));
    const auto secondValue = _mm_set1_epi8(static_cast<char>(m_second.value));
    const auto secondCase = _mm_set1_epi8(static_cast<char>(m_second.caseBit));
    const auto candidates = [&](std::size_t at) {
        const auto* base = text.data() + at;
        const auto first = _mm_loadu_si128(reinterpret_cast<const __m128i*>(base + m_first.offset));
        const auto second = _mm_loadu_si128(reinterpret_cast<const __m128i*>(base + m_second.offset));
        return _mm_and_si128(_mm_cmpeq_epi8(_mm_or_si128(first, firstCase), firstValue),
            _mm_cmpeq_epi8(_mm_or_si128(second, secondCase), secondValue));
    };
    for (; place + 32 <= starts; place += 32) {
        const auto low = candidates(place);
        const auto high = candidates(place + 16);
        if (_mm_movemask_epi8(_mm_or_si128(low, high)) == 0) continue;
        auto mask = static_cast<std::uint32_t>(_mm_movemask_epi8(low))
            | static_cast<std::uint32_t>(_mm_movemask_epi8(high)) << 16;
        for (; mask != 0; mask &= mask - 1) {
            const auto found = place + static_cast<std::size_t>(std::countr_zero(mask));
            if (isEqual(text.data() + found)) return found;
        }
    }
#endif
    for (; place < starts; ++place) {
        const auto* at = text.data() + place;
        if (isCandidate(at, m_first) && isCandidate(at, m_second) && isEqual(at)) return place;
    }
    return std::string_view::npos;
}

namespace {

// Cells looked at in one go: their bytes stay in the fastest cache between the look for non-ASCII bytes, the folding
// and the search.
constexpr std::uint32_t cellsPerStep = 512;

} // namespace

TextMatcher::TextMatcher(const SearchSettings& settings)
    : m_option(settings.searchOption)
    , m_ignoreCase(settings.ignoreCase)
    , m_pattern(settings.ignoreCase ? foldCase(settings.text) : settings.text, settings.ignoreCase)
    , m_isAsciiPattern(isAscii(settings.ignoreCase ? foldCase(settings.text) : settings.text))
{
}

void TextMatcher::match(const TextChunk& chunk, std::uint32_t first, std::uint32_t end, std::span<std::uint8_t> marks)
{
    const auto ends = chunk.ends();
    for (auto row = first; row < end;) {
        const auto count = std::min(end - row, cellsPerStep);
        const auto start = row == 0 ? 0 : ends[row - 1];
        const auto length = ends[row + count - 1] - start;
        const Cells cells{chunk.bytes().substr(start, length), start, ends.subspan(row, count)};
        const bool needsFolding = m_ignoreCase && !isAscii(cells.text);
        // ASCII texts fold to ASCII texts.
        if (needsFolding) {
            markAgreeing(folded(cells), &marks[row]);
        } else if (!m_ignoreCase || m_isAsciiPattern) {
            markAgreeing(cells, &marks[row]);
        }
        row += count;
    }
}

TextMatcher::Cells TextMatcher::folded(const Cells& cells)
{
    m_foldedText.resize(std::max(m_foldedText.size(), cells.text.size() * foldGrowth));
    auto* const out = m_foldedText.data();
    const auto whole = foldCaseInto(cells.text, out);
    const auto textUpTo = [out](const char* end) { return std::string_view(out, static_cast<std::size_t>(end - out)); };
    if (whole.keepsLengths) return {textUpTo(whole.end), cells.start, cells.ends};

    // Once more cell by cell, to learn where each one ends now.
    m_foldedEnds.clear();
    auto* end = out;
    auto start = cells.start;
    for (const auto cellEnd : cells.ends) {
        end = foldCaseInto(cells.text.substr(start - cells.start, cellEnd - start), end).end;
        m_foldedEnds.push_back(static_cast<std::uint32_t>(end - out));
        start = cellEnd;
    }
    return {textUpTo(end), 0, m_foldedEnds};
}

void TextMatcher::markAgreeing(const Cells& cells, std::uint8_t* marks) const
{
    const auto size = m_pattern.size();
    std::size_t cell = 0;
    std::size_t cellStart = 0;
    for (auto hit = m_pattern.find(cells.text, 0); hit != std::string_view::npos;) {
        for (; cells.ends[cell] - cells.start <= hit; ++cell)
            cellStart = cells.ends[cell] - cells.start;
        const std::size_t cellEnd = cells.ends[cell] - cells.start;
        if (agrees(hit, cellStart, cellEnd)) marks[cell] = 1;
        // Whatever the option, this cell is decided, but for its end. A hit that reaches into the next cell is none,
        // and so are those behind it in this cell.
        const bool maySkipToEnd = m_option == SearchOption::EndsWith && hit + size < cellEnd;
        hit = m_pattern.find(cells.text, maySkipToEnd ? cellEnd - size : cellEnd);
    }
}

bool TextMatcher::agrees(std::size_t hit, std::size_t cellStart, std::size_t cellEnd) const
{
    const auto hitEnd = hit + m_pattern.size();
    switch (m_option) {
    case SearchOption::Contains: return hitEnd <= cellEnd;
    case SearchOption::BeginsWith: return hit == cellStart && hitEnd <= cellEnd;
    case SearchOption::Equals: return hit == cellStart && hitEnd == cellEnd;
    case SearchOption::EndsWith: return hitEnd == cellEnd;
    }
    return false;
}

} // namespace vellumo
