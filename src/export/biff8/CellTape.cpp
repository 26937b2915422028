// SPDX-License-Identifier: MIT
#include "export/biff8/CellTape.h"

#include <cstring>

namespace vellumo::biff8 {

namespace {

// The longest entry: a change of place and a cell with a double.
constexpr std::size_t longestEntry = 1 + 4 + 1 + 8;

constexpr unsigned typeBits = 4;

std::uint8_t entryHead(const Cell& cell)
{
    return static_cast<std::uint8_t>(static_cast<unsigned>(cell.type) | static_cast<unsigned>(cell.format) << typeBits);
}

CellType typeOf(std::uint8_t head) { return static_cast<CellType>(head & ((1U << typeBits) - 1)); }

} // namespace

CellTape::Mark CellTape::end() const
{
    if (m_blocks.empty()) return {};
    return {m_blocks.size() - 1, m_blocks.back().used};
}

void CellTape::truncate(Mark mark)
{
    if (!m_blocks.empty()) {
        m_blocks.resize(mark.block + 1);
        m_blocks.back().used = mark.offset;
    }
    beginSheet();
}

void CellTape::beginSheet()
{
    m_row = 0;
    m_column = 0;
}

void CellTape::makeRoom()
{
    if (!m_blocks.empty() && blockSize - m_blocks.back().used >= longestEntry) return;
    m_blocks.push_back({0, std::make_unique_for_overwrite<std::byte[]>(blockSize)});
}

template <typename T> std::byte* CellTape::put(T value)
{
    auto& block = m_blocks.back();
    auto* place = block.bytes.get() + block.used;
    std::memcpy(place, &value, sizeof value);
    block.used += sizeof value;
    return place;
}

void CellTape::moveTo(std::uint16_t row, std::uint16_t column)
{
    if (row == m_row && column == m_column) return;
    if (row == m_row + 1 && column == 0) {
        put(CellType::NextRow);
    } else {
        put(CellType::Position);
        put(row);
        put(column);
    }
    m_row = row;
    m_column = column;
}

std::byte* CellTape::add(const Cell& cell)
{
    makeRoom();
    moveTo(cell.row, cell.column);
    put(entryHead(cell));
    ++m_column;
    if (cell.type == CellType::Number) put(cell.number);
    if (cell.type == CellType::Rk) put(cell.value);
    if (cell.type == CellType::Boolean) put(static_cast<std::uint8_t>(cell.value));
    return cell.type == CellType::Text ? put(cell.value) : nullptr;
}

CellReader::CellReader(const CellTape& tape, CellTape::Mark begin, CellTape::Mark end)
    : m_tape(tape)
    , m_at(begin)
    , m_end(end)
{
}

template <typename T> T CellReader::take()
{
    T value;
    std::memcpy(&value, m_tape.m_blocks[m_at.block].bytes.get() + m_at.offset, sizeof value);
    m_at.offset += sizeof value;
    return value;
}

bool CellReader::next(Cell& cell)
{
    if (m_at == m_end) return false;
    if (m_at.offset == m_tape.m_blocks[m_at.block].used) {
        // Only the last cell's block is the last one, so a full block in front of the end is followed by another.
        m_at = {m_at.block + 1, 0};
    }
    auto head = take<std::uint8_t>();
    if (typeOf(head) == CellType::NextRow) {
        ++m_row;
        m_column = 0;
        head = take<std::uint8_t>();
    } else if (typeOf(head) == CellType::Position) {
        m_row = take<std::uint16_t>();
        m_column = take<std::uint16_t>();
        head = take<std::uint8_t>();
    }
    const auto type = typeOf(head);
    cell = {m_row, m_column++, type, 0, 0, static_cast<CellFormat>(head >> typeBits)};
    if (type == CellType::Boolean) cell.value = take<std::uint8_t>();
    if (type == CellType::Number) cell.number = take<double>();
    if (type == CellType::Text || type == CellType::Rk) cell.value = take<std::uint32_t>();
    return true;
}

} // namespace vellumo::biff8
