// SPDX-License-Identifier: MIT
#include "samples/UsageMaps.h"

namespace vellumo::samples {
namespace {

// Bitmap bytes of a map that holds its bits itself.
constexpr std::size_t smallBitmap(JetVersion version) { return version == JetVersion::Jet3 ? 128 : 64; }

void setBit(std::uint8_t* bitmap, std::size_t bit) { bitmap[bit / 8] |= static_cast<std::uint8_t>(1U << bit % 8); }

} // namespace

// A map is a 0, the first page, and a bit for every page from there on.
std::optional<RowPlace> UsageMaps::add(const std::vector<std::uint32_t>& pages)
{
    const auto bitmapSize = smallBitmap(m_file.version());
    const auto first = pages.empty() ? 0 : pages.front();
    if (!pages.empty() && pages.back() - first >= 8 * bitmapSize) return addLarge(pages);
    Bytes row(5 + bitmapSize);
    putNumber<std::uint32_t>(&row[1], first);
    for (const auto page : pages)
        setBit(&row[5], page - first);
    return m_rows.add(row);
}

// A large map is a 1 and the numbers of bitmap pages (0 = no bit set there), each with the bits of so many pages.
std::optional<RowPlace> UsageMaps::addLarge(const std::vector<std::uint32_t>& pages)
{
    const auto bitsPerPage = 8 * (m_file.pageSize() - 4);
    const auto bitmapCount = smallBitmap(m_file.version()) / 4 + 1;
    if (pages.back() / bitsPerPage >= bitmapCount) return std::nullopt;
    Bytes row(1 + 4 * bitmapCount);
    row[0] = 1;
    for (auto page = pages.begin(); page != pages.end();) {
        const auto entry = *page / bitsPerPage;
        Bytes bitmap(m_file.pageSize());
        bitmap[0] = 5;
        bitmap[1] = 1;
        for (; page != pages.end() && *page / bitsPerPage == entry; ++page)
            setBit(&bitmap[4], *page % bitsPerPage);
        const auto bitmapPage = m_file.allocate();
        m_file.write(bitmapPage, bitmap);
        putNumber<std::uint32_t>(&row[1 + 4 * entry], bitmapPage);
    }
    return m_rows.add(row);
}

} // namespace vellumo::samples
