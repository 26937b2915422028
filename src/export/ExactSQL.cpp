// SPDX-License-Identifier: MIT
#include "export/ExactSQL.h"

#include "export/ExportJob.h"
#include "model/TAdmMDBFile.h"

#include <algorithm>

namespace vellumo {

namespace {

struct LossRow {
    ExactLoss loss;
    FindingKind kind;
    bool isOfValues; // not of the definition
};

constexpr LossRow lossRows[] = {
    {ExactLoss::NameChanged, FindingKind::NameChanged, false},
    {ExactLoss::NullsAgainstRule, FindingKind::NullsAgainstRule, false},
    {ExactLoss::EmptyAgainstRule, FindingKind::EmptyAgainstRule, false},
    {ExactLoss::DefaultLeftOut, FindingKind::DefaultLeftOut, false},
    {ExactLoss::CommentCut, FindingKind::CommentCut, false},
    {ExactLoss::NumberingLost, FindingKind::NumberingLost, false},
    {ExactLoss::RepeatedKeys, FindingKind::RepeatedKeys, false},
    {ExactLoss::IndexLeftOut, FindingKind::IndexLeftOut, false},
    {ExactLoss::IndexShortened, FindingKind::IndexShortened, false},
    {ExactLoss::RelationUnchecked, FindingKind::RelationUnchecked, false},
    {ExactLoss::RelationLeftOut, FindingKind::RelationLeftOut, false},
    {ExactLoss::CascadeLost, FindingKind::CascadeLost, false},
    {ExactLoss::Unreadable, FindingKind::Unreadable, true},
    {ExactLoss::NotANumber, FindingKind::NotANumberAsNull, true},
    {ExactLoss::MinusZero, FindingKind::MinusZero, true},
    {ExactLoss::CharactersReplaced, FindingKind::CharactersReplaced, true},
    {ExactLoss::EmptyTextAsNull, FindingKind::EmptyText, true},
    {ExactLoss::DigitsAsText, FindingKind::DigitsAsText, true},
    {ExactLoss::FractionRounded, FindingKind::FractionRounded, true},
    {ExactLoss::TooLong, FindingKind::TooLong, true},
};

} // namespace

std::vector<const TAdmMDBTable*> exactTables(ExportJob& job)
{
    std::vector<const TAdmMDBTable*> tables;
    for (const auto& entry : job.entries())
        if (const auto* table = job.findTable(entry.tableName);
            table != nullptr && std::ranges::find(tables, table) == tables.end())
            tables.push_back(table);
    return tables;
}

ExactSchemaOptions exactSchemaOptions(const ExportJob& job)
{
    return {job.options().includeForeignKeys, job.options().includeIndexes, !job.options().objectsFolder.empty()};
}

void addExactFindings(ExportJob& job, const ExactSchema& schema)
{
    const auto& options = job.options();
    for (const auto& note : schema.notes()) {
        const auto* row = std::ranges::find(lossRows, note.loss, &LossRow::loss);
        if (row == std::end(lossRows)) continue;
        if (row->isOfValues ? options.exportData : options.exportStructure)
            job.addFinding(row->kind, note.table, note.column, note.count, note.detail);
    }
}

} // namespace vellumo
