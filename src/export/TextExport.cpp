// SPDX-License-Identifier: MIT
#include "export/ExportFormat.h"
#include "export/ExportJob.h"
#include "export/TextFrame.h"
#include "export/files/OutputFile.h"
#include "model/TAdmMDBTable.h"
#include "text/QuotedText.h"
#include "text/TextEncoding.h"

#include <optional>

namespace vellumo {

namespace {

enum class CellForm { Bare, Quoted, Decimal };

CellForm cellForm(const TAdmMDBColumn& column, bool isXML)
{
    const auto& facts = factsOf(column.type());
    if (facts.hasDecimalSymbol) return CellForm::Decimal;
    return facts.isQuoted && !isXML ? CellForm::Quoted : CellForm::Bare;
}

bool holds(std::string_view bytes, char what) { return bytes.find(what) != std::string_view::npos; }

// The walk down one column of a row group.
struct ColumnCursor {
    CellForm form = CellForm::Bare;
    bool isDirect = true; // every cell's bytes are what is written, but for quotes around them
    const char* bytes = nullptr;
    const std::uint32_t* ends = nullptr; // null: there are no texts
    std::uint32_t start = 0;

    std::string_view take(std::uint32_t row)
    {
        if (ends == nullptr) return {};
        const auto from = std::exchange(start, ends[row]);
        return {bytes + from, start - from};
    }
};

// Writes one table after the other. Each piece of text is converted by itself, and written as C strings are: up to its
// first zero byte. So encodings with zero bytes in their texts give cut output.
class TextFileWriter {
public:
    TextFileWriter(ExportJob& job, TextEncoder encoder)
        : m_job(job)
        , m_encoder(std::move(encoder))
    {
    }

    void writeFile(const ExportEntry& entry, const TAdmMDBTable& table);

private:
    // These are false when a text cannot be represented in the encoding.
    [[nodiscard]] bool writeTable(const TAdmMDBTable& table);
    [[nodiscard]] bool writeRows(const TAdmMDBTable& table, const std::vector<TextPieces>& gapPieces);
    [[nodiscard]] bool writeGroup(
        const RowGroup& group, const TAdmMDBTable& table, const std::vector<std::string>& gaps);
    [[nodiscard]] bool writeCell(std::string_view text, const ColumnCursor& column);
    [[nodiscard]] bool writeConverted(std::string_view text, CellForm form);
    [[nodiscard]] bool appendPiece(std::string_view piece, std::string& bytes);
    [[nodiscard]] std::optional<std::string> joined(const TextPieces& pieces);

    [[nodiscard]] ColumnCursor cursor(const TextChunk& chunk, const TAdmMDBColumn& column) const;
    [[nodiscard]] bool mustEnd() const { return m_job.terminated() || m_out.failed(); }
    [[nodiscard]] ExportCause refusedPlace(const TAdmMDBTable& table);
    void fail(const ExportEntry& entry, ExportReason reason);

