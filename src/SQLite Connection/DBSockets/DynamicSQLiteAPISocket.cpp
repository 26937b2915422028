// SPDX-License-Identifier: MIT
#include "SQLite Connection/DBSockets/DynamicSQLiteAPISocket.h"

#include "SQLite Connection/DBSockets/DynamicSQLiteStatement.h"
#include "SQLite Connection/DBSockets/SQLiteLibrary.h"
#include "text/Messages.h"

namespace vellumo {

void DynamicSQLiteAPISocket::CloseDatabase::operator()(sqlite3* database) const
{
    static_cast<void>(sqliteFunctions().close(database));
}

DynamicSQLiteAPISocket::DynamicSQLiteAPISocket(LoadErrorWindow& window)
    : m_isLibraryLoaded(LoadSQLiteLibrary(window))
{
}

DynamicSQLiteAPISocket::~DynamicSQLiteAPISocket()
{
    m_result.reset();
    m_dbHandler.reset();
    if (m_isLibraryLoaded) UnloadSQLiteLibrary();
}

bool DynamicSQLiteAPISocket::connect()
{
    if (!m_isLibraryLoaded || address().dbFilePath().empty()) return false;
    return open() == SQLITE_OK && applyPassword() == SQLITE_OK;
}

// Also after a failure SQLite hands out a handle: it tells why.
int DynamicSQLiteAPISocket::open()
{
    m_result.reset();
    m_refusal.clear();
    sqlite3* database = nullptr;
    const int code = sqliteFunctions().open_v2(address().dbFilePath().c_str(), &database, openFlags(), nullptr);
    m_dbHandler.reset(database);
    return code;
}

int DynamicSQLiteAPISocket::applyPassword()
{
    const auto& password = address().password();
    if (password.empty()) return SQLITE_OK;
    if (sqliteFunctions().key == nullptr) {
        m_dbHandler.reset();
        m_refusal = missingEntryPoint("sqlite3_key");
        return SQLITE_ERROR;
    }
    return sqliteFunctions().key(m_dbHandler.get(), password.data(), static_cast<int>(password.size()));
}

int DynamicSQLiteAPISocket::runQuery(const std::string& statement)
{
    m_result.reset();
    if (!m_dbHandler) return SQLITE_ERROR;
    sqlite3_stmt* prepared = nullptr;
    // A negative length makes SQLite read up to the terminator; given a length it would copy the text first.
    const int code = sqliteFunctions().prepare_v2(m_dbHandler.get(), statement.c_str(), -1, &prepared, nullptr);
    StatementHandle handle(prepared);
    if (code != SQLITE_OK) return code;
    const int status = sqliteFunctions().step(handle.get());
    if (status != SQLITE_ROW && status != SQLITE_DONE) return status;
    // A statement that gives rows has run even where the library cannot read them: a pragma for example.
    if (sqliteFunctions().canReadRows()) m_result = std::make_unique<DynamicSQLiteDBResult>(std::move(handle), status);
    return 0;
}

DBRow DynamicSQLiteAPISocket::row() const
{
    if (!m_result || m_result->status() != SQLITE_ROW) return {};
    DBRow values;
    for (int c = 0; c < m_result->columnCount(); ++c) {
        const auto text = m_result->text(c);
        values.push_back(text.data() == nullptr ? std::nullopt : std::optional<std::string>(text));
    }
    return values;
}

std::unique_ptr<DBStatement> DynamicSQLiteAPISocket::prepare(const std::string& statement)
{
    m_result.reset();
    if (!m_dbHandler || !sqliteFunctions().canBind()) return nullptr;
    sqlite3_stmt* prepared = nullptr;
    const int code = sqliteFunctions().prepare_v2(m_dbHandler.get(), statement.c_str(), -1, &prepared, nullptr);
    StatementHandle handle(prepared);
    return code == SQLITE_OK ? std::make_unique<DynamicSQLiteStatement>(std::move(handle)) : nullptr;
}

bool DynamicSQLiteAPISocket::isFileBroken() const
{
    if (!m_dbHandler) return false;
    switch (sqliteFunctions().errcode(m_dbHandler.get())) {
    case SQLITE_READONLY:
    case SQLITE_IOERR:
    case SQLITE_CORRUPT:
    case SQLITE_FULL:
    case SQLITE_CANTOPEN:
    case SQLITE_NOTADB: return true;
    default: return false;
    }
}

std::string DynamicSQLiteAPISocket::getLastErrorMessage() const
{
    if (!m_isLibraryLoaded) return localized("SQLite dynamic library not found!");
    if (address().dbFilePath().empty()) return localized("Database file path is invalid");
    if (!m_refusal.empty()) return m_refusal;
    if (!m_dbHandler) return localized("No connection handler!");
    const int code = sqliteFunctions().errcode(m_dbHandler.get());
    if (code == SQLITE_OK || code == SQLITE_ROW || code == SQLITE_DONE) return {};
    return sqliteFunctions().errmsg(m_dbHandler.get());
}

bool DynamicSQLiteAPISocket::stopQuery()
{
    if (!m_dbHandler || sqliteFunctions().interrupt == nullptr) return false;
    sqliteFunctions().interrupt(m_dbHandler.get());
    return true;
}

void DynamicSQLiteAPISocket::close()
{
    m_result.reset();
    m_refusal.clear();
    m_dbHandler.reset();
}

int DynamicSQLiteAPISocket::libraryVersionNumber() const
{
    return m_isLibraryLoaded ? sqliteFunctions().libversion_number() : 0;
}

} // namespace vellumo
