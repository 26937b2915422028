// SPDX-License-Identifier: MIT
#include "cli/CommandLine.h"

#include "cli/ConsoleOutput.h"
#include "text/Format.h"
#include "text/Messages.h"

#include <CLI/CLI.hpp>
#include <charconv>
#include <sstream>

namespace vellumo {

namespace {

void describeApp(CLI::App& app)
{
    app.name("vellumo-cli");
    for (const char* word : {messageKey("Usage"), messageKey("Positionals"), messageKey("OPTIONS"),
             messageKey("SUBCOMMAND"), messageKey("REQUIRED")})
        app.get_formatter()->label(word, localized(word));
    app.option_defaults()->group(localized("Options"));
    app.group(localized("Subcommands"));
    app.description(localized("Shows and exports Microsoft Access databases. Never writes to them."));
    app.set_help_flag("-h,--help", localized("Print this help and exit"));
    app.set_version_flag("--version", "vellumo-cli " VELLUMO_VERSION, localized("Print the version and exit"));
    app.require_subcommand(1);
    app.footer(
        localized("Exit status: 0 done and whole; 1 a file cannot be opened, something asked for is not in it, or "
                  "output could not be written; 2 wrong usage; 3 done, but the file is damaged: what could be "
                  "read was delivered, what was lost is listed."));
}

// The parser takes "--option=" for an option whose value follows. As two arguments it is what the user means: an empty
// value.
std::vector<std::string> withEmptyValues(const std::vector<std::string>& arguments)
{
    std::vector<std::string> result;
    for (const auto& argument : arguments) {
        const bool isEmptyValue = argument.starts_with("--") && argument.find('=') == argument.size() - 1;
        result.push_back(isEmptyValue ? argument.substr(0, argument.size() - 1) : argument);
        if (isEmptyValue) result.emplace_back();
    }
    return result;
}

} // namespace

ExitStatus runCommandLine(const std::vector<std::string>& arguments)
{
    CLI::App app;
    Command command;
    describeApp(app);
    addInfoCommand(app, command);
    addCheckCommand(app, command);
    addRowsCommand(app, command);
    addFindCommand(app, command);
    addBlobCommand(app, command);
    addObjectsCommand(app, command);
    addExportCommand(app, command);
    // A subcommand gets its help option before it takes over the name of the group.
    for (auto* sub : app.get_subcommands({}))
        sub->get_help_ptr()->group(localized("Options"));
    try {
        auto remaining = withEmptyValues(arguments);
        std::ranges::reverse(remaining); // the order in which the parser takes them
        app.parse(std::move(remaining));
    } catch (const CLI::Success& helpOrVersion) {
        std::ostringstream text;
        app.exit(helpOrVersion, text, text);
        writeOutput(text.str());
        return finishOutput(ExitStatus::Done);
    } catch (const CLI::Error& error) {
        return wrongUsage(localizedFormat("%@ (--help tells more)", {error.what()}));
    }
    return finishOutput(command());
}

std::function<std::string(const std::string&)> wholeNumberFrom(std::int64_t minimum)
{
    return [minimum](const std::string& text) {
        std::int64_t number = 0;
        const auto* end = text.data() + text.size();
        const auto result = std::from_chars(text.data(), end, number);
        const bool isValid = result.ec == std::errc() && result.ptr == end && number >= minimum;
        return isValid ? std::string() : localizedFormat("%@ is not a whole number from %ld on", {text, minimum});
    };
}

} // namespace vellumo
