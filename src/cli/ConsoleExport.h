// SPDX-License-Identifier: MIT
#pragma once

#include "export/ExportReport.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vellumo {

class TAdmMDBFile;
struct ExportEntry;
struct ExportOptions;

// Exports and shows the progress. Ctrl-C ends it.
[[nodiscard]] ExportReport exportWithProgress(
    const TAdmMDBFile& file, const std::vector<ExportEntry>& entries, const ExportOptions& options);

// The same to standard output, whatever the path of the options. nullopt when its reader has gone away, which is the
// reader's own affair, or when it does not take everything, which finishOutput() tells.
[[nodiscard]] std::optional<ExportReport> printExport(
    const TAdmMDBFile& file, const std::vector<ExportEntry>& entries, ExportOptions options);

// Prints what the target cannot take, on standard error, and takes it out of the report.
void printFindings(ExportReport& report, const ExportOptions& options);

// A file that goes with the object.
class TemporaryFile {
public:
    TemporaryFile();
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    [[nodiscard]] const std::string& path() const { return m_path; } // "" when none can be made

private:
    std::string m_path;
};

} // namespace vellumo
