// SPDX-License-Identifier: MIT
#pragma once

#include "export/biff8/CellTape.h"
#include "export/biff8/CellWatcher.h"
#include "export/biff8/GlobalRecords.h"
#include "export/biff8/SheetNames.h"
#include "export/biff8/SheetRecords.h"
#include "export/biff8/StringTable.h"

#include <atomic>
#include <deque>
#include <string>
#include <string_view>

namespace vellumo::biff8 {

class RecordStream;
class StreamTarget;

enum class CellStatus {
    Ok,
    NoSheet,
    Misplaced, // not behind the sheet's last cell, or in a column past the 256th
    BadText,   // not UTF-8, or longer than 32767 UTF-16 units
    Full,      // the workbook cannot take more: its stream would pass the limit, or it has too many different texts
};

// A workbook in the legacy binary format of Excel 97 to 2003 (BIFF8, published as [MS-XLS]) with cells of texts,
// numbers in some formats, and booleans. Sheets are filled one after the other, each row by row and from left to right.
//
// Texts are borrowed: a text given to a cell must stay as it is until the workbook is written or gone. What is kept of
// a workbook is 1 to 9 bytes a cell, about 28 bytes a distinct text, and 1 MB; writing needs no more.
class Workbook {
public:
    // Most bytes that its stream may have. Readers fail from 2 GB on; the default leaves the room that they want.
    static constexpr std::uint64_t defaultStreamLimit = 2'000'000'000;
    static constexpr std::size_t maximumSheets = 4112;

    explicit Workbook(std::uint64_t streamLimit = defaultStreamLimit);

    // Null: nobody. In place of the one before.
    void setWatcher(CellWatcher watcher) { m_watcher = std::move(watcher); }

    // Adds a sheet behind the others and makes it the one that cells go to. SheetNames tells how the name is repaired.
    // False, and nothing is changed, for an empty name, malformed UTF-8, a sheet too many, and a workbook without room
    // for one.
    [[nodiscard]] bool addSheet(std::string_view name);
    [[nodiscard]] bool hasRoomForSheet() const;
    [[nodiscard]] std::size_t sheetCount() const { return m_sheets.size(); }

    // The cell is written only with status Ok. A text may hold any character; U+0000 and lone surrogates, which readers
    // do not survive, become U+FFFD.
    [[nodiscard]] CellStatus setText(std::uint16_t row, std::uint16_t column, std::string_view text);
    // The same, and the workbook keeps the text.
    [[nodiscard]] CellStatus setOwnText(std::uint16_t row, std::uint16_t column, std::string text);
    // -0 and subnormal numbers, which the format does not have, are written as 0; infinity and not-a-number as #NUM!.
    [[nodiscard]] CellStatus setNumber(
        std::uint16_t row, std::uint16_t column, double number, CellFormat format = CellFormat::General);
    [[nodiscard]] CellStatus setBoolean(std::uint16_t row, std::uint16_t column, bool value);
    [[nodiscard]] CellStatus setBlank(std::uint16_t row, std::uint16_t column);

    // Empties the sheet with this number and removes those behind it, as if nothing had been written to them.
    void clearFrom(std::size_t sheet);

    // Writes the stream. False when the target failed; without a sheet there is nothing to write, which is false too.
    [[nodiscard]] bool writeStream(StreamTarget& target);
    // Writes the file, complete or not at all: a file that was there before is replaced only by a whole one. False, and
    // the reason in errno (0 where none is known), when it was not, and when `stop`, unless it is null, was raised.
    [[nodiscard]] bool writeFile(const std::string& path, const std::atomic<bool>* stop = nullptr);

private:
    struct Sheet {
        std::u16string name;
        SheetExtent extent;
        std::uint16_t lastColumn; // of the last cell
        CellType lastType;
        // What there was when it was added.
        CellTape::Mark begin;
        std::uint32_t stringCount;
        std::uint64_t stringSize;
        std::uint32_t references;
        std::uint64_t cellBytes;
    };

    // Ok when a cell may be put there.
    [[nodiscard]] CellStatus placeStatus(std::uint16_t row, std::uint16_t column) const;
    [[nodiscard]] std::uint64_t sizeWithItsRow(const Cell& cell) const;
    [[nodiscard]] bool fits(std::uint64_t moreCellBytes, std::uint64_t moreStringBytes) const;
    // The cell is placed well, and there is room for it.
    std::byte* add(const Cell& cell);
    [[nodiscard]] CellStatus addUnlessRefused(const Cell& cell);
    void tellWatcher(const Cell& cell, WrittenCell::Kind kind, double number) const;
    [[nodiscard]] std::vector<SheetEntry> sheetEntries() const;
    void writeSheets(RecordStream& out, std::vector<SheetEntry>& entries) const;

    std::uint64_t m_streamLimit;
    CellWatcher m_watcher;
    SheetNames m_names;
    std::vector<Sheet> m_sheets;
    CellTape m_cells;
    StringTable m_strings;
    std::deque<std::string> m_ownTexts; // borrowed by m_strings
    bool m_hasFormats = false;          // other than General
    std::uint32_t m_references = 0;     // text cells
    std::uint64_t m_cellBytes = 0;      // upper bound of what sheets and cells take in the stream
};

} // namespace vellumo::biff8
