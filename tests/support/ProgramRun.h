#pragma once

#include "support/TempFolder.h"

#include <cstdlib>
#include <fcntl.h>
#include <functional>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

// Runs a program of the build and catches what it says.
namespace vellumo::test {

struct ProgramResult {
    int status = -1; // -1: ended by a signal
    std::string output;
    std::string errors;
};

class RunningProgram {
public:
    // `outputPath`: where standard output goes; "" catches it. `prepare` is called in the new process before it becomes
    // the program.
    RunningProgram(
        const std::string& name, std::vector<std::string> arguments, const std::string& outputPath = "",
        const std::function<void()>& prepare = [] {})
    {
        const auto program = std::string(VELLUMO_BIN_DIR "/") + name;
        std::vector<char*> argv = {const_cast<char*>(program.c_str())};
        for (auto& argument : arguments)
            argv.push_back(argument.data());
        argv.push_back(nullptr);
        m_process = ::fork();
        if (m_process != 0) return;
        redirect(STDOUT_FILENO, outputPath.empty() ? m_folder.path("out") : outputPath);
        redirect(STDERR_FILENO, m_folder.path("err"));
        ::setenv("LC_ALL", "C", 1);
        prepare();
        ::execv(program.c_str(), argv.data());
        ::_exit(127);
    }

    [[nodiscard]] pid_t process() const { return m_process; }

    [[nodiscard]] ProgramResult wait() const
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

inline ProgramResult runProgram(
    const std::string& name, const std::vector<std::string>& arguments, const std::string& outputPath = "",
    const std::function<void()>& prepare = [] {})
{
    return RunningProgram(name, arguments, outputPath, prepare).wait();
}

} // namespace vellumo::test
