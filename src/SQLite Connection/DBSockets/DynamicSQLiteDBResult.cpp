// SPDX-License-Identifier: MIT
#include "SQLite Connection/DBSockets/DynamicSQLiteDBResult.h"

#include "SQLite Connection/DBSockets/SQLiteLibrary.h"

namespace vellumo {

// The status of a statement that failed was taken when it was stepped.
void FinalizeStatement::operator()(sqlite3_stmt* statement) const
{
    static_cast<void>(sqliteFunctions().finalize(statement));
}

DynamicSQLiteDBResult::DynamicSQLiteDBResult(StatementHandle statement, int status)
    : SQLiteDBResult(status)
    , m_statement(std::move(statement))
{
}

int DynamicSQLiteDBResult::columnCount() const { return sqliteFunctions().column_count(m_statement.get()); }

std::string_view DynamicSQLiteDBResult::text(int column) const
{
    if (status() != SQLITE_ROW || column < 0 || column >= columnCount()) return {};
    const auto* bytes = sqliteFunctions().column_text(m_statement.get(), column);
    if (bytes == nullptr) return {};
    const auto length = sqliteFunctions().column_bytes(m_statement.get(), column);
    return {reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(length)};
}

} // namespace vellumo
