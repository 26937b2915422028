// SPDX-License-Identifier: MIT
#include "cli/CommandLine.h"
#include "cli/ConsoleFile.h"
#include "cli/ConsoleOutput.h"
#include "cli/DamageOutput.h"
#include "cli/ProgressBar.h"
#include "export/objects/ObjectsExport.h"
#include "text/Format.h"
#include "text/Messages.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <optional>

namespace vellumo {

namespace {

struct ObjectsOptions {
    FileArguments file;
    std::vector<std::string> tables; // empty: all
    std::string to;
};

// nullopt, with a message printed, when one is not there.
std::optional<std::vector<const TAdmMDBTable*>> chosenTables(
    const TAdmMDBFile& file, const std::vector<std::string>& names)
{
    for (const auto& name : names)
        if (findTableOrComplain(file, name) == nullptr) return std::nullopt;
    std::vector<const TAdmMDBTable*> tables;
    for (const auto& table : file.tables())
        if (names.empty() || std::ranges::find(names, table->name()) != names.end()) tables.push_back(table.get());
    return tables;
}

ObjectsReport writeObjects(
    const TAdmMDBFile& file, std::span<const TAdmMDBTable* const> tables, const std::string& folder)
{
    ProgressBar bar(localized("Writing objects"));
    return exportObjects(file, tables, folder, [&](std::uint64_t done, std::uint64_t total) {
        bar.show(done, total);
        return !interrupted();
    });
}

void printReport(const ObjectsReport& report, const TAdmMDBFile& file, const std::vector<std::string>& tables)
{
    for (const auto& failure : report.failures)
        printError(failure);
    const auto print = [](std::size_t count, const char* one, const char* many) {
        writeReport((count == 1 ? localized(one) : localizedFormat(many, {count})) + '\n');
    };
    print(report.written, messageKey("1 object written."), messageKey("%ld objects written."));
    if (report.damaged != 0)
        print(report.damaged, messageKey("1 object is damaged."), messageKey("%ld objects are damaged."));
    if (report.linked != 0)
        print(report.linked, messageKey("1 object is only linked."), messageKey("%ld objects are only linked."));
    writeReport(damageSection(file, tables));
}

ExitStatus extractObjects(const ObjectsOptions& options)
{
    if (options.to.empty()) return wrongUsage(localized("--to must not be empty."));
    const auto file = openDatabase(options.file);
    if (!file) return ExitStatus::Failed;
    const auto tables = chosenTables(*file, options.tables);
    if (!tables) return ExitStatus::Failed;
    const auto report = writeObjects(*file, *tables, options.to);
    printReport(report, *file, options.tables);
    if (report.isStopped) return failed(localized("Interrupted."));
    if (!report.failures.empty()) return ExitStatus::Failed;
    return report.damaged == 0 ? doneWith(*file) : ExitStatus::Damaged;
}

} // namespace

void addObjectsCommand(CLI::App& app, Command& command)
{
    auto options = std::make_shared<ObjectsOptions>();
    auto* sub = app.add_subcommand("objects", localized("Write all embedded files, and a list of them"));
    addFileArguments(*sub, options->file);
    sub->add_option("--table", options->tables, localized("Only this table; may be given several times"))
        ->allow_extra_args(false)
        ->type_name("NAME");
    sub->add_option("--to", options->to,
           localized("The folder for the files and their list, manifest.csv; made when it is missing"))
        ->required()
        ->type_name("FOLDER");
    sub->callback([options, &command] { command = [options] { return extractObjects(*options); }; });
}

} // namespace vellumo
