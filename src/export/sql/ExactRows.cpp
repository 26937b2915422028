// SPDX-License-Identifier: MIT
#include "export/sql/ExactRows.h"

#include "embedded/TAdmBlobData.h"
#include "export/exact/ExactDate.h"
#include "export/sql/SQLText.h"
#include "model/TAdmMDBColumn.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace vellumo {

namespace {

constexpr std::string_view nullWord = "NULL";
constexpr std::size_t longestNumber = 48;

void appendShortest(std::string& out, double value)
{
    char text[longestNumber];
    const auto result = std::to_chars(text, text + longestNumber, value);
    out.append(text, result.ptr);
}

// As a whole number divided by powers of two: no step of that is rounded.
void appendQuotient(std::string& out, double value)
{
    constexpr int bitsOfStep = 62;
    int exponent = 0;
    const auto whole = std::ldexp(std::frexp(value, &exponent), std::numeric_limits<double>::digits);
    exponent -= std::numeric_limits<double>::digits;
    out += std::to_string(static_cast<std::int64_t>(whole)) + ".0";
    for (int rest = -exponent; rest > 0; rest -= bitsOfStep)
        out += '/' + std::to_string(std::int64_t{1} << std::min(rest, bitsOfStep));
}

// For one who reads a little carelessly: 17 digits name a double all the same, but for the smallest ones.
void appendSure(std::string& out, double value, const ExactCell& cell)
{
    constexpr double smallest = 1e-250;
    constexpr std::size_t mostDigits = 17;
    if (value != 0 && std::abs(value) < smallest) return appendQuotient(out, value);
    // Where it takes all 17 to name it, they stand there.
    const bool hasAllDigits = cell.kind == ExactKind::Double && cell.text.size() > mostDigits
        && cell.text.find('e') == cell.text.npos && cell.significantDigits() == static_cast<int>(mostDigits);
    if (hasAllDigits) {
        out += cell.text;
        return;
    }
    char text[longestNumber];
    const auto result = std::to_chars(text, text + longestNumber, value, std::chars_format::scientific, mostDigits - 1);
    out.append(text, result.ptr);
}

} // namespace

ExactRows::ExactRows(const ExactDialectFacts& facts, const ExactTable& table, std::string start, Sink sink)
    : m_facts(facts)
    , m_table(table)
    , m_start(std::move(start))
    , m_sink(std::move(sink))
{
    for (const auto& column : table.columns)
        m_appends.push_back(appendFor(column));
}

ExactRows::Append ExactRows::appendFor(const ExactColumn& column) const
{
    if (!m_facts.digitsType.empty() && column.type == m_facts.digitsType) return &ExactRows::appendDigits;
    switch (exactKind(column.column->type())) {
    case ExactKind::Boolean: return &ExactRows::appendBoolean;
    case ExactKind::Integer:
    case ExactKind::BigInteger:
    case ExactKind::Decimal: return &ExactRows::appendBare;
    case ExactKind::Single:
    case ExactKind::Double: return &ExactRows::appendReal;
    case ExactKind::Date: return &ExactRows::appendDate;
    case ExactKind::Guid: return &ExactRows::appendGuid;
    case ExactKind::Text: return &ExactRows::appendText;
    case ExactKind::Binary: return &ExactRows::appendBytes;
    case ExactKind::Object: return &ExactRows::appendObject;
    }
    return &ExactRows::appendText;
}

void ExactRows::beginGroup(const RowGroup& group, std::size_t firstRow)
{
    m_cells.clear();
    for (std::size_t c = 0; c < m_table.columns.size(); ++c)
        m_cells.emplace_back(m_table.columns[c].column->type(), group, c);
    m_firstRow = firstRow;
}

void ExactRows::addRow(std::uint32_t row)
{
    const auto before = m_statement.size();
    m_statement += m_rowsInStatement == 0 ? m_start + '(' : std::string(",\n(");
    m_row = row;
    for (m_column = 0; m_column < m_cells.size(); ++m_column) {
        if (m_column > 0) m_statement += m_facts.valueSeparator;
        const auto cell = m_cells[m_column].at(row);
        if (cell.hasValue())
            (this->*m_appends[m_column])(cell);
        else
            m_statement += nullWord;
    }
    m_statement += ')';
    ++m_rowsInStatement;
    if (m_rowsInStatement > 1 && m_statement.size() > m_facts.bytesInStatement) splitBefore(before);
    if (m_rowsInStatement >= m_facts.rowsInStatement) endStatement();
}

// The last row, which begins there behind a comma, goes into a statement of its own.
void ExactRows::splitBefore(std::size_t place)
{
    const auto row = m_statement.substr(place + 2);
    m_statement.resize(place);
    endStatement();
    m_statement = m_start + row;
    m_rowsInStatement = 1;
}

