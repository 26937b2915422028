// SPDX-License-Identifier: MIT
#include "export/ExactTextForm.h"

#include "embedded/TAdmBlobData.h"
#include "export/DelimitedForm.h"
#include "export/JSONForm.h"
#include "export/XMLForm.h"
#include "export/exact/ExactDate.h"
#include "model/TAdmMDBTable.h"
#include "text/Base64.h"

#include <algorithm>

namespace vellumo {

std::unique_ptr<ExactTextForm> ExactTextForm::create(ExportJob& job, const TAdmMDBTable& table, EncodedFile& out)
{
    switch (job.options().fileType) {
    case ExportFileType::XML: return std::make_unique<XMLForm>(job, table, out);
    case ExportFileType::JSONLines: return std::make_unique<JSONForm>(job, table, out);
    default: return std::make_unique<DelimitedForm>(job, table, out);
    }
}

ExactTextForm::ExactTextForm(ExportJob& job, const TAdmMDBTable& table, EncodedFile& out)
    : m_job(job)
    , m_table(table)
    , m_out(out)
{
}

void ExactTextForm::enter(const RowGroup& group, std::size_t firstRow)
{
    m_cells.clear();
    for (std::size_t c = 0; c < columnCount(); ++c) {
        const auto& cells = m_cells.emplace_back(m_table.columns()[c]->type(), group, c);
        m_columns[c].form = formOf(cells);
        m_columns[c].texts = &cells.texts();
    }
    m_firstRow = firstRow;
}

TextForm ExactTextForm::formOf(const ExactCells& cells) const
{
    if (!cells.areTexts()) return TextForm::None;
    if (cells.kind() == ExactKind::Date) return TextForm::Date;
    if (cells.kind() == ExactKind::Boolean) return TextForm::Boolean;
    return standAsTheyAre(cells) ? TextForm::AsItIs : TextForm::None;
}

void ExactTextForm::addCells(std::uint32_t row)
{
    for (std::size_t c = 0; c < m_columns.size(); ++c) {
        if (m_columns[c].form == TextForm::None)
            addCell(c, row);
        else
            addText(m_columns[c], m_columns[c].texts->text(row));
    }
}

void ExactTextForm::addText(const Column& column, std::string_view value)
{
    ISODateText place;
    if (value.empty()) {
        text() += column.null;
        return;
    }
    if (column.form == TextForm::Boolean) value = value == "1" ? "true" : "false";
    if (column.form == TextForm::Date) value = isoDate(value, dateSeparator(), place);
    text().append(column.textStart, value, column.textEnd);
}

// A value that could not be read is a finding, and null; damaged objects have lines of their own in every report.
void ExactTextForm::addCell(std::size_t column, std::uint32_t row)
{
    const auto cell = m_cells[column].at(row);
    if (cell.state == ExactState::Unreadable && cell.kind != ExactKind::Object)
        addFinding(FindingKind::Unreadable, column);
    if (!cell.hasValue()) {
        text() += m_columns[column].null;
        return;
    }
    text() += m_columns[column].start;
    addValue(cell, column, row);
}

void ExactTextForm::addFinding(FindingKind kind, std::size_t column)
{
    m_job.addFinding(kind, m_table.name(), m_table.columns()[column]->name());
}

std::optional<std::string> ExactTextForm::objectPath(const ExactCell& cell, std::size_t column, std::uint32_t row)
{
    if (!m_job.hasObjectFolder()) return std::nullopt;
    return m_job.objectFile(m_table, column, m_firstRow + row, *cell.object);
}

void ExactTextForm::addBase64(std::span<const std::byte> bytes)
{
    while (!bytes.empty()) {
        const auto run = bytes.first(std::min(bytes.size(), base64Run));
        appendBase64(run, text());
        bytes = bytes.subspan(run.size());
        if (!bytes.empty()) m_out.passOn();
    }
}

} // namespace vellumo
