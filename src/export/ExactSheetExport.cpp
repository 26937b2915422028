// SPDX-License-Identifier: MIT
#include "export/ExportFormat.h"
#include "export/SheetValue.h"
#include "export/biff8/Workbook.h"
#include "export/files/Replacement.h"
#include "export/xlsx/XlsxWorkbook.h"
#include "model/TAdmMDBTable.h"
#include "text/Format.h"
#include "text/Messages.h"

#include <algorithm>
#include <cerrno>
#include <charconv>

namespace vellumo {

namespace {

using CellKind = SheetValue::Kind;
using xlsx::ColumnLayout;

// A workbook that rows go to, from the top, each from the left.
class SheetBook {
public:
    virtual ~SheetBook() = default;
    [[nodiscard]] virtual std::uint32_t maximumRows() const = 0;
    // False for a name that no sheet can have, and when the workbook is full.
    [[nodiscard]] virtual bool addSheet(
        std::string_view name, std::span<const ColumnLayout> columns, bool hasHeader) = 0;
    virtual void beginRow() = 0;
    // True when the text has characters that it could not be written with.
    virtual bool add(std::size_t column, const SheetValue& value) = 0;
    virtual void endRow() = 0;
    // No more fits in, and the table at hand, which is not whole, is taken out again.
    [[nodiscard]] virtual bool giveUpTableIfFull() { return false; }
    virtual void beginTable() { }
    // The disk does not take what is written.
    [[nodiscard]] virtual bool failed() const { return false; }
    // At most once, with a sheet at least. True when the whole file is there; never once the run is stopped.
    [[nodiscard]] virtual bool finish() = 0;
    // The system's reason (errno) for a failure; 0 for none, and where none is known.
    [[nodiscard]] virtual int error() const = 0;
};

class XlsxBook : public SheetBook {
public:
    explicit XlsxBook(std::unique_ptr<xlsx::XlsxWorkbook> workbook)
        : m_workbook(std::move(workbook))
    {
    }
    std::uint32_t maximumRows() const override { return xlsx::XlsxWorkbook::maximumRows; }
    bool addSheet(std::string_view name, std::span<const ColumnLayout> columns, bool hasHeader) override
    {
        return m_workbook->addSheet(name, columns, hasHeader);
    }
    void beginRow() override { m_workbook->cells().beginRow(); }
    bool add(std::size_t column, const SheetValue& value) override;
    void endRow() override
    {
        m_workbook->cells().endRow();
        m_workbook->passOn();
    }
    bool failed() const override { return m_workbook->failed(); }
    bool finish() override { return m_workbook->finish(); }
    int error() const override { return m_workbook->error(); }

private:
    std::unique_ptr<xlsx::XlsxWorkbook> m_workbook;
};

bool XlsxBook::add(std::size_t column, const SheetValue& value)
{
    auto& cells = m_workbook->cells();
    switch (value.kind) {
    case CellKind::Blank: return false;
    case CellKind::Boolean: return cells.addBoolean(column, value.text == "1"), false;
    case CellKind::Text: return cells.addText(column, value.text);
    case CellKind::Number: break;
    }
    if (!value.text.empty()) return cells.addNumber(column, value.text, value.format), false;
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof digits, value.number).ptr;
    cells.addNumber(column, {digits, end}, value.format);
    return false;
}

class XlsBook : public SheetBook {
public:
    XlsBook(std::string path, const ExportJob& job)
        : m_path(std::move(path))
        , m_stop(job.stopFlag())
    {
        m_workbook.setWatcher(job.cellWatcher());
    }
    std::uint32_t maximumRows() const override { return 65536; }
    bool addSheet(std::string_view name, std::span<const ColumnLayout> columns, bool hasHeader) override;
    void beginRow() override { }
    bool add(std::size_t column, const SheetValue& value) override;
    void endRow() override { ++m_row; }
    void beginTable() override { m_firstSheet = m_workbook.sheetCount(); }
    bool giveUpTableIfFull() override;
    bool finish() override
    {
        const bool isWritten = m_workbook.writeFile(m_path, &m_stop);
        m_error = isWritten ? 0 : errno;
        return isWritten;
    }
    int error() const override { return m_error; }

private:
    [[nodiscard]] biff8::CellStatus put(std::uint16_t row, std::uint16_t column, const SheetValue& value);

