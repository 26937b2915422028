// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vellumo {

// A statement that is prepared once and run with one set of values after the other. It goes before its socket is
// closed. Parameters count from 0, as their question marks stand in the text; each keeps its value until it gets
// another one. A value that is refused makes the next run fail.
class DBStatement {
public:
    virtual ~DBStatement() = default;

    virtual void bindNull(int parameter) = 0;
    virtual void bindInteger(int parameter, std::int64_t value) = 0;
    virtual void bindReal(int parameter, double value) = 0;
    // Neither is copied: the bytes stay where they are until the runs that use them are over. An empty value is one
    // without bytes, not null.
    virtual void bindText(int parameter, std::string_view text) = 0;
    virtual void bindBlob(int parameter, std::span<const std::byte> bytes) = 0;

    // 0 when the statement is done, else the server's own code.
    [[nodiscard]] virtual int run() = 0;
};

// The values of a row as UTF-8 texts; nullopt: null.
using DBRow = std::vector<std::optional<std::string>>;

// One open database, of whatever server. Used by one thread at a time, but for `stopQuery`.
class DBSocket {
public:
    virtual ~DBSocket() = default;

    // Sets an option that `connect` looks at; options that the socket does not know are ignored.
    virtual void setConnectOptions(int value, std::string_view key) = 0;
    [[nodiscard]] virtual bool connect() = 0;
    // Runs the first statement of the text: 0 when it gave a row or is done, else the server's own code. Its result
    // stays until the next call.
    [[nodiscard]] virtual int runQuery(const std::string& statement) = 0;
    // The first row of that result; none when it has no row, and where the server's library cannot read any.
    [[nodiscard]] virtual DBRow row() const = 0;
    // Null when the statement is refused, or the socket cannot do without its text.
    [[nodiscard]] virtual std::unique_ptr<DBStatement> prepare(const std::string& statement) = 0;
    // Why the last step failed; "" when it did not.
    [[nodiscard]] virtual std::string getLastErrorMessage() const = 0;
    // Whether the last step failed for want of a place that can be read and written, not for what it was to do there.
    [[nodiscard]] virtual bool isFileBroken() const = 0;
    // Makes a running statement fail soon. Any thread, while the socket is connected. False when that cannot be done.
    virtual bool stopQuery() = 0;
    virtual void close() = 0;
    // The version of the server's library as one number; 0 when unknown.
    [[nodiscard]] virtual int libraryVersionNumber() const = 0;
};

} // namespace vellumo
