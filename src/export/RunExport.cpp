// SPDX-License-Identifier: MIT
#include "export/RunExport.h"

#include "export/ClassicFindings.h"
#include "export/ExportFormat.h"
#include "export/ExportReport.h"
#include "export/RelationFindings.h"
#include "export/objects/ObjectCells.h"
#include "model/TAdmMDBFile.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <new>

namespace vellumo {

namespace {

std::vector<ExportEntry> selectedOf(std::span<const ExportEntry> tables)
{
    std::vector<ExportEntry> selected;
    std::ranges::copy_if(tables, std::back_inserter(selected), &ExportEntry::selected);
    return selected;
}

ExportFailure noMemory() { return {ExportFailure::Kind::Step, "", {messageKey("Not enough memory.")}}; }

// What the tables have lost before they came to be exported.
void addDamage(const TAdmMDBFile& file, ExportReport& report)
{
    std::vector<std::string> names;
    for (const auto& table : report.tables)
        names.push_back(table.name);
    const bool isWholeFile = names.size() == file.tables().size();
    report.damage = damageLines(file.damage(), isWholeFile ? std::span<const std::string>() : names);
}

// What is lost with them, and the files that are there and have no place in a cell.
void addLeftOutObjects(ExportJob& job)
{
    const auto& options = job.options();
    if (!options.exportData) return;
    const bool leavesFilesOut = options.isExact && options.objectsFolder.empty();
    for (const auto& entry : job.entries()) {
        const auto* table = job.findTable(entry.tableName);
        if (table == nullptr) continue;
        std::ranges::move(leftOutObjects(*table), std::back_inserter(job.report().leftOutObjects));
        for (std::size_t c = 0; leavesFilesOut && c < table->columns().size(); ++c)
            if (const auto count = furtherFileCount(*table, c); count > 0)
                job.addFinding(FindingKind::FilesLeftOut, table->name(), table->columns()[c]->name(), count);
    }
}

// Makes the folder of the output where only that is missing, and takes it away when nothing has come into it.
class OutputFolder {
public:
    explicit OutputFolder(const ExportOptions& options)
        : m_path(options.path)
    {
        std::error_code error;
        m_isMade = !options.isSingleFile && !m_path.empty() && std::filesystem::create_directory(m_path, error);
    }
    ~OutputFolder()
    {
        std::error_code error;
        if (m_isMade) std::filesystem::remove(m_path, error);
    }
    OutputFolder(const OutputFolder&) = delete;
    OutputFolder& operator=(const OutputFolder&) = delete;

private:
    std::string m_path;
    bool m_isMade;
};

// What the classic style will lose, before it is written.
void lookForFindings(ExportJob& job)
{
    const auto& options = job.options();
    std::vector<std::string> names;
    for (const auto& entry : job.entries()) {
        const auto* table = job.findTable(entry.tableName);
        if (table == nullptr) continue;
        names.push_back(entry.tableName);
        const auto scan = scanTable(*table, job.stopFlag(), classicTraits(options));
        addClassicFindings(*table, scan, options, job.report().findings);
    }
    addClassicFindings(job.file(), names, options, job.report().findings);
    const auto scan = [&](const TAdmMDBForeignKey& relation) {
        return scanRelation(job.file(), relation, job.stopFlag());
    };
    addBrokenRelations(job.file(), names, options, scan, job.report().findings);
}

// Without the objects that it refers to, an export would be less than it looks.
void write(ExportJob& job)
{
    const bool hasObjects = !job.options().objectsFolder.empty();
    if (hasObjects && !job.openObjectFolder()) return;
    exportFormat(job.options().fileType).writer(job);
    if (hasObjects && !job.terminated()) job.finishObjectFolder();
}

} // namespace

ExportReport runExport(const TAdmMDBFile& file, std::span<const ExportEntry> tables, const ExportOptions& options,
    const std::atomic<bool>& stop, const ExportListener& listener)
{
    ExportJob job(file, selectedOf(tables), options, stop, listener);
    auto& report = job.report();
    const OutputFolder folder(options);
    try {
        if (!options.isExact) lookForFindings(job);
        write(job);
        addLeftOutObjects(job);
    } catch (const std::bad_alloc&) {
        report.failures.push_back(noMemory());
    }
    report.isStopped = job.terminated();
    addDamage(file, report);
    return std::move(report);
}

ExportReport reportWithoutMemory(const TAdmMDBFile& file, std::span<const ExportEntry> tables)
{
    ExportReport report;
    for (const auto& entry : selectedOf(tables))
        report.tables.push_back({entry.tableName});
    report.failures.push_back(noMemory());
    addDamage(file, report);
    return report;
}

} // namespace vellumo
