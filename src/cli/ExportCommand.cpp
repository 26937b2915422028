// SPDX-License-Identifier: MIT
#include "cli/CommandLine.h"
#include "cli/ConsoleExport.h"
#include "cli/ConsoleFile.h"
#include "cli/ConsoleOutput.h"
#include "cli/ExportSettings.h"
#include "export/sql/SQLDialectFacts.h"
#include "model/TAdmMDBFile.h"
#include "text/Format.h"
#include "text/Messages.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <functional>
#include <memory>

namespace vellumo {

namespace {

// The tables that are named, or all, each with the name of its file.
std::vector<ExportEntry> entriesFor(const TAdmMDBFile& file, const std::vector<std::string>& names, ExportFileType type)
{
    std::vector<ExportEntry> entries;
    for (const auto& table : file.tables()) {
        if (!names.empty() && std::ranges::find(names, table->name()) == names.end()) continue;
        entries.push_back(ExportEntry::exportEntryWithTableName(table->name(), type));
        entries.back().selected = true;
    }
    return entries;
}

void printReport(const ExportReport& report, bool isBesideData)
{
    const auto texts = exportReportTexts(report);
    const auto text = texts.title + '\n' + (texts.body.empty() ? "" : texts.body + '\n');
    if (isBesideData)
        writeReportBesideData(text);
    else
        writeReport(text);
}

ExitStatus statusOf(const ExportReport& report)
{
    if (!report.isDone()) return ExitStatus::Failed;
    return report.isSourceWhole() ? ExitStatus::Done : ExitStatus::Damaged;
}

ExitStatus exportToFiles(const TAdmMDBFile& file, const std::vector<ExportEntry>& entries, const ExportOptions& options)
{
    auto report = exportWithProgress(file, entries, options);
    printFindings(report, options);
    printReport(report, false);
    return statusOf(report);
}

ExitStatus exportToStandardOutput(
    const TAdmMDBFile& file, const std::vector<ExportEntry>& entries, const ExportOptions& options)
{
    auto report = printExport(file, entries, options);
    if (!report) return ExitStatus::Done;
    printFindings(*report, options);
    printReport(*report, true);
    return statusOf(*report);
}

ExitStatus exportTables(const ExportSettings& settings)
{
    if (const auto complaint = complaintAbout(settings)) return wrongUsage(*complaint);
    auto file = openDatabase(settings.file);
    if (!file) return ExitStatus::Failed;
    if (settings.lookupTexts) {
        const bool hasKeys = findExportFormat(settings.format)->has(ExportOption::Indexes);
        file = withLookupTexts(std::move(file), settings.tables, hasKeys);
    }
    for (const auto& table : settings.tables)
        if (findTableOrComplain(*file, table) == nullptr) return ExitStatus::Failed;
    const auto options = optionsFrom(settings);
    auto entries = entriesFor(*file, settings.tables, options.fileType);
    if (!settings.choice.isAll()) {
        auto choice = choiceOrComplain(*file->findTable(settings.tables.front()), settings.choice);
        if (!choice) return ExitStatus::Failed;
        entries.front().choice = std::move(*choice);
    }
    return (settings.isToStandardOutput() ? exportToStandardOutput : exportToFiles)(*file, entries, options);
}

template <typename Infos> std::set<std::string> namesOf(const Infos& infos)
{
    std::set<std::string> names;
    for (const auto& info : infos)
        names.emplace(info.name);
    return names;
}

std::set<std::string> dialectNames()
{
    std::set<std::string> names;
    for (const auto* dialect : sqlDialects())
        names.emplace(dialect->name);
    return names;
}

// The names of the formats that it is true of: "sql, sqlite".
template <typename Condition> std::string formatsWith(Condition condition)
{
    std::string names;
    for (const auto& info : exportFormats())
        if (condition(info)) names.append(names.empty() ? "" : ", ").append(info.name);
    return names;
}

std::string formatsWith(ExportOption option)
{
    return formatsWith([option](const FormatInfo& info) { return info.has(option); });
}

// "No rows (sql, sqlite)".
std::string withFormats(const std::string& help, const std::string& formats)
{
    return format("%@ (%@)", {help, formats});
}

void addOutputOptions(CLI::App& sub, ExportSettings& settings)
{
    sub.add_option("--format", settings.format, localized("The format to write"))
        ->required()
        ->check(CLI::IsMember(namesOf(exportFormats())));
    sub.add_option("--to", settings.to,
           localized(
               "The output folder, made when it is missing; with --single-file, and always for sqlite, the output "
               "file; - for standard output"))
        ->required()
        ->type_name("PATH");
    sub.add_option("--table", settings.tables, localized("Only this table; may be given several times"))
        ->allow_extra_args(false)
        ->type_name("NAME");
    sub.add_option("--objects", settings.objects,
           withFormats(localized("With --exact: objects as files in this folder, their paths in the cells"),
               formatsWith(ExportOption::Objects)))
        ->type_name("FOLDER");
    addRowChoice(sub, settings.choice);
    sub.add_flag("--single-file", settings.isSingleFile,
        withFormats(localized("All tables in one file"), formatsWith(std::mem_fn(&FormatInfo::hasSingleFileMode))));
}

void addSwitches(CLI::App& sub, ExportSettings& settings, std::span<const ExportSwitch> choices)
{
    for (const auto& choice : choices)
        sub.add_flag(choice.argument, settings.switched[choice.option],
            withFormats(localized(choice.helpKey), formatsWith(choice.option)));
}

void addTextOptions(CLI::App& sub, ExportSettings& settings)
{
    addSwitches(sub, settings, exportSwitches().first(textSwitchCount));
    sub.add_option("--field-delimiter", settings.fieldDelimiter,
           localized("Between two values (csv: comma or semicolon, which makes the decimal symbol a comma; txt: any)"))
        ->check(CLI::IsMember(namesOf(fieldDelimiters())));
    sub.add_option("--record-delimiter", settings.recordDelimiter,
           withFormats(localized("At the end of each line"), formatsWith(ExportOption::RecordDelimiter)))
        ->check(CLI::IsMember(namesOf(recordDelimiters())));
    sub.add_option("--decimal-symbol", settings.decimalSymbol,
           withFormats(localized("In place of the point in Currency, Single and Double values"),
               formatsWith(ExportOption::DecimalSymbol)))
        ->type_name("TEXT");
    sub.add_option("--encoding", settings.encoding,
           withFormats(localized("The encoding of the text, such as UTF-8 (the default) or windows-1252"),
               formatsWith(ExportOption::Encoding)))
        ->type_name("NAME");
}

void addDatabaseOptions(CLI::App& sub, ExportSettings& settings)
{
    sub.add_option("--dialect", settings.dialect,
           localizedFormat("The server that the script is for (%@); %@ by default",
               {formatsWith(ExportOption::Dialect), sqlDialectFacts(ExportOptions().sqlDialect).name}))
        ->check(CLI::IsMember(dialectNames()));
    sub.add_option("--schema", settings.schema,
           localized("The schema of the tables (sql for postgresql, oracle and sqlserver)"))
        ->type_name("NAME");
    addSwitches(sub, settings, exportSwitches().subspan(textSwitchCount));
}

} // namespace

void addExportCommand(CLI::App& app, Command& command)
{
    auto settings = std::make_shared<ExportSettings>();
    auto* sub = app.add_subcommand("export", localized("Export tables, all of them unless some are named"));
    addFileArguments(*sub, settings->file);
    addOutputOptions(*sub, *settings);
    addLookupOption(*sub, settings->lookupTexts);
    addTextOptions(*sub, *settings);
    addDatabaseOptions(*sub, *settings);
    sub->footer(
        localized("A table whose name holds \"/\" can be exported only with --single-file or to sqlite: no file "
                  "can have its name.")
        + '\n' + sub->get_footer());
    sub->callback([settings, &command] { command = [settings] { return exportTables(*settings); }; });
}

} // namespace vellumo