    std::string m_path;
    const std::atomic<bool>& m_stop;
    int m_error = 0;
    biff8::Workbook m_workbook;
    std::uint32_t m_row = 0;
    std::size_t m_firstSheet = 0; // of the table at hand
    bool m_isFull = false;
};

bool XlsBook::addSheet(std::string_view name, std::span<const ColumnLayout> columns, bool hasHeader)
{
    m_row = 0;
    if (!m_workbook.addSheet(name)) {
        m_isFull = !m_workbook.hasRoomForSheet();
        return false;
    }
    if (!hasHeader) return true;
    for (std::size_t c = 0; c < columns.size(); ++c)
        add(c, {CellKind::Text, CellFormat::General, columns[c].title, 0, true});
    endRow();
    return true;
}

bool XlsBook::add(std::size_t column, const SheetValue& value)
{
    const auto status = put(static_cast<std::uint16_t>(m_row), static_cast<std::uint16_t>(column), value);
    m_isFull |= status == biff8::CellStatus::Full;
    return false;
}

biff8::CellStatus XlsBook::put(std::uint16_t row, std::uint16_t column, const SheetValue& value)
{
    switch (value.kind) {
    case CellKind::Blank: return biff8::CellStatus::Ok;
    case CellKind::Boolean: return m_workbook.setBoolean(row, column, value.text == "1");
    case CellKind::Text:
        return value.isTemporary ? m_workbook.setOwnText(row, column, std::string(value.text))
                                 : m_workbook.setText(row, column, value.text);
    case CellKind::Number: break;
    }
    auto number = value.number;
    std::from_chars(value.text.data(), value.text.data() + value.text.size(), number);
    return m_workbook.setNumber(row, column, number, value.format);
}

bool XlsBook::giveUpTableIfFull()
{
    if (!std::exchange(m_isFull, false)) return false;
    m_workbook.clearFrom(m_firstSheet);
    return true;
}

// Null, and the reason in errno, when there can be no such file.
std::unique_ptr<SheetBook> openBook(const ExportJob& job, const std::string& path)
{
    if (job.options().fileType == ExportFileType::XLS)
        return Replacement::create(path) ? std::make_unique<XlsBook>(path, job) : nullptr;
    auto workbook = xlsx::XlsxWorkbook::create(path);
    if (!workbook) return nullptr;
    workbook->cells().setWatcher(job.cellWatcher());
    return std::make_unique<XlsxBook>(std::move(workbook));
}

// Titles, and widths for them and for the first values.
std::vector<ColumnLayout> layoutOf(const TAdmMDBTable& table)
{
    constexpr std::uint32_t rowsLookedAt = 100;
    constexpr std::size_t dateWidth = 19; // also of the texts that dates are kept as
    std::vector<ColumnLayout> layout;
    const auto groups = table.rows().groups();
    for (std::size_t c = 0; c < table.columns().size(); ++c) {
        const auto& column = *table.columns()[c];
        auto width = column.name().size();
        if (exactKind(column.type()) == ExactKind::Date) width = std::max(width, dateWidth);
        const auto rows = groups.empty() ? 0 : std::min(rowsLookedAt, groups[0].texts[c].rowCount());
        for (std::uint32_t row = 0; row < rows; ++row)
            width = std::max(width, groups[0].texts[c].text(row).size());
        layout.push_back({column.name(), static_cast<unsigned>(std::clamp<std::size_t>(width + 2, 8, 60))});
    }
    return layout;
}

// The rows of one table, on as many sheets as they take.
class TableSheets {
public:
    TableSheets(SheetBook& book, ExportJob& job, const ExportEntry& entry, const TAdmMDBTable& table)
        : m_book(book)
        , m_job(job)
        , m_entry(entry)
        , m_table(table)
        , m_values(job, table)
        , m_layout(layoutOf(table))
    {
    }
    // False when the table has failed, or the run is stopped.
    [[nodiscard]] bool write();

private:
    [[nodiscard]] bool addSheet();
    [[nodiscard]] bool writeGroup(const RowGroup& group, std::size_t firstRow);
    void writeRow(std::vector<ExactCells>& cells, std::uint32_t row, std::size_t firstRow);
    [[nodiscard]] bool fail(ExportReason reason);
    [[nodiscard]] bool failWriting();

