// SPDX-License-Identifier: MIT
#include "export/SQLitePreview.h"

#include "SQLite Connection/Connection/SQLConnection.h"
#include "text/Format.h"
#include "text/Messages.h"

#include <fmt/format.h>

namespace vellumo {

namespace {

std::string quoted(std::string_view text, char quote)
{
    std::string result(1, quote);
    for (const char c : text)
        result.append(c == quote ? 2 : 1, c);
    return result + quote;
}

// A value as a person reads it: bytes by the first of them, a real number with as many digits as it needs.
std::string readable(const std::string& column)
{
    return fmt::format(
        "CASE typeof({0}) "
        "WHEN 'blob' THEN 'X''' || hex(substr({0}, 1, 24)) || CASE WHEN length({0}) > 24 THEN '…' ELSE '' END || '''' "
        "WHEN 'real' THEN CASE WHEN CAST(CAST({0} AS TEXT) AS REAL) = {0} THEN {0} ELSE printf('%!.17g', {0}) END "
        "ELSE {0} END",
        column);
}

class Reader {
public:
    Reader(SQLConnection& connection, ExportPreview& preview)
        : m_connection(connection)
        , m_preview(preview)
    {
    }
    [[nodiscard]] bool read();

private:
    // Row `number` of what the query gives; none behind its last.
    [[nodiscard]] DBRow row(const std::string& query, std::size_t number);

    SQLConnection& m_connection;
    ExportPreview& m_preview;
};

DBRow Reader::row(const std::string& query, std::size_t number)
{
    const bool isDone = m_connection.queryString(format("%@ LIMIT 1 OFFSET %ld", {query, number}));
    return isDone ? m_connection.row() : DBRow();
}

bool Reader::read()
{
    const auto table =
        row(R"(SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite\_%' ESCAPE '\')", 0);
    if (table.empty()) return false;
    const auto name = table[0].value_or("");
    const auto columns = "SELECT name, type FROM pragma_table_info(" + quoted(name, '\'') + ")";
    std::string values;
    for (std::size_t number = 0;; ++number) {
        const auto column = row(columns, number);
        if (column.empty()) break;
        m_preview.columns.push_back({column[0].value_or(""), column[1].value_or("")});
        values += (number == 0 ? "" : ", ") + readable(quoted(m_preview.columns.back().name, '"'));
    }
    if (m_preview.columns.empty()) return false;
    const auto rows = "SELECT " + values + " FROM " + quoted(name, '"');
    for (std::size_t number = 0;; ++number) {
        auto next = row(rows, number);
        if (next.empty()) return m_connection.getLastErrorMessage().empty();
        m_preview.rows.push_back(std::move(next));
    }
}

} // namespace

std::string readSQLitePreview(const std::string& path, LoadErrorWindow& window, ExportPreview& preview)
{
    SQLConnection connection(ServerType::SQLite, window);
    connection.setDbFilePath(path);
    if (connection.connect() && Reader(connection, preview).read()) return {};
    const auto& reason = connection.getLastErrorMessage();
    const auto told = localized("The first rows cannot be read back.");
    return reason.empty() ? told : told + ' ' + reason;
}

} // namespace vellumo
