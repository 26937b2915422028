// SPDX-License-Identifier: MIT
#include "cli/ConsoleOutput.h"

#include "platform/FirstTermination.h"
#include "text/Messages.h"
#include "text/TerminalText.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <unistd.h>

namespace vellumo {

namespace {

bool isReaderGone = false;

// The cause of a failure is known only when it happens.
bool noteFailure()
{
    if (errno == EPIPE) isReaderGone = true;
    return false;
}

bool isTerminal()
{
    static const bool is = ::isatty(STDOUT_FILENO) == 1;
    return is;
}

} // namespace

bool writeOutput(std::string_view text)
{
    return isTerminal() ? writeBytes(escapedText(text, "\n\t")) : writeBytes(text);
}

bool writeReport(std::string_view text) { return writeBytes(escapedText(text, "\n")); }

void writeReportBesideData(std::string_view text)
{
    static_cast<void>(std::fflush(stdout) == 0 || noteFailure());
    const auto escaped = escapedText(text, "\n");
    std::fwrite(escaped.data(), 1, escaped.size(), stderr);
}

bool writeBytes(std::string_view bytes)
{
    if (std::fwrite(bytes.data(), 1, bytes.size(), stdout) != bytes.size()) return noteFailure();
    return std::ferror(stdout) == 0;
}

bool flushOutput() { return std::fflush(stdout) == 0 || noteFailure(); }

ExitStatus finishOutput(ExitStatus status)
{
    const bool isFlushed = flushOutput();
    if ((isFlushed && std::ferror(stdout) == 0) || isReaderGone) return status;
    return failed(localized("Unable to write to standard output."));
}

std::string messageLine(std::string_view text)
{
    auto line = escapedText(text, "\n\r");
    std::ranges::replace_if(
        line, [](char c) { return c == '\n' || c == '\r'; }, ' ');
    return line;
}

void printError(std::string_view message)
{
    // On a terminal it comes behind what was written before it.
    static_cast<void>(flushOutput());
    const auto line = "vellumo-cli: " + messageLine(message) + '\n';
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

namespace {

// Signal handlers may touch lock-free atomics only.
static_assert(std::atomic<bool>::is_always_lock_free);
std::atomic<bool> isInterrupted = false;

void onInterrupt(int) { isInterrupted = true; }

} // namespace

void handleSignals()
{
    // Nothing else would end a wait for a pipe that nobody reads.
    onFirstTermination(onInterrupt, BlockedCalls::Fail);
    for (const int signal : {SIGPIPE, SIGXFSZ})
        std::signal(signal, SIG_IGN);
}

const std::atomic<bool>& interruptFlag() { return isInterrupted; }

} // namespace vellumo
