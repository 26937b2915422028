// SPDX-License-Identifier: MIT
#include "export/ExportPreview.h"

#include "SQLite Connection/DBSockets/LoadErrorWindow.h"
#include "export/ExportFormat.h"
#include "export/RunExport.h"
#include "export/SQLitePreview.h"
#include "export/SheetPreview.h"
#include "model/TAdmMDBFile.h"
#include "platform/SystemLog.h"
#include "text/Format.h"
#include "text/Messages.h"
#include "text/TextEncoding.h"
#include "text/UTF8.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <numeric>
#include <system_error>

namespace vellumo {

namespace {

constexpr std::size_t previewRows = 10;
constexpr std::size_t previewLines = 60;
constexpr std::size_t previewBytes = 8'000;

constexpr std::size_t previewBytesOfValue = 200;

class NoLog : public SystemLog {
public:
    void log(std::string_view) override { }
};

// What it would tell, a failure of the export tells too.
class NoWindow : public LoadErrorWindow {
public:
    void show(const LoadError&) override { }
};

// A folder that goes with the object.
class TemporaryFolder {
public:
    TemporaryFolder()
    {
        std::error_code error;
        auto path = (std::filesystem::temp_directory_path(error) / "vellumo-XXXXXX").string();
        if (::mkdtemp(path.data()) != nullptr) m_path = std::move(path);
    }
    ~TemporaryFolder()
    {
        std::error_code error;
        if (!m_path.empty()) std::filesystem::remove_all(m_path, error);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::string& path() const { return m_path; } // "" when there is none

private:
    std::string m_path;
};

// Whole lines and characters, as many as are shown.
std::string beginning(std::string_view text)
{
    std::size_t end = 0;
    for (std::size_t line = 0; line < previewLines && end < text.size(); ++line)
        end = std::min(text.find('\n', end), text.size() - 1) + 1;
    return std::string(firstBytes(text.substr(0, end), previewBytes));
}

std::string contentsOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::string text(previewBytes + 1, '\0');
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(file.gcount()));
    return text;
}

// The first rows of what is wanted.
ExportEntry firstRowsOf(const TAdmMDBTable& table, ExportEntry entry)
{
    if (!entry.choice.rows) {
        entry.choice.rows.emplace(std::min(table.rows().rowCount(), previewRows));
        std::iota(entry.choice.rows->begin(), entry.choice.rows->end(), 0U);
    }
    entry.choice.rows->resize(std::min(entry.choice.rows->size(), previewRows));
    entry.selected = true;
    return entry;
}

// Types and rules of a database depend on all rows in the exact style.
bool dependsOnRows(const ExportOptions& options)
{
    const bool isDatabase = options.fileType == ExportFileType::SQL || options.fileType == ExportFileType::SQLite;
    return isDatabase && options.isExact && options.exportStructure;
}

class PreviewRun {
public:
    PreviewRun(const TAdmMDBFile& file, const TAdmMDBTable& table, ExportEntry entry, ExportOptions options)
        : m_file(file)
        , m_table(table)
        , m_entry(firstRowsOf(table, std::move(entry)))
        , m_options(std::move(options))
        , m_sheet(m_options.includeColumnHeader)
    {
    }
    [[nodiscard]] ExportPreview make();

private:
    [[nodiscard]] bool write();
    void takeRemarks(ExportReport report);
    void readBack();
    void shortenValues();

    const TAdmMDBFile& m_file;
    const TAdmMDBTable& m_table;
    ExportEntry m_entry;
    ExportOptions m_options;
    SheetPreview m_sheet;
    NoWindow m_window;
    ExportPreview m_preview;
};

ExportPreview PreviewRun::make()
{
    const TemporaryFolder folder;
    if (folder.path().empty()) {
        m_preview.remarks.push_back(std::generic_category().message(errno));
        return std::move(m_preview);
    }
    m_options.path = folder.path() + "/preview";
    m_options.isSingleFile = true;
    m_options.encoding = encodingUTF8;
    m_options.hasByteOrderMark = false;
    if (!m_options.objectsFolder.empty()) m_options.objectsFolder = folder.path() + "/objects";
    if (write()) readBack();
    shortenValues();
    return std::move(m_preview);
}

bool PreviewRun::write()
{
    NoLog log;
    ExportListener listener{[](std::size_t) {}, log, &m_window};
    listener.cells = [this](const WrittenCell& cell) { m_sheet.take(cell); };
    auto report = runExport(m_file, {&m_entry, 1}, m_options, false, listener);
    const bool isWritten = report.doneCount() > 0;
    takeRemarks(std::move(report));
    return isWritten;
}

void PreviewRun::takeRemarks(ExportReport report)
{
    auto& remarks = m_preview.remarks;
    for (auto& failure : report.failures) {
        failure.reason.cause.path.clear(); // that of the temporary file
        remarks.push_back(failureText(failure));
    }
    if (!m_options.isExact) return; // these findings are known of all rows
    const auto lines = findingLines(report.findings.all());
    if (!lines.empty()) remarks.push_back(localized("Of the rows in the preview:"));
    remarks.insert(remarks.end(), lines.begin(), lines.end());
    if (dependsOnRows(m_options) && m_entry.choice.rows->size() < m_table.rows().rowCount())
        remarks.push_back(localized("Types and rules are those of these rows; the export looks at all of them."));
}

void PreviewRun::readBack()
{
    if (exportFormat(m_options.fileType).isText) {
        m_preview.text = beginning(contentsOf(m_options.path));
    } else if (m_options.fileType == ExportFileType::SQLite) {
        const auto problem = readSQLitePreview(m_options.path, m_window, m_preview);
        if (!problem.empty()) m_preview.remarks.push_back(problem);
    } else {
        const auto& columns = m_entry.choice.columns;
        m_sheet.moveTo(m_preview, columns ? columns->size() : m_table.columns().size(), m_entry.choice.rows->size());
    }
}

void PreviewRun::shortenValues()
{
    for (auto& row : m_preview.rows)
        for (auto& value : row)
            if (value && value->size() > previewBytesOfValue)
                value = std::string(firstBytes(*value, previewBytesOfValue)) + "…";
}

} // namespace

ExportPreview exportPreview(const TAdmMDBFile& file, const ExportEntry& entry, const ExportOptions& options)
{
    const auto* table = file.findTable(entry.tableName);
    if (table == nullptr || exportFormat(options.fileType).writer == nullptr) return {};
    return PreviewRun(file, *table, entry, options).make();
}

} // namespace vellumo