    SheetBook& m_book;
    ExportJob& m_job;
    const ExportEntry& m_entry;
    const TAdmMDBTable& m_table;
    SheetValues m_values;
    std::vector<ColumnLayout> m_layout;
    std::uint32_t m_rowsLeft = 0; // on the sheet at hand
    int m_sheetCount = 0;
};

bool TableSheets::fail(ExportReason reason)
{
    m_job.tableFailed(m_table.name(), std::move(reason));
    return false;
}

bool TableSheets::failWriting()
{
    return fail({exportReason::cannotWrite, {}, m_job.outputCause(m_entry, m_book.error())});
}

bool TableSheets::write()
{
    m_book.beginTable();
    if (!addSheet()) return false;
    const auto& rows = m_table.rows();
    for (std::size_t g = 0; g < rows.groups().size(); ++g)
        if (!writeGroup(rows.groups()[g], rows.firstRow(g))) return false;
    return true;
}

bool TableSheets::addSheet()
{
    const bool hasHeader = m_job.options().includeColumnHeader;
    const auto name = ++m_sheetCount == 1 ? m_table.name() : format("%@ (%d)", {m_table.name(), m_sheetCount});
    m_rowsLeft = m_book.maximumRows() - (hasHeader ? 1 : 0);
    if (m_book.addSheet(name, m_layout, hasHeader)) return true;
    if (m_book.failed()) return failWriting();
    if (m_book.giveUpTableIfFull()) return fail({messageKey("Workbook exceeded size limit.")});
    return fail({messageKey("Unable to create spreadsheet %@."), {name}});
}

bool TableSheets::writeGroup(const RowGroup& group, std::size_t firstRow)
{
    m_job.beginRows(m_table, firstRow);
    std::vector<ExactCells> cells;
    for (std::size_t c = 0; c < m_layout.size(); ++c)
        cells.emplace_back(m_table.columns()[c]->type(), group, c);
    for (std::uint32_t row = 0; row < group.rowCount; ++row) {
        if (m_job.terminated()) return fail({exportReason::terminated});
        if (m_rowsLeft == 0 && !addSheet()) return false;
        --m_rowsLeft;
        writeRow(cells, row, firstRow);
        if (m_book.failed()) return failWriting();
        if (m_book.giveUpTableIfFull()) return fail({messageKey("Workbook exceeded size limit.")});
    }
    return true;
}

void TableSheets::writeRow(std::vector<ExactCells>& cells, std::uint32_t row, std::size_t firstRow)
{
    m_book.beginRow();
    for (std::size_t c = 0; c < cells.size(); ++c)
        if (m_book.add(c, m_values.of(cells[c].at(row), c, firstRow + row)))
            m_values.addFinding(FindingKind::CharactersEscaped, c, "_xHHHH_");
    m_book.endRow();
}

void exportToOneFile(ExportJob& job)
{
    const auto book = openBook(job, job.singleFilePath());
    if (!book) return job.outputFailed({exportReason::cannotCreate, {}, job.singleFileCause(errno)});
    std::vector<std::string> written;
    job.forEachTable([&](const ExportEntry& entry, const TAdmMDBTable& table) {
        if (TableSheets(*book, job, entry, table).write()) written.push_back(table.name());
    });
    // A stopped run leaves no file. What went wrong with each table is told already, and a file with none of them would
    // pass for an export.
    if (job.terminated() || written.empty()) return;
    const bool isWritten = book->finish();
    if (!isWritten && job.terminated()) return job.stepFailed({exportReason::terminated});
    if (!isWritten) return job.outputFailed({exportReason::cannotWrite, {}, job.singleFileCause(book->error())});
    for (const auto& name : written)
        job.tableDone(name);
}

void exportToFile(ExportJob& job, const ExportEntry& entry, const TAdmMDBTable& table)
{
    const auto book = openBook(job, job.outputPath(entry));
    if (!book) return job.tableFailed(table.name(), {exportReason::cannotCreate, {}, job.outputCause(entry, errno)});
    if (!TableSheets(*book, job, entry, table).write()) return;
    if (book->finish()) return job.tableDone(table.name());
    if (job.terminated()) return job.tableFailed(table.name(), {exportReason::terminated});
    job.tableFailed(table.name(), {exportReason::cannotWrite, {}, job.outputCause(entry, book->error())});
}

} // namespace

void exportExactSheets(ExportJob& job)
{
    if (job.options().isSingleFile) return exportToOneFile(job);
    job.forEachTable([&job](const ExportEntry& entry, const TAdmMDBTable& table) { exportToFile(job, entry, table); });
}

} // namespace vellumo
