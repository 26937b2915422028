// SPDX-License-Identifier: MIT
#include "browser/RowSelection.h"

#include <algorithm>

namespace vellumo {

RowSelection::RowSelection(std::vector<Range> ranges)
{
    std::sort(ranges.begin(), ranges.end(), [](const Range& a, const Range& b) { return a.first < b.first; });
    for (const auto& range : ranges) {
        if (m_ranges.empty() || range.first > m_ranges.back().last + 1)
            m_ranges.push_back(range);
        else
            m_ranges.back().last = std::max(m_ranges.back().last, range.last);
    }
}

std::size_t RowSelection::count() const
{
    std::size_t count = 0;
    for (const auto& range : m_ranges)
        count += range.last - range.first + 1;
    return count;
}

bool RowSelection::contains(std::size_t row) const
{
    const auto after = std::upper_bound(
        m_ranges.begin(), m_ranges.end(), row, [](std::size_t r, const Range& range) { return r < range.first; });
    return after != m_ranges.begin() && row <= std::prev(after)->last;
}

std::optional<std::size_t> RowSelection::first() const
{
    return m_ranges.empty() ? std::nullopt : std::optional(m_ranges.front().first);
}

void RowSelection::clipTo(std::size_t rowCount)
{
    while (!m_ranges.empty() && m_ranges.back().first >= rowCount)
        m_ranges.pop_back();
    if (!m_ranges.empty()) m_ranges.back().last = std::min(m_ranges.back().last, rowCount - 1);
}

} // namespace vellumo
