#include "export/ExportWriters.h"

namespace vellumo {

ExportWriter exportWriterForType(ExportFileType type)
{
    switch (type) {
    case ExportFileType::CSV:
    case ExportFileType::TXT:
    case ExportFileType::XML: return exportTextFileThread;
    case ExportFileType::XLS: return exportXLSThread;
    case ExportFileType::SQL: return exportSQLThread;
    case ExportFileType::SQLite: return exportSQLiteThread;
    default: return nullptr;
    }
}

} // namespace vellumo
