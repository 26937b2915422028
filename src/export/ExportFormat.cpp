// SPDX-License-Identifier: MIT
#include "export/ExportFormat.h"

#include "text/Messages.h"

#include <algorithm>

namespace vellumo {

namespace {

using Option = ExportOption;

constexpr FieldDelimiter commaOrSemicolon[] = {FieldDelimiter::Semicolon, FieldDelimiter::Comma};
constexpr FieldDelimiter anyDelimiter[] = {
    FieldDelimiter::Tab, FieldDelimiter::Semicolon, FieldDelimiter::Comma, FieldDelimiter::Space};

constexpr FormatInfo formats[] = {
    {
        .type = ExportFileType::CSV,
        .name = "csv",
        .title = "CSV",
        .commandKey = messageKey("Export CSV"),
        .extension = "csv",
        .output = ExportOutput::Folder,
        .isText = true,
        .options = {Option::Header, Option::FieldDelimiter, Option::RecordDelimiter, Option::DecimalSymbol,
            Option::Encoding, Option::Exact, Option::ByteOrderMark, Option::GuardFormulas, Option::Objects},
        .fieldDelimiters = commaOrSemicolon,
        .delimiterSetsDecimalSymbol = true,
        .writer = exportTextFileThread,
    },
    {
        .type = ExportFileType::TXT,
        .name = "txt",
        .title = "TXT",
        .commandKey = messageKey("Export TXT"),
        .extension = "txt",
        .output = ExportOutput::Folder,
        .isText = true,
        .options = {Option::Header, Option::FieldDelimiter, Option::RecordDelimiter, Option::DecimalSymbol,
            Option::Encoding, Option::Exact, Option::ByteOrderMark, Option::GuardFormulas, Option::Objects},
        .fieldDelimiters = anyDelimiter,
        .writer = exportTextFileThread,
    },
    {
        .type = ExportFileType::XML,
        .name = "xml",
        .title = "XML",
        .commandKey = messageKey("Export XML"),
        .extension = "xml",
        .output = ExportOutput::Folder,
        .isText = true,
        .options = {Option::DecimalSymbol, Option::Encoding, Option::Exact, Option::ByteOrderMark, Option::Objects},
        .writer = exportTextFileThread,
    },
    {
        .type = ExportFileType::XLS,
        .name = "xls",
        .title = "XLS",
        .commandKey = messageKey("Export XLS"),
        .extension = "xls",
        .output = ExportOutput::FileOrFolder,
        .options = {Option::Header, Option::Exact, Option::Objects},
        .writer = exportXLSThread,
    },
    {
        .type = ExportFileType::SQL,
        .name = "sql",
        .title = "SQL",
        .commandKey = messageKey("Export SQL"),
        .extension = "sql",
        .output = ExportOutput::FileOrFolder,
        .isText = true,
        .options = {Option::DecimalSymbol, Option::Dialect, Option::Schema, Option::Structure, Option::DropTable,
            Option::ForeignKeys, Option::Indexes, Option::Data, Option::Exact, Option::Objects},
        .writer = exportSQLThread,
    },
    {
        .type = ExportFileType::SQLite,
        .name = "sqlite",
        .title = "SQLite",
        .commandKey = messageKey("Export SQLite"),
        .extension = "sqlite",
        .output = ExportOutput::File,
        .options = {Option::ForeignKeys, Option::Indexes, Option::Data, Option::Exact, Option::Objects},
        .writer = exportSQLiteThread,
    },
    {
        .type = ExportFileType::JSONLines,
        .name = "jsonl",
        .title = "JSONL",
        .commandKey = messageKey("Export JSON Lines"),
        .extension = "jsonl",
        .output = ExportOutput::Folder,
        .isText = true,
        .options = {Option::Exact, Option::Objects},
        .isAlwaysExact = true,
        .writer = exportExactText,
    },
    {
        .type = ExportFileType::XLSX,
        .name = "xlsx",
        .title = "XLSX",
        .commandKey = messageKey("Export XLSX"),
        .extension = "xlsx",
        .output = ExportOutput::FileOrFolder,
        .options = {Option::Header, Option::Exact, Option::Objects},
        .isAlwaysExact = true,
        .writer = exportExactSheets,
    },
};

constexpr FormatInfo unknownFormat = {
    .type = ExportFileType(-1),
    .name = "",
    .title = "",
    .commandKey = messageKey("Export"),
    .extension = "",
    .output = ExportOutput::Folder,
    .options = {},
    .writer = nullptr,
};

} // namespace

// The exact style has a decimal point, and only it keeps apart from the rest what the other two change.
bool FormatInfo::has(ExportOption option, bool isExact) const
{
    const bool isOnlyExact = option == Option::GuardFormulas || option == Option::Objects;
    return has(option) && (isExact ? option != Option::DecimalSymbol : !isOnlyExact);
}

bool FormatInfo::offers(FieldDelimiter delimiter) const
{
    return std::ranges::find(fieldDelimiters, delimiter) != fieldDelimiters.end();
}

std::optional<std::string> FormatInfo::decimalSymbolFor(FieldDelimiter delimiter) const
{
    if (!delimiterSetsDecimalSymbol) return std::nullopt;
    if (delimiter == FieldDelimiter::Comma) return ".";
    if (delimiter == FieldDelimiter::Semicolon) return ",";
    return std::nullopt;
}

std::span<const FormatInfo> exportFormats() { return formats; }

const FormatInfo& exportFormat(ExportFileType type)
{
    for (const auto& format : formats)
        if (format.type == type) return format;
    return unknownFormat;
}

const FormatInfo* findExportFormat(std::string_view name)
{
    const auto* found = std::ranges::find(formats, name, &FormatInfo::name);
    return found == std::end(formats) ? nullptr : found;
}

std::optional<std::string_view> fileExtensionByExportFileType(ExportFileType type)
{
    const auto extension = exportFormat(type).extension;
    return extension.empty() ? std::nullopt : std::optional(extension);
}

ExportOptions defaultOptions(const FormatInfo& format, bool isExact)
{
    ExportOptions options;
    options.fileType = format.type;
    options.isSingleFile = format.output == ExportOutput::File;
    options.includeColumnHeader = format.has(Option::Header);
    options.isExact = isExact || format.isAlwaysExact;
    if (options.isExact && format.has(Option::RecordDelimiter)) options.recordDelimiter = RecordDelimiter::CRLF;
    return options;
}

} // namespace vellumo
