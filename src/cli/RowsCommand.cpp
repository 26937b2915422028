// SPDX-License-Identifier: MIT
#include "browser/GridRows.h"
#include "browser/GridValue.h"
#include "cli/CommandLine.h"
#include "cli/ConsoleFile.h"
#include "cli/ConsoleOutput.h"
#include "cli/DamageOutput.h"
#include "model/TAdmMDBFile.h"
#include "text/Format.h"
#include "text/Messages.h"

#include <CLI/CLI.hpp>
#include <memory>

namespace vellumo {

namespace {

struct RowsOptions {
    FileArguments file;
    std::string table;
    std::string search;
    std::string match = "contains";
    bool isCaseSensitive = false;
    std::string sort;
    std::int64_t limit = INT64_MAX;
    bool lookupTexts = false;
};

std::string copiedRow(const TAdmMDBTable& table, std::size_t row)
{
    std::string line;
    std::string buffer;
    for (std::size_t column = 0; column < table.rows().columnCount(); ++column)
        appendCopiedValue(getValueForTableColumn(&table, column, row), buffer, line);
    endCopiedRow(line);
    return line;
}

SearchSettings searchOf(const RowsOptions& options)
{
    constexpr std::string_view inOrderOfOptions[] = {"contains", "begins", "equals", "ends"};
    const auto* match = std::ranges::find(inOrderOfOptions, options.match);
    return {options.search, static_cast<SearchOption>(match - std::begin(inOrderOfOptions)), !options.isCaseSensitive};
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

// False when the user stopped it.
bool printRows(const TAdmMDBTable& table, const RowsOptions& options)
{
    GridRows grid;
    grid.setTable(&table);
    grid.setSearch(searchOf(options));
    const auto count = std::min(grid.rowCount(), static_cast<std::size_t>(options.limit));
    for (std::size_t position = 0; position < count; ++position) {
        if (interrupted()) return false;
        if (!writeOutput(copiedRow(table, grid.rowAt(position)))) break;
    }
    return true;
}

ExitStatus showRows(const RowsOptions& options)
{
    auto file = openDatabase(options.file);
    if (file && options.lookupTexts) file = withLookupTexts(std::move(file), {&options.table, 1}, false);
    if (!file) return ExitStatus::Failed;
    const auto* table = findTableOrComplain(*file, options.table);
    if (table == nullptr) return ExitStatus::Failed;
    if (!options.sort.empty() && !sortBy(*table, options.sort))
        return failed(localizedFormat("There is no column \"%@\".", {options.sort}));
    if (!printRows(*table, options)) return failed(localized("Interrupted."));
    printDamage(*file, {&table->name(), 1});
    return doneWith(*file);
}

void addSelectionOptions(CLI::App& sub, RowsOptions& options)
{
    sub.add_option("--search", options.search, localized("Only rows in which a value matches this text"))
        ->type_name("TEXT");
    sub.add_option("--match", options.match, localized("How a value matches: contains, begins, equals or ends"))
        ->check(CLI::IsMember({"contains", "begins", "equals", "ends"}));
    sub.add_flag("--case-sensitive", options.isCaseSensitive, localized("Tell capital letters from small ones"));
    sub.add_option("--sort", options.sort, localized("Order by this column, descending with \":desc\" behind it"))
        ->type_name("COLUMN[:desc]");
}

} // namespace

void addRowsCommand(CLI::App& app, Command& command)
{
    auto options = std::make_shared<RowsOptions>();
    auto* sub =
        app.add_subcommand("rows", localized("Print the rows of a table, one a line, values separated by tabs"));
    addFileArguments(*sub, options->file);
    sub->add_option("TABLE", options->table, localized("The table"))->required();
    addSelectionOptions(*sub, *options);
    addLookupOption(*sub, options->lookupTexts);
    sub->add_option("--limit", options->limit, localized("Print at most this many rows"))
        ->check(wholeNumberFrom(0))
        ->type_name("N");
    sub->callback([options, &command] { command = [options] { return showRows(*options); }; });
}

} // namespace vellumo
