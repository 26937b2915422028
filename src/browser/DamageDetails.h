#pragma once

#include "browser/DesktopPorts.h"
#include "model/TAdmMDBFile.h"

#include <string>
#include <vector>

namespace vellumo {

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
