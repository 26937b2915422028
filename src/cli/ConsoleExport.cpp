// SPDX-License-Identifier: MIT
#include "cli/ConsoleExport.h"

#include "cli/ConsoleOutput.h"
#include "cli/ProgressBar.h"
#include "export/ExportFormat.h"
#include "export/RunExport.h"
#include "export/files/OutputFile.h"
#include "platform/SystemLog.h"
#include "text/Format.h"
#include "text/Messages.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace vellumo {

namespace {

class ConsoleLog : public SystemLog {
public:
    void log(std::string_view line) override { printError(line); }
};

bool hasNoReader(const ExportReport& report)
{
    return std::ranges::any_of(
        report.failures, [](const ExportFailure& failure) { return failure.reason.cause.systemError == EPIPE; });
}

// False when not all of it got there: standard output tells of its own failures in the end.
bool printFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::string block(std::size_t{1} << 16, '\0');
    while (file.read(block.data(), static_cast<std::streamsize>(block.size())) || file.gcount() > 0)
        if (!writeBytes({block.data(), static_cast<std::size_t>(file.gcount())})) return false;
    return flushOutput();
}

} // namespace

ExportReport exportWithProgress(
    const TAdmMDBFile& file, const std::vector<ExportEntry>& entries, const ExportOptions& options)
{
    ProgressBar bar("");
    const auto progress = [&](std::size_t index) {
        if (index >= entries.size()) return;
        bar.setLabel(exportProgressText(entries[index].tableName, index, entries.size()));
        bar.show(index, entries.size());
    };
    ConsoleLog log;
    const auto rows = [&](std::size_t done, std::size_t total) { bar.show(done, total); };
    return runExport(file, entries, options, interruptFlag(), {progress, log, nullptr, rows});
}

std::optional<ExportReport> printExport(
    const TAdmMDBFile& file, const std::vector<ExportEntry>& entries, ExportOptions options)
{
    // Some formats are not written from beginning to end.
    std::optional<TemporaryFile> whole;
    if (!exportFormat(options.fileType).isText) whole.emplace();
    options.path = whole ? whole->path() : standardOutputPath;
    options.isSingleFile = true;
    auto report = exportWithProgress(file, entries, options);
    if (hasNoReader(report)) return std::nullopt;
    if (whole && report.doneCount() > 0 && !printFile(whole->path())) return std::nullopt;
    return report;
}

void printFindings(ExportReport& report, const ExportOptions& options)
{
    const auto findings = std::exchange(report.findings, {});
    for (const auto& line : findingLines(findings.all()))
        printError(line);
    const bool hasRemedy = !options.isExact && exportFormat(options.fileType).has(ExportOption::Exact);
    const auto avoided = hasRemedy ? avoidedByExact(findings.all()) : Avoided::None;
    if (avoided == Avoided::All) printError(localized("--exact avoids this."));
    if (avoided == Avoided::Some) printError(localized("--exact avoids some of this."));
}

TemporaryFile::TemporaryFile()
{
    std::error_code error;
    auto name = (std::filesystem::temp_directory_path(error) / "vellumo-XXXXXX").string();
    const int descriptor = ::mkstemp(name.data());
    if (descriptor < 0) return;
    ::close(descriptor);
    m_path = std::move(name);
}

TemporaryFile::~TemporaryFile()
{
    if (!m_path.empty()) ::unlink(m_path.c_str());
}

} // namespace vellumo
