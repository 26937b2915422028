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
constexpr std::string_view quote = "'";
constexpr std::size_t longestNumber = 48;

void appendShortest(TextBuffer& out, double value)
{
    char* text = out.room(longestNumber);
    out.commit(static_cast<std::size_t>(std::to_chars(text, text + longestNumber, value).ptr - text));
}

// As a whole number divided by powers of two: no step of that is rounded.
void appendQuotient(TextBuffer& out, double value)
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
void appendSure(TextBuffer& out, const ExactCell& cell)
{
    constexpr double smallest = 1e-250;
    constexpr std::size_t mostDigits = 17;
    // Where it takes all 17 to name it, they stand there. The smallest have an exponent.
    const bool hasAllDigits = cell.kind == ExactKind::Double && cell.text.size() > mostDigits
        && cell.text.find('e') == cell.text.npos && cell.significantDigits() == static_cast<int>(mostDigits);
    if (hasAllDigits) {
        out += cell.text;
        return;
    }
    const auto value = cell.real();
    if (value != 0 && std::abs(value) < smallest) return appendQuotient(out, value);
    char* text = out.room(longestNumber);
    const auto result = std::to_chars(text, text + longestNumber, value, std::chars_format::scientific, mostDigits - 1);
    out.commit(static_cast<std::size_t>(result.ptr - text));
}

} // namespace

ExactRows::ExactRows(const ExactDialectFacts& facts, const ExactTable& table, std::string start, Sink sink)
    : m_facts(facts)
    , m_table(table)
    , m_start(std::move(start))
    , m_sink(std::move(sink))
{
    for (const auto& column : table.columns)
        m_columns.push_back(columnFor(column, m_columns.empty() ? std::string_view() : facts.valueSeparator));
}

ExactRows::Column ExactRows::columnFor(const ExactColumn& column, std::string_view separator) const
{
    const auto& literals = m_facts.literals;
    Column made{appendFor(column), std::string(separator), "", std::string(separator).append(nullWord), SIZE_MAX};
    if (made.append == &ExactRows::appendText) {
        made.start += literals.plainStart;
        made.end = quote;
        made.longest = literals.longestPlain;
    } else if (made.append == &ExactRows::appendDigits) {
        made.start += quote;
        made.end = quote;
    } else if (made.append == &ExactRows::appendReal) {
        made.end = literals.doubleEnd;
    } else if (made.append == &ExactRows::appendDate) {
        made.start += literals.dateStart;
        made.end = quote;
    }
    return made;
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
    for (std::size_t c = 0; c < m_columns.size(); ++c) {
        const auto& cells = m_cells.emplace_back(m_table.columns[c].column->type(), group, c);
        m_columns[c].form = formOf(cells, m_columns[c].append);
        m_columns[c].texts = &cells.texts();
    }
    m_firstRow = firstRow;
}

TextForm ExactRows::formOf(const ExactCells& cells, Append append) const
{
    if (!cells.areTexts()) return TextForm::None;
    if (append == &ExactRows::appendDate) return TextForm::Date;
    return standAsTheyAre(cells, append) ? TextForm::AsItIs : TextForm::None;
}

// Whether that would append the texts of all cells, but for what stands around them.
bool ExactRows::standAsTheyAre(const ExactCells& cells, Append append) const
{
    const auto& literals = m_facts.literals;
    const auto bytes = cells.texts().bytes();
    if (append == &ExactRows::appendText) return isPlainText(bytes);
    if (append == &ExactRows::appendBoolean) return literals.yes == "1" && literals.no == "0";
    if (append == &ExactRows::appendReal)
        return cells.kind() == ExactKind::Double && literals.readsShortestDigits && bytes.find('n') == bytes.npos
            && (literals.minusZero.empty() || bytes.find("-0") == bytes.npos);
    return append == &ExactRows::appendBare || append == &ExactRows::appendDigits;
}

void ExactRows::addRow(std::uint32_t row)
{
    const auto before = m_script.size();
    m_script += m_rowsInStatement == 0 ? std::string_view(m_start) : ",\n";
    m_script += '(';
    m_row = row;
    for (const auto& column : m_columns) {
        const auto text = column.form == TextForm::None ? std::string_view() : column.texts->text(row);
        if (column.form == TextForm::None || text.size() > column.longest)
            addCell(static_cast<std::size_t>(&column - m_columns.data()), row);
        else
            addText(column, text);
    }
    m_script += ')';
    ++m_rowsInStatement;
    if (m_rowsInStatement > 1 && m_script.size() - m_statementStart > m_facts.bytesInStatement) splitBefore(before);
    if (m_rowsInStatement >= m_facts.rowsInStatement) endStatement();
}

void ExactRows::addText(const Column& column, std::string_view text)
{
    ISODateText place;
    if (text.empty()) {
        m_script += column.null;
        return;
    }
    if (column.form == TextForm::Date) text = isoDate(text, ' ', place);
    m_script.append(column.start, text, column.end);
}

