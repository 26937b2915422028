// SPDX-License-Identifier: MIT
#pragma once

#include "text/Messages.h"

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace vellumo {

// What of a file could not be read. The comment says what a record's count counts.
enum class DamageKind : std::uint8_t {
    File,        // the file ends early, or changed while it was read: 1
    Catalogue,   // the list of tables, or a part of it: entries lost as far as known, at least 1
    Table,       // a table whose definition cannot be read; it is missing as a whole: 1
    LostTable,   // tables that are in the file and that the catalogue lacks; the place is that of the definition
    Definition,  // a part of a definition that rows do not need, such as its indexes: 1
    Properties,  // the properties of a table and its columns, or a part of them: 1
    Relations,   // the relations of the file, or a part of them: relations lost as far as known, at least 1
    Queries,     // saved queries of which a part cannot be read, as far as it is known how many
    PageList,    // the list of a table's pages: 1
    LostPage,    // pages that hold rows of the table, or of the column's values, and that its list lacks
    Page,        // pages that should hold rows of the table and do not, or cannot be read
    Row,         // rows that stand on a page and cannot be made out
    MissingRows, // rows that the table says it has, or an index knows, beyond all that was found or told by Row
    Value,       // values that cannot be read; the cell shows U+FFFD or is empty
    LongText,    // memos that break off; the cell shows what there is, and U+FFFD
    Object,      // objects that break off; the cell says that it is damaged
    Index,       // pages of indexes, when they are looked at
    Budget,      // values or rows left as they are stored, or out, because they would take too much memory
};

// The kind's name for programs, never translated ("missingRows").
[[nodiscard]] std::string_view damageKindName(DamageKind kind);

// One thing that was lost, and where. Places that are not known, or make no sense for the kind, are empty or 0.
struct DamageRecord {
    DamageKind kind = DamageKind::File;
    std::string table{};     // UTF-8, as listed
    std::string column{};    // UTF-8
    std::uint32_t page = 0;  // number of the page, from 0; page 0 itself is never damaged in an open file
    std::uint64_t row = 0;   // from 1, in stored order, as the table is shown
    std::uint64_t count = 1; // how much is lost, in the unit of the kind

    bool operator==(const DamageRecord&) const = default;
};

// The record as a sentence, one line. Names from the file stand in it as they are.
[[nodiscard]] std::string damageText(const DamageRecord& record, Translation translate = localized);

// Everything that opening a file found damaged. Counts are exact; places are kept for the first records of each table
// and kind, and what comes after them is one further record without a place. Not for several threads at once: each
// reader fills one of its own, and they are joined.
class DamageReport {
public:
    // Records with a place that are kept for each table, column and kind.
    static constexpr std::size_t placesKept = 20;

    void add(DamageRecord record);
    // Adds all of `other`'s. Those of cells have their row numbers raised by `rowsBefore`; those without a table's name
    // get `table`.
    void append(const DamageReport& other, std::string_view table, std::uint64_t rowsBefore);

    [[nodiscard]] bool empty() const { return m_records.empty(); }
    // In the order in which they were found.
    [[nodiscard]] std::span<const DamageRecord> records() const { return m_records; }
    // Sum of the counts of a kind, of all tables or of one.
    [[nodiscard]] std::uint64_t total(DamageKind kind) const;
    [[nodiscard]] std::uint64_t total(DamageKind kind, std::string_view table) const;
    // Rows known to be missing from tables that could be read.
    [[nodiscard]] std::uint64_t missingRows() const;
    // Whether anything was lost of the table of this name.
    [[nodiscard]] bool concerns(std::string_view table) const;

private:
    struct Kept {
        std::size_t places = 0;
        std::optional<std::size_t> rest; // position in m_records of the record without a place
    };
    std::vector<DamageRecord> m_records;
    std::map<std::tuple<std::string, std::string, DamageKind>, Kept> m_kept;
};

// The report in one line (localised): "2 of 8 tables could not be read, 480 rows are missing." `tableCount`: tables
// that could be read. "" for an empty report.
[[nodiscard]] std::string damageSummary(const DamageReport& report, std::size_t tableCount);

} // namespace vellumo
