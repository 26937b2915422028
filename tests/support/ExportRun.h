// SPDX-License-Identifier: MIT
#pragma once

#include "export/ExportFormat.h"
#include "export/ExportJob.h"
#include "model/TAdmMDBFile.h"
#include "support/ExportFakes.h"

#include <atomic>
#include <functional>
#include <vector>

// Runs a writer on the calling thread.
namespace vellumo::test {

struct ExportOutcome {
    int successTableCount = 0;
    std::vector<std::string> log; // with "%" for the path of the options
    std::vector<std::string> systemLog;
    std::vector<std::size_t> progress; // the numbers reported
};

// The line with "%" where it names the path of the options.
inline std::string withoutPath(std::string line, const std::string& path)
{
    const auto at = path.empty() ? std::string::npos : line.find(path);
    return at == std::string::npos ? line : line.replace(at, path.size(), "%");
}

// All tables of the file, each to its default file name. `stopAt`: the user stops when the report with this number
// arrives (from 0; -1: never), or when `terminate` becomes true. `fileNames`: output file names to use instead, in
// table order.
inline ExportOutcome runWriter(const std::function<void(ExportJob&)>& writer, const TAdmMDBFile& file,
    const ExportOptions& options, int stopAt = -1, const std::vector<std::string>& fileNames = {},
    std::atomic<bool>* terminate = nullptr)
{
    std::vector<ExportEntry> entries;
    for (const auto& table : file.tables())
        entries.push_back(ExportEntry::exportEntryWithTableName(table->name(), options.fileType));
    for (std::size_t i = 0; i < fileNames.size(); ++i)
        entries.at(i).exportFileName = fileNames[i];
    FakeSystemLog systemLog;
    std::atomic<bool> stopFlag = false;
    if (terminate == nullptr) terminate = &stopFlag;
    ExportOutcome outcome;
    const auto progress = [&](std::size_t index) {
        if (static_cast<int>(outcome.progress.size()) == stopAt) *terminate = true;
        outcome.progress.push_back(index);
    };
    ExportJob job(file, entries, options, *terminate, {progress, systemLog});
    writer(job);
    outcome.successTableCount = static_cast<int>(job.report().doneCount());
    for (const auto& failure : job.report().failures)
        outcome.log.push_back(withoutPath(failureText(failure), options.path));
    outcome.systemLog = systemLog.lines;
    return outcome;
}

} // namespace vellumo::test
