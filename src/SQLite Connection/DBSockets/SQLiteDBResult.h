// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace vellumo {

// The result of one statement: how its last step ended, and the row at which it stands.
class SQLiteDBResult {
public:
    explicit SQLiteDBResult(int status)
        : m_status(status)
    {
    }
    virtual ~SQLiteDBResult() = default;
    SQLiteDBResult(const SQLiteDBResult&) = delete;
    SQLiteDBResult& operator=(const SQLiteDBResult&) = delete;

    // SQLite's code of the last step: 100 at a row, 101 when there are no more.
    [[nodiscard]] int status() const { return m_status; }

    [[nodiscard]] virtual int columnCount() const = 0;
    // A value of the row as UTF-8 text; one without data, not only empty, for NULL and for a column that is not there.
    // Valid as long as the result.
    [[nodiscard]] virtual std::string_view text(int column) const = 0;

private:
    int m_status;
};

} // namespace vellumo
