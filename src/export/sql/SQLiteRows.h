// SPDX-License-Identifier: MIT
#pragma once

#include "SQLite Connection/DBSockets/DBSocket.h"
#include "export/sql/SQLRowWriter.h"

#include <memory>
#include <string>
#include <vector>

namespace vellumo {

class SQLConnection;
class TAdmMDBTable;

// Inserts the rows of one table into an SQLite database.
class SQLiteInserter {
public:
    virtual ~SQLiteInserter() = default;
    // The rows that follow are those of `group`, which stays until the next group begins; its first is the table's row
    // with that number.
    virtual void beginGroup(const RowGroup& group, std::size_t firstRow) = 0;
    // Inserts a row, counted within the group. False when it was refused; the connection tells why.
    [[nodiscard]] virtual bool insert(std::uint32_t row) = 0;
};

// The classic style of it. Each row becomes what a statement with its values as literals
// would make of it, and is refused where that would be; but the statement is prepared once and the values are bound,
// which is several times as fast. A row with a value that cannot be bound to the same effect goes in as such a
// statement.
class SQLiteRows : public SQLiteInserter {
public:
    // Both outlive it. The table exists in the database and stays there.
    SQLiteRows(SQLConnection& connection, const TAdmMDBTable& table);

    void beginGroup(const RowGroup& group, std::size_t firstRow) override;
    [[nodiscard]] bool insert(std::uint32_t row) override;

private:
    // What the literal of a cell is to SQLite.
    enum class Literal { Number, Text, Unknown };
    struct Column {
        Literal literal;
        bool isNullText;         // null becomes an empty text
        bool isVerbatim = false; // no text of the group has what a literal cannot hold as it is
        std::string escaped{};   // the text of the row, where it had to be escaped
    };
    // What row writers write to.
    struct StatementBuffer {
        void write(std::string_view piece) { text += piece; }
        std::string text;
    };

    [[nodiscard]] static Literal literalOf(ColumnType type);
    [[nodiscard]] bool bindRow(std::uint32_t row);
    [[nodiscard]] bool bindCell(int index, std::uint32_t row);
    [[nodiscard]] bool bindText(int index, std::string_view text);
    [[nodiscard]] bool bindNumber(int index, std::string_view text);
    [[nodiscard]] bool bindLiteral(int index, std::string_view text);
    [[nodiscard]] bool bindObject(int index, std::uint32_t row);
    void bindNull(int index);

    SQLConnection& m_connection;
    std::vector<Column> m_columns;
    SQLRowWriter m_writer;
    StatementBuffer m_buffer;
    std::string m_prepared; // the text of the statement
    std::unique_ptr<DBStatement> m_statement;
    const RowGroup* m_group = nullptr;
};

} // namespace vellumo
