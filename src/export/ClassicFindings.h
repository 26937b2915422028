// SPDX-License-Identifier: MIT
#pragma once

#include "export/ExportFinding.h"
#include "export/ExportOptions.h"
#include "export/TableScan.h"

namespace vellumo {

class TAdmMDBFile;

// What an export in the classic style will not bring to its target as the file holds it.

// Of a table with this scan, which counts at least these traits.
[[nodiscard]] WantedTraits classicTraits(const ExportOptions& options);
void addClassicFindings(
    const TAdmMDBTable& table, const TableScan& scan, const ExportOptions& options, ExportFindings& findings);

// Of these tables together: the encoding, and the relations between them but for those that rows break
// (RelationFindings.h).
void addClassicFindings(const TAdmMDBFile& file, std::span<const std::string> tables, const ExportOptions& options,
    ExportFindings& findings);

} // namespace vellumo
