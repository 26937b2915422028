// SPDX-License-Identifier: MIT
#include "samples/LongValues.h"

#include <algorithm>

namespace vellumo::samples {
namespace {

constexpr std::uint32_t inlineKind = 0x80000000;
constexpr std::uint32_t singleKind = 0x40000000;
constexpr std::size_t usualInlineMax = 52;
constexpr std::size_t lengthLimit = 0x3FFFFFFF; // the two bits above are the kind

// Access leaves a few bytes of such a page free.
constexpr std::size_t singleMax(JetVersion version) { return version == JetVersion::Jet3 ? 2036 : 4076; }
constexpr std::size_t linkMax(JetVersion version) { return singleMax(version) - 4; }

LongStorage storageBySize(std::size_t size, JetVersion version)
{
    if (size <= usualInlineMax) return LongStorage::Inline;
    return size <= singleMax(version) ? LongStorage::Single : LongStorage::Chain;
}

void appendHeader(Bytes& row, std::size_t length, std::uint32_t kind, std::uint32_t pointer)
{
    appendNumber<std::uint32_t>(row, static_cast<std::uint32_t>(length) | kind);
    appendNumber<std::uint32_t>(row, pointer);
    appendNumber<std::uint32_t>(row, 0);
}

} // namespace

bool LongValues::store(
    ByteSpan value, LongStorage storage, std::uint32_t linkSize, Bytes& row, std::vector<RowPlace>& pieces)
{
    pieces.clear();
    if (value.size() > lengthLimit) return false;
    if (storage == LongStorage::BySize) storage = storageBySize(value.size(), m_file.version());
    if (storage == LongStorage::Inline) {
        appendHeader(row, value.size(), inlineKind, 0);
        appendBytes(row, value);
        return true;
    }
    if (storage == LongStorage::Single) {
        if (value.size() > singleMax(m_file.version())) return false;
        pieces.push_back(m_pages.add(value));
        appendHeader(row, value.size(), singleKind, pieces[0].pointer());
        return true;
    }
    const auto most = linkMax(m_file.version());
    if (linkSize > most) return false;
    storeChain(value, linkSize == 0 ? most : linkSize, pieces);
    appendHeader(row, value.size(), 0, pieces[0].pointer());
    return true;
}

// From the last link to the first, since each holds the pointer to the next.
void LongValues::storeChain(ByteSpan value, std::size_t linkSize, std::vector<RowPlace>& pieces)
{
    const auto linkCount = std::max<std::size_t>(1, (value.size() + linkSize - 1) / linkSize);
    std::uint32_t next = 0;
    for (std::size_t link = linkCount; link-- > 0;) {
        const auto from = link * linkSize;
        m_link.clear();
        appendNumber<std::uint32_t>(m_link, next);
        appendBytes(m_link, value.subspan(from, std::min(linkSize, value.size() - from)));
        pieces.push_back(m_pages.add(m_link));
        next = pieces.back().pointer();
    }
    std::reverse(pieces.begin(), pieces.end());
}

} // namespace vellumo::samples
