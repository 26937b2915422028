// SPDX-License-Identifier: MIT
#pragma once

#include "samples/PageFile.h"

#include <cstdint>
#include <vector>

namespace vellumo::samples {

struct IndexTree {
    std::uint32_t rootPage = 0;
    std::vector<std::uint32_t> pages{}; // all of them, ascending
};

// Writes the pages of one index of the table whose definition begins at `definitionPage`. `entries` are in order, each
// shorter than a third of a page. Without entries the tree is one empty leaf.
[[nodiscard]] IndexTree writeIndexTree(PageFile& file, std::uint32_t definitionPage, const std::vector<Bytes>& entries);

} // namespace vellumo::samples
