// SPDX-License-Identifier: MIT
#pragma once

#include "export/biff8/CellWatcher.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace vellumo {

class SystemLog;
namespace biff8 {
class Workbook;
enum class CellStatus;
} // namespace biff8

// The workbook that an export is filling, at most one at a time: `addSheet` makes it when there is none, `dumpToFile`
// and `deleteWorkBook` end it. Cells go to the sheet added last, row by row and from left to right.
//
// Texts are borrowed: a text given to `writeString` must stay as it is until the workbook has ended. A cell that cannot
// be written is left out and the system log says so. One thread at a time; the system log outlives the object.
class ExcelExport {
public:
    explicit ExcelExport(SystemLog& systemLog);
    // With workbooks whose stream has at most that many bytes, and that tell `watcher` of their cells.
    ExcelExport(SystemLog& systemLog, std::uint64_t streamLimit, CellWatcher watcher = nullptr);
    ~ExcelExport();
    ExcelExport(const ExcelExport&) = delete;
    ExcelExport& operator=(const ExcelExport&) = delete;

    // Returns whether a sheet was made. A name that the format does not allow is repaired (biff8/SheetNames.h tells
    // how); an empty one, malformed UTF-8 and a sheet past the 4112th fail, and one that no more fits into the file.
    [[nodiscard]] bool addSheet(std::string_view name);
    // Index of the sheet added last; -1 when the workbook has none, or there is no workbook.
    [[nodiscard]] std::int32_t indexOfLastSheet() const;

    // Text, UTF-8. An empty one writes nothing.
    void writeString(std::string_view text, std::uint16_t row, std::uint16_t column);
    void writeNumber(double value, std::uint16_t row, std::uint16_t column);
    void setBlankForRow(std::uint16_t row, std::uint16_t column);

    // A cell or a sheet of this workbook was left out because no more fits into its file.
    [[nodiscard]] bool isFull() const { return m_isFull; }
    // Takes back what was written to the sheet with this index and all sheets behind it; the sheet itself stays, empty.
    // The workbook is not full any more.
    void clearSheetsFrom(std::int32_t index);

    // Writes the workbook and ends it. False when the file could not be written whole: then there is no new file, and
    // one that was there before is as it was, and errno has the reason (0 where none is known). So it is when `stop`,
    // unless it is null, was raised.
    [[nodiscard]] bool dumpToFile(const std::string& path, const std::atomic<bool>* stop = nullptr);
    // Ends the workbook without writing it.
    void deleteWorkBook();

private:
    [[nodiscard]] bool canWrite(std::string_view what);
    void note(biff8::CellStatus status, std::string_view what);

    SystemLog& m_systemLog;
    std::uint64_t m_streamLimit;
    CellWatcher m_watcher;
    std::unique_ptr<biff8::Workbook> m_workbook;
    bool m_isFull = false;
};

} // namespace vellumo
