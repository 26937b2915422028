// SPDX-License-Identifier: MIT
#pragma once

#include "export/ExportFinding.h"
#include "jet/DamageReport.h"

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vellumo {

// Where something failed, and what the system or a library said of it.
struct ExportCause {
    std::string path = {};   // of the output; "" where no file is to blame
    std::uint64_t row = 0;   // of the table in stored order, from 1; 0 where no row is to blame
    std::string column = {}; // "" where no column is to blame
    int systemError = 0;     // errno; 0 where the system is not to blame
    std::string reason = {}; // in place of the system's, as the end of a sentence (localised); "" for none

    // "/x/Orders.csv: No space left on device", "Row 17: …", "Row 17, column Price" (localised); "" when nothing is
    // known.
    [[nodiscard]] std::string text() const;
};

// Why something failed: a key of the message table, and what fills its placeholders.
struct ExportReason {
    const char* key;
    std::array<std::string, 2> arguments = {};
    ExportCause cause = {};

    [[nodiscard]] std::string text() const; // localised
};

struct ExportFailure {
    enum class Kind {
        Table,  // one table, named
        Step,   // something behind the tables
        Output, // the one output of all tables
    };
    Kind kind;
    std::string table; // "" unless Table
    ExportReason reason;
};

// What became of an export.
struct ExportReport {
    struct Table {
        std::string name;
        bool isDone = false; // completely written. It may have a failure all the same: of a sheet that went on with it
    };
    std::vector<Table> tables;           // in the order of the export
    std::vector<ExportFailure> failures; // in the order in which they came
    bool isStopped = false;              // by the user
    std::string objectFolder;            // where objects became files of their own; "" where they did not
    std::size_t objectFileCount = 0;     // in it
    ExportFindings findings;             // what the target could not take as the file holds it
    // What the tables had lost before they came to be exported, and with them, as lines (localised).
    std::vector<std::string> leftOutObjects;
    std::vector<std::string> damage;

    [[nodiscard]] std::size_t doneCount() const;
    // Neither stopped nor with any failure.
    [[nodiscard]] bool isDone() const { return !isStopped && failures.empty(); }
    [[nodiscard]] bool isSourceWhole() const { return leftOutObjects.empty() && damage.empty(); }
};

// The failure as a line of the log (localised): "<Orders> Failed: Unable to write file. /x/Orders.csv: File too large"
[[nodiscard]] std::string failureText(const ExportFailure& failure);

// The report as a person reads it (localised).
struct ExportReportTexts {
    std::string title;
    // What was exported, and to where its objects, the first ten failures, the first ten findings, what the file had
    // lost; lines, none at its end.
    std::string body;
};
[[nodiscard]] ExportReportTexts exportReportTexts(const ExportReport& report);

// What is going on while the table with this number of so many begins (localised).
[[nodiscard]] std::string exportProgressText(std::string_view tableName, std::size_t index, std::size_t count);

// Whether a record is of one of the tables, or of the file as a whole. No tables: it always is.
[[nodiscard]] bool concerns(const DamageRecord& record, std::span<const std::string> tables);

// What was lost of the tables (all that there are when none is named) and of the file as a whole, as the lines of a
// report (localised): at most 20, then one that counts the rest. When all that was lost is elsewhere, a line says so;
// only of a sound file there is none.
[[nodiscard]] std::vector<std::string> damageLines(
    const DamageReport& report, std::span<const std::string> tables = {});

} // namespace vellumo
