// SPDX-License-Identifier: MIT
#pragma once

#include "browser/DesktopPorts.h"
#include "browser/TreeItem.h"
#include "model/TAdmMDBFile.h"
#include "platform/Alerts.h"

#include <string>
#include <vector>

namespace vellumo {

// What the window says of files that are damaged, and of those that it cannot open. All localised.

// What was lost of a file or of a table, in one line; "" where nothing was, and while the file is not open.
[[nodiscard]] std::string damageOf(const TAdmMDBFile& file);
[[nodiscard]] std::string damageOf(const TAdmMDBTable& table);

// The text of the bar above the grid while the item is selected; "" for no bar. It tells of the whole file; what
// concerns a selected table comes first.
[[nodiscard]] std::string damageBarText(const TreeItem& item);

// What came of looking for lost rows in the file, which is open now.
[[nodiscard]] Alert salvageResult(const TAdmMDBFile& file, Salvage salvage);

// That the file cannot be opened, why, and what to do.
[[nodiscard]] Alert openFailureAlert(const TAdmMDBFile& file, Alert::Style style);

// The list of what a damaged file lost, a row a record, without the sheet that shows it. Keeps the records itself, so
// it outlives the file. Main thread only.
class DamageDetails {
public:
    enum class Column { What, Table, Column, Row, Page, Count };
    static constexpr std::size_t columnCount = 6;

    // The interfaces outlive the details.
    DamageDetails(const TAdmMDBFile& file, const DesktopPorts& desktop);

    // "Damage of Sales", for a window or a file.
    [[nodiscard]] const std::string& title() const { return m_title; }
    // What is known of the file as a whole.
    [[nodiscard]] const std::string& summary() const { return m_summary; }

    [[nodiscard]] static std::string header(Column column);
    [[nodiscard]] static bool isNumber(Column column) { return column >= Column::Row; }
    [[nodiscard]] std::size_t rowCount() const { return m_records.size(); }
    // One line without control characters; "" for a place that is not known. `row` is below rowCount().
    [[nodiscard]] std::string text(std::size_t row, Column column) const;

    // Puts all records on the pasteboard, a line each.
    void copy() const;
    // Writes the same below the file's path and the summary to a text file that the user chooses; tells when that
    // failed, and why. The object may go while the user chooses.
    void save() const;

private:
    [[nodiscard]] std::string lines() const;

    DesktopPorts m_desktop;
    std::vector<DamageRecord> m_records;
    std::string m_summary;
    std::string m_title;
    std::string m_databasePath;
};

} // namespace vellumo
