// SPDX-License-Identifier: MIT
#include "browser/RecordSearch.h"

#include "browser/TextMatcher.h"
#include "text/Messages.h"

#include <algorithm>
#include <numeric>

namespace vellumo {

namespace {

// Rows of a group, without the one that is `end`.
struct RowRange {
    std::uint32_t first;
    std::uint32_t end;
};

// Gaps up to this many rows are searched along with their neighbours and left out afterwards: their few bytes lie in
// the search's step anyway, and starting anew costs more.
constexpr std::uint32_t bridgedGap = 4;

// Sets the marks of the group's agreeing rows within `ranges` to 1, all others to 0.
void markGroup(
    const RowGroup& group, std::span<const RowRange> ranges, TextMatcher& matcher, std::vector<std::uint8_t>& marks)
{
    marks.assign(group.rowCount, 0);
    for (const auto& chunk : group.texts) {
        if (chunk.rowCount() == 0) continue; // an object column
        for (const auto& range : ranges)
            matcher.match(chunk, range.first, range.end, marks);
    }
}

// The candidates of a group whose first row is number `firstRow`, as few ranges.
std::vector<RowRange> rangesOf(std::span<const std::uint32_t> candidates, std::size_t firstRow)
{
    std::vector<RowRange> ranges;
    for (const auto candidate : candidates) {
        const auto row = static_cast<std::uint32_t>(candidate - firstRow);
        if (ranges.empty() || row - ranges.back().end > bridgedGap) ranges.push_back({row, row});
        ranges.back().end = row + 1;
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

std::vector<std::uint32_t> filterData(const RowStore& rows, const SearchSettings& settings, const std::stop_token& stop)
{
    if (settings.text.empty()) return allRows(rows.rowCount());
    TextMatcher matcher(settings);
    std::vector<std::uint8_t> marks;
    std::vector<std::uint32_t> found;
    for (std::size_t i = 0; i < rows.groups().size() && !stop.stop_requested(); ++i) {
        const auto& group = rows.groups()[i];
        const RowRange all{0, group.rowCount};
        markGroup(group, {&all, 1}, matcher, marks);
        for (std::uint32_t row = 0; row < group.rowCount; ++row)
            if (marks[row] != 0) found.push_back(static_cast<std::uint32_t>(rows.firstRow(i) + row));
    }
    return found;
}

std::vector<std::uint32_t> filterData(const RowStore& rows, const SearchSettings& settings,
    std::span<const std::uint32_t> candidates, const std::stop_token& stop)
{
    if (settings.text.empty()) return {candidates.begin(), candidates.end()};
    TextMatcher matcher(settings);
    std::vector<std::uint8_t> marks;
    std::vector<std::uint32_t> found;
    auto next = candidates.begin();
    for (std::size_t i = 0; i < rows.groups().size() && next != candidates.end() && !stop.stop_requested(); ++i) {
        const auto firstRow = rows.firstRow(i);
        const auto end = std::lower_bound(next, candidates.end(), firstRow + rows.groups()[i].rowCount);
        const std::span<const std::uint32_t> inGroup(next, end);
        next = end;
        if (inGroup.empty()) continue;
        markGroup(rows.groups()[i], rangesOf(inGroup, firstRow), matcher, marks);
        for (const auto candidate : inGroup)
            if (marks[candidate - firstRow] != 0) found.push_back(candidate);
    }
    return found;
}

bool isNarrower(const SearchSettings& next, const SearchSettings& previous)
{
    return next.searchOption == SearchOption::Contains && previous.searchOption == SearchOption::Contains
        && next.ignoreCase == previous.ignoreCase && next.text.find(previous.text) != std::string::npos;
}

std::vector<SearchMenuItem> searchMenu(const SearchSettings& settings)
{
    const auto option = [&](SearchOption o, const char* key) {
        return SearchMenuItem{static_cast<int>(o), localized(key), o == settings.searchOption};
    };
    return {
        {SearchMenuItem::caseTag, localized("Ignore Case"), settings.ignoreCase},
        {SearchMenuItem::optionsTag, localized("Search Option"), false},
        option(SearchOption::Contains, messageKey("Contains")),
        option(SearchOption::BeginsWith, messageKey("Begins With")),
        option(SearchOption::Equals, messageKey("Equals")),
        option(SearchOption::EndsWith, messageKey("Ends With")),
    };
}

} // namespace vellumo