    ExportJob& m_job;
    TextEncoder m_encoder;
    OutputFile m_out;
    ExportCause m_refusedPlace; // of the text that the encoding has no bytes for
    std::string m_piece;        // both used again for every cell that needs them
    std::string m_bytes;
};

void TextFileWriter::writeFile(const ExportEntry& entry, const TAdmMDBTable& table)
{
    const auto failOfOutput = [&](const char* reasonKey) {
        fail(entry, {reasonKey, {}, m_job.outputCause(entry, m_out.error())});
    };
    m_refusedPlace = {};
    if (!m_out.open(m_job.outputPath(entry))) return failOfOutput(exportReason::cannotCreate);
    const bool isRepresentable = writeTable(table);
    if (m_job.terminated()) return fail(entry, {exportReason::terminated});
    if (!isRepresentable) return fail(entry, {exportReason::notRepresentable, {}, refusedPlace(table)});
    if (!m_out.close()) return failOfOutput(exportReason::cannotWrite);
    m_job.tableDone(entry.tableName);
}

// Where it is no cell, it is the name of a column.
ExportCause TextFileWriter::refusedPlace(const TAdmMDBTable& table)
{
    if (m_refusedPlace.row != 0) return m_refusedPlace;
    for (const auto& column : table.columns())
        if (std::string bytes; !m_encoder.append(column->name(), bytes)) return {.column = column->name()};
    return {};
}

void TextFileWriter::fail(const ExportEntry& entry, ExportReason reason)
{
    m_out.discard();
    m_job.tableFailed(entry.tableName, std::move(reason));
}

bool TextFileWriter::writeTable(const TAdmMDBTable& table)
{
    const auto frame = textFrame(table, m_job.options());
    std::string mark; // not cut at its zeros, as texts are
    if (m_job.options().hasByteOrderMark && !m_encoder.append("\uFEFF", mark)) return false;
    m_out.write(mark);
    const auto begin = joined(frame.begin);
    if (!begin) return false;
    m_out.write(*begin);
    if (!table.rows().empty() && !writeRows(table, frame.gaps)) return false;
    const auto end = joined(frame.end);
    if (end) m_out.write(*end);
    return end.has_value();
}

bool TextFileWriter::writeRows(const TAdmMDBTable& table, const std::vector<TextPieces>& gapPieces)
{
    std::vector<std::string> gaps;
    for (const auto& pieces : gapPieces) {
        auto gap = joined(pieces);
        if (!gap) return false;
        gaps.push_back(std::move(*gap));
    }
    for (std::size_t i = 0; i < table.rows().groups().size(); ++i) {
        m_job.beginRows(table, table.rows().firstRow(i));
        if (!writeGroup(table.rows().groups()[i], table, gaps)) {
            m_refusedPlace.row += table.rows().firstRow(i);
            return false;
        }
        if (mustEnd()) break;
    }
    return true;
}

bool TextFileWriter::writeGroup(const RowGroup& group, const TAdmMDBTable& table, const std::vector<std::string>& gaps)
{
    std::vector<ColumnCursor> columns;
    for (std::size_t c = 0; c < group.texts.size(); ++c)
        columns.push_back(cursor(group.texts[c], *table.columns()[c]));
    for (std::uint32_t row = 0; row < group.rowCount; ++row) {
        for (std::size_t c = 0; c < columns.size(); ++c) {
            if (mustEnd()) return true;
            m_out.write(gaps[c]);
            if (writeCell(columns[c].take(row), columns[c])) continue;
            m_refusedPlace = {.row = row + 1U, .column = table.columns()[c]->name()};
            return false;
        }
        m_out.write(gaps.back());
    }
    return true;
}

ColumnCursor TextFileWriter::cursor(const TextChunk& chunk, const TAdmMDBColumn& column) const
{
    if (chunk.rowCount() == 0) return {}; // an object column
    const auto& options = m_job.options();
    const auto bytes = chunk.bytes();
    ColumnCursor cursor{
        cellForm(column, options.fileType == ExportFileType::XML), true, bytes.data(), chunk.ends().data(), 0};
    const bool isRewritten = (cursor.form == CellForm::Quoted && holds(bytes, '"'))
        || (cursor.form == CellForm::Decimal && options.decimalSymbol != "." && holds(bytes, '.'));
    cursor.isDirect = !isRewritten && !holds(bytes, '\0') && m_encoder.keeps(bytes) && m_encoder.keeps("\"");
    return cursor;
}

bool TextFileWriter::writeCell(std::string_view text, const ColumnCursor& column)
{
    if (text.empty()) return true;
    if (!column.isDirect) return writeConverted(text, column.form);
    if (column.form == CellForm::Quoted) m_out.write("\"");
    m_out.write(text);
    if (column.form == CellForm::Quoted) m_out.write("\"");
    return true;
}

bool TextFileWriter::writeConverted(std::string_view text, CellForm form)
{
    m_piece.clear();
    m_bytes.clear();
    switch (form) {
    case CellForm::Bare: m_piece = text; break;
    case CellForm::Quoted: appendQuoted(text, m_piece); break;
    case CellForm::Decimal: appendReplaced(text, '.', m_job.options().decimalSymbol, m_piece); break;
    }
    if (!appendPiece(m_piece, m_bytes)) return false;
    m_out.write(m_bytes);
    return true;
}

bool TextFileWriter::appendPiece(std::string_view piece, std::string& bytes)
{
    const auto start = bytes.size();
    if (!m_encoder.append(piece, bytes)) return false;
    const auto zero = bytes.find('\0', start);
    if (zero != std::string::npos) bytes.resize(zero);
    return true;
}

std::optional<std::string> TextFileWriter::joined(const TextPieces& pieces)
{
    std::string bytes;
    for (const auto& piece : pieces)
        if (!appendPiece(piece, bytes)) return std::nullopt;
    return bytes;
}

} // namespace

void exportTextFileThread(ExportJob& job)
{
    if (job.options().isExact) return exportExactText(job);
    auto encoder = TextEncoder::create(job.options().encoding);
    if (!encoder) {
        job.forEachTable([&](const ExportEntry& entry, const TAdmMDBTable&) {
            job.tableFailed(entry.tableName, {exportReason::notRepresentable});
        });
        return;
    }
    TextFileWriter writer(job, std::move(*encoder));
    job.forEachTable([&](const ExportEntry& entry, const TAdmMDBTable& table) { writer.writeFile(entry, table); });
}

} // namespace vellumo
