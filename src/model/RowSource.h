// SPDX-License-Identifier: MIT
#pragma once

#include "model/TAdmMDBFile.h"

#include <optional>
#include <variant>

namespace vellumo {

// The table that the rows of a lookup come from, as far as it can be told without running anything.

// A column of a table, or a text that stands in every row.
using SourceTerm = std::variant<std::size_t, std::string>;
// Terms that are put together to one text.
using SourceColumn = std::vector<SourceTerm>;

struct SourceTable {
    const TAdmMDBTable* table = nullptr; // never null
    std::vector<SourceColumn> columns{};
};

// What `source` names: a table, a query, or SQL. nullopt for what takes more than looking into one table of the file:
// conditions, joins, groups, functions.
[[nodiscard]] std::optional<SourceTable> sourceTable(const TAdmMDBFile& file, std::string_view source);

} // namespace vellumo
