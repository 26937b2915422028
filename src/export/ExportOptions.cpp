// SPDX-License-Identifier: MIT
#include "export/ExportOptions.h"

#include "export/ExportFormat.h"
#include "text/Format.h"
#include "text/Messages.h"

namespace vellumo {

namespace {

constexpr DelimiterInfo<FieldDelimiter> fieldDelimiterInfos[] = {
    {FieldDelimiter::Tab, "tab", messageKey("Tab"), "\t"},
    {FieldDelimiter::Semicolon, "semicolon", messageKey("Semicolon"), ";"},
    {FieldDelimiter::Comma, "comma", messageKey("Comma"), ","},
    {FieldDelimiter::Space, "space", messageKey("Space"), " "},
};

constexpr DelimiterInfo<RecordDelimiter> recordDelimiterInfos[] = {
    {RecordDelimiter::LF, "lf", messageKey("LF (Unix)"), "\n"},
    {RecordDelimiter::CR, "cr", messageKey("CR (Mac)"), "\r"},
    {RecordDelimiter::CRLF, "crlf", messageKey("CR LF (Windows)"), "\r\n"},
};

template <typename Delimiter>
std::string_view textOf(
    std::span<const DelimiterInfo<Delimiter>> infos, Delimiter delimiter, std::string_view otherwise)
{
    for (const auto& info : infos)
        if (info.delimiter == delimiter) return info.text;
    return otherwise;
}

} // namespace

std::span<const DelimiterInfo<FieldDelimiter>> fieldDelimiters() { return fieldDelimiterInfos; }

std::span<const DelimiterInfo<RecordDelimiter>> recordDelimiters() { return recordDelimiterInfos; }

std::string_view fieldDelimiterText(FieldDelimiter delimiter) { return textOf(fieldDelimiters(), delimiter, ","); }

std::string_view recordDelimiterText(RecordDelimiter delimiter) { return textOf(recordDelimiters(), delimiter, "\n"); }

ExportEntry ExportEntry::exportEntryWithTableName(std::string_view tableName, ExportFileType type)
{
    const auto& format = exportFormat(type);
    ExportEntry entry;
    entry.tableName = tableName;
    entry.exportFileName = tableName;
    if (format.output != ExportOutput::File && !format.extension.empty())
        entry.exportFileName.append(".").append(format.extension);
    return entry;
}

} // namespace vellumo
