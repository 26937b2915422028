// SPDX-License-Identifier: MIT
#pragma once

#include "support/ProgramRun.h"

namespace vellumo::test {

// Runs a program to its end.
[[nodiscard]] CommandResult run(const std::vector<std::string>& command);

// Whether a program of this name is on the PATH.
[[nodiscard]] bool isInstalled(const std::string& program);

} // namespace vellumo::test
