// SPDX-License-Identifier: MIT
#include "export/ExportJob.h"

#include "SQLite Connection/DBSockets/LoadErrorWindow.h"
#include "export/ChosenTable.h"
#include "export/objects/ObjectFile.h"
#include "export/objects/ObjectsExport.h"
#include "model/TAdmMDBFile.h"
#include "text/Format.h"

#include <algorithm>

namespace vellumo {

namespace {

LoadErrorWindow& standardErrorWindow()
{
    static StandardErrorLoadErrorWindow window;
    return window;
}

// Table names come from the database, and "../" in one must not lead anywhere.
bool isFileName(const std::string& name)
{
    return !name.empty() && name.find_first_of(std::string_view("/\0", 2)) == std::string::npos;
}

std::string pathInFolder(const ExportOptions& options, const ExportEntry& entry)
{
    return format("%@/%@", {options.path, entry.exportFileName});
}

} // namespace

ExportJob::ExportJob(const TAdmMDBFile& file, std::vector<ExportEntry> entries, ExportOptions options,
    const std::atomic<bool>& stop, const ExportListener& listener)
    : m_file(file)
    , m_entries(std::move(entries))
    , m_options(std::move(options))
    , m_stop(stop)
    , m_listener(listener)
{
    for (const auto& entry : m_entries)
        m_report.tables.push_back({entry.tableName});
}

ExportJob::~ExportJob() = default;

LoadErrorWindow& ExportJob::loadErrorWindow() const
{
    return m_listener.loadErrorWindow == nullptr ? standardErrorWindow() : *m_listener.loadErrorWindow;
}

const ExportEntry* ExportJob::findEntry(std::string_view tableName) const
{
    const auto found = std::ranges::find(m_entries, tableName, &ExportEntry::tableName);
    return found == m_entries.end() ? nullptr : &*found;
}

const TAdmMDBTable* ExportJob::findTable(std::string_view name)
{
    if (const auto made = m_chosenTables.find(name); made != m_chosenTables.end()) return made->second.get();
    const auto* table = m_file.findTable(name);
    const auto* entry = findEntry(name);
    if (table == nullptr || entry == nullptr || entry->choice.isAll()) return table;
    return m_chosenTables.emplace(name, chosenTable(*table, entry->choice)).first->second.get();
}

void ExportJob::forEachTable(const std::function<void(const ExportEntry&, const TAdmMDBTable&)>& write)
{
    for (std::size_t index = 0; index < m_entries.size() && !terminated(); ++index) {
        updateProgress(index);
        const auto& entry = m_entries[index];
        if (const auto* table = findTable(entry.tableName)) write(entry, *table);
    }
}

std::string ExportJob::outputPath(const ExportEntry& entry) const
{
    if (m_options.isSingleFile) return singleFilePath();
    return isFileName(entry.exportFileName) ? unlessSource(pathInFolder(m_options, entry)) : std::string();
}

std::string ExportJob::singleFilePath() const { return unlessSource(m_options.path); }

std::string ExportJob::unlessSource(const std::string& path) const { return isSource(path) ? std::string() : path; }

bool ExportJob::isSource(const std::string& path) const { return isDatabase(path, m_file.fullPath()); }

ExportCause ExportJob::outputCause(const ExportEntry& entry, int systemError) const
{
    if (m_options.isSingleFile) return singleFileCause(systemError);
    if (!isFileName(entry.exportFileName))
        return {.path = entry.exportFileName, .reason = localized("it cannot be the name of a file")};
    return causeAt(pathInFolder(m_options, entry), systemError);
}

ExportCause ExportJob::singleFileCause(int systemError) const { return causeAt(m_options.path, systemError); }

ExportCause ExportJob::causeAt(std::string path, int systemError) const
{
    if (isSource(path)) return {.path = std::move(path), .reason = isDatabaseText()};
    return {.path = std::move(path), .systemError = systemError};
}

bool ExportJob::openObjectFolder()
{
    m_objects = std::make_unique<ObjectFolder>(m_file, m_options.objectsFolder);
    const bool isOpen = m_objects->open();
    if (isOpen) m_report.objectFolder = m_options.objectsFolder;
    takeObjectFailures();
    return isOpen;
}

std::string ExportJob::objectFile(
    const TAdmMDBTable& table, std::size_t column, std::size_t row, const TAdmBlobData& object)
{
    const auto* entry = findEntry(table.name());
    const bool isChosen = entry != nullptr && entry->choice.rows.has_value();
    auto path = m_objects->add(table, column, isChosen ? entry->choice.rows->at(row) : row, object);
    takeObjectFailures();
    return path;
}

void ExportJob::finishObjectFolder()
{
    m_objects->finish();
    takeObjectFailures();
}

void ExportJob::takeObjectFailures()
{
    m_report.objectFileCount = m_objects->report().written;
    const auto& failures = m_objects->report().failures;
    for (; m_objectFailures < failures.size(); ++m_objectFailures)
        outputFailed({"%@", {failures[m_objectFailures]}});
}

void ExportJob::tableDone(std::string_view tableName)
{
    for (auto& table : m_report.tables)
        if (!table.isDone && table.name == tableName) {
            table.isDone = true;
            return;
        }
}

void ExportJob::tableFailed(std::string_view tableName, ExportReason reason)
{
    const auto* entry = findEntry(tableName);
    auto& row = reason.cause.row;
    if (row != 0 && entry != nullptr && entry->choice.rows) row = entry->choice.rows->at(row - 1) + 1U;
    m_report.failures.push_back({ExportFailure::Kind::Table, std::string(tableName), std::move(reason)});
}

void ExportJob::stepFailed(ExportReason reason)
{
    m_report.failures.push_back({ExportFailure::Kind::Step, "", std::move(reason)});
}

void ExportJob::outputFailed(ExportReason reason)
{
    m_report.failures.push_back({ExportFailure::Kind::Output, "", std::move(reason)});
}

void ExportJob::beginRows(const TAdmMDBTable& table, std::size_t row)
{
    if (m_listener.rows && m_entries.size() == 1) m_listener.rows(row, table.rows().rowCount());
}

} // namespace vellumo
