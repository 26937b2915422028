// SPDX-License-Identifier: MIT
#include "cli/CommandLine.h"
#include "cli/ConsoleFile.h"
#include "cli/ConsoleOutput.h"
#include "cli/DamageOutput.h"
#include "text/Messages.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>

namespace vellumo {

namespace {

struct CheckOptions {
    FileArguments file;
    bool isJson = false;
};

std::string checkJson(const TAdmMDBFile& file)
{
    using Json = nlohmann::ordered_json;
    const Json facts = {{"name", file.label()}, {"path", file.fullPath()}, {"bytes", file.size()}};
    return jsonText({{"file", facts}, {"damage", damageJson(file)}});
}

// Unlike the other commands it leaves no line out.
void printRecords(const DamageReport& damage)
{
    if (damage.empty()) writeReport(localized("No damage found.") + '\n');
    for (const auto& record : damage.records())
        writeReport(messageLine(damageText(record)) + '\n');
}

ExitStatus checkFile(const CheckOptions& options)
{
    const auto file = openDatabase(options.file, IndexCheck::Yes);
    if (!file) return ExitStatus::Failed;
    if (options.isJson)
        writeOutput(checkJson(*file));
    else
        printRecords(file->damage());
    return doneWith(*file);
}

} // namespace

void addCheckCommand(CLI::App& app, Command& command)
{
    auto options = std::make_shared<CheckOptions>();
    auto* sub = app.add_subcommand("check", localized("Read everything in a file and list what is damaged"));
    addFileArguments(*sub, options->file);
    sub->add_flag("--json", options->isJson, localized("Print one JSON object"));
    sub->callback([options, &command] { command = [options] { return checkFile(*options); }; });
}

} // namespace vellumo
