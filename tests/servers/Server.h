// SPDX-License-Identifier: MIT
#pragma once

#include "SQLite Connection/Connection/ServerType.h"
#include "support/Command.h"
#include "support/TempFolder.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vellumo::test {

// The expressions with `separator` between them.
[[nodiscard]] inline std::string joined(const std::vector<std::string>& expressions, std::string_view separator)
{
    std::string text;
    for (const auto& expression : expressions)
        text.append(text.empty() ? std::string_view() : separator).append(expression);
    return text;
}

// A database server of the test's own: it keeps everything in a temporary folder, listens on no network, and is gone
// with the object.
class Server {
public:
    virtual ~Server() = default;

    [[nodiscard]] virtual ServerType type() const = 0;
    // Runs a script up to its first error, which is in `err` then.
    [[nodiscard]] virtual CommandResult runScript(const std::string& path) = 0;
    // Runs one statement; a row a line.
    [[nodiscard]] virtual CommandResult query(const std::string& statement) = 0;

    // A name as the server quotes it.
    [[nodiscard]] virtual std::string quoted(std::string_view name) const { return '"' + std::string(name) + '"'; }
    // An expression for the hexadecimal text of a column's value, "-" when it is null.
    [[nodiscard]] virtual std::string hexOf(const std::string& column, std::string_view accessType) const = 0;
    // An expression for several of them, with commas in between.
    [[nodiscard]] virtual std::string concatenation(const std::vector<std::string>& expressions) const
    {
        return joined(expressions, " || ',' || ");
    }
};

// Null when the server is not installed; does not return when one that is installed cannot be started.
[[nodiscard]] std::unique_ptr<Server> startSQLite();
// A database that exists; "": a new one.
[[nodiscard]] std::unique_ptr<Server> openSQLite(const std::string& path);
[[nodiscard]] std::unique_ptr<Server> startMariaDB();
[[nodiscard]] std::unique_ptr<Server> startPostgreSQL();

// Ends the test program with the reason.
[[noreturn]] inline void failToStart(const char* server, const CommandResult& result)
{
    std::fprintf(stderr, "%s cannot be started:\n%s%s", server, result.out.c_str(), result.err.c_str());
    std::exit(1);
}

} // namespace vellumo::test
