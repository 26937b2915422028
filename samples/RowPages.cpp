// SPDX-License-Identifier: MIT
#include "samples/RowPages.h"

#include <algorithm>

namespace vellumo::samples {
namespace {

constexpr std::size_t maxRows = 255; // a pointer has one byte for the row number

constexpr std::size_t headerSize(JetVersion version) { return version == JetVersion::Jet3 ? 10 : 14; }

} // namespace

RowPages::RowPages(PageFile& file, std::uint32_t owner)
    : m_file(file)
    , m_owner(owner)
    , m_headerSize(headerSize(file.version()))
    , m_page(file.pageSize())
{
}

std::size_t RowPages::capacity(JetVersion version) { return pageSize(version) - headerSize(version) - 2; }

RowPlace RowPages::add(ByteSpan row, std::uint16_t flags)
{
    if (m_isOpen && (m_rowCount == maxRows || tableEnd() + 2 + row.size() > m_lowest)) finish();
    if (!m_isOpen) startPage();
    m_lowest -= row.size();
    std::copy(row.begin(), row.end(), m_page.begin() + static_cast<std::ptrdiff_t>(m_lowest));
    putNumber<std::uint16_t>(&m_page[tableEnd()], static_cast<std::uint16_t>(m_lowest | flags));
    const RowPlace place{m_pages.back(), static_cast<std::uint8_t>(m_rowCount),
        m_pages.back() * std::uint64_t{m_page.size()} + m_lowest};
    ++m_rowCount;
    return place;
}

void RowPages::finish()
{
    if (!m_isOpen) return;
    putNumber<std::uint16_t>(&m_page[2], static_cast<std::uint16_t>(m_lowest - tableEnd()));
    putNumber<std::uint16_t>(&m_page[m_headerSize - 2], static_cast<std::uint16_t>(m_rowCount));
    m_file.write(m_pages.back(), m_page);
    m_isOpen = false;
}

void RowPages::startPage()
{
    std::fill(m_page.begin(), m_page.end(), std::uint8_t{0});
    m_page[0] = 1;
    m_page[1] = 1;
    putNumber<std::uint32_t>(&m_page[4], m_owner);
    m_pages.push_back(m_file.allocate());
    m_rowCount = 0;
    m_lowest = m_page.size();
    m_isOpen = true;
}

} // namespace vellumo::samples
