// SPDX-License-Identifier: MIT
#include "jet/LongValue.h"

#include "jet/ByteReader.h"
#include "jet/DataPage.h"

#include <algorithm>

namespace vellumo::jet {

namespace {

constexpr std::size_t headerSize = 12; // u32 length and kind, pointer, u32 0
constexpr std::uint32_t inRow = 0x80000000;
constexpr std::uint32_t inOneRow = 0x40000000;
constexpr std::uint32_t lengthMask = 0x3FFFFFFF;
constexpr std::size_t linkSize = 4; // pointer to the next row of a chain

} // namespace

void LongValue::read(ByteSpan stored)
{
    m_bytes = {};
    m_isComplete = stored.empty();
    m_isOverBudget = false;
    if (stored.size() < headerSize) return;
    const auto kind = load32(stored.data());
    const std::size_t length = kind & lengthMask;
    const auto pointer = load32(&stored[4]);
    if ((kind & inRow) != 0)
        m_bytes = stored.subspan(headerSize, std::min(length, stored.size() - headerSize));
    else if ((kind & inOneRow) != 0)
        readOneRow(pointer, length);
    else
        readChain(pointer, length);
    m_isComplete = m_bytes.size() == length;
}

// Empty when the pointer leads to no long value.
ByteSpan LongValue::rowAtPointer(std::uint32_t pointer)
{
    const auto page = m_pages.read(pageOf(pointer), m_buffer);
    if (!isDataPage(page) || ownerOf(page) != longValueOwner) return {};
    const auto place = rowAt(page, m_pages.format(), pointer);
    return place && place->state == RowState::Live ? place->bytes : ByteSpan();
}

bool LongValue::takeFromBudget(std::size_t count)
{
    if (count == 0) return true;
    m_isOverBudget = m_budget.fetch_sub(static_cast<std::int64_t>(count)) < static_cast<std::int64_t>(count);
    return !m_isOverBudget;
}

void LongValue::readOneRow(std::uint32_t pointer, std::size_t length)
{
    const auto row = rowAtPointer(pointer);
    const auto wanted = std::min(length, row.size());
    if (takeFromBudget(wanted)) m_bytes = row.first(wanted);
}

void LongValue::readChain(std::uint32_t pointer, std::size_t length)
{
    m_gathered.clear();
    // A circle is found by comparing with one pointer of the chain, taken anew after 1, 2, 4, .. links.
    std::uint32_t anchor = 0;
    std::size_t linksToNextAnchor = 1;
    for (std::size_t links = 0; m_gathered.size() < length && pointer != 0 && pointer != anchor; ++links) {
        if (links == linksToNextAnchor) {
            anchor = pointer;
            linksToNextAnchor *= 2;
        }
        const auto row = rowAtPointer(pointer);
        if (row.size() <= linkSize) break;
        const auto piece = row.subspan(linkSize, std::min(row.size() - linkSize, length - m_gathered.size()));
        if (!takeFromBudget(piece.size())) break;
        m_gathered.insert(m_gathered.end(), piece.begin(), piece.end());
        pointer = load32(row.data());
    }
    m_bytes = m_gathered;
}

} // namespace vellumo::jet
