#include "cli/ConsoleOutput.h"

#include "text/Messages.h"

#include <algorithm>
#include <cstdio>
#include <string>

namespace vellumo {

bool writeOutput(std::string_view text)
{
    return std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::ferror(stdout) == 0;
}

ExitStatus finishOutput(ExitStatus status)
{
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return status;
    return failed(localized("Unable to write to standard output."));
}

void printError(std::string_view message)
{
    std::string line = "vellumo-cli: ";
    line += message;
    std::ranges::replace_if(
        line, [](char c) { return c == '\n' || c == '\r'; }, ' ');
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
}

ExitStatus failed(std::string_view message)
{
    printError(message);
    return ExitStatus::Failed;
}

ExitStatus wrongUsage(std::string_view message)
{
    printError(message);
    return ExitStatus::WrongUsage;
}

} // namespace vellumo
