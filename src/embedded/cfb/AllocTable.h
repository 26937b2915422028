#pragma once

#include "embedded/Bytes.h"

#include <vector>

namespace vellumo::cfb {

// An allocation table: for every block the index of the block that follows it in its chain, or what else the block is:
// 0xFFFFFFFF free, 0xFFFFFFFE the end of its chain, 0xFFFFFFFD and 0xFFFFFFFC part of the tables.
class AllocTable {
public:
    // Adds the entries of the table's next block; a cut entry at its end is dropped.
    void append(Bytes block);

    // The blocks of the chain that begins with `start`, in order. It ends before an index that is no block of this
    // table, and before a block that it holds already: a chain that loops gives each of its blocks once.
    [[nodiscard]] std::vector<std::uint32_t> follow(std::uint32_t start) const;

private:
    std::vector<std::uint32_t> m_next;
};

} // namespace vellumo::cfb
