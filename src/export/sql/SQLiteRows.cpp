// SPDX-License-Identifier: MIT
#include "export/sql/SQLiteRows.h"

#include "SQLite Connection/Connection/SQLConnection.h"
#include "embedded/TAdmBlobData.h"
#include "export/objects/ObjectCells.h"
#include "export/sql/SQLStructure.h"
#include "export/sql/SQLText.h"
#include "model/TAdmMDBTable.h"
#include "text/Format.h"

#include <charconv>

namespace vellumo {

namespace {

// Far below what SQLite takes as one statement or one value, so that both ways refuse the same.
constexpr std::size_t mostBoundBytes = std::size_t{64} << 20;

const SQLDialectFacts& facts() { return sqlDialectFacts(ServerType::SQLite); }

std::vector<std::string> columnNames(const TAdmMDBTable& table)
{
    std::vector<std::string> names;
    for (const auto& column : table.columns())
        names.push_back(column->name());
    return names;
}

std::string statementStart(const TAdmMDBTable& table)
{
    return format("INSERT INTO %@ (%@) VALUES (",
        {quoteIdentifier(table.name(), facts()), quoteIdentifiers(columnNames(table), facts())});
}

bool isLiteral(ColumnType type) { return factsOf(type).isQuoted || type == ColumnType::ReplicationId; }

SQLRowWriter rowWriter(const TAdmMDBTable& table)
{
    std::vector<SQLRowColumn> columns;
    for (const auto& column : table.columns()) {
        const auto form = isLiteral(column->type()) ? SQLCellForm::Literal : SQLCellForm::Bare;
        columns.push_back({form, forbidsZeroLength(*column) ? "\"\"" : "null"});
    }
    return {statementStart(table), columns, ");", "."};
}

std::string preparedInsert(const TAdmMDBTable& table)
{
    auto statement = statementStart(table);
    for (std::size_t c = 0; c < table.columns().size(); ++c)
        statement += c == 0 ? "?" : ", ?";
    return statement + ");";
}

bool isDigit(char character) { return character >= '0' && character <= '9'; }

// Skips digits from `at` on; false when there is none.
bool skipDigits(std::string_view text, std::size_t& at)
{
    const auto start = at;
    while (at < text.size() && isDigit(text[at]))
        ++at;
    return at > start;
}

// A number that SQLite reads the same whether it stands in a statement or is converted from a text.
bool isNumber(std::string_view text)
{
    std::size_t at = text.starts_with('-') ? 1 : 0;
    if (!skipDigits(text, at)) return false;
    if (at < text.size() && text[at] == '.' && !skipDigits(text, ++at)) return false;
    if (at == text.size()) return true;
    if (text[at++] != 'e') return false;
    if (at < text.size() && (text[at] == '+' || text[at] == '-')) ++at;
    return skipDigits(text, at) && at == text.size();
}

} // namespace

SQLiteRows::SQLiteRows(SQLConnection& connection, const TAdmMDBTable& table)
    : m_connection(connection)
    , m_writer(rowWriter(table))
    , m_prepared(preparedInsert(table))
{
    for (const auto& column : table.columns())
        m_columns.push_back({literalOf(column->type()), forbidsZeroLength(*column)});
}

SQLiteRows::Literal SQLiteRows::literalOf(ColumnType type)
{
    if (isLiteral(type)) return Literal::Text;
    return factsOf(type).sortKind == SortKind::Number ? Literal::Number : Literal::Unknown;
}

void SQLiteRows::beginGroup(const RowGroup& group, std::size_t)
{
    // Not earlier: a table without rows needs no statement. Without one all rows go in as texts, and tell what is
    // wrong.
    if (!m_statement && group.rowCount > 0) m_statement = m_connection.prepare(m_prepared);
    m_group = &group;
    m_writer.beginGroup(group);
    for (std::size_t c = 0; c < m_columns.size(); ++c) {
        const auto texts = group.texts[c].bytes();
        m_columns[c].isVerbatim = texts.find('\\') == texts.npos && texts.find('\0') == texts.npos;
    }
}

bool SQLiteRows::insert(std::uint32_t row)
{
    if (m_statement && bindRow(row)) return m_connection.run(*m_statement);
    m_buffer.text.clear();
    m_writer.writeRow(m_buffer, row);
    return m_connection.queryString(m_buffer.text);
}

bool SQLiteRows::bindRow(std::uint32_t row)
{
    const auto count = static_cast<int>(m_columns.size());
    for (int c = 0; c < count; ++c)
        if (!bindCell(c, row)) return false;
    return true;
}

bool SQLiteRows::bindCell(int index, std::uint32_t row)
{
    const auto c = static_cast<std::size_t>(index);
    if (!m_group->blobs[c].empty()) return bindObject(index, row);
    const auto text = m_group->texts[c].text(row);
    if (text.empty())
        bindNull(index);
    else
        return bindText(index, text);
    return true;
}

void SQLiteRows::bindNull(int index)
{
    if (m_columns[static_cast<std::size_t>(index)].isNullText)
        m_statement->bindText(index, "");
    else
        m_statement->bindNull(index);
}

bool SQLiteRows::bindText(int index, std::string_view text)
{
    switch (m_columns[static_cast<std::size_t>(index)].literal) {
    case Literal::Number: return bindNumber(index, text);
    case Literal::Text: return bindLiteral(index, text);
    case Literal::Unknown: break;
    }
    return false;
}

bool SQLiteRows::bindNumber(int index, std::string_view text)
{
    std::int64_t value = 0;
    const auto* end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, value);
    if (error == std::errc() && rest == end) {
        m_statement->bindInteger(index, value);
        return true;
    }
    // Others are left to SQLite to convert, as it does with those in statements: not always to the nearest value.
    if (!isNumber(text)) return false;
    m_statement->bindText(index, text);
    return true;
}

// Literals have their backslashes doubled, and a statement ends at a NUL.
bool SQLiteRows::bindLiteral(int index, std::string_view text)
{
    if (text.size() > mostBoundBytes) return false;
    auto& column = m_columns[static_cast<std::size_t>(index)];
    if (!column.isVerbatim) {
        if (text.find('\0') != text.npos) return false;
        column.escaped = doubleBackslashes(text);
        text = column.escaped;
    }
    m_statement->bindText(index, text);
    return true;
}

bool SQLiteRows::bindObject(int index, std::uint32_t row)
{
    const auto* object = exportedObject(m_group->blobs[static_cast<std::size_t>(index)][row]);
    if (object == nullptr) {
        bindNull(index);
        return true;
    }
    if (object->data().size() > mostBoundBytes) return false;
    m_statement->bindBlob(index, object->data());
    return true;
}

} // namespace vellumo
