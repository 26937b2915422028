#include "embedded/cfb/AllocTable.h"

namespace vellumo::cfb {

void AllocTable::append(Bytes block)
{
    for (std::size_t offset = 0; offset + 4 <= block.size(); offset += 4)
        m_next.push_back(u32At(block, offset));
}

std::vector<std::uint32_t> AllocTable::follow(std::uint32_t start) const
{
    std::vector<std::uint32_t> chain;
    std::vector<bool> isTaken(m_next.size());
    // The special values are larger than any table.
    for (auto index = start; index < m_next.size(); index = m_next[index]) {
        if (isTaken[index]) break;
        isTaken[index] = true;
        chain.push_back(index);
    }
    return chain;
}

} // namespace vellumo::cfb