void ExactRows::addCell(std::size_t column, std::uint32_t row)
{
    const auto cell = m_cells[column].at(row);
    if (!cell.hasValue()) {
        m_script += m_columns[column].null;
        return;
    }
    if (column > 0) m_script += m_facts.valueSeparator;
    m_column = column;
    (this->*m_columns[column].append)(cell);
}

// The last row, which begins there behind a comma, goes into a statement of its own.
void ExactRows::splitBefore(std::size_t place)
{
    const std::string row(m_script.view().substr(place + 2));
    m_script.cutAt(place);
    endStatement();
    m_script.append(m_start, row);
    m_rowsInStatement = 1;
}

void ExactRows::finish()
{
    if (m_rowsInStatement > 0) endStatement();
    passOn();
}

void ExactRows::endStatement()
{
    constexpr std::size_t enough = std::size_t{256} << 10;
    if (m_longBytes.empty())
        m_script += m_facts.statementEnd;
    else
        wrapInBlock();
    m_rowsInStatement = 0;
    m_statementStart = m_script.size();
    if (m_script.size() >= enough) passOn();
}

void ExactRows::passOn()
{
    m_sink(m_script.view());
    m_script.clear();
    m_statementStart = 0;
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
            TextBuffer literal;
            m_facts.literals.bytes(literal, piece);
            pieces += fillTemplate(block.append,
                {{"{name}", name}, {"{length}", std::to_string(piece.size())}, {"{bytes}", literal.view()}});
        }
    }
    const auto text = fillTemplate(block.text,
        {{"{variables}", variables}, {"{insert}", m_script.view().substr(m_statementStart)}, {"{columns}", columns},
            {"{names}", names}, {"{pieces}", pieces}});
    m_script.cutAt(m_statementStart);
    m_script += text;
    m_longBytes.clear();
}

void ExactRows::appendBare(const ExactCell& cell) { m_script += cell.text; }

void ExactRows::appendBoolean(const ExactCell& cell)
{
    m_script += cell.boolean() ? m_facts.literals.yes : m_facts.literals.no;
}

void ExactRows::appendReal(const ExactCell& cell)
{
    const auto& literals = m_facts.literals;
    const auto appendWord = [&](std::string_view word) { m_script += word.empty() ? nullWord : word; };
    if (!cell.isFinite()) {
        if (cell.text == "nan") return appendWord(literals.notANumber);
        return appendWord(cell.text.front() == '-' ? literals.minusInfinity : literals.infinity);
    }
    if (cell.text == "-0" && !literals.minusZero.empty()) return appendWord(literals.minusZero);
    constexpr std::size_t sureDigits = 15;
    const bool isSingle = cell.kind == ExactKind::Single;
    const bool isSure = cell.text.size() <= sureDigits && cell.text.find('e') == cell.text.npos;
    if (!isSingle && (literals.readsShortestDigits || isSure))
        m_script += cell.text;
    else if (literals.readsShortestDigits)
        appendShortest(m_script, cell.real());
    else
        appendSure(m_script, cell);
    m_script += isSingle ? literals.floatEnd : literals.doubleEnd;
}

void ExactRows::appendDigits(const ExactCell& cell)
{
    m_script += quote;
    m_script += cell.text;
    m_script += quote;
}

void ExactRows::appendDate(const ExactCell& cell)
{
    m_script += m_facts.literals.dateStart;
    appendISODate(cell, ' ', m_script);
    m_script += quote;
}

void ExactRows::appendGuid(const ExactCell& cell)
{
    m_script += quote;
    m_script += cell.guid();
    m_script += quote;
}

void ExactRows::appendText(const ExactCell& cell)
{
    const auto& literals = m_facts.literals;
    if (cell.text.size() <= literals.longestPlain && isPlainText(cell.text))
        m_script.append(literals.plainStart, cell.text, quote);
    else
        literals.text(m_script, cell.text);
}

void ExactRows::appendBytes(const ExactCell& cell)
{
    m_bytes.clear();
    cell.appendBytes(m_bytes);
    m_facts.literals.bytes(m_script, std::as_bytes(std::span(m_bytes)));
}

void ExactRows::appendObject(const ExactCell& cell)
{
    if (m_objectText) {
        const auto text = m_objectText(m_column, m_firstRow + m_row, *cell.object);
        return m_facts.literals.text(m_script, text);
    }
    const std::span<const std::byte> bytes = cell.object->data();
    if (m_facts.longBytes == nullptr || bytes.size() <= m_facts.longBytes->shorterBytes)
        return m_facts.literals.bytes(m_script, bytes);
    m_script += m_facts.longBytes->none;
    m_longBytes.emplace_back(m_column, bytes);
}

} // namespace vellumo
