// SPDX-License-Identifier: MIT
#pragma once

#include "samples/PageFile.h"

#include <cstdint>
#include <vector>

namespace vellumo::samples {

// Where a row lies.
struct RowPlace {
    std::uint32_t page = 0;
    std::uint8_t row = 0;
    std::uint64_t fileOffset = 0; // of the row's first byte, from the start of the file

    // As the format refers to a row; 0 = none.
    [[nodiscard]] std::uint32_t pointer() const { return page << 8 | row; }
};

// Fills pages with rows from their ends, as data, long values and usage maps lie in them: a header, the number of rows
// and their offsets, then free room, then the rows, the last one first.
class RowPages {
public:
    static constexpr std::uint16_t Deleted = 0xC000;
    static constexpr std::uint16_t Pointer = 0x4000; // the row is a pointer to where the row moved to
    static constexpr std::uint16_t MovedHere = 0x8000;
    static constexpr std::uint32_t LongValueOwner = 0x4C41564C; // "LVAL"

    // `owner`: the first definition page of the table the rows belong to, LongValueOwner, or 0 for usage maps.
    RowPages(PageFile& file, std::uint32_t owner);

    // The longest row that a page holds.
    [[nodiscard]] static std::size_t capacity(JetVersion version);

    // `row` is at most capacity() long.
    RowPlace add(ByteSpan row, std::uint16_t flags = 0);
    // Writes the page that is still open.
    void finish();
    // The pages used so far, in ascending order.
    [[nodiscard]] const std::vector<std::uint32_t>& pages() const { return m_pages; }

private:
    [[nodiscard]] std::size_t tableEnd() const { return m_headerSize + 2 * m_rowCount; }
    void startPage();

    PageFile& m_file;
    std::uint32_t m_owner;
    std::size_t m_headerSize;
    Bytes m_page;
    std::size_t m_rowCount = 0;
    std::size_t m_lowest = 0; // offset of the row added last
    std::vector<std::uint32_t> m_pages;
    bool m_isOpen = false;
};

} // namespace vellumo::samples