void ExactRows::finish()
{
    if (m_rowsInStatement > 0) endStatement();
}

void ExactRows::endStatement()
{
    if (m_longBytes.empty())
        m_statement += m_facts.statementEnd;
    else
        wrapInBlock();
    m_sink(m_statement);
    m_statement.clear();
    m_rowsInStatement = 0;
}

// Bytes that no literal can hold are appended, piece by piece, to the empty ones that the row went in with.
void ExactRows::wrapInBlock()
{
    constexpr std::size_t pieceBytes = 1000;
    const auto& block = *m_facts.longBytes;
    std::string variables;
    std::string columns;
    std::string names;
    std::string pieces;
    for (std::size_t i = 0; i < m_longBytes.size(); ++i) {
        const auto& [column, bytes] = m_longBytes[i];
        const auto name = "v" + std::to_string(i);
        variables += fillTemplate(block.variable, {{"{name}", name}});
        names += (i == 0 ? "" : ", ") + name;
        columns +=
            (i == 0 ? "" : ", ") + quoteIdentifier(m_table.columns[column].name, sqlDialectFacts(m_facts.dialect));
        for (std::size_t start = 0; start < bytes.size(); start += pieceBytes) {
            const auto piece = bytes.subspan(start, std::min(pieceBytes, bytes.size() - start));
            std::string literal;
            m_facts.literals.bytes(literal, piece);
            pieces += fillTemplate(
                block.append, {{"{name}", name}, {"{length}", std::to_string(piece.size())}, {"{bytes}", literal}});
        }
    }
    m_statement = fillTemplate(block.text,
        {{"{variables}", variables}, {"{insert}", m_statement}, {"{columns}", columns}, {"{names}", names},
            {"{pieces}", pieces}});
    m_longBytes.clear();
}

void ExactRows::appendBare(const ExactCell& cell) { m_statement += cell.text; }

void ExactRows::appendBoolean(const ExactCell& cell)
{
    m_statement += cell.boolean() ? m_facts.literals.yes : m_facts.literals.no;
}

void ExactRows::appendReal(const ExactCell& cell)
{
    const auto& literals = m_facts.literals;
    const auto appendWord = [&](std::string_view word) { m_statement += word.empty() ? nullWord : word; };
    if (!cell.isFinite()) {
        if (cell.text == "nan") return appendWord(literals.notANumber);
        return appendWord(cell.text.front() == '-' ? literals.minusInfinity : literals.infinity);
    }
    if (cell.text == "-0" && !literals.minusZero.empty()) return appendWord(literals.minusZero);
    constexpr std::size_t sureDigits = 15;
    const bool isSingle = cell.kind == ExactKind::Single;
    const bool isSure = cell.text.size() <= sureDigits && cell.text.find('e') == cell.text.npos;
    if (!isSingle && (literals.readsShortestDigits || isSure))
        m_statement += cell.text;
    else if (literals.readsShortestDigits)
        appendShortest(m_statement, cell.real());
    else
        appendSure(m_statement, cell.real(), cell);
    m_statement += isSingle ? literals.floatEnd : literals.doubleEnd;
}

void ExactRows::appendDigits(const ExactCell& cell)
{
    m_statement += '\'';
    m_statement += cell.text;
    m_statement += '\'';
}

void ExactRows::appendDate(const ExactCell& cell)
{
    m_statement += m_facts.literals.dateStart;
    appendISODate(cell, ' ', m_statement);
    m_statement += '\'';
}

void ExactRows::appendGuid(const ExactCell& cell)
{
    m_statement += '\'';
    m_statement += cell.guid();
    m_statement += '\'';
}

void ExactRows::appendText(const ExactCell& cell) { m_facts.literals.text(m_statement, cell.text); }

void ExactRows::appendBytes(const ExactCell& cell)
{
    m_bytes.clear();
    cell.appendBytes(m_bytes);
    m_facts.literals.bytes(m_statement, std::as_bytes(std::span(m_bytes)));
}

void ExactRows::appendObject(const ExactCell& cell)
{
    if (m_objectText) {
        const auto text = m_objectText(m_column, m_firstRow + m_row, *cell.object);
        return m_facts.literals.text(m_statement, text);
    }
    const std::span<const std::byte> bytes = cell.object->data();
    if (m_facts.longBytes == nullptr || bytes.size() <= m_facts.longBytes->shorterBytes)
        return m_facts.literals.bytes(m_statement, bytes);
    m_statement += m_facts.longBytes->none;
    m_longBytes.emplace_back(m_column, bytes);
}

} // namespace vellumo
