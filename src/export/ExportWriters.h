#pragma once

#include <cstdint>

namespace vellumo {

class ExportJob;

// Writes all tables of a job, on the thread that it is called on. Tells the job of each table that is completely
// written and of each that failed; after a stop nothing half-written is left on disk.
using ExportWriter = void (*)(ExportJob& job);

// CSV, TXT and XML.
void exportTextFileThread(ExportJob& job);
// SQL scripts: one for all tables, or one a table.
void exportSQLThread(ExportJob& job);
// One SQLite database with all tables. It takes the place of a file at its path, and is gone again when the run is
// stopped or the disk did not take it whole.
void exportSQLiteThread(ExportJob& job);

// Excel workbooks: one for all tables, or one a table.
void exportXLSThread(ExportJob& job);
// The same with workbooks whose stream has at most that many bytes.
void exportSpreadsheets(ExportJob& job, std::uint64_t streamLimit);

} // namespace vellumo
