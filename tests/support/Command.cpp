#include "support/Command.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <spawn.h>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

namespace vellumo::test {

namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

std::string content(std::FILE* file)
{
    std::string text;
    std::rewind(file);
    std::array<char, 65536> buffer{};
    while (const auto count = std::fread(buffer.data(), 1, buffer.size(), file))
        text.append(buffer.data(), count);
    return text;
}

} // namespace

CommandResult run(const std::vector<std::string>& command)
{
    // Files rather than pipes: nothing can fill up while the program is waited for.
    const File out(std::tmpfile());
    const File err(std::tmpfile());
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, fileno(out.get()), 1);
    posix_spawn_file_actions_adddup2(&actions, fileno(err.get()), 2);
    std::vector<char*> arguments;
    for (const auto& argument : command)
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    pid_t child = 0;
    CommandResult result;
    const auto failed = posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    if (failed != 0 || waitpid(child, &status, 0) != child) return result;
    if (WIFEXITED(status)) result.status = WEXITSTATUS(status);
    result.out = content(out.get());
    result.err = content(err.get());
    return result;
}

bool isInstalled(const std::string& program)
{
    const auto* path = std::getenv("PATH");
    std::istringstream folders(path == nullptr ? "" : path);
    for (std::string folder; std::getline(folders, folder, ':');)
        if (access((folder + "/" + program).c_str(), X_OK) == 0) return true;
    return false;
}

} // namespace vellumo::test
