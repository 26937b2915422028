// SPDX-License-Identifier: MIT
#include "browser/LongestTexts.h"

#include "rows/RowStore.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace vellumo {

namespace {

struct Length {
    std::uint32_t bytes;
    std::uint32_t row;

    auto operator<=>(const Length&) const = default;
};

} // namespace

std::vector<std::uint32_t> longestTexts(const RowStore& rows, std::size_t column, std::size_t count)
{
    std::vector<Length> longest; // a heap with the shortest of them on top
    std::uint32_t shortest = 0;
    for (std::size_t i = 0; i < rows.groups().size(); ++i) {
        std::uint32_t start = 0;
        auto row = static_cast<std::uint32_t>(rows.firstRow(i));
        for (const auto end : rows.groups()[i].texts[column].ends()) {
            const Length length{end - std::exchange(start, end), row++};
            if (longest.size() == count && length.bytes <= shortest) continue;
            longest.push_back(length);
            std::ranges::push_heap(longest, std::greater());
            if (longest.size() > count) {
                std::ranges::pop_heap(longest, std::greater());
                longest.pop_back();
            }
            shortest = longest.front().bytes;
        }
    }
    std::vector<std::uint32_t> found;
    for (const auto& length : longest)
        found.push_back(length.row);
    return found;
}

} // namespace vellumo
