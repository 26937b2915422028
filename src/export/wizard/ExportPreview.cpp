// SPDX-License-Identifier: MIT
#include "export/wizard/ExportPreview.h"

#include "export/ExportFormat.h"
#include "export/RunExport.h"
#include "export/sql/SQLDialectFacts.h"
#include "model/TAdmMDBFile.h"
#include "platform/SystemLog.h"
#include "text/Messages.h"
#include "text/TextEncoding.h"
#include "text/UTF8.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <numeric>

namespace vellumo {

namespace {

constexpr std::size_t shownRows = 10;
constexpr std::size_t shownLines = 60;
constexpr std::size_t shownBytes = 8'000;

class NoLog : public SystemLog {
public:
    void log(std::string_view) override { }
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
std::string beginning(std::string text)
{
    std::size_t end = 0;
    for (std::size_t line = 0; line < shownLines && end < text.size(); ++line)
        end = std::min(text.find('\n', end), text.size() - 1) + 1;
    return std::string(firstBytes(std::string_view(text).substr(0, end), shownBytes));
}

std::string contentsOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::string text(shownBytes + 1, '\0');
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(file.gcount()));
    return text;
}

// The first rows of what is wanted.
ExportEntry firstRowsOf(const TAdmMDBTable& table, ExportEntry entry)
{
    if (!entry.choice.rows) {
        entry.choice.rows.emplace(std::min(table.rows().rowCount(), shownRows));
        std::iota(entry.choice.rows->begin(), entry.choice.rows->end(), 0U);
    }
    entry.choice.rows->resize(std::min(entry.choice.rows->size(), shownRows));
    entry.selected = true;
    return entry;
}

std::string written(const TAdmMDBFile& file, const ExportEntry& entry, ExportOptions options)
{
    const TemporaryFolder folder;
    if (folder.path().empty()) return {};
    options.path = folder.path() + "/preview";
    options.isSingleFile = true;
    options.encoding = encodingUTF8;
    options.hasByteOrderMark = false;
    options.objectsFolder.clear();
    NoLog log;
    const auto report = runExport(file, {&entry, 1}, options, false, {[](std::size_t) {}, log});
    return report.doneCount() == 0 ? std::string() : beginning(contentsOf(options.path));
}

std::string typeName(const TAdmMDBColumn& column, const ExportOptions& options)
{
    const auto& facts = factsOf(column.type());
    if (options.fileType == ExportFileType::SQLite && !options.isExact)
        return convertMDBTypeToDBSPType(column.type(), SQLDialect::SQLite);
    if (options.fileType == ExportFileType::XLS && !options.isExact)
        return localized(facts.isSheetNumber ? messageKey("number") : messageKey("text"));
    return std::string(facts.accessName);
}

// A line a column, and the rows as delimited text.
std::string columnsAndRows(
    const TAdmMDBFile& file, const TAdmMDBTable& table, const ExportEntry& entry, const ExportOptions& options)
{
    std::string text;
    for (std::size_t i = 0; i < table.columns().size(); ++i) {
        const auto& column = *table.columns()[i];
        const auto& wanted = entry.choice.columns;
        if (!wanted || std::ranges::find(*wanted, i) != wanted->end())
            text += column.name() + ": " + typeName(column, options) + '\n';
    }
    ExportOptions rows;
    rows.fileType = ExportFileType::TXT;
    rows.fieldDelimiter = FieldDelimiter::Tab;
    return text + '\n' + written(file, entry, rows);
}

} // namespace

std::string exportPreview(const TAdmMDBFile& file, const ExportEntry& entry, const ExportOptions& options)
{
    const auto* table = file.findTable(entry.tableName);
    if (table == nullptr || exportFormat(options.fileType).writer == nullptr) return {};
    const auto first = firstRowsOf(*table, entry);
    if (exportFormat(options.fileType).isText) return written(file, first, options);
    return columnsAndRows(file, *table, first, options);
}

} // namespace vellumo
