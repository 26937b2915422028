#include "browser/RowOrder.h"

#include "browser/KeySorter.h"
#include "rows/RowStore.h"

namespace vellumo {

RowOrder::RowOrder(const RowStore& rows, std::size_t column, SortKind kind)
{
    KeySorter sorter(rows, column, kind);
    sorter.sort(m_rows, m_groupStarts);
}

std::vector<std::uint32_t> RowOrder::rows(int direction) const
{
    if (direction >= 0) return m_rows;
    std::vector<std::uint32_t> reversed;
    reversed.reserve(m_rows.size());
    auto end = m_rows.size();
    for (auto start = m_groupStarts.rbegin(); start != m_groupStarts.rend(); ++start) {
        reversed.insert(reversed.end(), m_rows.begin() + *start, m_rows.begin() + static_cast<std::ptrdiff_t>(end));
        end = *start;
    }
    return reversed;
}

} // namespace vellumo
