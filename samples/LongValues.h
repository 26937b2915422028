// SPDX-License-Identifier: MIT
#pragma once

#include "samples/RowPages.h"
#include "samples/Values.h"

#include <cstdint>
#include <vector>

namespace vellumo::samples {

// The long values of one memo or object column: the values themselves are written to pages of their own, unless they
// are short.
class LongValues {
public:
    explicit LongValues(PageFile& file)
        : m_file(file)
        , m_pages(file, RowPages::LongValueOwner)
    {
    }

    // Stores `value` and appends to `row` what stands for it there: 12 bytes, and the value when it is kept inline. The
    // rows used, first link first, go to `pieces` (emptied before). False when the value does not fit the storage.
    [[nodiscard]] bool store(
        ByteSpan value, LongStorage storage, std::uint32_t linkSize, Bytes& row, std::vector<RowPlace>& pieces);

    void finish() { m_pages.finish(); }
    [[nodiscard]] const std::vector<std::uint32_t>& pages() const { return m_pages.pages(); }

private:
    void storeChain(ByteSpan value, std::size_t linkSize, std::vector<RowPlace>& pieces);

    PageFile& m_file;
    RowPages m_pages;
    Bytes m_link;
};

} // namespace vellumo::samples
