// SPDX-License-Identifier: MIT
#pragma once

#include "samples/RowPages.h"

#include <optional>
#include <vector>

namespace vellumo::samples {

// Writes usage maps: sets of page numbers, each a row on a page shared by many.
class UsageMaps {
public:
    explicit UsageMaps(PageFile& file)
        : m_file(file)
        , m_rows(file, 0)
    {
    }
    // `pages` in ascending order. nullopt when the last one is beyond what a map can name.
    [[nodiscard]] std::optional<RowPlace> add(const std::vector<std::uint32_t>& pages);
    void finish() { m_rows.finish(); }

private:
    [[nodiscard]] std::optional<RowPlace> addLarge(const std::vector<std::uint32_t>& pages);

    PageFile& m_file;
    RowPages m_rows;
};

} // namespace vellumo::samples
