// SPDX-License-Identifier: MIT
#pragma once

#include "jet/ByteReader.h"
#include "jet/Definition.h"

// Where the values of a row lie.
//
//   Jet 4: u16 columns | fixed part | variable part | u16 its end | u16 offsets of its values, the last first | u16
//   their
//          number | mask
//   Jet 3: u8  columns | fixed part | variable part | u8  its end | u8  offsets of its values, the last first | jumps |
//          u8 their number | mask
//
// Offsets count from the start of the row. In Jet 3 they are low bytes: jump k, counted backwards from the number, is
// the first value whose offset (or the end, as the value behind the last) is 256 * (k + 1) or more, 0xFF if none is;
// there is a jump for each 256 bytes of the row. The mask has a bit a column NUMBER, low bit first: not null, or the
// value of a boolean.
//
// A row is as old as it is: the columns it states are those that the table had when it was written, and it was written
// without offsets and their number when none of those was variable. Columns added later are null, and the mask ends
// where the row's own columns end, whatever the table has now.
namespace vellumo::jet {

enum class CellState : std::uint8_t { Null, Present, Damaged };

struct Cell {
    CellState state = CellState::Null;
    ByteSpan bytes{};
};

// A row with the places of its parts.
struct RowFrame {
    ByteSpan row{};
    unsigned columns = 0;      // known to this row
    std::size_t mask = 0;      // offset of the mask
    std::size_t trailer = 0;   // where the variable values end at the latest; 0 when there is no sound variable part
    std::size_t variables = 0; // number of the variable values
    std::size_t jumps = 0;     // Jet 3

    [[nodiscard]] bool isSet(unsigned columnNumber) const
    {
        return columnNumber < columns && (row[mask + columnNumber / 8] >> columnNumber % 8 & 1) != 0;
    }
};

class RowLayout {
public:
    // `table` outlives the layout.
    RowLayout(const TableDef& table, bool isJet3);

    // False when the bytes are no row of the table.
    [[nodiscard]] bool frame(ByteSpan row, RowFrame& frame) const;
    // The value of a column that is no boolean, which has none.
    [[nodiscard]] Cell cell(const RowFrame& frame, const ColumnDef& column) const
    {
        if (!frame.isSet(column.number)) return {};
        return column.isFixed ? fixedCell(frame, column) : variableCell(frame, column);
    }

private:
    [[nodiscard]] Cell fixedCell(const RowFrame& frame, const ColumnDef& column) const
    {
        const auto start = m_countSize + column.fixedOffset;
        if (start > frame.mask || frame.mask - start < column.size) return {CellState::Damaged};
        return {CellState::Present, frame.row.subspan(start, column.size)};
    }
    [[nodiscard]] Cell variableCell(const RowFrame& frame, const ColumnDef& column) const
    {
        if (frame.trailer == 0 || column.variableIndex >= frame.variables) return {CellState::Damaged};
        const auto start = variableOffset(frame, column.variableIndex);
        const auto end = variableOffset(frame, column.variableIndex + 1);
        if (start < m_countSize || start > end || end > frame.trailer) return {CellState::Damaged};
        return {CellState::Present, frame.row.subspan(start, end - start)};
    }
    // `index` may be one behind the last value, for the end of the variable part.
    [[nodiscard]] std::size_t variableOffset(const RowFrame& frame, std::size_t index) const
    {
        return m_isJet3 ? jet3Offset(frame, index) : load16(&frame.row[frame.mask - 4 - 2 * index]);
    }
    [[nodiscard]] static std::size_t jet3Offset(const RowFrame& frame, std::size_t index);
    void frameVariablePart(RowFrame& frame) const;

    unsigned m_columnLimit;
    bool m_isJet3;
    std::size_t m_countSize; // bytes of the column count, in front of the fixed part
};

} // namespace vellumo::jet
