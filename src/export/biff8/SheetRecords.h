// SPDX-License-Identifier: MIT
#pragma once

#include "export/biff8/CellTape.h"

#include <algorithm>
#include <cstdint>

namespace vellumo::biff8 {

class RecordStream;

// The part of a sheet that holds cells.
struct SheetExtent {
    bool isEmpty = true;
    std::uint16_t firstRow = 0; // the last ones belong to it
    std::uint16_t lastRow = 0;
    std::uint16_t firstColumn = 0;
    std::uint16_t lastColumn = 0;

    // Rows never decrease from cell to cell.
    void include(std::uint16_t row, std::uint16_t column)
    {
        firstColumn = isEmpty ? column : std::min(firstColumn, column);
        lastColumn = std::max(lastColumn, column);
        if (isEmpty) firstRow = row;
        lastRow = row;
        isEmpty = false;
    }
};

// Rows are stored in blocks of this many, counted from the first row that holds a cell.
inline constexpr std::uint16_t rowsPerBlock = 32;

// Writes a sheet from its BOF to its EOF. `extent` is that of the cells; `isFirst`: it is the sheet shown at first.
void writeSheet(RecordStream& out, const SheetExtent& extent, CellReader cells, bool isFirst);

// Most bytes that each takes in the stream, a row counted without its cells and a block without its rows.
inline constexpr std::uint64_t sheetSize = 512;
inline constexpr std::uint64_t blockSize = 4 + 4 + 4;
inline constexpr std::uint64_t rowSize = 4 + 16 + 2;
[[nodiscard]] constexpr std::uint64_t cellSize(CellType type)
{
    switch (type) {
    case CellType::Number: return 18;
    case CellType::Blank: return 10;
    case CellType::Error:
    case CellType::Boolean: return 12;
    default: return 14;
    }
}
// The same for a cell that joins the one to its left in a record, which cells of these types do.
[[nodiscard]] constexpr bool sharesRecords(CellType type) { return type == CellType::Rk || type == CellType::Blank; }
[[nodiscard]] constexpr std::uint64_t sharedCellSize(CellType type) { return type == CellType::Rk ? 8 : 4; }

} // namespace vellumo::biff8
