#pragma once

#include <optional>
#include <string>
#include <vector>

namespace vellumo::test {

struct CommandResult {
    int status = -1; // exit status; -1 when the program did not end by itself
    std::string out;
    std::string err;
};

// Runs a program found by PATH, or by its path, without a shell, and waits for it.
[[nodiscard]] CommandResult run(const std::vector<std::string>& command);

// Whether a program of this name is on the PATH.
[[nodiscard]] bool isInstalled(const std::string& program);

} // namespace vellumo::test
