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
            matchCells(folded(cells), &marks[row]);
        } else if (!m_ignoreCase || m_isAsciiPattern) {
            matchCells(cells, &marks[row]);
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

void TextMatcher::matchCells(const Cells& cells, std::uint8_t* marks) const
{
    if (m_option == SearchOption::Contains) {
        markContaining(cells, marks);
    } else {
        markAgreeing(cells, marks);
    }
}

void TextMatcher::markContaining(const Cells& cells, std::uint8_t* marks) const
{
    auto cell = cells.ends.begin();
    for (auto hit = m_pattern.find(cells.text, 0); hit != std::string_view::npos;) {
        cell = std::upper_bound(cell, cells.ends.end(), cells.start + hit);
        const std::size_t cellEnd = *cell - cells.start;
        // A hit that reaches into the next cell is none.
        const bool isInside = hit + m_pattern.size() <= cellEnd;
        if (isInside) marks[cell - cells.ends.begin()] = 1;
        hit = m_pattern.find(cells.text, isInside ? cellEnd : hit + 1);
    }
}

void TextMatcher::markAgreeing(const Cells& cells, std::uint8_t* marks) const
{
    auto start = cells.start;
    for (const auto end : cells.ends) {
        if (end - start >= m_pattern.size() && agrees(cells.text.substr(start - cells.start, end - start))) *marks = 1;
        start = end;
        ++marks;
    }
}

// `cell` is at least as long as the pattern.
bool TextMatcher::agrees(std::string_view cell) const
{
    switch (m_option) {
    case SearchOption::BeginsWith: return m_pattern.standsAt(cell.data());
    case SearchOption::Equals: return cell.size() == m_pattern.size() && m_pattern.standsAt(cell.data());
    case SearchOption::EndsWith: return m_pattern.standsAt(cell.data() + cell.size() - m_pattern.size());
    case SearchOption::Contains: break;
    }
    return m_pattern.find(cell, 0) != std::string_view::npos;
}

} // namespace vellumo
