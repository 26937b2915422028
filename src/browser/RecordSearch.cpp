#include "browser/RecordSearch.h"

#include "browser/TextMatcher.h"

#include <algorithm>
#include <numeric>

namespace vellumo {

namespace {

// Rows of a group, without the one that is `end`.
struct RowRange {
    std::uint32_t first;
    std::uint32_t end;
};

// Appends the agreeing rows among `ranges` of one group; `firstRow` is the number of the group's first row.
void searchGroup(const RowGroup& group, std::size_t firstRow, std::span<const RowRange> ranges, TextMatcher& matcher,
    std::vector<std::uint8_t>& marks, std::vector<std::uint32_t>& found)
{
    marks.assign(group.rowCount, 0);
    for (const auto& chunk : group.texts) {
        if (chunk.rowCount() == 0) continue; // an object column
        for (const auto& range : ranges)
            matcher.match(chunk, range.first, range.end, marks);
    }
    for (const auto& range : ranges)
        for (auto row = range.first; row < range.end; ++row)
            if (marks[row] != 0) found.push_back(static_cast<std::uint32_t>(firstRow + row));
}

// The runs of consecutive numbers at the head of `candidates` that lie in one group; takes them off.
std::vector<RowRange> takeRanges(std::span<const std::uint32_t>& candidates, std::size_t firstRow, std::size_t endRow)
{
    std::vector<RowRange> ranges;
    while (!candidates.empty() && candidates.front() < endRow) {
        const auto row = static_cast<std::uint32_t>(candidates.front() - firstRow);
        if (ranges.empty() || ranges.back().end != row) ranges.push_back({row, row});
        ++ranges.back().end;
        candidates = candidates.subspan(1);
    }
    return ranges;
}

std::vector<std::uint32_t> allRows(std::size_t count)
{
    std::vector<std::uint32_t> rows(count);
    std::iota(rows.begin(), rows.end(), 0U);
    return rows;
}

} // namespace

std::vector<std::uint32_t> filterData(const RowStore& rows, const SearchSettings& settings)
{
    if (settings.text.empty()) return allRows(rows.rowCount());
    TextMatcher matcher(settings);
    std::vector<std::uint8_t> marks;
    std::vector<std::uint32_t> found;
    for (std::size_t i = 0; i < rows.groups().size(); ++i) {
        const auto& group = rows.groups()[i];
        const RowRange all{0, group.rowCount};
        searchGroup(group, rows.firstRow(i), {&all, 1}, matcher, marks, found);
    }
    return found;
}

std::vector<std::uint32_t> filterData(
    const RowStore& rows, const SearchSettings& settings, std::span<const std::uint32_t> candidates)
{
    if (settings.text.empty()) return {candidates.begin(), candidates.end()};
    TextMatcher matcher(settings);
    std::vector<std::uint8_t> marks;
    std::vector<std::uint32_t> found;
    for (std::size_t i = 0; i < rows.groups().size() && !candidates.empty(); ++i) {
        const auto& group = rows.groups()[i];
        const auto firstRow = rows.firstRow(i);
        const auto ranges = takeRanges(candidates, firstRow, firstRow + group.rowCount);
        if (!ranges.empty()) searchGroup(group, firstRow, ranges, matcher, marks, found);
    }
    return found;
}

bool isNarrower(const SearchSettings& next, const SearchSettings& previous)
{
    return next.searchOption == SearchOption::Contains && previous.searchOption == SearchOption::Contains
        && next.ignoreCase == previous.ignoreCase && next.text.find(previous.text) != std::string::npos;
}

} // namespace vellumo
