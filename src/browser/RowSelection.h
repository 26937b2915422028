// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

namespace vellumo {

// A set of grid rows, counted from 0, as ascending ranges that neither touch nor overlap: a million rows selected at
// once are one range.
class RowSelection {
public:
    struct Range {
        std::size_t first;
        std::size_t last; // included

        bool operator==(const Range&) const = default;
    };

    RowSelection() = default;
    // Ranges in any order; they may overlap.
    explicit RowSelection(std::vector<Range> ranges);
    [[nodiscard]] static RowSelection ofRow(std::size_t row) { return RowSelection({{row, row}}); }

    [[nodiscard]] bool isEmpty() const { return m_ranges.empty(); }
    [[nodiscard]] std::size_t count() const;
    [[nodiscard]] bool contains(std::size_t row) const;
    [[nodiscard]] std::optional<std::size_t> first() const;
    [[nodiscard]] const std::vector<Range>& ranges() const { return m_ranges; }

    // Without the rows from `rowCount` on.
    void clipTo(std::size_t rowCount);

    bool operator==(const RowSelection&) const = default;

private:
    std::vector<Range> m_ranges;
};

} // namespace vellumo
