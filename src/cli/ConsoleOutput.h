// SPDX-License-Identifier: MIT
#pragma once

#include "cli/CommandLine.h"

#include <atomic>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

namespace vellumo {

// Standard output, buffered. False once a write has failed: what follows would go nowhere. A reader that has gone away
// is such a failure, but nothing to tell anybody.
//
// Data: on a terminal, characters that it would obey come as escapes, line feeds and tabs excepted.
bool writeOutput(std::string_view text);
// A report, its lines ended by line feeds: escaped wherever it goes.
bool writeReport(std::string_view text);
// The same on standard error, for a report of what goes to standard output.
void writeReportBesideData(std::string_view text);
// Bytes as they are.
bool writeBytes(std::string_view bytes);

// Writes what is buffered. False once a write has failed.
bool flushOutput();
// The same at the end. The status, or Failed (with a message) when not everything could be written.
[[nodiscard]] ExitStatus finishOutput(ExitStatus status);

// The text as one line of a message: line breaks inside are spaces, other characters that a terminal obeys are escapes.
[[nodiscard]] std::string messageLine(std::string_view text);

// One such line on standard error.
void printError(std::string_view message);

// The line, and the status that goes with it.
[[nodiscard]] ExitStatus failed(std::string_view message);
[[nodiscard]] ExitStatus wrongUsage(std::string_view message);

// The object as it is printed. Every text comes out: what is not UTF-8 is replaced.
[[nodiscard]] inline std::string jsonText(const nlohmann::ordered_json& json)
{
    return json.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + '\n';
}

// From now on the first Ctrl-C (or a request to terminate) only asks for a clean end; a second one ends the program at
// once. A closed pipe or a file that may grow no further is an error of the write, not the program's end.
void handleSignals();

// Raised by the first Ctrl-C, and never lowered.
[[nodiscard]] const std::atomic<bool>& interruptFlag();
[[nodiscard]] inline bool interrupted() { return interruptFlag(); }

} // namespace vellumo
