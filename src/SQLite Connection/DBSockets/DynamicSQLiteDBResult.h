// SPDX-License-Identifier: MIT
#pragma once

#include "SQLite Connection/DBSockets/SQLiteDBResult.h"

#include <memory>

struct sqlite3_stmt;

namespace vellumo {

// A prepared statement of the library loaded at run time. Must go before the library is unloaded.
struct FinalizeStatement {
    void operator()(sqlite3_stmt* statement) const;
};
using StatementHandle = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

// The result of a statement of the library loaded at run time.
class DynamicSQLiteDBResult : public SQLiteDBResult {
public:
    // Takes a statement that was stepped once, with the status that gave.
    DynamicSQLiteDBResult(StatementHandle statement, int status);

    [[nodiscard]] int columnCount() const override;
    [[nodiscard]] std::string_view text(int column) const override;

private:
    StatementHandle m_statement;
};

} // namespace vellumo
