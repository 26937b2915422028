// SPDX-License-Identifier: MIT
#pragma once

#include "export/sql/ExactSchema.h"

// The SQL writers of the exact style, and what they have in common.
namespace vellumo {

class ExportJob;

// A script: one for all tables, or one a table.
void exportExactScript(ExportJob& job);
// One SQLite database with all tables.
void exportExactSQLite(ExportJob& job);

// The tables of a job's entries that the file has, in their order.
[[nodiscard]] std::vector<const TAdmMDBTable*> exactTables(ExportJob& job);
[[nodiscard]] ExactSchemaOptions exactSchemaOptions(const ExportJob& job);
// Tells the job what the schema could not keep: of values only when these are exported, of rules only with the tables.
void addExactFindings(ExportJob& job, const ExactSchema& schema);

} // namespace vellumo
