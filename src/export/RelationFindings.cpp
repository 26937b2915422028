// SPDX-License-Identifier: MIT
#include "export/RelationFindings.h"

#include "export/sql/ExactSurvey.h"
#include "model/TAdmMDBFile.h"

#include <algorithm>

namespace vellumo {

namespace {

bool isBrokenRelationTold(const ExportOptions& options)
{
    const bool isSQLite = options.fileType == ExportFileType::SQLite || options.sqlDialect == SQLDialect::SQLite;
    const bool isDatabase = options.fileType == ExportFileType::SQL || options.fileType == ExportFileType::SQLite;
    if (!isDatabase || !options.includeForeignKeys || !options.exportStructure) return false;
    // SQLite takes the relations of the classic style without looking at the rows.
    return options.isExact || (!isSQLite && options.exportData);
}

} // namespace

std::optional<RelationScan> scanRelation(
    const TAdmMDBFile& file, const TAdmMDBForeignKey& relation, const std::atomic<bool>& stop)
{
    const auto* child = file.findTable(relation.referencingTable());
    const auto* parent = file.findTable(relation.referencedTable());
    if (child == nullptr || parent == nullptr) return std::nullopt;
    const auto columns = columnIndexes(*child, relation.referencingColumns());
    const auto referenced = columnIndexes(*parent, relation.referencedColumns());
    if (!columns || !referenced || columns->size() != referenced->size()) return std::nullopt;
    RelationScan scan;
    scan.orphans = countOrphans(*child, *columns, *parent, *referenced, KeyComparison::Exact, &stop);
    if (scan.orphans > 0)
        scan.orphansIgnoringCase =
            countOrphans(*child, *columns, *parent, *referenced, KeyComparison::IgnoringCase, &stop);
    return stop ? std::nullopt : std::optional(scan);
}

void addBrokenRelations(const TAdmMDBFile& file, std::span<const std::string> tables, const ExportOptions& options,
    const ScanOfRelation& scanOf, ExportFindings& findings)
{
    if (!isBrokenRelationTold(options)) return;
    const auto isExported = [&](const std::string& name) { return std::ranges::find(tables, name) != tables.end(); };
    for (const auto& relation : file.allForeignKeys()) {
        const auto& child = relation->referencingTable();
        if (!isExported(child) || !isExported(relation->referencedTable())) continue;
        if (options.isExact && !relation->isEnforced()) continue;
        const auto scan = scanOf(*relation);
        if (!scan) continue;
        const bool ignoresCase = !options.isExact && options.sqlDialect == SQLDialect::MySQL;
        const auto count = ignoresCase ? scan->orphansIgnoringCase : scan->orphans;
        if (count == 0) continue;
        if (options.isExact)
            findings.add(FindingKind::RelationUnchecked, child, "", count, relation->name());
        else
            findings.add(FindingKind::RelationBroken, child, relation->name(), count);
    }
}

} // namespace vellumo
