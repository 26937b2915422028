// SPDX-License-Identifier: MIT
#include "cli/RowChoice.h"

#include "browser/GridRows.h"
#include "cli/ConsoleOutput.h"
#include "model/TAdmMDBTable.h"
#include "text/Format.h"
#include "text/Messages.h"

#include <CLI/CLI.hpp>

namespace vellumo {

namespace {

constexpr std::string_view matches[] = {"contains", "begins", "equals", "ends"}; // in the order of SearchOption

void complainAboutColumn(std::string_view name) { printError(localizedFormat("There is no column \"%@\".", {name})); }

// The longest name of a column that `list` begins with, up to one of its commas or its end: a name may have commas.
std::optional<std::size_t> takeColumn(const TAdmMDBTable& table, std::string_view& list)
{
    for (auto end = list.size();; end = list.rfind(',', end - 1)) {
        if (end == std::string_view::npos) return std::nullopt;
        if (const auto column = table.rows().columnIndex(list.substr(0, end))) {
            list.remove_prefix(std::min(list.size(), end + 1));
            return column;
        }
        if (end == 0) return std::nullopt;
    }
}

// False, with a message printed, when a name is none.
bool takeColumns(const TAdmMDBTable& table, std::string_view list, std::vector<std::size_t>& columns)
{
    do {
        const auto column = takeColumn(table, list);
        if (!column) {
            complainAboutColumn(list.substr(0, list.find(',')));
            return false;
        }
        columns.push_back(*column);
    } while (!list.empty());
    return true;
}

// Makes the table's rows come in the order of COLUMN or COLUMN:desc; a column whose name is the whole text goes first.
// False when there is no such column.
bool sortBy(const TAdmMDBTable& table, std::string_view sort)
{
    constexpr std::string_view descending = ":desc";
    if (auto* column = table.findColumn(sort)) {
        column->setSortOrder(1);
        return true;
    }
    if (!sort.ends_with(descending)) return false;
    auto* column = table.findColumn(sort.substr(0, sort.size() - descending.size()));
    if (column != nullptr) column->setSortOrder(-1);
    return column != nullptr;
}

std::vector<std::uint32_t> rowsOf(const TAdmMDBTable& table, const RowChoice& choice)
{
    GridRows grid;
    grid.setTable(&table);
    grid.setSearch(searchOf(choice));
    std::vector<std::uint32_t> rows(grid.rowCount());
    for (std::size_t i = 0; i < rows.size(); ++i)
        rows[i] = grid.rowAt(i);
    return rows;
}

} // namespace

SearchSettings searchOf(const RowChoice& choice)
{
    const auto* match = std::ranges::find(matches, choice.match);
    return {choice.search, static_cast<SearchOption>(match - std::begin(matches)), !choice.isCaseSensitive};
}

std::optional<TableChoice> choiceOrComplain(const TAdmMDBTable& table, const RowChoice& choice)
{
    TableChoice result;
    for (const auto& list : choice.columns)
        if (!takeColumns(table, list, result.columns ? *result.columns : result.columns.emplace())) return std::nullopt;
    if (!choice.sort.empty() && !sortBy(table, choice.sort)) {
        complainAboutColumn(choice.sort);
        return std::nullopt;
    }
    if (!choice.search.empty() || !choice.sort.empty()) result.rows = rowsOf(table, choice);
    return result;
}

void addMatchOptions(CLI::App& sub, RowChoice& choice)
{
    sub.add_option("--match", choice.match, localized("How a value matches: contains, begins, equals or ends"))
        ->check(CLI::IsMember(std::set<std::string>(std::begin(matches), std::end(matches))));
    sub.add_flag("--case-sensitive", choice.isCaseSensitive, localized("Tell capital letters from small ones"));
}

void addRowChoice(CLI::App& sub, RowChoice& choice)
{
    sub.add_option("--columns", choice.columns, localized("Only these columns, in this order, parted by commas"))
        ->allow_extra_args(false)
        ->type_name("A,B,...");
    sub.add_option("--search", choice.search, localized("Only rows in which a value matches this text"))
        ->type_name("TEXT");
    addMatchOptions(sub, choice);
    sub.add_option("--sort", choice.sort, localized("Order by this column, descending with \":desc\" behind it"))
        ->type_name("COLUMN[:desc]");
}

} // namespace vellumo
