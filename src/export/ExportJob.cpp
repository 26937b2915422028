#include "export/ExportJob.h"

#include "SQLite Connection/DBSockets/LoadErrorWindow.h"
#include "model/TAdmMDBFile.h"
#include "platform/MainThread.h"
#include "text/Format.h"

#include <filesystem>

namespace vellumo {

namespace {

LoadErrorWindow& standardErrorWindow()
{
    static StandardErrorLoadErrorWindow window;
    return window;
}

} // namespace

ExportJob::ExportJob(const TAdmMDBFile& file, std::vector<ExportEntry> entries, ExportOptions options,
    const std::atomic<bool>& terminate, MainThread& mainThread, SystemLog& systemLog,
    std::function<void(std::size_t)> updateProgress)
    : m_file(file)
    , m_entries(std::move(entries))
    , m_options(std::move(options))
    , m_terminate(terminate)
    , m_mainThread(mainThread)
    , m_systemLog(systemLog)
    , m_updateProgress(std::move(updateProgress))
    , m_loadErrorWindow(&standardErrorWindow())
{
}

void ExportJob::updateProgress(std::size_t index)
{
    m_mainThread.performAndWait([&] { m_updateProgress(index); });
}

void ExportJob::forEachTable(const std::function<void(const ExportEntry&, const TAdmMDBTable&)>& write)
{
    for (std::size_t index = 0; index < m_entries.size() && !terminated(); ++index) {
        updateProgress(index);
        const auto& entry = m_entries[index];
        if (const auto* table = m_file.findTable(entry.tableName)) write(entry, *table);
    }
}

std::string ExportJob::outputPath(const ExportEntry& entry) const
{
    if (m_options.isSingleFile) return singleFilePath();
    const auto& name = entry.exportFileName;
    // Table names come from the database, and "../" in one must not lead anywhere.
    if (name.empty() || name.find_first_of(std::string_view("/\0", 2)) != std::string::npos) return {};
    return unlessSource(format("%@/%@", {m_options.path, name}));
}

std::string ExportJob::singleFilePath() const { return unlessSource(m_options.path); }

std::string ExportJob::unlessSource(std::string path) const
{
    std::error_code error;
    if (std::filesystem::equivalent(path, m_file.fullPath(), error)) return {};
    return path;
}

void ExportJob::logFailure(std::string_view tableName, std::string_view reason)
{
    log(format("<%@> %@: %@", {tableName, localized("Failed"), reason}));
}

} // namespace vellumo
