// SPDX-License-Identifier: MIT
#pragma once

#include "export/ExportOptions.h"
#include "export/ExportReport.h"
#include "text/Messages.h"

#include <atomic>
#include <functional>
#include <map>
#include <memory>
#include <vector>

namespace vellumo {

class LoadErrorWindow;
class ObjectFolder;
class SystemLog;
class TAdmBlobData;
class TAdmMDBFile;
class TAdmMDBTable;
struct WrittenCell;

// Reasons that writers share.
namespace exportReason {
inline constexpr const char* cannotCreate = messageKey("Unable to create file for export.");
inline constexpr const char* cannotWrite = messageKey("Unable to write file.");
inline constexpr const char* notRepresentable = messageKey("Text cannot be represented in the selected encoding.");
inline constexpr const char* terminated = messageKey("Terminated.");
} // namespace exportReason

// What a run tells while it goes on, on its own thread. What it refers to outlives the run.
struct ExportListener {
    // The table with this number among the entries begins. A number past the last one means nothing.
    std::function<void(std::size_t index)> progress;
    SystemLog& systemLog;
    LoadErrorWindow* loadErrorWindow = nullptr; // the SQLite library cannot be used; null: standard error
    // Of a run that exports one table: so many of its rows are written. Now and then; null: nobody wants to know.
    std::function<void(std::size_t done, std::size_t total)> rows = nullptr;
    // A cell was put into a workbook; null: nobody wants to know.
    std::function<void(const WrittenCell& cell)> cells = nullptr;
};

// What a writer sees of an export, and where it reports to. Belongs to the writer's thread while that runs; the file is
// only read, and nobody changes it meanwhile.
class ExportJob {
public:
    // Exports the tables of all entries. All references outlive the job.
    ExportJob(const TAdmMDBFile& file, std::vector<ExportEntry> entries, ExportOptions options,
        const std::atomic<bool>& stop, const ExportListener& listener);
    ~ExportJob();
    ExportJob(const ExportJob&) = delete;
    ExportJob& operator=(const ExportJob&) = delete;

    [[nodiscard]] const TAdmMDBFile& file() const { return m_file; }
    [[nodiscard]] const std::vector<ExportEntry>& entries() const { return m_entries; }
    [[nodiscard]] const ExportOptions& options() const { return m_options; }
    [[nodiscard]] SystemLog& systemLog() const { return m_listener.systemLog; }
    [[nodiscard]] LoadErrorWindow& loadErrorWindow() const;
    // For workbooks, which tell it.
    [[nodiscard]] const std::function<void(const WrittenCell& cell)>& cellWatcher() const { return m_listener.cells; }

    // The user asked to stop. Cheap enough to be polled between two cells.
    [[nodiscard]] bool terminated() const { return m_stop.load(std::memory_order_relaxed); }
    [[nodiscard]] const std::atomic<bool>& stopFlag() const { return m_stop; }

    void updateProgress(std::size_t index) { m_listener.progress(index); }
    // To be told by writers with each group of rows: its first one.
    void beginRows(const TAdmMDBTable& table, std::size_t row);

    // The table of this name, as much of it as its entry wants; null when the file has none. Lives as long as the job.
    [[nodiscard]] const TAdmMDBTable* findTable(std::string_view name);

    // The walk that writers have in common: for each entry, until the user stops, reports progress and calls `write`.
    // An entry whose table the file does not have is passed over.
    void forEachTable(const std::function<void(const ExportEntry& entry, const TAdmMDBTable& table)>& write);

    // Where the output of an entry goes: the single file, or the entry's file in the folder. "" (which no file can be
    // created at) when it must not be written: a file name that leads out of the folder, or the database itself.
    [[nodiscard]] std::string outputPath(const ExportEntry& entry) const;
    // The same for the output of all entries; only with a single file.
    [[nodiscard]] std::string singleFilePath() const;

    // Why the output of an entry, or the one of all entries, cannot be created or written: its path, and the system's
    // reason (errno; 0: none is known) unless the job itself keeps it from being written.
    [[nodiscard]] ExportCause outputCause(const ExportEntry& entry, int systemError) const;
    [[nodiscard]] ExportCause singleFileCause(int systemError) const;

    // The table of an entry is completely written. Once an entry.
    void tableDone(std::string_view tableName);
    // A row of the reason is counted as the writer has come to it.
    void tableFailed(std::string_view tableName, ExportReason reason);
    void stepFailed(ExportReason reason);
    void outputFailed(ExportReason reason);

    // The target does not take so many values of the column ("": of the table) as the file holds them.
    void addFinding(FindingKind kind, std::string_view table, std::string_view column, std::size_t count = 1,
        std::string_view detail = {})
    {
        m_report.findings.add(kind, table, column, count, detail);
    }

    // Whether objects become files beside the export, which then has their paths in the place of their bytes.
    [[nodiscard]] bool hasObjectFolder() const { return m_objects != nullptr; }
    // Makes the object of a cell such a file, once a cell, `row` counted from 0 in stored order. Its path relative to
    // the folder; "" when there is no file: the object has no bytes, or it could not be written, which is a failure.
    [[nodiscard]] std::string objectFile(
        const TAdmMDBTable& table, std::size_t column, std::size_t row, const TAdmBlobData& object);
    // Both for the run: the folder with its list is made before the writer comes, and finished after it. False when it
    // cannot be made, which is a failure.
    [[nodiscard]] bool openObjectFolder();
    void finishObjectFolder();

    // What has been told so far, but for `isStopped` and what the file had lost.
    [[nodiscard]] ExportReport& report() { return m_report; }

private:
    void takeObjectFailures();
    [[nodiscard]] ExportCause causeAt(std::string path, int systemError) const;
    [[nodiscard]] const ExportEntry* findEntry(std::string_view tableName) const;
    [[nodiscard]] bool isSource(const std::string& path) const;
    [[nodiscard]] std::string unlessSource(const std::string& path) const;

    const TAdmMDBFile& m_file;
    std::vector<ExportEntry> m_entries;
    ExportOptions m_options;
    const std::atomic<bool>& m_stop;
    ExportListener m_listener;
    ExportReport m_report;
    std::map<std::string, std::unique_ptr<TAdmMDBTable>, std::less<>> m_chosenTables; // by name
    std::unique_ptr<ObjectFolder> m_objects;
    std::size_t m_objectFailures = 0; // that the report has
};

} // namespace vellumo
