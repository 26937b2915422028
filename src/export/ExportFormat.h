// SPDX-License-Identifier: MIT
#pragma once

#include "export/ExportOptions.h"

#include <cstdint>
#include <initializer_list>

namespace vellumo {

class ExportJob;

// Writes all tables of a job, on the thread that it is called on. Tells the job of each table that is completely
// written and of each that failed; after a stop nothing half-written is left on disk.
using ExportWriter = void (*)(ExportJob& job);

// CSV, TXT and XML, in either style.
void exportTextFileThread(ExportJob& job);
// The same in the exact style, and JSON Lines, which have no other.
void exportExactText(ExportJob& job);
// SQL scripts: one for all tables, or one a table.
void exportSQLThread(ExportJob& job);
// One SQLite database with all tables. It takes the place of a file at its path, and is gone again when the run is
// stopped or the disk did not take it whole.
void exportSQLiteThread(ExportJob& job);

// Excel workbooks: one for all tables, or one a table.
void exportXLSThread(ExportJob& job);
// In the exact style, and .xlsx workbooks, which have no other.
void exportExactSheets(ExportJob& job);
// Classic workbooks whose stream has at most that many bytes.
void exportSpreadsheets(ExportJob& job, std::uint64_t streamLimit);

// The formats of exports. A new one is one row of the table and one writer: the commands, the dialog and the command
// line ask the row for all else.

// The options that not every format has.
enum class ExportOption : unsigned {
    Header,
    FieldDelimiter,
    RecordDelimiter,
    DecimalSymbol,
    Encoding,
    Dialect,
    Schema,
    Structure,
    DropTable,
    ForeignKeys,
    Indexes,
    Data,
    Exact,
    ByteOrderMark,
    GuardFormulas,
    Objects, // as files beside
};

class ExportOptionSet {
public:
    constexpr ExportOptionSet(std::initializer_list<ExportOption> options)
    {
        for (const auto option : options)
            m_bits |= 1U << static_cast<unsigned>(option);
    }
    [[nodiscard]] constexpr bool has(ExportOption option) const
    {
        return (m_bits >> static_cast<unsigned>(option) & 1U) != 0;
    }

private:
    unsigned m_bits = 0;
};

// Where the tables go.
enum class ExportOutput {
    Folder,       // each to a file of its own
    FileOrFolder, // to one file or to a file each, as the user likes
    File,         // always all to one
};

struct FormatInfo {
    ExportFileType type;
    std::string_view name;      // on the command line
    std::string_view title;     // for people, in every language
    const char* commandKey;     // the command that exports to it, a key of the message table
    std::string_view extension; // without the dot
    ExportOutput output;
    bool isText = false; // may be read, and written, from beginning to end
    ExportOptionSet options;
    std::span<const FieldDelimiter> fieldDelimiters = {}; // that may be chosen, where that option applies
    bool delimiterSetsDecimalSymbol = false;              // so that the two differ
    bool isAlwaysExact = false;                           // it has no classic style
    ExportWriter writer;

    [[nodiscard]] bool has(ExportOption option) const { return options.has(option); }
    // Whether it also has a meaning in that style.
    [[nodiscard]] bool has(ExportOption option, bool isExact) const;
    // Whether all tables may go to one file.
    [[nodiscard]] bool hasSingleFileMode() const { return output != ExportOutput::Folder; }
    [[nodiscard]] bool offers(FieldDelimiter delimiter) const;
    // The decimal symbol that comes with the choice of a field delimiter; nullopt: the one before stays.
    [[nodiscard]] std::optional<std::string> decimalSymbolFor(FieldDelimiter delimiter) const;
};

// In the order of their codes, which is that of the commands.
[[nodiscard]] std::span<const FormatInfo> exportFormats();
// A code that is none gets a row without options, extension and writer.
[[nodiscard]] const FormatInfo& exportFormat(ExportFileType type);
// Null for a name that no format has.
[[nodiscard]] const FormatInfo* findExportFormat(std::string_view name);

// Without the dot; nullopt for a code that is no type.
[[nodiscard]] std::optional<std::string_view> fileExtensionByExportFileType(ExportFileType type);

// The options before the user has changed any.
[[nodiscard]] ExportOptions defaultOptions(const FormatInfo& format, bool isExact = false);

} // namespace vellumo
