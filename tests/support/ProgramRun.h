// SPDX-License-Identifier: MIT
#pragma once

#include "support/TempFolder.h"

#include <algorithm>
#include <fcntl.h>
#include <functional>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

// Runs a program and catches what it says.
namespace vellumo::test {

struct CommandResult {
    int status = -1; // exit status; -1 when a signal ended the program, 127 when there is no such program
    std::string out;
    std::string err;
};

class RunningProgram {
public:
    // `command`: a program found by PATH, or by its path, and its arguments; there is no shell. `outputPath`: where
    // standard output goes; "" catches it. `prepare` is called in the new process before it becomes the program.
    explicit RunningProgram(
        std::vector<std::string> command, const std::string& outputPath = "",
        const std::function<void()>& prepare = [] {})
    {
        std::vector<char*> argv(command.size() + 1); // null at the end
        std::ranges::transform(command, argv.begin(), [](std::string& argument) { return argument.data(); });
        m_process = ::fork();
        if (m_process != 0) return;
        ::dup2(::open("/dev/null", O_RDONLY), STDIN_FILENO);
        // Files rather than pipes: nothing can fill up while the program is waited for.
        redirect(STDOUT_FILENO, outputPath.empty() ? m_folder.path("out") : outputPath);
        redirect(STDERR_FILENO, m_folder.path("err"));
        prepare();
        ::execvp(argv[0], argv.data());
        ::_exit(127);
    }

    [[nodiscard]] pid_t process() const { return m_process; }

    [[nodiscard]] CommandResult wait() const
    {
        int status = 0;
        ::waitpid(m_process, &status, 0);
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, m_folder.read("out").value_or(""),
            m_folder.read("err").value_or("")};
    }

private:
    static void redirect(int descriptor, const std::string& path)
    {
        ::dup2(::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), descriptor);
    }

    TempFolder m_folder;
    pid_t m_process = -1;
};

} // namespace vellumo::test
