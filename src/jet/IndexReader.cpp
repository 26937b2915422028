// SPDX-License-Identifier: MIT
#include "jet/IndexReader.h"

#include "jet/ByteReader.h"

#include <set>

// An index page: byte 0 the page type, u32 at 4 the definition page of the table, then
//   Jet 3 / Jet 4
//   16 / 20    u32 tail page: in a node, the child that holds what lies behind all its entries; 0 where there is none
//   20 / 24    u8 / u16 length of the prefix that the entries behind the first share with it and leave out
//   22 / 27    bitmap, low bit first, to the byte before the entries: bit b is set where an entry ends b bytes behind
//              the start of the first one
//   248 / 480  entries: key, pointer to the row (3 bytes page, 1 byte row number, the most significant first), and in a
//              node the child page (u32, the most significant byte first)
namespace vellumo::jet {

namespace {

struct EntryLayout {
    std::size_t tailPage;
    std::size_t prefixLength;
    std::size_t bitmap;
    std::size_t entries;
};
constexpr EntryLayout jet3Entries{16, 20, 22, 248};
constexpr EntryLayout jet4Entries{20, 24, 27, 480};

constexpr std::size_t pointerSize = 4;

std::uint32_t bigEndian32(const std::uint8_t* from)
{
    return std::uint32_t{from[0]} << 24 | std::uint32_t{from[1]} << 16 | std::uint32_t{from[2]} << 8 | from[3];
}

class Walk {
public:
    Walk(Pages& pages, std::uint32_t definitionPage)
        : m_pages(pages)
        , m_definitionPage(definitionPage)
        , m_layout(pages.format().isJet3 ? jet3Entries : jet4Entries)
    {
    }

    IndexEntries from(std::uint32_t root)
    {
        m_open.push_back(root);
        while (!m_open.empty()) {
            const auto number = m_open.back();
            m_open.pop_back();
            // A page met twice closes a circle.
            if (!m_seen.insert(number).second || !readPage(number)) m_found.damagedPages.push_back(number);
        }
        return std::move(m_found);
    }

private:
    [[nodiscard]] bool readPage(std::uint32_t number)
    {
        const auto page = m_pages.read(number, m_buffer);
        if (page.empty() || load32(&page[ownerOffset]) != m_definitionPage) return false;
        if (page[0] != IndexLeafType && page[0] != IndexNodeType) return false;
        const bool isNode = page[0] == IndexNodeType;
        if (const auto tail = load32(&page[m_layout.tailPage]); isNode && tail != 0) m_open.push_back(tail);
        const std::size_t prefixLength =
            m_pages.format().isJet3 ? page[m_layout.prefixLength] : load16(&page[m_layout.prefixLength]);
        const auto bitCount = 8 * (m_layout.entries - m_layout.bitmap);
        std::size_t start = 0;
        std::vector<std::uint8_t> prefix;
        for (std::size_t bit = 1; bit < bitCount; ++bit) {
            if ((page[m_layout.bitmap + bit / 8] >> bit % 8 & 1) == 0) continue;
            if (m_layout.entries + bit > page.size()) return false;
            auto stored = page.subspan(m_layout.entries + start, bit - start);
            m_entry = prefix;
            m_entry.insert(m_entry.end(), stored.begin(), stored.end());
            if (!takeEntry(isNode)) return false;
            if (start == 0)
                prefix.assign(m_entry.begin(),
                    m_entry.begin() + std::min(static_cast<std::ptrdiff_t>(prefixLength), std::ssize(m_entry)));
            start = bit;
        }
        return true;
    }

    [[nodiscard]] bool takeEntry(bool isNode)
    {
        if (m_entry.size() < (isNode ? 2 : 1) * pointerSize) return false;
        const auto last = bigEndian32(&m_entry[m_entry.size() - pointerSize]);
        if (isNode)
            m_open.push_back(last);
        else
            m_found.rows.push_back(last);
        return true;
    }

    Pages& m_pages;
    std::uint32_t m_definitionPage;
    const EntryLayout& m_layout;
    PageBuffer m_buffer;
    std::vector<std::uint8_t> m_entry;
    std::vector<std::uint32_t> m_open;
    std::set<std::uint32_t> m_seen;
    IndexEntries m_found;
};

} // namespace

IndexEntries readIndexEntries(Pages& pages, std::uint32_t root, std::uint32_t definitionPage)
{
    return Walk(pages, definitionPage).from(root);
}

} // namespace vellumo::jet
