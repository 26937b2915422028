#pragma once

#include "export/ExportJob.h"
#include "export/ExportWriters.h"
#include "model/TAdmMDBFile.h"
#include "platform/MainThread.h"
#include "support/ExportFakes.h"

#include <atomic>
#include <functional>
#include <vector>

// Runs a writer on the calling thread.
namespace vellumo::test {

class DirectMainThread : public MainThread {
public:
    void performAndWait(const std::function<void()>& work) override { work(); }
    void post(std::function<void()> work) override { work(); }
};

struct ExportOutcome {
    int successTableCount = 0;
    std::vector<std::string> log;
    std::vector<std::string> systemLog;
    std::vector<std::size_t> progress; // the numbers reported
};

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
    DirectMainThread mainThread;
    FakeSystemLog systemLog;
    std::atomic<bool> stopFlag = false;
    if (terminate == nullptr) terminate = &stopFlag;
    ExportOutcome outcome;
    ExportJob job(file, entries, options, *terminate, mainThread, systemLog, [&](std::size_t index) {
        if (static_cast<int>(outcome.progress.size()) == stopAt) *terminate = true;
        outcome.progress.push_back(index);
    });
    writer(job);
    outcome.successTableCount = job.successTableCount();
    outcome.log = job.msgLog();
    outcome.systemLog = systemLog.lines;
    return outcome;
}

} // namespace vellumo::test
