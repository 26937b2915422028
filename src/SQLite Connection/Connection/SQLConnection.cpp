// SPDX-License-Identifier: MIT
#include "SQLite Connection/Connection/SQLConnection.h"

#include "SQLite Connection/DBSockets/DynamicSQLiteAPISocket.h"

namespace vellumo {

namespace {

constexpr int firstVersionWithForeignKeys = 3000000;

} // namespace

SQLConnection::SQLConnection(ServerType serverType, LoadErrorWindow& window)
    : m_serverType(serverType)
    , m_window(window)
{
}

std::string SQLConnection::createDbFile() const { return SQLiteAPISocket::CreateDbFile(m_window, address()); }

std::unique_ptr<DBSocket> SQLConnection::makeSocket() const
{
    if (m_serverType != ServerType::SQLite) return nullptr;
    auto socket = std::make_unique<DynamicSQLiteAPISocket>(m_window);
    socket->setAddress(address());
    return socket;
}

bool SQLConnection::connect()
{
    if (!openSocket(makeSocket())) return false;
    // A journal or a foreign key setting that is refused leaves a connection that is slower or stricter, not broken.
    queryString("PRAGMA journal_mode = MEMORY");
    if (libraryVersionNumber() >= firstVersionWithForeignKeys) queryString("PRAGMA foreign_keys = ON");
    return connected();
}

} // namespace vellumo
