// SPDX-License-Identifier: MIT
#include "export/DelimitedForm.h"

#include "embedded/TAdmBlobData.h"
#include "export/exact/ExactDate.h"
#include "model/TAdmMDBTable.h"
#include "text/ByteScan.h"
#include "text/QuotedText.h"

namespace vellumo {

namespace {

bool hasSpecials(std::string_view text, char delimiter)
{
    return hasByte(text, [delimiter = static_cast<std::uint8_t>(delimiter)](auto byte) {
        return (byte == '"') | (byte == '\r') | (byte == '\n') | (byte == delimiter);
    });
}

// A blank at an end is taken off by some readers, and a line of a backslash and a point ends the data for others.
bool hasDelicateEnds(std::string_view text)
{
    return text.empty() || text.front() == ' ' || text.back() == ' ' || text.front() == '\\';
}

} // namespace

DelimitedForm::DelimitedForm(ExportJob& job, const TAdmMDBTable& table, EncodedFile& out)
    : ExactTextForm(job, table, out)
    , m_delimiter(fieldDelimiterText(job.options().fieldDelimiter))
    , m_lineEnd(recordDelimiterText(job.options().recordDelimiter))
    , m_guardsFormulas(job.options().guardsFormulas)
{
    for (std::size_t c = 0; c < columnCount(); ++c) {
        const std::string start(c == 0 ? "" : m_delimiter);
        const bool isQuoted = m_delimiter == " " && exactKind(table.columns()[c]->type()) == ExactKind::Date;
        const std::string quote(isQuoted ? "\"" : "");
        addColumn({start, start, start + quote, quote});
    }
}

void DelimitedForm::begin()
{
    if (!job().options().includeColumnHeader) return;
    for (std::size_t c = 0; c < columnCount(); ++c) {
        if (c > 0) text() += m_delimiter;
        addText(table().columns()[c]->name());
    }
    text() += m_lineEnd;
}

void DelimitedForm::addRecord(std::uint32_t row)
{
    addCells(row);
    text() += m_lineEnd;
}

bool DelimitedForm::standAsTheyAre(const ExactCells& cells) const
{
    const auto& texts = cells.texts();
    switch (cells.kind()) {
    case ExactKind::Guid: return false;
    case ExactKind::Text:
        if (m_guardsFormulas) return false;
        [[fallthrough]];
    case ExactKind::Binary: break;
    default: return true;
    }
    if (hasSpecials(texts.bytes(), m_delimiter.front())) return false;
    for (std::uint32_t row = 0; row < texts.rowCount(); ++row)
        if (const auto text = texts.text(row); !text.empty() && hasDelicateEnds(text)) return false;
    return true;
}

void DelimitedForm::addValue(const ExactCell& cell, std::size_t column, std::uint32_t row)
{
    switch (cell.kind) {
    case ExactKind::Boolean: text() += cell.boolean() ? "true" : "false"; break;
    case ExactKind::Date: {
        const bool isDelimited = m_delimiter == " ";
        if (isDelimited) text() += '"';
        appendISODate(cell, ' ', text());
        if (isDelimited) text() += '"';
        break;
    }
    case ExactKind::Guid: text() += cell.guid(); break;
    case ExactKind::Text:
        if (m_guardsFormulas) return addGuarded(cell.text, column);
        [[fallthrough]];
    case ExactKind::Binary: addText(cell.text); break;
    case ExactKind::Object: addObject(cell, column, row); break;
    default: text() += cell.text;
    }
}

void DelimitedForm::addObject(const ExactCell& cell, std::size_t column, std::uint32_t row)
{
    if (const auto path = objectPath(cell, column, row)) return addText(*path);
    if (cell.object->data().empty()) return addText({});
    addBase64(cell.object->data());
}

void DelimitedForm::addText(std::string_view field)
{
    if (hasDelicateEnds(field) || hasSpecials(field, m_delimiter.front()))
        appendQuoted(field, text());
    else
        text() += field;
}

void DelimitedForm::addGuarded(std::string_view field, std::size_t column)
{
    constexpr std::string_view beginsOfFormulas = "=+-@\t\r";
    const bool isFormula = !field.empty() && beginsOfFormulas.find(field.front()) != std::string_view::npos;
    if (!isFormula) return addText(field);
    addFinding(FindingKind::FormulaGuarded, column);
    m_guarded.assign(1, '\'').append(field);
    addText(m_guarded);
}

} // namespace vellumo
