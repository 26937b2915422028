// SPDX-License-Identifier: MIT
#include "cli/CommandLine.h"
#include "cli/ConsoleOutput.h"
#include "text/Messages.h"

#include <algorithm>
#include <exception>
#include <filesystem>

namespace {

// The translations lie beside the program's folder: in a build tree, or where it is installed.
std::string localeFolder()
{
    std::error_code error;
    const auto prefix = std::filesystem::read_symlink("/proc/self/exe", error).parent_path().parent_path();
    const auto built = prefix / "locale";
    return std::filesystem::is_directory(built, error) ? built.string() : (prefix / "share" / "locale").string();
}

} // namespace

int main(int argc, char** argv)
{
    try {
        vellumo::initMessages(localeFolder().c_str());
        vellumo::handleSignals();
        return static_cast<int>(vellumo::runCommandLine({argv + std::min(argc, 1), argv + argc}));
    } catch (const std::exception& error) { // out of memory, for one
        return static_cast<int>(vellumo::failed(error.what()));
    }
}
