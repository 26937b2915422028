// SPDX-License-Identifier: MIT
#include "cli/Password.h"

#include "cli/ConsoleOutput.h"
#include "cli/SecretLine.h"
#include "text/Format.h"
#include "text/Messages.h"
#include "text/UTF8.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <unistd.h>

namespace vellumo {

namespace {

constexpr const char* variable = "VELLUMO_PASSWORD";
// Far more than any program takes; what is longer is no password but another file.
constexpr std::size_t mostBytes = 4096;

struct Close {
    void operator()(std::FILE* file) const
    {
        if (file != stdin) std::fclose(file);
    }
};

PasswordAnswer checked(std::string line)
{
    if (line.empty()) return {.complaint = localized("The password is empty.")};
    if (!isWellFormedUTF8(line)) return {.complaint = localized("The password is not valid UTF-8.")};
    return {.password = std::move(line)};
}

PasswordAnswer unreadable(const std::string& path)
{
    return {.complaint = localizedFormat("Password file (%@) cannot be read: %@", {path, std::strerror(errno)})};
}

PasswordAnswer tooLong(const std::string& path)
{
    return {.complaint = localizedFormat("Password file (%@): too long a line.", {path})};
}

PasswordAnswer typedPassword(const std::string& path)
{
    auto line = readSecretLine(STDIN_FILENO, localized("Password:"), mostBytes);
    if (!line) return interrupted() ? PasswordAnswer{.complaint = localized("Interrupted.")} : unreadable(path);
    return line->size() > mostBytes ? tooLong(path) : checked(std::move(*line));
}

PasswordAnswer readFrom(const std::string& path)
{
    if (path == "-" && ::isatty(STDIN_FILENO) != 0) return typedPassword(path);
    const std::unique_ptr<std::FILE, Close> file(path == "-" ? stdin : std::fopen(path.c_str(), "re"));
    if (!file) return unreadable(path);
    std::string line;
    int next = 0;
    while (line.size() <= mostBytes && (next = std::fgetc(file.get())) != EOF && next != '\n')
        line += static_cast<char>(next);
    if (std::ferror(file.get()) != 0) return unreadable(path);
    if (line.size() > mostBytes) return tooLong(path);
    if (line.ends_with('\r')) line.pop_back();
    return checked(std::move(line));
}

} // namespace

PasswordAnswer readPassword(const std::string& path)
{
    const auto* inEnvironment = std::getenv(variable);
    std::string password = inEnvironment == nullptr ? "" : inEnvironment;
    ::unsetenv(variable); // programs that are started from here have no use for it
    if (!path.empty()) return readFrom(path);
    return password.empty() ? PasswordAnswer() : checked(std::move(password));
}

} // namespace vellumo
