// SPDX-License-Identifier: MIT
#pragma once

#include "model/TAdmMDBFile.h"

#include <optional>
#include <variant>

namespace vellumo {

// What the rows of a lookup come from, as far as it can be told without running anything.

// A column of a table, or a text that stands in every row.
using SourceTerm = std::variant<std::size_t, std::string>;

struct SourceColumn {
    const TAdmMDBTable* table = nullptr; // null: the column takes more than a look into one table of the file
    std::size_t place = 0; // where the table is named: only columns of one place are of one row, as it may be joined
                           // with itself
    std::vector<SourceTerm> terms{}; // put together to one text
};

struct RowSource {
    std::vector<SourceColumn> columns{};
    bool isLimited = false; // rows of the tables may not be among its own
};

// What `source` names: a table, a query, or SQL. nullopt for what takes more than looking into tables: unions, groups,
// other statements.
[[nodiscard]] std::optional<RowSource> rowSource(const TAdmMDBFile& file, std::string_view source);

} // namespace vellumo
