// SPDX-License-Identifier: MIT
#pragma once

#include "export/ExportOptions.h"

#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace vellumo {

class TAdmMDBTable;
struct SearchSettings;

// What the command line wants of a table's rows and columns.
struct RowChoice {
    std::vector<std::string> columns; // as given: names, or several of them parted by commas; empty: all
    std::string search;
    std::string match = "contains";
    bool isCaseSensitive = false;
    std::string sort; // COLUMN or COLUMN:desc

    [[nodiscard]] bool isAll() const { return columns.empty() && search.empty() && sort.empty(); }
};

// Adds --match and --case-sensitive, and for all of them also --columns, --search and --sort.
void addMatchOptions(CLI::App& sub, RowChoice& choice);
void addRowChoice(CLI::App& sub, RowChoice& choice);

// What they ask for.
[[nodiscard]] SearchSettings searchOf(const RowChoice& choice);

// What that is of this table, whose columns' sort order may change. nullopt, with a message printed, when it has no
// column of such a name.
[[nodiscard]] std::optional<TableChoice> choiceOrComplain(const TAdmMDBTable& table, const RowChoice& choice);

} // namespace vellumo
