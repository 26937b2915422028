#include "export/ExportOptions.h"

#include "export/sql/SQLDialectFacts.h"
#include "text/Format.h"

namespace vellumo {

std::optional<std::string_view> fileExtensionByExportFileType(ExportFileType type)
{
    switch (type) {
    case ExportFileType::CSV: return "csv";
    case ExportFileType::TXT: return "txt";
    case ExportFileType::XML: return "xml";
    case ExportFileType::XLS: return "xls";
    case ExportFileType::SQL: return "sql";
    case ExportFileType::SQLite: return "sqlite";
    }
    return std::nullopt;
}

std::string_view fieldDelimiterText(FieldDelimiter delimiter)
{
    switch (delimiter) {
    case FieldDelimiter::Tab: return "\t";
    case FieldDelimiter::Semicolon: return ";";
    case FieldDelimiter::Space: return " ";
    case FieldDelimiter::Comma: break;
    }
    return ",";
}

std::string_view recordDelimiterText(RecordDelimiter delimiter)
{
    switch (delimiter) {
    case RecordDelimiter::CR: return "\r";
    case RecordDelimiter::CRLF: return "\r\n";
    case RecordDelimiter::LF: break;
    }
    return "\n";
}

bool takesSchemaName(SQLDialect dialect) { return sqlDialectFacts(dialect).takesSchemaName; }

ExportEntry ExportEntry::exportEntryWithTableName(std::string_view tableName, ExportFileType type)
{
    ExportEntry entry;
    entry.tableName = tableName;
    const auto extension = fileExtensionByExportFileType(type);
    const bool hasSuffix = extension && type != ExportFileType::SQLite;
    entry.exportFileName = hasSuffix ? format("%@.%@", {tableName, *extension}) : std::string(tableName);
    return entry;
}

} // namespace vellumo
