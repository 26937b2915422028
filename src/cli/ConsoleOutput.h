#pragma once

#include "cli/CommandLine.h"

#include <string_view>

namespace vellumo {

// Standard output, buffered. False once a write has failed: what follows would go nowhere.
bool writeOutput(std::string_view text);

// Writes what is buffered. The status, or Failed (with a message) when not everything could be written.
[[nodiscard]] ExitStatus finishOutput(ExitStatus status);

// One line on standard error; line breaks inside become spaces.
void printError(std::string_view message);

// The line, and the status that goes with it.
[[nodiscard]] ExitStatus failed(std::string_view message);
[[nodiscard]] ExitStatus wrongUsage(std::string_view message);

} // namespace vellumo
