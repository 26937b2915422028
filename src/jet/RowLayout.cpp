// SPDX-License-Identifier: MIT
#include "jet/RowLayout.h"

namespace vellumo::jet {

namespace {

constexpr std::uint8_t noJump = 0xFF;

std::size_t maskSize(unsigned columns) { return (columns + 7) / 8; }

} // namespace

RowLayout::RowLayout(const TableDef& table, bool isJet3)
    : m_columnLimit(table.columnLimit)
    , m_isJet3(isJet3)
    , m_countSize(isJet3 ? 1 : 2)
{
}

bool RowLayout::frame(ByteSpan row, RowFrame& frame) const
{
    if (row.size() <= m_countSize) return false;
    frame.row = row;
    frame.columns = m_isJet3 ? row[0] : load16(row.data());
    if (frame.columns == 0 || frame.columns > m_columnLimit) return false;
    if (row.size() < m_countSize + maskSize(frame.columns)) return false;
    frame.mask = row.size() - maskSize(frame.columns);
    frameVariablePart(frame);
    return true;
}

// Makes sense only when the row has a variable value, which is when it is asked for.
void RowLayout::frameVariablePart(RowFrame& frame) const
{
    frame.trailer = 0;
    frame.variables = 0;
    frame.jumps = 0;
    const auto room = frame.mask - m_countSize;
    if (m_isJet3) {
        if (room < 1) return;
        frame.variables = frame.row[frame.mask - 1];
        frame.jumps = (frame.row.size() - 1) / 256;
        const auto size = 1 + frame.jumps + frame.variables + 1;
        if (size <= room) frame.trailer = frame.mask - size;
    } else {
        if (room < 2) return;
        frame.variables = load16(&frame.row[frame.mask - 2]);
        const auto size = 2 * (frame.variables + 2);
        if (size <= room) frame.trailer = frame.mask - size;
    }
}

std::size_t RowLayout::jet3Offset(const RowFrame& frame, std::size_t index)
{
    const auto behindOffsets = frame.mask - 1 - frame.jumps;
    std::size_t offset = frame.row[behindOffsets - 1 - index];
    for (std::size_t k = 0; k < frame.jumps; ++k) {
        const auto jump = frame.row[frame.mask - 2 - k];
        if (jump != noJump && jump <= index) offset += 256;
    }
    return offset;
}

} // namespace vellumo::jet
