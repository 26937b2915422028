// SPDX-License-Identifier: MIT
#pragma once

#include "SQLite Connection/DBSockets/DBSocket.h"
#include "export/sql/ExactRows.h"
#include "export/sql/SQLiteRows.h"

namespace vellumo {

class SQLConnection;

// Binds the rows of one table, each value as what it is.
class ExactSQLiteRows : public SQLiteInserter {
public:
    // Both outlive it. `start`: the statement as far as "VALUES".
    ExactSQLiteRows(SQLConnection& connection, const ExactTable& table, std::string start);
    void setObjectText(ExactRows::ObjectText text) { m_objectText = std::move(text); }

    void beginGroup(const RowGroup& group, std::size_t firstRow) override;
    [[nodiscard]] bool insert(std::uint32_t row) override;

private:
    void bind(std::size_t column, const ExactCell& cell, std::uint32_t row);
    void bindReal(int parameter, const ExactCell& cell);

    SQLConnection& m_connection;
    const ExactTable& m_table;
    std::string m_text; // of the statement
    ExactRows::ObjectText m_objectText;
    std::unique_ptr<DBStatement> m_statement;
    std::vector<ExactCells> m_cells;
    std::vector<std::string> m_made; // values of the row that are not in the store in this form, one a column
    std::size_t m_firstRow = 0;
};

} // namespace vellumo
