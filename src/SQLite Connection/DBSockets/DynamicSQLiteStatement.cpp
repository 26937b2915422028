// SPDX-License-Identifier: MIT
#include "SQLite Connection/DBSockets/DynamicSQLiteStatement.h"

#include "SQLite Connection/DBSockets/SQLiteLibrary.h"

#include <climits>
#include <utility>

namespace vellumo {

namespace {

// The library takes lengths as int, and a null pointer for a null value.
template <typename Bind, typename Bytes>
int bindBytes(Bind bind, sqlite3_stmt* statement, int parameter, const Bytes& bytes)
{
    if (bytes.size() > INT_MAX) return SQLITE_TOOBIG;
    const char* data = bytes.empty() ? "" : reinterpret_cast<const char*>(bytes.data());
    return bind(statement, parameter + 1, data, static_cast<int>(bytes.size()), SQLITE_STATIC);
}

} // namespace

DynamicSQLiteStatement::DynamicSQLiteStatement(StatementHandle statement)
    : m_statement(std::move(statement))
{
}

void DynamicSQLiteStatement::note(int code)
{
    if (m_refusal == SQLITE_OK) m_refusal = code;
}

void DynamicSQLiteStatement::bindNull(int parameter)
{
    note(sqliteFunctions().bind_null(m_statement.get(), parameter + 1));
}

void DynamicSQLiteStatement::bindInteger(int parameter, std::int64_t value)
{
    note(sqliteFunctions().bind_int64(m_statement.get(), parameter + 1, value));
}

void DynamicSQLiteStatement::bindReal(int parameter, double value)
{
    note(sqliteFunctions().bind_double(m_statement.get(), parameter + 1, value));
}

void DynamicSQLiteStatement::bindText(int parameter, std::string_view text)
{
    note(bindBytes(sqliteFunctions().bind_text, m_statement.get(), parameter, text));
}

void DynamicSQLiteStatement::bindBlob(int parameter, std::span<const std::byte> bytes)
{
    note(bindBytes(sqliteFunctions().bind_blob, m_statement.get(), parameter, bytes));
}

// A statement that was run holds on to its tables until it is reset.
int DynamicSQLiteStatement::run()
{
    if (const int refusal = std::exchange(m_refusal, SQLITE_OK); refusal != SQLITE_OK) return refusal;
    const int status = sqliteFunctions().step(m_statement.get());
    const int code = sqliteFunctions().reset(m_statement.get());
    if (status == SQLITE_ROW || status == SQLITE_DONE) return code;
    return code == SQLITE_OK ? status : code;
}

} // namespace vellumo
