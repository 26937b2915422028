// SPDX-License-Identifier: MIT
#include "browser/GridValue.h"
#include "cli/CommandLine.h"
#include "cli/ConsoleExport.h"
#include "cli/ConsoleFile.h"
#include "cli/ConsoleOutput.h"
#include "cli/DamageOutput.h"
#include "cli/RowChoice.h"
#include "export/ExportFormat.h"
#include "model/TAdmMDBFile.h"
#include "text/Format.h"
#include "text/Messages.h"

#include <CLI/CLI.hpp>
#include <fstream>
#include <memory>
#include <numeric>

namespace vellumo {

namespace {

struct RowsOptions {
    FileArguments file;
    std::string table;
    RowChoice choice;
    std::string format = "tsv";
    bool hasHeader = false;
    std::int64_t limit = INT64_MAX;
    bool lookupTexts = false;
};

std::string copiedRow(const TAdmMDBTable& table, std::size_t row, std::span<const std::size_t> columns)
{
    std::string line;
    std::string buffer;
    for (const auto column : columns)
        appendCopiedValue(getValueForTableColumn(&table, column, row), buffer, line);
    endCopiedRow(line);
    return line;
}

// The numbers of the columns that are printed.
std::vector<std::size_t> columnsOf(const TAdmMDBTable& table, const TableChoice& choice)
{
    if (choice.columns) return *choice.columns;
    std::vector<std::size_t> all(table.columns().size());
    std::iota(all.begin(), all.end(), std::size_t{0});
    return all;
}

std::string headerLine(const TAdmMDBTable& table, std::span<const std::size_t> columns)
{
    std::string line;
    std::string buffer;
    for (const auto column : columns)
        appendCopiedValue(std::string_view(table.columns()[column]->name()), buffer, line);
    endCopiedRow(line);
    return line;
}

// False when the user stopped it.
bool printRows(const TAdmMDBTable& table, const TableChoice& choice, const RowsOptions& options)
{
    const auto columns = columnsOf(table, choice);
    if (options.hasHeader && !writeOutput(headerLine(table, columns))) return true;
    const auto found = choice.rows ? choice.rows->size() : table.rows().rowCount();
    const auto count = std::min(found, static_cast<std::size_t>(options.limit));
    for (std::size_t i = 0; i < count; ++i) {
        if (interrupted()) return false;
        if (!writeOutput(copiedRow(table, choice.rows ? (*choice.rows)[i] : i, columns))) break;
    }
    return true;
}

// The choice without the rows behind the limit.
TableChoice limited(const TAdmMDBTable& table, TableChoice choice, std::size_t limit)
{
    if (!choice.rows && limit >= table.rows().rowCount()) return choice;
    if (!choice.rows) {
        choice.rows.emplace(limit);
        std::iota(choice.rows->begin(), choice.rows->end(), 0U);
    }
    choice.rows->resize(std::min(choice.rows->size(), limit));
    return choice;
}

// One array of what was written as a line each.
void printArray(const std::string& path)
{
    std::ifstream lines(path, std::ios::binary);
    const char* separator = "[\n";
    for (std::string line; std::getline(lines, line); separator = ",\n")
        if (!writeBytes(separator + line)) return;
    writeBytes(*separator == '[' ? "[]\n" : "\n]\n");
}

// Null when the reader has gone away.
std::optional<ExportReport> exportRows(
    const TAdmMDBFile& file, const TAdmMDBTable& table, const TableChoice& choice, const RowsOptions& options)
{
    const bool isArray = options.format == "json";
    const auto& format = *findExportFormat(isArray ? "jsonl" : options.format);
    auto entry = ExportEntry::exportEntryWithTableName(table.name(), format.type);
    entry.selected = true;
    entry.choice = limited(table, choice, static_cast<std::size_t>(options.limit));
    auto exported = defaultOptions(format, true);
    exported.includeColumnHeader = options.hasHeader;
    if (!isArray) return printExport(file, {entry}, exported);
    const TemporaryFile whole;
    exported.path = whole.path();
    exported.isSingleFile = true;
    auto report = exportWithProgress(file, {entry}, exported);
    if (report.isDone()) printArray(whole.path());
    return report;
}

// As the exact exports write them; what they tell goes to standard error.
ExitStatus showExported(
    const TAdmMDBFile& file, const TAdmMDBTable& table, const TableChoice& choice, const RowsOptions& options)
{
    const auto report = exportRows(file, table, choice, options);
    if (!report) return ExitStatus::Done;
    for (const auto& failure : report->failures)
        printError(failureText(failure));
    for (const auto& line : findingLines(report->findings.all()))
        printError(line);
    if (report->isStopped) return failed(localized("Interrupted."));
    printDamage(file, {&table.name(), 1});
    return report->failures.empty() ? doneWith(file) : ExitStatus::Failed;
}

ExitStatus showRows(const RowsOptions& options)
{
    auto file = openDatabase(options.file);
    if (file && options.lookupTexts) file = withLookupTexts(std::move(file), {&options.table, 1}, false);
    if (!file) return ExitStatus::Failed;
    const auto* table = findTableOrComplain(*file, options.table);
    if (table == nullptr) return ExitStatus::Failed;
    const auto choice = choiceOrComplain(*table, options.choice);
    if (!choice) return ExitStatus::Failed;
    if (options.format != "tsv") return showExported(*file, *table, *choice, options);
    if (!printRows(*table, *choice, options)) return failed(localized("Interrupted."));
    printDamage(*file, {&table->name(), 1});
    return doneWith(*file);
}

} // namespace

void addRowsCommand(CLI::App& app, Command& command)
{
    auto options = std::make_shared<RowsOptions>();
    auto* sub =
        app.add_subcommand("rows", localized("Print the rows of a table, one a line, values separated by tabs"));
    addFileArguments(*sub, options->file);
    sub->add_option("TABLE", options->table, localized("The table"))->required();
    addRowChoice(*sub, options->choice);
    sub->add_option("--format", options->format,
           localized("tsv (the default), or csv, json or jsonl, in which every value stands as the file holds it"))
        ->check(CLI::IsMember({"tsv", "csv", "json", "jsonl"}));
    sub->add_flag("--header", options->hasHeader, localized("Print the names of the columns first"));
    addLookupOption(*sub, options->lookupTexts);
    sub->add_option("--limit", options->limit, localized("Print at most this many rows"))
        ->check(wholeNumberFrom(0))
        ->type_name("N");
    sub->callback([options, &command] { command = [options] { return showRows(*options); }; });
}

} // namespace vellumo
