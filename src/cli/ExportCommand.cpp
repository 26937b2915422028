#include "cli/CommandLine.h"
#include "cli/ConsoleFile.h"
#include "cli/ConsoleOutput.h"
#include "cli/ExportSettings.h"
#include "cli/Interrupt.h"
#include "cli/ProgressBar.h"
#include "export/ExportWizard.h"
#include "platform/Alerts.h"
#include "platform/Defaults.h"
#include "platform/FilePanels.h"
#include "platform/MainThreadQueue.h"
#include "platform/SystemLog.h"
#include "text/Format.h"
#include "text/Messages.h"

#include <CLI/CLI.hpp>
#include <memory>

namespace vellumo {

namespace {

// The command line asks for everything beforehand: nothing is stored, and nobody is asked.
class NoDefaults : public Defaults {
public:
    std::optional<std::string> string(std::string_view) const override { return std::nullopt; }
    std::optional<bool> boolean(std::string_view) const override { return std::nullopt; }
    void setString(std::string_view, std::string_view) override { }
    void setBoolean(std::string_view, bool) override { }
    bool synchronize() override { return true; }
};

class NoFilePanels : public FilePanels {
public:
    std::optional<std::vector<std::string>> openFiles(const std::vector<std::string>&) override { return std::nullopt; }
    std::optional<std::string> chooseFolder(const std::string&) override { return std::nullopt; }
    std::optional<std::string> saveFile(const std::string&, const std::string&) override { return std::nullopt; }
};

class ConsoleLog : public SystemLog {
public:
    void log(std::string_view line) override { printError(line); }
};

// The report: the title line, then the body.
class ConsoleAlerts : public Alerts {
public:
    void show(const Alert& alert) override
    {
        writeReport(alert.title + '\n');
        if (!alert.message.empty()) writeReport(alert.message + '\n');
    }
    void beep() override { }
};

class ConsoleExportView : public ExportWizardView {
public:
    explicit ConsoleExportView(const ExportWizard& wizard)
        : m_wizard(wizard)
        , m_bar("")
    {
    }
    void progressChanged() override
    {
        const auto& progress = m_wizard.progress();
        m_bar.setLabel(progress.label);
        m_bar.show(progress.value, progress.maximum);
    }
    void endProgressSheet() override { m_bar.clear(); }

private:
    const ExportWizard& m_wizard;
    ProgressBar m_bar;
};

void selectTables(ExportWizard& wizard, const std::vector<std::string>& tables)
{
    wizard.deselectAll();
    for (std::size_t row = 0; row < wizard.numberOfRowsInTableView(); ++row)
        if (std::ranges::find(tables, wizard.tableEntries()[row].tableName) != tables.end())
            wizard.setObjectValueForTableColumn(true, "selected", row);
}

ExitStatus runExport(const ExportSettings& settings)
{
    if (const auto complaint = complaintAbout(settings)) return wrongUsage(*complaint);
    const auto type = exportFileType(settings);
    if (exportWriterForType(type) == nullptr)
        return wrongUsage(localizedFormat("Export to %@ is not available in this version.", {settings.format}));
    const auto file = openDatabase(settings.file);
    if (!file) return ExitStatus::Failed;
    for (const auto& table : settings.tables)
        if (findTableOrComplain(*file, table) == nullptr) return ExitStatus::Failed;

    MainThreadQueue mainThread;
    NoDefaults defaults;
    NoFilePanels filePanels;
    ConsoleAlerts alerts;
    ConsoleLog log;
    ExportWizard wizard(*file, nullptr, type, {mainThread, defaults, filePanels, alerts, log});
    if (!settings.tables.empty()) selectTables(wizard, settings.tables);
    enterSettings(settings, wizard);
    ConsoleExportView view(wizard);
    wizard.setView(&view);
    const InterruptTarget target(wizard);
    wizard.startExport();
    mainThread.runUntil([&] { return wizard.report().has_value(); });
    if (!wizard.succeeded()) return ExitStatus::Failed;
    return wizard.report()->isSourceWhole ? ExitStatus::Done : ExitStatus::Damaged;
}

std::set<std::string> namesOf(std::span<const NamedTag> tags)
{
    std::set<std::string> names;
    for (const auto& tag : tags)
        names.insert(tag.name);
    return names;
}

void addOutputOptions(CLI::App& sub, ExportSettings& settings)
{
    sub.add_option("--format", settings.format, localized("The format to write"))
        ->required()
        ->check(CLI::IsMember(namesOf(formatNames)));
    sub.add_option("--to", settings.to,
           localized("The output folder; with --single-file, and always for sqlite, the output file"))
        ->required()
        ->type_name("PATH");
    sub.add_option("--table", settings.tables, localized("Only this table; may be given several times"))
        ->allow_extra_args(false)
        ->type_name("NAME");
    sub.add_flag("--single-file", settings.isSingleFile, localized("All tables in one file (xls, sql, sqlite)"));
}

void addTextOptions(CLI::App& sub, ExportSettings& settings)
{
    sub.add_flag("--no-header", settings.noHeader, localized("No line of column names (csv, txt, xls)"));
    sub.add_option("--field-delimiter", settings.fieldDelimiter,
           localized("Between two values (csv: comma or semicolon, which makes the decimal symbol a comma; txt: any)"))
        ->check(CLI::IsMember(namesOf(fieldDelimiterNames)));
    sub.add_option("--record-delimiter", settings.recordDelimiter, localized("At the end of each line (csv, txt)"))
        ->check(CLI::IsMember(namesOf(recordDelimiterNames)));
    sub.add_option("--decimal-symbol", settings.decimalSymbol,
           localized("In place of the point in Currency, Single and Double values (csv, txt, xml, sql)"))
        ->type_name("TEXT");
    sub.add_option("--encoding", settings.encoding,
           localized("The encoding of the text, such as UTF-8 (the default) or windows-1252 (csv, txt, xml)"))
        ->type_name("NAME");
}

void addDatabaseOptions(CLI::App& sub, ExportSettings& settings)
{
    sub.add_option(
           "--dialect", settings.dialect, localized("The server that the script is for (sql); mysql by default"))
        ->check(CLI::IsMember(namesOf(dialectNames)));
    sub.add_option("--schema", settings.schema,
           localized("The schema of the tables (sql for postgresql, oracle and sqlserver)"))
        ->type_name("NAME");
    sub.add_flag("--no-structure", settings.noStructure, localized("No table definitions (sql)"));
    sub.add_flag("--no-drop-table", settings.noDropTable, localized("No DROP TABLE (sql)"));
    sub.add_flag("--no-foreign-keys", settings.noForeignKeys, localized("No foreign keys (sql, sqlite)"));
    sub.add_flag("--no-indexes", settings.noIndexes, localized("No indexes (sql, sqlite)"));
    sub.add_flag("--no-data", settings.noData, localized("No rows (sql, sqlite)"));
}

} // namespace

void addExportCommand(CLI::App& app, Command& command)
{
    auto settings = std::make_shared<ExportSettings>();
    auto* sub = app.add_subcommand("export", localized("Export tables, all of them unless some are named"));
    addFileArguments(*sub, settings->file);
    addOutputOptions(*sub, *settings);
    addTextOptions(*sub, *settings);
    addDatabaseOptions(*sub, *settings);
    sub->footer(
        localized("A table whose name holds \"/\" can be exported only with --single-file or to sqlite: no file "
                  "can have its name.")
        + '\n' + sub->get_footer());
    sub->callback([settings, &command] { command = [settings] { return runExport(*settings); }; });
}

} // namespace vellumo
