// SPDX-License-Identifier: MIT
#include "export/sql/ExactSQLiteRows.h"

#include "SQLite Connection/Connection/SQLConnection.h"
#include "embedded/TAdmBlobData.h"
#include "export/exact/ExactDate.h"
#include "model/TAdmMDBColumn.h"

namespace vellumo {

ExactSQLiteRows::ExactSQLiteRows(SQLConnection& connection, const ExactTable& table, std::string start)
    : m_connection(connection)
    , m_table(table)
    , m_text(std::move(start))
    , m_made(table.columns.size())
{
    for (std::size_t c = 0; c < table.columns.size(); ++c)
        m_text += c == 0 ? "(?" : ", ?";
    m_text += ')';
}

void ExactSQLiteRows::beginGroup(const RowGroup& group, std::size_t firstRow)
{
    m_cells.clear();
    for (std::size_t c = 0; c < m_table.columns.size(); ++c)
        m_cells.emplace_back(m_table.columns[c].column->type(), group, c);
    m_firstRow = firstRow;
}

bool ExactSQLiteRows::insert(std::uint32_t row)
{
    if (!m_statement) m_statement = m_connection.prepare(m_text);
    if (!m_statement) {
        // Tells what is wrong with the statement; nothing is when the library cannot bind values.
        m_connection.queryString("EXPLAIN " + m_text);
        return false;
    }
    for (std::size_t c = 0; c < m_cells.size(); ++c)
        bind(c, m_cells[c].at(row), row);
    return m_connection.run(*m_statement);
}

void ExactSQLiteRows::bind(std::size_t column, const ExactCell& cell, std::uint32_t row)
{
    const auto parameter = static_cast<int>(column);
    if (!cell.hasValue()) return m_statement->bindNull(parameter);
    auto& made = m_made[column];
    made.clear();
    switch (cell.kind) {
    case ExactKind::Boolean:
    case ExactKind::Integer:
    case ExactKind::BigInteger: return m_statement->bindInteger(parameter, cell.integer());
    case ExactKind::Single:
    case ExactKind::Double: return bindReal(parameter, cell);
    // What the column is declared as makes a number of it, or keeps its digits.
    case ExactKind::Decimal:
    case ExactKind::Text: return m_statement->bindText(parameter, cell.text);
    case ExactKind::Guid: return m_statement->bindText(parameter, cell.guid());
    case ExactKind::Date: appendISODate(cell, ' ', made); return m_statement->bindText(parameter, made);
    case ExactKind::Binary:
        cell.appendBytes(made);
        return m_statement->bindBlob(parameter, std::as_bytes(std::span(made)));
    case ExactKind::Object: break;
    }
    if (!m_objectText) return m_statement->bindBlob(parameter, cell.object->data());
    made = m_objectText(column, m_firstRow + row, *cell.object);
    m_statement->bindText(parameter, made);
}

// What is not a number becomes null there.
void ExactSQLiteRows::bindReal(int parameter, const ExactCell& cell)
{
    if (cell.text == "nan") return m_statement->bindNull(parameter);
    m_statement->bindReal(parameter, cell.real());
}

} // namespace vellumo
