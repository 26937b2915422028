// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace vellumo {

// Exit statuses.
enum class ExitStatus {
    Done = 0,       // and whole
    Failed = 1,     // a file cannot be opened, something asked for is not in it, or output could not be written
    WrongUsage = 2, // the command line makes no sense
    Damaged = 3,    // done, but the file is damaged: what could be read was delivered, what was lost is listed
};

// What the command line asks for; set while it is parsed, run afterwards.
using Command = std::function<ExitStatus()>;

// Each adds a subcommand, which puts what it is asked for into `command`.
void addInfoCommand(CLI::App& app, Command& command);
void addCheckCommand(CLI::App& app, Command& command);
void addRowsCommand(CLI::App& app, Command& command);
void addFindCommand(CLI::App& app, Command& command);
void addBlobCommand(CLI::App& app, Command& command);
void addObjectsCommand(CLI::App& app, Command& command);
void addExportCommand(CLI::App& app, Command& command);

// The whole program; `arguments` without the program's name.
[[nodiscard]] ExitStatus runCommandLine(const std::vector<std::string>& arguments);

// A check for the parser of the command line: digits only, at least `minimum`, and no more than 64 bits hold. The
// function returns what is wrong (localised), "" for nothing.
[[nodiscard]] std::function<std::string(const std::string&)> wholeNumberFrom(std::int64_t minimum);

} // namespace vellumo
