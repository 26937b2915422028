// SPDX-License-Identifier: MIT
#include "export/RunExport.h"

#include "export/ExportFormat.h"
#include "export/ExportReport.h"
#include "export/objects/ObjectCells.h"
#include "model/TAdmMDBFile.h"

#include <algorithm>
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

// What the tables have lost before they came to be exported, and with them.
void addLosses(const TAdmMDBFile& file, const ExportOptions& options, ExportReport& report)
{
    std::vector<std::string> names;
    for (const auto& [name, isDone] : report.tables) {
        names.push_back(name);
        const auto* table = file.findTable(name);
        if (table != nullptr && options.exportData)
            std::ranges::move(
                leftOutObjects(*table, !options.objectsFolder.empty()), std::back_inserter(report.leftOutObjects));
    }
    const bool isWholeFile = names.size() == file.tables().size();
    report.damage = damageLines(file.damage(), isWholeFile ? std::span<const std::string>() : names);
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
    try {
        write(job);
    } catch (const std::bad_alloc&) {
        report.failures.push_back(noMemory());
    }
    report.isStopped = job.terminated();
    addLosses(file, options, report);
    return std::move(report);
}

ExportReport reportWithoutMemory(
    const TAdmMDBFile& file, std::span<const ExportEntry> tables, const ExportOptions& options)
{
    ExportReport report;
    for (const auto& entry : selectedOf(tables))
        report.tables.push_back({entry.tableName});
    report.failures.push_back(noMemory());
    addLosses(file, options, report);
    return report;
}

} // namespace vellumo
