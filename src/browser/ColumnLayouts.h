// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Defaults.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace vellumo {

class TAdmMDBTable;

// How the user has laid out the columns of a table.
struct ColumnLayout {
    std::vector<std::size_t> order; // all columns as they are displayed, once each
    std::vector<int> widths;        // one a column, in the grid's pixels; 0: nobody chose one

    bool operator==(const ColumnLayout&) const = default;
};

// The layouts of tables, kept in the user's defaults: a table by the path of its file and its name, a column by its
// name. When they get too many, those that were changed longest ago are forgotten. Main thread only.
class ColumnLayouts {
public:
    static constexpr const char* defaultsKey = "columnLayouts";
    static constexpr std::size_t mostBytes = std::size_t{64} * 1024;

    // `defaults` outlives the layouts.
    explicit ColumnLayouts(Defaults& defaults)
        : m_defaults(defaults)
    {
    }

    // nullopt for a table that nobody laid out. Columns that the layout does not know come last, as they are.
    [[nodiscard]] std::optional<ColumnLayout> find(const TAdmMDBTable& table) const;
    void keep(const TAdmMDBTable& table, const ColumnLayout& layout);

private:
    Defaults& m_defaults;
};

} // namespace vellumo
