// SPDX-License-Identifier: MIT
#include "export/ExcelExport.h"
#include "export/ExportFormat.h"
#include "export/ExportJob.h"
#include "export/biff8/UTF8ToUTF16Converter.h"
#include "export/biff8/Workbook.h"
#include "export/files/Replacement.h"
#include "model/TAdmMDBFile.h"
#include "text/Format.h"
#include "text/Messages.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <filesystem>
#include <limits>
#include <optional>
#include <unistd.h>

namespace vellumo {

namespace {

constexpr std::size_t maximumTextUnits = 32740; // UTF-16
constexpr std::uint32_t rowsPerSheet = 65536;

// 0 for a text that does not begin with a number, not-a-number for one that no double can hold.
double numericValue(std::string_view text)
{
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc::result_out_of_range ? std::numeric_limits<double>::quiet_NaN() : value;
}

bool isTooLong(std::string_view text)
{
    if (text.size() <= maximumTextUnits) return false; // never more units than bytes
    const auto measure = measureText(text);
    return measure && measure->units > maximumTextUnits;
}

// The place of the first text, row by row, that is too long for a cell; nullopt when there is none.
std::optional<ExportCause> placeOfTooLongText(const TAdmMDBTable& table)
{
    for (std::size_t i = 0; i < table.rows().groups().size(); ++i) {
        const auto& group = table.rows().groups()[i];
        auto rowsBefore = group.rowCount;
        const TAdmMDBColumn* found = nullptr;
        for (std::size_t c = 0; c < group.texts.size(); ++c) {
            const auto& texts = group.texts[c];
            for (std::uint32_t r = 0; r < std::min(rowsBefore, texts.rowCount()); ++r) {
                if (!isTooLong(texts.text(r))) continue;
                found = table.columns()[c].get();
                rowsBefore = r;
            }
        }
        if (found != nullptr)
            return ExportCause{.row = table.rows().firstRow(i) + rowsBefore + 1, .column = found->name()};
    }
    return std::nullopt;
}

// Asked before the work begins: the system's reason (errno) why the file cannot be created, 0 for none.
int creationError(const std::string& path)
{
    if (Replacement::create(path)) return 0;
    const int reason = errno;
    // A device can be opened. That it takes no workbook, which never grows in place, shows when there is one.
    std::error_code error;
    return std::filesystem::is_character_file(path, error) && ::access(path.c_str(), W_OK) == 0 ? 0 : reason;
}

// The cells of one table, on as many sheets as they take.
class TableSheets {
public:
    TableSheets(ExcelExport& excel, ExportJob& job, const TAdmMDBTable& table);

    void writeHeader();
    // Ends early when the user stops, when the workbook is full, and when a further sheet cannot be made.
    void writeRows();

private:
    [[nodiscard]] bool writeRow(const RowGroup& group, std::uint32_t row);
    [[nodiscard]] bool addContinuationSheet();
    void writeCell(const RowGroup& group, std::uint32_t row, std::size_t column);

    ExcelExport& m_excel;
    ExportJob& m_job;
    const TAdmMDBTable& m_table;
    std::vector<bool> m_isNumeric; // one a column
    std::uint32_t m_row = 0;       // of the sheet, where the next record goes
    int m_sheetCounter = 1;
};

TableSheets::TableSheets(ExcelExport& excel, ExportJob& job, const TAdmMDBTable& table)
    : m_excel(excel)
    , m_job(job)
    , m_table(table)
{
    for (const auto& column : table.columns())
        m_isNumeric.push_back(factsOf(column->type()).isSheetNumber);
}

void TableSheets::writeHeader()
{
    std::uint16_t index = 0;
    for (const auto& column : m_table.columns())
        m_excel.writeString(column->name(), 0, index++);
    m_row = 1;
}

void TableSheets::writeRows()
{
    const auto& rows = m_table.rows();
    for (std::size_t g = 0; g < rows.groups().size(); ++g) {
        m_job.beginRows(m_table, rows.firstRow(g));
        for (std::uint32_t row = 0; row < rows.groups()[g].rowCount; ++row)
            if (m_job.terminated() || !writeRow(rows.groups()[g], row)) return;
    }
}

bool TableSheets::writeRow(const RowGroup& group, std::uint32_t row)
{
    if (m_row == rowsPerSheet && !addContinuationSheet()) return false;
    for (std::size_t column = 0; column < m_isNumeric.size(); ++column)
        writeCell(group, row, column);
    ++m_row;
    return !m_excel.isFull();
}

bool TableSheets::addContinuationSheet()
{
    ++m_sheetCounter;
    m_row = 0;
    if (m_excel.addSheet(format("%@(%d)", {m_table.name(), m_sheetCounter}))) return true;
    if (m_excel.isFull()) return false; // which the table fails of
    // Otherwise the table counts as exported all the same.
    m_job.tableFailed(m_table.name(),
        {messageKey("Unable to create spreadsheet %@(%d)."), {m_table.name(), std::to_string(m_sheetCounter)}});
    return false;
}

void TableSheets::writeCell(const RowGroup& group, std::uint32_t row, std::size_t column)
{
    const auto& texts = group.texts[column];
    const auto text = texts.rowCount() == 0 ? std::string_view() : texts.text(row); // an object column has no texts
    const auto sheetRow = static_cast<std::uint16_t>(m_row);
    const auto sheetColumn = static_cast<std::uint16_t>(column);
    if (text.empty())
        m_excel.setBlankForRow(sheetRow, sheetColumn);
    else if (m_isNumeric[column])
        m_excel.writeNumber(numericValue(text), sheetRow, sheetColumn);
    else
        m_excel.writeString(text, sheetRow, sheetColumn);
}

class SpreadsheetExport {
public:
    SpreadsheetExport(ExportJob& job, std::uint64_t streamLimit)
        : m_job(job)
        , m_excel(job.systemLog(), streamLimit, job.cellWatcher())
        , m_isSingleFile(job.options().isSingleFile)
    {
    }
    void run();

private:
    void exportTable(const ExportEntry& entry, const TAdmMDBTable& table);
    // True when all of it is in the workbook.
    [[nodiscard]] bool fillSheets(const TAdmMDBTable& table);
    void finishSingleFile();
    [[nodiscard]] ExportReason writeFailure(ExportCause cause) const;

