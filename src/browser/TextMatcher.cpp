#include "browser/TextMatcher.h"

#include "text/CaseFold.h"

#include <algorithm>

namespace vellumo {

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
