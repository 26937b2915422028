// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace vellumo {

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
    // Why the last step failed; "" when it did not.
    [[nodiscard]] virtual std::string getLastErrorMessage() const = 0;
    // Makes a running statement fail soon. Any thread, while the socket is connected. False when that cannot be done.
    virtual bool stopQuery() = 0;
    virtual void close() = 0;
    // The version of the server's library as one number; 0 when unknown.
    [[nodiscard]] virtual int libraryVersionNumber() const = 0;
};

} // namespace vellumo