    ExportJob& m_job;
    ExcelExport m_excel;
    bool m_isSingleFile;
    std::vector<std::string> m_tablesInFile; // complete in a single file that is not written yet
};

void SpreadsheetExport::run()
{
    if (const int error = m_isSingleFile ? creationError(m_job.singleFilePath()) : 0) {
        m_job.outputFailed({exportReason::cannotCreate, {}, m_job.singleFileCause(error)});
        return;
    }
    m_job.forEachTable([this](const auto& entry, const auto& table) { exportTable(entry, table); });
    if (m_isSingleFile) finishSingleFile();
}

void SpreadsheetExport::exportTable(const ExportEntry& entry, const TAdmMDBTable& table)
{
    const auto path = m_job.outputPath(entry);
    if (const int error = m_isSingleFile ? 0 : creationError(path))
        return m_job.tableFailed(table.name(), {exportReason::cannotCreate, {}, m_job.outputCause(entry, error)});
    if (!m_excel.addSheet(table.name()))
        return m_job.tableFailed(table.name(), {messageKey("Unable to create spreadsheet %@."), {table.name()}});
    if (!fillSheets(table)) return;
    if (m_isSingleFile)
        m_tablesInFile.push_back(table.name());
    else if (m_excel.dumpToFile(path, &m_job.stopFlag()))
        m_job.tableDone(table.name());
    else
        m_job.tableFailed(table.name(), writeFailure(m_job.outputCause(entry, errno)));
}

ExportReason SpreadsheetExport::writeFailure(ExportCause cause) const
{
    if (m_job.terminated()) return {exportReason::terminated};
    return {exportReason::cannotWrite, {}, std::move(cause)};
}

bool SpreadsheetExport::fillSheets(const TAdmMDBTable& table)
{
    const auto fail = [&](ExportReason reason) {
        m_job.tableFailed(table.name(), std::move(reason));
        return false;
    };
    // A table that fails from here on leaves its first sheet behind, empty, even in the file of the table that follows.
    if (const auto place = placeOfTooLongText(table))
        return fail({messageKey("Field %@ exceeded length limit."), {place->column}, {.row = place->row}});
    const auto firstSheet = m_excel.indexOfLastSheet();
    TableSheets sheets(m_excel, m_job, table);
    if (m_job.options().includeColumnHeader) sheets.writeHeader();
    sheets.writeRows();
    if (m_job.terminated()) return fail({exportReason::terminated});
    if (!m_excel.isFull()) return true;
    m_excel.clearSheetsFrom(firstSheet);
    return fail({messageKey("Workbook exceeded size limit.")});
}

void SpreadsheetExport::finishSingleFile()
{
    // A stopped export leaves no file. What went wrong with each table is told already, and a file with none of them
    // would pass for an export.
    if (m_job.terminated() || m_tablesInFile.empty()) return;
    if (m_excel.dumpToFile(m_job.singleFilePath(), &m_job.stopFlag())) {
        for (const auto& table : m_tablesInFile)
            m_job.tableDone(table);
        return;
    }
    auto reason = writeFailure(m_job.singleFileCause(errno));
    if (m_job.terminated()) return m_job.stepFailed(std::move(reason));
    m_job.outputFailed(std::move(reason));
}

} // namespace

void exportXLSThread(ExportJob& job)
{
    if (job.options().isExact) return exportExactSheets(job);
    exportSpreadsheets(job, biff8::Workbook::defaultStreamLimit);
}

void exportSpreadsheets(ExportJob& job, std::uint64_t streamLimit) { SpreadsheetExport(job, streamLimit).run(); }

} // namespace vellumo
