// SPDX-License-Identifier: MIT
#include "jet/DataPage.h"

#include "jet/ByteReader.h"
#include "jet/Limits.h"

#include <algorithm>

namespace vellumo::jet {

namespace {

constexpr std::uint16_t offsetMask = 0x1FFF;
constexpr std::uint16_t flagsMask = 0xC000;
constexpr std::uint16_t deletedFlags = 0xC000;
constexpr std::uint16_t movedAwayFlags = 0x4000;
constexpr std::uint16_t movedHereFlags = 0x8000;

RowState stateOf(unsigned flags)
{
    switch (flags) {
    case deletedFlags: return RowState::Deleted;
    case movedAwayFlags: return RowState::MovedAway;
    case movedHereFlags: return RowState::MovedHere;
    default: return RowState::Live;
    }
}

} // namespace

RowPlaces::RowPlaces(ByteSpan page, const PageFormat& format)
    : m_page(page)
    , m_offsets(&page[format.rowCountOffset + 2])
    , m_count(load16(&page[format.rowCountOffset]))
    , m_end(page.size())
{
    const auto most = std::min(mostRowsOnPage, (page.size() - format.rowCountOffset - 2) / 2);
    m_isCountPlausible = m_count <= most;
    m_count = std::min(m_count, most);
    m_lowest = format.rowCountOffset + 2 + 2 * m_count;
}

RowPlace RowPlaces::next()
{
    const auto entry = load16(m_offsets + 2 * m_next++);
    const std::size_t start = entry & offsetMask;
    const bool isStartSound = start >= m_lowest && start <= m_end;
    RowPlace place;
    if (isStartSound && m_isEndKnown) {
        const auto flags = entry & flagsMask;
        place.state = stateOf(flags);
        place.bytes = m_page.subspan(start, m_end - start);
    } else if ((entry & flagsMask) == deletedFlags) {
        place.state = RowState::Deleted; // nothing of it would be shown
    }
    m_isEndKnown = isStartSound;
    if (isStartSound) m_end = start;
    return place;
}

bool isDataPage(ByteSpan page) { return !page.empty() && page[0] == DataPageType; }

std::uint32_t ownerOf(ByteSpan page) { return load32(&page[ownerOffset]); }

std::optional<RowPlace> rowAt(ByteSpan page, const PageFormat& format, std::uint32_t pointer)
{
    RowPlaces places(page, format);
    const std::size_t number = pointer & 0xFF;
    if (number >= places.count()) return std::nullopt;
    for (std::size_t before = 0; before < number; ++before)
        static_cast<void>(places.next());
    return places.next();
}

} // namespace vellumo::jet
