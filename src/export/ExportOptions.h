// SPDX-License-Identifier: MIT
#pragma once

#include "SQLite Connection/Connection/ServerType.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vellumo {

// What an export writes; ExportFormat.h tells all about each. Any other code is carried along and starts no writer.
enum class ExportFileType : std::uint32_t {
    CSV = 0,
    TXT = 1,
    XML = 2,
    XLS = 3,
    SQL = 4,
    SQLite = 5,
    JSONLines = 6,
    XLSX = 7
};

// Tags of the delimiter popups. Any other field delimiter means a comma, any other record delimiter a line feed.
enum class FieldDelimiter : std::uint32_t { Tab = 0, Semicolon = 1, Comma = 2, Space = 3 };
enum class RecordDelimiter : std::uint32_t { LF = 0, CR = 1, CRLF = 2 };

template <typename Delimiter> struct DelimiterInfo {
    Delimiter delimiter;
    std::string_view name; // on the command line
    const char* titleKey;  // in a dialog, a key of the message table
    std::string_view text; // in the output
};
// In the order of their tags.
[[nodiscard]] std::span<const DelimiterInfo<FieldDelimiter>> fieldDelimiters();
[[nodiscard]] std::span<const DelimiterInfo<RecordDelimiter>> recordDelimiters();
[[nodiscard]] std::string_view fieldDelimiterText(FieldDelimiter delimiter);
[[nodiscard]] std::string_view recordDelimiterText(RecordDelimiter delimiter);

// Tags of the dialect popup; sql/SQLDialectFacts.h tells all about each.
using SQLDialect = ServerType;

// What the user chose. Options that do not apply to the type hold what `defaultOptions` gives them.
struct ExportOptions {
    ExportFileType fileType = ExportFileType::CSV;
    bool isSingleFile = false;
    std::string path; // single file: the output file; else the output folder, made when only that is missing
    bool includeColumnHeader = true;
    FieldDelimiter fieldDelimiter = FieldDelimiter::Comma;
    RecordDelimiter recordDelimiter = RecordDelimiter::LF;
    std::string decimalSymbol = "."; // any text, may be empty
    std::uint32_t encoding = 4;      // identifier of a text encoding
    SQLDialect sqlDialect = SQLDialect::MySQL;
    std::string schemaName;
    bool exportStructure = true;
    bool includeDropTable = true; // this and the next two: only with structure
    bool includeForeignKeys = true;
    bool includeIndexes = true;
    bool exportData = true;
    bool isExact = false;           // every value as the file holds it; else in the classic style
    bool hasByteOrderMark = false;  // even where the encoding needs none
    bool guardsFormulas = false;    // only exact: an apostrophe in front of texts that a sheet would take for formulas
    std::string objectsFolder = {}; // "": no files of the objects

    // Without either there is nothing to export.
    [[nodiscard]] bool hasContents() const { return exportStructure || exportData; }
};

// What of a table is wanted, where that is not all of it.
struct TableChoice {
    std::optional<std::vector<std::size_t>> columns = {}; // their numbers, in the order wanted; nullopt: all
    std::optional<std::vector<std::uint32_t>> rows = {};  // row numbers of the store, in the order wanted; nullopt: all

    [[nodiscard]] bool isAll() const { return !columns && !rows; }
};

// A table to export, and the file that it goes to.
struct ExportEntry {
    bool selected = false;
    std::string tableName;
    std::string exportFileName; // used when each table goes to a file of its own
    TableChoice choice = {};    // of its rows and columns

    // Not selected; the file is named after the table, with the type's extension (a SQLite export has no file a table,
    // so its entries carry the bare name).
    [[nodiscard]] static ExportEntry exportEntryWithTableName(std::string_view tableName, ExportFileType type);
};

} // namespace vellumo
