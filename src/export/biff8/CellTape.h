// SPDX-License-Identifier: MIT
#pragma once

#include "export/biff8/CellFormats.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace vellumo::biff8 {

enum class CellType : std::uint8_t { NextRow, Position, Text, Rk, Number, Blank, Error, Boolean };

struct Cell {
    std::uint16_t row = 0;
    std::uint16_t column = 0;
    CellType type = CellType::Blank;
    std::uint32_t value = 0; // Text: the string's number; Rk: the packed number; Boolean: 1 or 0
    double number = 0;       // Number
    CellFormat format = CellFormat::General;
};

// The cells of all sheets of a workbook one after the other, in 1 to 9 bytes each: a byte of type
// and format, then the value. Row
// and column are told only where they are not the ones that follow from the cell before, which is what keeps a large
// workbook in a fraction of its file's size.
class CellTape {
public:
    // A place between two cells.
    struct Mark {
        std::size_t block = 0;
        std::size_t offset = 0;
        bool operator==(const Mark&) const = default;
    };
    [[nodiscard]] Mark end() const;
    // The cells behind the mark are gone, and the next one begins a sheet.
    void truncate(Mark mark);

    // The next cell begins a sheet.
    void beginSheet();
    // The cell lies behind the last one of its sheet: further right, or further down. Returns where a Text's number is
    // kept (4 bytes, to be filled in later if it is not known yet), null for other types.
    std::byte* add(const Cell& cell);

private:
    friend class CellReader;
    static constexpr std::size_t blockSize = std::size_t{64} << 10;
    struct Block {
        std::size_t used = 0;
        std::unique_ptr<std::byte[]> bytes;
    };
    void moveTo(std::uint16_t row, std::uint16_t column);
    template <typename T> std::byte* put(T value);
    void makeRoom();

    std::vector<Block> m_blocks;
    std::uint16_t m_row = 0; // where the next cell belongs unless told otherwise
    std::uint16_t m_column = 0;
};

// Reads the cells of one sheet back.
class CellReader {
public:
    // From `begin`, where the sheet begins on the tape, up to `end`.
    CellReader(const CellTape& tape, CellTape::Mark begin, CellTape::Mark end);
    // False at the end; `cell` is the last one then.
    [[nodiscard]] bool next(Cell& cell);

private:
    template <typename T> T take();

    const CellTape& m_tape;
    CellTape::Mark m_at;
    CellTape::Mark m_end;
    std::uint16_t m_row = 0;
    std::uint16_t m_column = 0;
};

} // namespace vellumo::biff8
