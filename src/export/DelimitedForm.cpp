// SPDX-License-Identifier: MIT
#include "export/DelimitedForm.h"

#include "embedded/TAdmBlobData.h"
#include "export/exact/ExactDate.h"
#include "export/files/QuotedText.h"
#include "model/TAdmMDBTable.h"

namespace vellumo {

namespace {

bool holds(std::string_view text, char what) { return text.find(what) != std::string_view::npos; }

bool hasSpecials(std::string_view text, std::string_view delimiter)
{
    return holds(text, '"') || holds(text, '\r') || holds(text, '\n') || holds(text, delimiter.front());
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
    , m_mayNeedQuotes(table.columns().size())
{
}

void DelimitedForm::begin()
{
    if (!job().options().includeColumnHeader) return;
    for (std::size_t c = 0; c < columnCount(); ++c) {
        if (c > 0) text() += m_delimiter;
        addText(table().columns()[c]->name(), true);
    }
    text() += m_lineEnd;
}

void DelimitedForm::enter(const RowGroup& group, std::size_t firstRow)
{
    ExactTextForm::enter(group, firstRow);
    for (std::size_t c = 0; c < columnCount(); ++c)
        m_mayNeedQuotes[c] = group.texts[c].notes() != nullptr || hasSpecials(group.texts[c].bytes(), m_delimiter);
}

void DelimitedForm::addRecord(std::uint32_t row)
{
    for (std::size_t c = 0; c < columnCount(); ++c) {
        if (c > 0) text() += m_delimiter;
        if (const auto field = cell(c, row); field.hasValue()) addField(field, c, row);
    }
    text() += m_lineEnd;
}

void DelimitedForm::addField(const ExactCell& cell, std::size_t column, std::uint32_t row)
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
        if (job().options().guardsFormulas) return addGuarded(cell.text, column);
        [[fallthrough]];
    case ExactKind::Binary: addText(cell.text, m_mayNeedQuotes[column]); break;
    case ExactKind::Object: addObject(cell, column, row); break;
    default: text() += cell.text;
    }
}

void DelimitedForm::addObject(const ExactCell& cell, std::size_t column, std::uint32_t row)
{
    if (const auto path = objectPath(cell, column, row)) return addText(*path, true);
    if (cell.object->data().empty()) return addText({}, true);
    addBase64(cell.object->data());
}

void DelimitedForm::addText(std::string_view field, bool mayNeedQuotes)
{
    if (hasDelicateEnds(field) || (mayNeedQuotes && hasSpecials(field, m_delimiter)))
        appendQuoted(field, text());
    else
        text() += field;
}

void DelimitedForm::addGuarded(std::string_view field, std::size_t column)
{
    constexpr std::string_view beginsOfFormulas = "=+-@\t\r";
    const bool isFormula = !field.empty() && beginsOfFormulas.find(field.front()) != std::string_view::npos;
    if (!isFormula) return addText(field, m_mayNeedQuotes[column]);
    addFinding(FindingKind::FormulaGuarded, column);
    m_guarded.assign(1, '\'').append(field);
    addText(m_guarded, true);
}

} // namespace vellumo
