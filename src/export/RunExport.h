// SPDX-License-Identifier: MIT
#pragma once

#include "export/ExportJob.h"

namespace vellumo {

// Exports the selected ones of the tables, on the calling thread. `stop` may be raised at any time from anywhere: the
// run then ends soon, keeps the files that were complete, and leaves nothing half-written. Neither the file nor its
// tables change meanwhile. `options.fileType` is a type that has a writer.
[[nodiscard]] ExportReport runExport(const TAdmMDBFile& file, std::span<const ExportEntry> tables,
    const ExportOptions& options, const std::atomic<bool>& stop, const ExportListener& listener);

// The report of an export that could not even begin, for want of memory.
[[nodiscard]] ExportReport reportWithoutMemory(const TAdmMDBFile& file, std::span<const ExportEntry> tables);

} // namespace vellumo
