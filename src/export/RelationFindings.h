// SPDX-License-Identifier: MIT
#pragma once

#include "export/ExportFinding.h"
#include "export/ExportOptions.h"

#include <atomic>
#include <functional>

namespace vellumo {

class TAdmMDBFile;
class TAdmMDBForeignKey;

// Rows of a relation whose key the other table does not have.
struct RelationScan {
    std::size_t orphans = 0;
    std::size_t orphansIgnoringCase = 0; // of them, those whose key it does not have in other letters either
};

// Looks at all keys of both tables, which takes its time. nullopt when a table or a column of the relation is not
// there, and when `stop` was raised. Any thread, while the tables stay as they are.
[[nodiscard]] std::optional<RelationScan> scanRelation(
    const TAdmMDBFile& file, const TAdmMDBForeignKey& relation, const std::atomic<bool>& stop);

// nullopt: not known, or not yet.
using ScanOfRelation = std::function<std::optional<RelationScan>(const TAdmMDBForeignKey& relation)>;

// What becomes, in an export of all rows of these tables, of the relations between them that rows break. In the exact
// style of those that are enforced, as the schema of its run tells them too. The scan is asked for where it matters.
void addBrokenRelations(const TAdmMDBFile& file, std::span<const std::string> tables, const ExportOptions& options,
    const ScanOfRelation& scanOf, ExportFindings& findings);

} // namespace vellumo
