// SPDX-License-Identifier: MIT
#include "export/biff8/SheetRecords.h"

#include "export/biff8/GlobalRecords.h"
#include "export/biff8/RecordStream.h"

#include <vector>

namespace vellumo::biff8 {

namespace {

using u8 = std::uint8_t;
using u16 = std::uint16_t;
using u32 = std::uint32_t;

constexpr std::size_t headerSize = 4;
constexpr u8 numErrorCode = 0x24; // #NUM!

void appendCalculationSettings(std::string& bytes)
{
    appendRecord(bytes, 0x000D, u16{1}); // automatic
    appendRecord(bytes, 0x000C, u16{100});
    appendRecord(bytes, 0x000F, u16{1});
    appendRecord(bytes, 0x0011, u16{0});
    appendRecord(bytes, 0x0010, 0.001);
    appendRecord(bytes, 0x005F, u16{1});
}

void appendPageSettings(std::string& bytes)
{
    appendRecord(bytes, 0x002A, u16{0}); // headings and grid are not printed
    appendRecord(bytes, 0x002B, u16{0});
    appendRecord(bytes, 0x0082, u16{1});
    appendRecord(bytes, 0x0080, std::uint64_t{0});
    appendRecord(bytes, 0x0225, u16{0}, u16{0xFF}); // height of a row, twentieths of a point
    appendRecord(bytes, 0x0081, u16{0x04C1});
    appendRecord(bytes, 0x0014); // header and footer
    appendRecord(bytes, 0x0015);
    appendRecord(bytes, 0x0083, u16{0}); // not centred
    appendRecord(bytes, 0x0084, u16{0});
    appendRecord(bytes, 0x00A1, u16{9}, u16{100}, u16{1}, u16{1}, u16{1}, u16{4}, u16{600}, u16{600}, 0.5, 0.5, u16{1});
}

void appendDimensions(std::string& bytes, const SheetExtent& extent)
{
    if (extent.isEmpty) return appendRecord(bytes, 0x0200, u32{0}, u32{0}, u16{0}, u16{0}, u16{0});
    appendRecord(bytes, 0x0200, u32{extent.firstRow}, u32{extent.lastRow} + 1, extent.firstColumn,
        static_cast<u16>(extent.lastColumn + 1), u16{0});
}

void appendWindow(std::string& bytes, bool isFirst)
{
    const u16 flags = isFirst ? 0x06B6 : 0x00B6; // the first sheet is selected and shown
    appendRecord(bytes, 0x023E, flags, u16{0}, u16{0}, u16{0x40}, u16{0}, u16{0}, u16{0}, u32{0});
}

// Up to 32 rows. Cells are encoded as they come, with runs of blank cells and of packed numbers in one record each.
class RowBlock {
public:
    void add(const Cell& cell);
    [[nodiscard]] bool holds(u16 row) const { return row - m_firstRow < rowsPerBlock; }
    // Writes the rows, the cells and the DBCELL record, whose offset it returns, and begins the next block.
    u32 write(RecordStream& out);
    void beginAt(u16 firstRow) { m_firstRow = firstRow; }

private:
    struct Row {
        u16 row;
        u16 firstColumn;
        u16 lastColumn;
        std::size_t cellsOffset; // within m_cells
    };
    [[nodiscard]] bool extendsRun(const Cell& cell) const;
    void endRun();
    void appendCell(const Cell& cell);
    void appendRows(std::string& bytes) const;
    void appendLookup(std::string& bytes, std::size_t distance) const;

