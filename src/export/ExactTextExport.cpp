// SPDX-License-Identifier: MIT
#include "export/ExactTextForm.h"
#include "export/ExportFormat.h"
#include "model/TAdmMDBTable.h"
#include "text/Messages.h"

namespace vellumo {

namespace {

constexpr std::string_view byteOrderMark = "\uFEFF";

// Writes one table after the other, each to a file.
class ExactTextWriter {
public:
    ExactTextWriter(ExportJob& job, TextEncoder encoder)
        : m_job(job)
        , m_out(std::move(encoder), job.options().fileType == ExportFileType::XML)
    {
    }

    void writeFile(const ExportEntry& entry, const TAdmMDBTable& table);

private:
    // False when the encoding does not have a character; m_row then tells where.
    [[nodiscard]] bool writeTable(const TAdmMDBTable& table);
    [[nodiscard]] bool writeGroup(ExactTextForm& form, const RowGroup& group);
    [[nodiscard]] ExportCause refusedPlace(const TAdmMDBTable& table);
    void fail(const ExportEntry& entry, ExportReason reason);

    ExportJob& m_job;
    EncodedFile m_out;
    std::size_t m_row = 0; // the record at hand, from 1; 0 in front of the first
};

void ExactTextWriter::writeFile(const ExportEntry& entry, const TAdmMDBTable& table)
{
    const auto failOfOutput = [&](const char* reasonKey) {
        fail(entry, {reasonKey, {}, m_job.outputCause(entry, m_out.file().error())});
    };
    m_out.reset();
    if (!m_out.file().open(m_job.outputPath(entry))) return failOfOutput(exportReason::cannotCreate);
    const bool isRepresentable = writeTable(table);
    if (m_job.terminated()) return fail(entry, {exportReason::terminated});
    if (!isRepresentable) return fail(entry, {exportReason::notRepresentable, {}, refusedPlace(table)});
    m_out.passOn();
    if (!m_out.file().close()) return failOfOutput(exportReason::cannotWrite);
    m_job.tableDone(entry.tableName);
}

// Of what the encoding does not have: a cell of the record at hand, or in front of the first the name of a column.
ExportCause ExactTextWriter::refusedPlace(const TAdmMDBTable& table)
{
    std::string bytes;
    for (std::size_t c = 0; c < table.columns().size(); ++c) {
        const auto& name = table.columns()[c]->name();
        const auto text = m_row == 0 ? std::string_view(name) : table.rows().text(m_row - 1, c);
        if (!m_out.encoder().append(text, bytes)) return {.row = m_row, .column = name};
    }
    return {.row = m_row};
}

void ExactTextWriter::fail(const ExportEntry& entry, ExportReason reason)
{
    m_out.file().discard();
    m_job.tableFailed(entry.tableName, std::move(reason));
}

bool ExactTextWriter::writeTable(const TAdmMDBTable& table)
{
    const auto& options = m_job.options();
    m_row = 0;
    if (options.hasByteOrderMark || needsByteOrderMark(options.encoding)) m_out.text() += byteOrderMark;
    const auto form = ExactTextForm::create(m_job, table, m_out);
    form->begin();
    if (!m_out.endRecord()) return false;
    for (const auto& group : table.rows().groups()) {
        m_job.beginRows(table, m_row);
        form->enter(group, m_row);
        if (!writeGroup(*form, group)) return false;
        if (m_job.terminated() || m_out.file().failed()) return true;
    }
    form->end();
    return m_out.endRecord();
}

bool ExactTextWriter::writeGroup(ExactTextForm& form, const RowGroup& group)
{
    for (std::uint32_t row = 0; row < group.rowCount; ++row) {
        if (m_job.terminated() || m_out.file().failed()) return true;
        ++m_row;
        form.addRecord(row);
        if (!m_out.endRecord()) return false;
    }
    return true;
}

} // namespace

void exportExactText(ExportJob& job)
{
    auto encoder = TextEncoder::create(job.options().encoding);
    if (!encoder) {
        job.forEachTable([&](const ExportEntry& entry, const TAdmMDBTable&) {
            job.tableFailed(entry.tableName, {exportReason::notRepresentable});
        });
        return;
    }
    ExactTextWriter writer(job, std::move(*encoder));
    job.forEachTable([&](const ExportEntry& entry, const TAdmMDBTable& table) { writer.writeFile(entry, table); });
}

} // namespace vellumo
