// SPDX-License-Identifier: MIT
#include "SQLite Connection/Connection/SQLConnectionBase.h"

#include "SQLite Connection/Connection/ConnectHandler.h"

namespace vellumo {

SQLConnectionBase::~SQLConnectionBase() = default;

bool SQLConnectionBase::openSocket(std::unique_ptr<DBSocket> socket)
{
    disconnect();
    m_socket = std::move(socket);
    m_fConnected = m_socket != nullptr && connectOnSecondThread(*m_socket);
    if (m_fConnected) m_libraryVersionNumber = m_socket->libraryVersionNumber();
    m_lastError = m_socket == nullptr ? std::string() : m_socket->getLastErrorMessage();
    return m_fConnected;
}

bool SQLConnectionBase::queryString(const std::string& statement)
{
    if (!m_fConnected && !connect()) return false;
    return note(m_socket->runQuery(statement) == 0);
}

std::unique_ptr<DBStatement> SQLConnectionBase::prepare(const std::string& statement)
{
    return m_fConnected ? m_socket->prepare(statement) : nullptr;
}

bool SQLConnectionBase::run(DBStatement& statement) { return note(statement.run() == 0); }

bool SQLConnectionBase::note(bool isDone)
{
    m_isFileBroken = !isDone && m_socket->isFileBroken();
    if (isDone)
        m_lastError.clear();
    else
        m_lastError = m_socket->getLastErrorMessage();
    return isDone;
}

void SQLConnectionBase::disconnect()
{
    if (m_fConnected) m_socket->close();
    m_socket.reset();
    m_fConnected = false;
}

} // namespace vellumo
