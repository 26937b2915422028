// SPDX-License-Identifier: MIT
#include "jet/Pages.h"

#include "jet/ByteReader.h"

#include <algorithm>
#include <bit>

namespace vellumo::jet {

ByteSpan Pages::read(std::uint32_t number, PageBuffer& buffer)
{
    if (number == 0 || number >= m_count) return {};
    if (number != buffer.m_number) {
        buffer.m_bytes.resize(m_format.size);
        buffer.m_number = 0;
        if (!readPage(number, buffer.m_bytes.data())) return {};
        buffer.m_number = number;
    }
    return buffer.m_bytes;
}

namespace {

// Bit b of the bitmap, low bit first, stands for page `first` + b.
void collectPages(ByteSpan bitmap, std::uint64_t first, std::uint32_t pageCount, PageList& list)
{
    for (std::size_t byte = 0; byte < bitmap.size(); ++byte) {
        if (bitmap[byte] == 0) continue;
        if (first + 8 * byte >= pageCount) {
            list.beyondEnd += static_cast<std::uint64_t>(std::popcount(bitmap[byte]));
            continue;
        }
        for (unsigned bit = 0; bit < 8; ++bit) {
            if ((bitmap[byte] >> bit & 1) == 0) continue;
            const auto page = first + 8 * byte + bit;
            if (page >= pageCount)
                ++list.beyondEnd;
            else if (page > 0)
                list.pages.push_back(static_cast<std::uint32_t>(page));
        }
    }
}

constexpr std::uint8_t inlineMap = 0; // u8 0, u32 first page, bitmap
constexpr std::size_t inlineMapHeader = 5;
constexpr std::uint8_t referenceMap = 1; // u8 1, u32 numbers of bitmap pages; 0 where none of those pages is used
constexpr std::size_t bitmapPageHeader = 4;

void readReferenceMap(ByteSpan map, Pages& pages, PageBuffer& buffer, PageList& list)
{
    const auto pagesPerBitmap = 8 * (pages.format().size - bitmapPageHeader);
    std::uint64_t first = 0;
    for (std::size_t entry = 1; map.size() - entry >= 4; entry += 4, first += pagesPerBitmap) {
        const auto bitmapPage = load32(&map[entry]);
        if (bitmapPage == 0) continue;
        const auto bitmap = pages.read(bitmapPage, buffer);
        if (!bitmap.empty() && bitmap[0] == BitmapPageType) {
            collectPages(bitmap.subspan(bitmapPageHeader), first, pages.count(), list);
        } else {
            const auto end = std::min<std::uint64_t>(first + pagesPerBitmap, pages.count());
            // A part that begins behind the end of the file stands for at least one page that is not there.
            if (first >= pages.count())
                ++list.beyondEnd;
            else
                list.gaps.push_back({static_cast<std::uint32_t>(first), static_cast<std::uint32_t>(end)});
        }
    }
}

} // namespace

std::optional<std::uint64_t> endOfInlineMap(ByteSpan map)
{
    if (map.size() < inlineMapHeader || map[0] != inlineMap) return std::nullopt;
    return load32(&map[1]) + std::uint64_t{8} * (map.size() - inlineMapHeader);
}

PageList readPageList(ByteSpan map, Pages& pages, PageBuffer& buffer)
{
    PageList list;
    if (endOfInlineMap(map)) {
        collectPages(map.subspan(inlineMapHeader), load32(&map[1]), pages.count(), list);
    } else if (map.size() >= 5 && map[0] == referenceMap) {
        const std::vector<std::uint8_t> copy(map.begin(), map.end()); // the buffer of the map may be the one read into
        readReferenceMap(copy, pages, buffer, list);
    } else {
        list.gaps.push_back({1, pages.count()});
    }
    return list;
}

} // namespace vellumo::jet
