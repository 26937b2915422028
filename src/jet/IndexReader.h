// SPDX-License-Identifier: MIT
#pragma once

#include "jet/Pages.h"

#include <vector>

namespace vellumo::jet {

// What the pages of one index say about rows.
struct IndexEntries {
    std::vector<std::uint32_t> rows; // pointers (page << 8 | row number) in the order of the index
    std::vector<std::uint32_t> damagedPages;
};

// Walks over the pages of an index from its root. An index over rows that cannot be read any more still knows of them:
// that is what this is for. Its keys are not looked at.
[[nodiscard]] IndexEntries readIndexEntries(Pages& pages, std::uint32_t root, std::uint32_t definitionPage);

} // namespace vellumo::jet
