// SPDX-License-Identifier: MIT
#pragma once

#include "samples/Description.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vellumo::samples {

struct IndexKey {
    int columnNumber = 0;
    bool ascending = true;

    bool operator==(const IndexKey&) const = default;
};

// An index as it is built. Several logical indexes may share one.
struct PhysicalIndex {
    static constexpr std::uint8_t Unique = 1;
    static constexpr std::uint8_t IgnoreNulls = 2;
    static constexpr std::uint8_t Required = 8;

    std::vector<IndexKey> keys;
    std::uint8_t flags = 0;
};

// An index as the user knows it, or one side of an enforced relation.
struct LogicalIndex {
    enum Kind : std::uint8_t { Plain = 0, Primary = 1, Relation = 2 };
    enum Side : std::uint8_t { None = 0, Referenced = 1, Referencing = 2 };

    std::string name;
    int number = 0;
    std::size_t physical = 0;
    Kind kind = Plain;
    Side side = None;
    int otherNumber = -1;       // of the relation's other side
    std::size_t otherTable = 0; // index in the list of tables; relations only
    bool cascadeUpdates = false;
    bool cascadeDeletes = false;
};

struct TableIndexes {
    std::vector<PhysicalIndex> physical;
    std::vector<LogicalIndex> logical; // sorted by name
};

// The indexes of every table, in the order of the tables: their own first, then what the enforced relations add. The
// description is a checked one.
[[nodiscard]] std::vector<TableIndexes> planIndexes(const DatabaseDescription& description);

// The place of the table or column of this name, or the size of the list.
[[nodiscard]] std::size_t tableIndex(const DatabaseDescription& description, const std::string& name);
[[nodiscard]] std::size_t columnIndex(const TableDescription& table, const std::string& name);

// The place of the table's unique index over exactly these columns, or the size of the list.
[[nodiscard]] std::size_t uniqueIndexOver(const TableDescription& table, const std::vector<std::string>& columns);

} // namespace vellumo::samples
