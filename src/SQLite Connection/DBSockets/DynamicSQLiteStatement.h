// SPDX-License-Identifier: MIT
#pragma once

#include "SQLite Connection/DBSockets/DBSocket.h"
#include "SQLite Connection/DBSockets/DynamicSQLiteDBResult.h"

namespace vellumo {

// A statement of the library loaded at run time, which has all functions that this needs.
class DynamicSQLiteStatement : public DBStatement {
public:
    explicit DynamicSQLiteStatement(StatementHandle statement);

    void bindNull(int parameter) override;
    void bindInteger(int parameter, std::int64_t value) override;
    void bindReal(int parameter, double value) override;
    void bindText(int parameter, std::string_view text) override;
    void bindBlob(int parameter, std::span<const std::byte> bytes) override;
    [[nodiscard]] int run() override;

private:
    void note(int code);

    StatementHandle m_statement;
    int m_refusal = 0; // of the first value that was not taken since the last run
};

} // namespace vellumo
