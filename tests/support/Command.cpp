// SPDX-License-Identifier: MIT
#include "support/Command.h"

#include <sstream>

namespace vellumo::test {

CommandResult run(const std::vector<std::string>& command) { return RunningProgram(command).wait(); }

bool isInstalled(const std::string& program)
{
    const auto* path = std::getenv("PATH");
    std::istringstream folders(path == nullptr ? "" : path);
    for (std::string folder; std::getline(folders, folder, ':');)
        if (access((folder + "/" + program).c_str(), X_OK) == 0) return true;
    return false;
}

} // namespace vellumo::test
