#include "jet/UsageMap.h"

#include "jet/ByteReader.h"

namespace vellumo::jet {

namespace {

// Bit b of the bitmap, low bit first, stands for page `first` + b.
void collectPages(std::span<const std::uint8_t> bitmap, std::uint64_t first, std::uint32_t pageCount,
    std::vector<std::uint32_t>& pages)
{
    for (std::size_t byte = 0; byte < bitmap.size(); ++byte) {
        if (bitmap[byte] == 0) continue;
        for (unsigned bit = 0; bit < 8; ++bit) {
            const auto page = first + 8 * byte + bit;
            if ((bitmap[byte] >> bit & 1) != 0 && page > 0 && page < pageCount)
                pages.push_back(static_cast<std::uint32_t>(page));
        }
    }
}

constexpr std::uint8_t inlineMap = 0;    // u8 0, u32 first page, bitmap
constexpr std::uint8_t referenceMap = 1; // u8 1, u32 numbers of bitmap pages; 0 where none of those pages is used
constexpr std::size_t bitmapPageHeader = 4;

} // namespace

std::optional<std::vector<std::uint32_t>> pagesOfUsageMap(
    std::span<const std::uint8_t> map, std::uint32_t pageCount, const PageSource& readPage)
{
    std::vector<std::uint32_t> pages;
    if (map.size() < 5) return std::nullopt;
    if (map[0] == inlineMap) {
        collectPages(map.subspan(5), load32(&map[1]), pageCount, pages);
        return pages;
    }
    if (map[0] != referenceMap) return std::nullopt;
    std::uint64_t first = 0;
    for (std::size_t entry = 1; map.size() - entry >= 4 && first < pageCount; entry += 4) {
        const auto bitmapPage = load32(&map[entry]);
        const auto content = readPage(bitmapPage < pageCount ? bitmapPage : 0);
        if (content.size() <= bitmapPageHeader) return std::nullopt;
        if (bitmapPage != 0 && bitmapPage < pageCount)
            collectPages(content.subspan(bitmapPageHeader), first, pageCount, pages);
        first += 8 * (content.size() - bitmapPageHeader);
    }
    return pages;
}

} // namespace vellumo::jet
