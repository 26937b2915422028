#pragma once

#include "jet/Pages.h"

#include <optional>
#include <vector>

namespace vellumo::jet {

// The pages that a usage map names.
struct PageList {
    std::vector<std::uint32_t> pages; // ascending, inside the file, without page 0
    std::uint64_t beyondEnd = 0;      // pages that would lie behind the end of the file
    // Runs of pages of which nothing is known, because that part of the map cannot be read: first page, and the one
    // behind the last.
    struct Gap {
        std::uint32_t first;
        std::uint32_t end;
    };
    std::vector<Gap> gaps;
};

// `map`: the bytes of the row that is the map.
[[nodiscard]] PageList readPageList(ByteSpan map, Pages& pages, PageBuffer& buffer);

} // namespace vellumo::jet
