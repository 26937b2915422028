// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <memory>
#include <sqlite3.h>
#include <string>
#include <vector>

namespace vellumo::test {

// Reads a database with the library itself, independently of the program's connection.
class SQLiteReader {
public:
    explicit SQLiteReader(const std::filesystem::path& path)
    {
        sqlite3* database = nullptr;
        m_isOpen = sqlite3_open_v2(path.c_str(), &database, SQLITE_OPEN_READONLY, nullptr) == SQLITE_OK;
        m_database.reset(database);
    }

    // Values of a row separated by "|", NULL as "NULL"; one entry "error: ..." when the statement fails.
    [[nodiscard]] std::vector<std::string> rows(const std::string& statement) const
    {
        if (!m_isOpen) return {"error: not open"};
        sqlite3_stmt* prepared = nullptr;
        sqlite3_prepare_v2(m_database.get(), statement.c_str(), -1, &prepared, nullptr);
        const std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)> owner(prepared, sqlite3_finalize);
        std::vector<std::string> found;
        int status = SQLITE_ERROR;
        while (prepared != nullptr && (status = sqlite3_step(prepared)) == SQLITE_ROW)
            found.push_back(rowText(prepared));
        if (status != SQLITE_DONE) found = {std::string("error: ") + sqlite3_errmsg(m_database.get())};
        return found;
    }

private:
    static std::string rowText(sqlite3_stmt* statement)
    {
        std::string text;
        for (int c = 0; c < sqlite3_column_count(statement); ++c) {
            if (c > 0) text += '|';
            const auto* value = reinterpret_cast<const char*>(sqlite3_column_text(statement, c));
            text += value == nullptr ? "NULL" : value;
        }
        return text;
    }

    std::unique_ptr<sqlite3, decltype(&sqlite3_close)> m_database{nullptr, sqlite3_close};
    bool m_isOpen = false;
};

} // namespace vellumo::test
