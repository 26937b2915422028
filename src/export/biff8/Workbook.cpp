// SPDX-License-Identifier: MIT
#include "export/biff8/Workbook.h"

#include "export/biff8/CompoundFileTarget.h"
#include "export/biff8/RecordStream.h"
#include "export/biff8/StringTable.h"
#include "export/biff8/UTF8ToUTF16Converter.h"

#include <bit>
#include <cerrno>
#include <cmath>

namespace vellumo::biff8 {

namespace {

constexpr std::uint16_t maximumColumns = 256;
constexpr std::size_t maximumTextUnits = 32767;

// The globals without sheets and strings, and the index of the strings.
constexpr std::uint64_t globalsSize = 4096;
// Each record of strings is at least 8192 bytes and costs less than 16 more: its header, the byte in front of a text
// that goes on, and what stays unused at its end.
constexpr std::uint64_t splitCost(std::uint64_t stringBytes) { return (stringBytes / 8192 + 1) * 16; }

// Packed numbers keep the upper 30 bits of a double whose other bits are zero, or a 30-bit integer marked by bit 1.
std::optional<std::uint32_t> packed(double number)
{
    constexpr double integerLimit = 1 << 29;
    if (number >= -integerLimit && number < integerLimit && number == std::trunc(number))
        return static_cast<std::uint32_t>(static_cast<std::int32_t>(number)) << 2 | 2;
    const auto bits = std::bit_cast<std::uint64_t>(number);
    if ((bits & 0x3FFFFFFFF) != 0) return std::nullopt;
    return static_cast<std::uint32_t>(bits >> 32);
}

// Without the numbers that the format does not have.
double heldNumber(double number) { return number == 0 || std::fpclassify(number) == FP_SUBNORMAL ? 0 : number; }

Cell numberCell(std::uint16_t row, std::uint16_t column, double number)
{
    if (!std::isfinite(number)) return {row, column, CellType::Error, 0, 0};
    if (const auto value = packed(number)) return {row, column, CellType::Rk, *value, 0};
    return {row, column, CellType::Number, 0, number};
}

} // namespace

Workbook::Workbook(std::uint64_t streamLimit)
    : m_streamLimit(streamLimit)
{
}

bool Workbook::addSheet(std::string_view name)
{
    if (m_sheets.size() == maximumSheets || !hasRoomForSheet()) return false;
    auto repaired = m_names.claim(name);
    if (!repaired) return false;
    m_strings.settle();
    m_cellBytes += sheetSize;
    m_cells.beginSheet();
    m_sheets.push_back({std::move(*repaired), {}, 0, CellType::Blank, m_cells.end(), m_strings.count(),
        m_strings.size(), m_references, m_cellBytes});
    return true;
}

bool Workbook::hasRoomForSheet() const { return fits(sheetSize, 0); }

CellStatus Workbook::placeStatus(std::uint16_t row, std::uint16_t column) const
{
    if (m_sheets.empty()) return CellStatus::NoSheet;
    const auto& extent = m_sheets.back().extent;
    const auto lastColumn = m_sheets.back().lastColumn;
    const bool isBehindLast = extent.isEmpty || row > extent.lastRow || (row == extent.lastRow && column > lastColumn);
    return isBehindLast && column < maximumColumns ? CellStatus::Ok : CellStatus::Misplaced;
}

bool Workbook::fits(std::uint64_t moreCellBytes, std::uint64_t moreStringBytes) const
{
    const auto stringBytes = m_strings.size() + moreStringBytes;
    return globalsSize + m_cellBytes + moreCellBytes + stringBytes + splitCost(stringBytes) <= m_streamLimit
        && m_strings.count() < maximumStringCount;
}

std::uint64_t Workbook::sizeWithItsRow(const Cell& cell) const
{
    const auto& sheet = m_sheets.back();
    const auto& extent = sheet.extent;
    if (extent.isEmpty) return blockSize + rowSize + cellSize(cell.type);
    if (cell.row == extent.lastRow) {
        const bool joins =
            sharesRecords(cell.type) && cell.type == sheet.lastType && cell.column == sheet.lastColumn + 1;
        return joins ? sharedCellSize(cell.type) : cellSize(cell.type);
    }
    const auto block = [&](std::uint16_t row) { return static_cast<unsigned>(row - extent.firstRow) / rowsPerBlock; };
    return (block(cell.row) - block(extent.lastRow)) * blockSize + rowSize + cellSize(cell.type);
}

std::byte* Workbook::add(const Cell& cell)
{
    m_cellBytes += sizeWithItsRow(cell);
    auto& sheet = m_sheets.back();
    sheet.extent.include(cell.row, cell.column);
    sheet.lastColumn = cell.column;
    sheet.lastType = cell.type;
    return m_cells.add(cell);
}

CellStatus Workbook::addUnlessRefused(const Cell& cell)
{
    if (const auto status = placeStatus(cell.row, cell.column); status != CellStatus::Ok) return status;
    if (!fits(sizeWithItsRow(cell), 0)) return CellStatus::Full;
    add(cell);
    return CellStatus::Ok;
}

CellStatus Workbook::setText(std::uint16_t row, std::uint16_t column, std::string_view text)
{
    if (const auto status = placeStatus(row, column); status != CellStatus::Ok) return status;
    const auto measure = measureText(text);
    if (!measure || measure->units > maximumTextUnits) return CellStatus::BadText;
    const Cell cell{row, column, CellType::Text, 0, 0};
    // Asked as if the text were new, since once it is taken it stays.
    const auto stringSize = sharedStringSize(measure->units, measure->isWide || measure->needsRepair);
    if (!fits(sizeWithItsRow(cell), stringSize)) return CellStatus::Full;
    if (measure->needsRepair) text = m_ownTexts.emplace_back(repairedText(text));
    ++m_references;
    m_strings.add(text, stringSize, add(cell));
    if (m_watcher) m_watcher({row, column, WrittenCell::Kind::Text, text});
    return CellStatus::Ok;
}

void Workbook::tellWatcher(const Cell& cell, WrittenCell::Kind kind, double number) const
{
    if (m_watcher) m_watcher({cell.row, cell.column, kind, {}, number, cell.format});
}

CellStatus Workbook::setOwnText(std::uint16_t row, std::uint16_t column, std::string text)
{
    return setText(row, column, m_ownTexts.emplace_back(std::move(text)));
}

CellStatus Workbook::setNumber(std::uint16_t row, std::uint16_t column, double number, CellFormat format)
{
    number = heldNumber(number);
    auto cell = numberCell(row, column, number);
    cell.format = format;
    m_hasFormats |= format != CellFormat::General;
    const auto status = addUnlessRefused(cell);
    const auto kind = cell.type == CellType::Error ? WrittenCell::Kind::Error : WrittenCell::Kind::Number;
    if (status == CellStatus::Ok) tellWatcher(cell, kind, number);
    return status;
}

CellStatus Workbook::setBoolean(std::uint16_t row, std::uint16_t column, bool value)
{
    const Cell cell{row, column, CellType::Boolean, value ? 1U : 0U, 0};
    const auto status = addUnlessRefused(cell);
    if (status == CellStatus::Ok) tellWatcher(cell, WrittenCell::Kind::Boolean, value ? 1 : 0);
    return status;
}

CellStatus Workbook::setBlank(std::uint16_t row, std::uint16_t column)
{
    return addUnlessRefused({row, column, CellType::Blank, 0, 0});
}

void Workbook::clearFrom(std::size_t sheet)
{
    if (sheet >= m_sheets.size()) return;
    for (auto i = sheet + 1; i < m_sheets.size(); ++i)
        m_names.release(m_sheets[i].name);
    m_sheets.erase(m_sheets.begin() + static_cast<std::ptrdiff_t>(sheet) + 1, m_sheets.end());
    auto& last = m_sheets.back();
    last.extent = {};
    m_strings.settle();
    m_cells.truncate(last.begin);
    m_strings.truncate(last.stringCount, last.stringSize);
    m_references = last.references;
    m_cellBytes = last.cellBytes;
}

std::vector<SheetEntry> Workbook::sheetEntries() const
{
    std::vector<SheetEntry> entries;
    for (const auto& sheet : m_sheets)
        entries.push_back({sheet.name, 0});
    return entries;
}

void Workbook::writeSheets(RecordStream& out, std::vector<SheetEntry>& entries) const
{
    for (std::size_t i = 0; i < m_sheets.size(); ++i) {
        entries[i].offset = out.position();
        const auto end = i + 1 < m_sheets.size() ? m_sheets[i + 1].begin : m_cells.end();
        writeSheet(out, m_sheets[i].extent, {m_cells, m_sheets[i].begin, end}, i == 0);
    }
}

bool Workbook::writeStream(StreamTarget& target)
{
    if (m_sheets.empty()) return false;
    m_strings.settle();
    RecordStream out(target);
    std::string bytes;
    appendGlobalsHead(bytes, m_sheets.size(), m_hasFormats);
    const auto listOffset = static_cast<std::uint32_t>(bytes.size());
    auto entries = sheetEntries();
    appendSheetList(bytes, entries);
    appendCountry(bytes);
    out.write(bytes);
    writeSharedStrings(out, m_strings, m_references);
    bytes.clear();
    appendEnd(bytes);
    out.write(bytes);
    writeSheets(out, entries);
    // The list again, now that the offsets are known.
    bytes.clear();
    appendSheetList(bytes, entries);
    out.overwrite(listOffset, bytes);
    out.flush();
    return !out.failed();
}

bool Workbook::writeFile(const std::string& path, const std::atomic<bool>* stop)
{
    auto target = CompoundFileTarget::create(path, stop);
    if (!target) return false;
    if (writeStream(*target) && target->finish()) return true;
    const int error = target->error();
    target.reset();
    errno = error;
    return false;
}

} // namespace vellumo::biff8
