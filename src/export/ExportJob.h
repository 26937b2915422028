#pragma once

#include "export/ExportOptions.h"
#include "text/Messages.h"

#include <atomic>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace vellumo {

class LoadErrorWindow;
class MainThread;
class SystemLog;
class TAdmMDBFile;
class TAdmMDBTable;

// Keys of the reasons that writers share.
namespace exportReason {
inline constexpr const char* cannotCreate = messageKey("Unable to create file for export.");
inline constexpr const char* cannotWrite = messageKey("Unable to write file.");
inline constexpr const char* notRepresentable = messageKey("Text cannot be represented in the selected encoding.");
inline constexpr const char* terminated = messageKey("Terminated.");
} // namespace exportReason

// What a writer sees of an export, and where it reports to. Belongs to the writer's thread while that runs; the file is
// only read, and nobody changes it meanwhile. Log and count may be read elsewhere once the writer has returned.
class ExportJob {
public:
    // `entries`: the selected tables. `updateProgress` is called on the main thread. All references outlive the job.
    ExportJob(const TAdmMDBFile& file, std::vector<ExportEntry> entries, ExportOptions options,
        const std::atomic<bool>& terminate, MainThread& mainThread, SystemLog& systemLog,
        std::function<void(std::size_t)> updateProgress);

    [[nodiscard]] const TAdmMDBFile& file() const { return m_file; }
    [[nodiscard]] const std::vector<ExportEntry>& entries() const { return m_entries; }
    [[nodiscard]] const ExportOptions& options() const { return m_options; }
    [[nodiscard]] SystemLog& systemLog() const { return m_systemLog; }

    // The user asked to stop. Cheap enough to be polled between two cells.
    [[nodiscard]] bool terminated() const { return m_terminate.load(std::memory_order_relaxed); }

    // Tells the main thread that the table with this number among the entries begins, and waits until it is shown.
    void updateProgress(std::size_t index);

    // The walk that writers have in common: for each entry, until the user stops, reports progress and calls `write`.
    // An entry whose table the file does not have is passed over.
    void forEachTable(const std::function<void(const ExportEntry& entry, const TAdmMDBTable& table)>& write);

    // Where the output of an entry goes: the single file, or the entry's file in the folder. "" (which no file can be
    // created at) when it must not be written: a file name that leads out of the folder, or the database itself.
    [[nodiscard]] std::string outputPath(const ExportEntry& entry) const;
    // The same for the output of all entries; only with a single file.
    [[nodiscard]] std::string singleFilePath() const;

    void tableSucceeded() { ++m_successTableCount; }
    // Adds the line "<table> Failed: reason". `reason` is localised already.
    void logFailure(std::string_view tableName, std::string_view reason);
    // Adds a line as it is.
    void log(std::string line) { m_msgLog.push_back(std::move(line)); }

    // Shows that the SQLite library cannot be used, on the thread that calls it. Standard error unless set.
    [[nodiscard]] LoadErrorWindow& loadErrorWindow() const { return *m_loadErrorWindow; }
    void setLoadErrorWindow(LoadErrorWindow& window) { m_loadErrorWindow = &window; }

    [[nodiscard]] int successTableCount() const { return m_successTableCount; }
    [[nodiscard]] const std::vector<std::string>& msgLog() const { return m_msgLog; }

private:
    [[nodiscard]] std::string unlessSource(std::string path) const;

    const TAdmMDBFile& m_file;
    std::vector<ExportEntry> m_entries;
    ExportOptions m_options;
    const std::atomic<bool>& m_terminate;
    MainThread& m_mainThread;
    SystemLog& m_systemLog;
    std::function<void(std::size_t)> m_updateProgress;
    LoadErrorWindow* m_loadErrorWindow;
    int m_successTableCount = 0;
    std::vector<std::string> m_msgLog;
};

} // namespace vellumo
