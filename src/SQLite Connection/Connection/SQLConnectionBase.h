// SPDX-License-Identifier: MIT
#pragma once

#include "SQLite Connection/DBSockets/DBSocket.h"
#include "SQLite Connection/DBSockets/DBSocketAddress.h"

#include <memory>

namespace vellumo {

// What connections to all servers have in common. Used by one thread at a time.
class SQLConnectionBase {
public:
    virtual ~SQLConnectionBase();
    SQLConnectionBase(const SQLConnectionBase&) = delete;
    SQLConnectionBase& operator=(const SQLConnectionBase&) = delete;

    // Full path of the database file; takes effect at the next connect.
    void setDbFilePath(std::string path) { m_address.setDbFilePath(std::move(path)); }
    [[nodiscard]] const DBSocketAddress& address() const { return m_address; }

    [[nodiscard]] virtual bool connect() = 0;
    [[nodiscard]] bool connected() const { return m_fConnected; }
    // As the last connect found it; 0 before.
    [[nodiscard]] int libraryVersionNumber() const { return m_libraryVersionNumber; }

    // Runs one statement, connecting first when that is needed. True when it succeeded.
    bool queryString(const std::string& statement);
    // The first row that it gave, as the socket tells it; none when it gave none.
    [[nodiscard]] DBRow row() const { return m_socket ? m_socket->row() : DBRow(); }
    // Null when it is refused, or the server's library knows no such statements. Goes before the connection is closed.
    [[nodiscard]] std::unique_ptr<DBStatement> prepare(const std::string& statement);
    // Runs one that was prepared. True when it succeeded.
    bool run(DBStatement& statement);
    // Whether that last statement failed because the file cannot be read or written: a full disk, for example.
    [[nodiscard]] bool isFileBroken() const { return m_isFileBroken; }
    // Why the last statement or connect failed; "" when it did not.
    [[nodiscard]] const std::string& getLastErrorMessage() const { return m_lastError; }
    void disconnect();

protected:
    SQLConnectionBase() = default;

    // Takes the place of the old socket. False when it could not be connected.
    [[nodiscard]] bool openSocket(std::unique_ptr<DBSocket> socket);

private:
    [[nodiscard]] bool note(bool isDone);

    DBSocketAddress m_address;
    std::unique_ptr<DBSocket> m_socket;
    bool m_fConnected = false;
    int m_libraryVersionNumber = 0;
    std::string m_lastError;
    bool m_isFileBroken = false; // by the last statement
};

} // namespace vellumo