    u16 m_firstRow = 0;
    std::vector<Row> m_rows;
    std::string m_cells;
    std::vector<Cell> m_run; // cells side by side that may share a record
    std::string m_bytes;
};

bool RowBlock::extendsRun(const Cell& cell) const
{
    if (m_run.empty()) return false;
    const auto& last = m_run.back();
    return last.type == cell.type && last.row == cell.row && last.column + 1 == cell.column;
}

void RowBlock::add(const Cell& cell)
{
    if (!extendsRun(cell)) endRun();
    if (m_rows.empty() || m_rows.back().row != cell.row)
        m_rows.push_back({cell.row, cell.column, cell.column, m_cells.size()});
    m_rows.back().lastColumn = cell.column;
    if (sharesRecords(cell.type))
        m_run.push_back(cell);
    else
        appendCell(cell);
}

void RowBlock::endRun()
{
    if (m_run.empty()) return;
    const auto& first = m_run.front();
    if (m_run.size() == 1) {
        appendCell(first);
    } else {
        const bool isBlank = first.type == CellType::Blank;
        const auto size = 6 + m_run.size() * (isBlank ? 2 : 6);
        append(m_cells, u16(isBlank ? 0x00BE : 0x00BD));
        append(m_cells, static_cast<u16>(size));
        append(m_cells, first.row);
        append(m_cells, first.column);
        for (const auto& cell : m_run) {
            append(m_cells, formatIndex(cell.format));
            if (!isBlank) append(m_cells, cell.value);
        }
        append(m_cells, m_run.back().column);
    }
    m_run.clear();
}

void RowBlock::appendCell(const Cell& cell)
{
    const auto format = formatIndex(cell.format);
    switch (cell.type) {
    case CellType::Text: return appendRecord(m_cells, 0x00FD, cell.row, cell.column, format, cell.value);
    case CellType::Rk: return appendRecord(m_cells, 0x027E, cell.row, cell.column, format, cell.value);
    case CellType::Number: return appendRecord(m_cells, 0x0203, cell.row, cell.column, format, cell.number);
    case CellType::Blank: return appendRecord(m_cells, 0x0201, cell.row, cell.column, format);
    case CellType::Boolean:
        return appendRecord(m_cells, 0x0205, cell.row, cell.column, format, static_cast<u8>(cell.value), u8{0});
    default: return appendRecord(m_cells, 0x0205, cell.row, cell.column, format, numErrorCode, u8{1});
    }
}

void RowBlock::appendRows(std::string& bytes) const
{
    constexpr u16 standardHeight = 0xFF;
    for (const auto& row : m_rows)
        appendRecord(bytes, 0x0208, row.row, row.firstColumn, static_cast<u16>(row.lastColumn + 1), standardHeight,
            u32{0}, u32{0x000F0100});
}

// DBCELL: how far back the first row lies, and for each row where its cells begin, counted from those of the row before
// (for the first: from the second ROW record).
void RowBlock::appendLookup(std::string& bytes, std::size_t distance) const
{
    constexpr std::size_t rowRecordSize = headerSize + 16;
    append(bytes, u16{0x00D7});
    append(bytes, static_cast<u16>(4 + 2 * m_rows.size()));
    append(bytes, static_cast<u32>(distance));
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        const auto offset =
            i == 0 ? (m_rows.size() - 1) * rowRecordSize : m_rows[i].cellsOffset - m_rows[i - 1].cellsOffset;
        append(bytes, static_cast<u16>(offset));
    }
}

u32 RowBlock::write(RecordStream& out)
{
    endRun();
    m_bytes.clear();
    appendRows(m_bytes);
    m_bytes += m_cells;
    const auto lookupOffset = out.position() + static_cast<u32>(m_bytes.size());
    appendLookup(m_bytes, m_bytes.size());
    out.write(m_bytes);
    m_rows.clear();
    m_cells.clear();
    m_firstRow = static_cast<u16>(m_firstRow + rowsPerBlock);
    return lookupOffset;
}

// Writes the cell table. Returns the offsets of its DBCELL records, one a block, as bytes.
std::string writeCells(RecordStream& out, const SheetExtent& extent, CellReader& cells)
{
    std::string lookupOffsets;
    if (extent.isEmpty) return lookupOffsets;
    RowBlock block;
    block.beginAt(extent.firstRow);
    Cell cell;
    while (!out.failed() && cells.next(cell)) {
        while (!block.holds(cell.row))
            append(lookupOffsets, block.write(out));
        block.add(cell);
    }
    append(lookupOffsets, block.write(out));
    return lookupOffsets;
}

} // namespace

void writeSheet(RecordStream& out, const SheetExtent& extent, CellReader cells, bool isFirst)
{
    const u32 rowsEnd = extent.isEmpty ? 0 : u32{extent.lastRow} + 1;
    const auto blockCount = (rowsEnd - extent.firstRow + rowsPerBlock - 1) / rowsPerBlock;
    std::string bytes;
    appendBeginOfSheet(bytes);
    // INDEX points forward: the offset of the column width is known below, those of the blocks at the end.
    const auto indexData = bytes.size() + headerSize;
    const std::string unknownOffsets(blockCount * sizeof(u32), '\0');
    appendRecord(bytes, 0x020B, u32{0}, u32{extent.firstRow}, rowsEnd, u32{0}, std::string_view(unknownOffsets));
    appendCalculationSettings(bytes);
    appendPageSettings(bytes);
    const auto columnWidthOffset = out.position() + static_cast<u32>(bytes.size());
    std::memcpy(bytes.data() + indexData + 12, &columnWidthOffset, sizeof columnWidthOffset);
    appendRecord(bytes, 0x0055, u16{8});
    appendDimensions(bytes, extent);
    const auto lookupListOffset = out.position() + static_cast<u32>(indexData) + 16;
    out.write(bytes);

    const auto lookupOffsets = writeCells(out, extent, cells);
    bytes.clear();
    appendWindow(bytes, isFirst);
    appendEnd(bytes);
    out.write(bytes);
    if (!lookupOffsets.empty()) out.overwrite(lookupListOffset, lookupOffsets);
}

} // namespace vellumo::biff8
