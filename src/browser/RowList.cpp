// SPDX-License-Identifier: MIT
#include "browser/RowList.h"

namespace vellumo {

namespace {

// What is searched and sorted in a few hundredths of a second on a slow machine.
constexpr std::size_t fewRows = 20'000;
constexpr std::size_t fewBytes = 4 << 20;

std::size_t textBytes(const RowStore& rows)
{
    std::size_t bytes = 0;
    for (const auto& group : rows.groups())
        for (const auto& chunk : group.texts)
            bytes += chunk.bytes().size();
    return bytes;
}

RowList::Rows shared(std::vector<std::uint32_t> rows)
{
    return std::make_shared<const std::vector<std::uint32_t>>(std::move(rows));
}

} // namespace

bool RowListTask::needsSearch() const
{
    const auto& wanted = list.wish.search;
    return !wanted.text.empty() && (!known || known->wish.search != wanted);
}

bool RowListTask::takesLong() const
{
    return (needsSearch() || needsSort()) && (store->rowCount() > fewRows || textBytes(*store) > fewBytes);
}

void RowListTask::run(const std::stop_token& stop)
{
    if (!list.wish.search.text.empty()) list.found = needsSearch() ? search(stop) : known->found;
    if (needsSort() && !stop.stop_requested())
        order = std::make_shared<const RowOrder>(*store, list.wish.column, sortKind, stop);
    if (!stop.stop_requested()) list.rows = list.wish.direction == 0 ? list.found : ordered();
}

RowList::Rows RowListTask::search(const std::stop_token& stop) const
{
    const auto& wanted = list.wish.search;
    const bool isAmongFound = known && known->found && isNarrower(wanted, known->wish.search);
    return shared(isAmongFound ? filterData(*store, wanted, *known->found, stop) : filterData(*store, wanted, stop));
}

RowList::Rows RowListTask::ordered() const
{
    auto rows = order->rows(list.wish.direction);
    if (list.found) {
        std::vector<bool> isFound(rows.size());
        for (const auto row : *list.found)
            isFound[row] = true;
        std::erase_if(rows, [&](std::uint32_t row) { return !isFound[row]; });
    }
    return shared(std::move(rows));
}

} // namespace vellumo
