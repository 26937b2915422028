#include "jet/LongValue.h"

#include "jet/ByteReader.h"
#include "jet/PageFile.h"

#include <algorithm>

namespace vellumo::jet {

namespace {

constexpr std::size_t headerSize = 12; // u32 length and kind, pointer, u32 0
constexpr std::uint32_t inRow = 0x80000000;
constexpr std::uint32_t inOneRow = 0x40000000;
constexpr std::uint32_t lengthMask = 0x3FFFFFFF;
constexpr std::size_t linkSize = 4; // pointer to the next row of a chain

} // namespace

void LongValue::read(std::span<const std::uint8_t> stored, PageFile& file)
{
    m_bytes = {};
    m_isComplete = stored.empty();
    if (stored.size() < headerSize) return;
    const auto kind = load32(stored.data());
    const std::size_t length = kind & lengthMask;
    const auto pointer = load32(&stored[4]);
    if ((kind & inRow) != 0) {
        m_bytes = stored.subspan(headerSize, std::min(length, stored.size() - headerSize));
    } else if ((kind & inOneRow) != 0) {
        const auto row = file.row(pointer);
        const auto wanted = std::min(length, row.size());
        if (wanted > m_budget) return;
        m_budget -= wanted;
        m_bytes = row.first(wanted);
    } else {
        readChain(pointer, length, file);
        return;
    }
    m_isComplete = m_bytes.size() == length;
}

// Adds as much of `piece` as the value still wants; false when the budget is used up.
bool LongValue::append(std::span<const std::uint8_t> piece, std::size_t length)
{
    const auto wanted = std::min(piece.size(), length - m_gathered.size());
    if (wanted > m_budget) return false;
    m_budget -= wanted;
    m_gathered.insert(m_gathered.end(), piece.begin(), piece.begin() + static_cast<std::ptrdiff_t>(wanted));
    return true;
}

void LongValue::readChain(std::uint32_t pointer, std::size_t length, PageFile& file)
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
        const auto row = file.row(pointer);
        if (row.size() <= linkSize || !append(row.subspan(linkSize), length)) break;
        pointer = load32(row.data());
    }
    m_bytes = m_gathered;
    m_isComplete = m_gathered.size() == length;
}

} // namespace vellumo::jet
