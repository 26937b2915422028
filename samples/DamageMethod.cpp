// SPDX-License-Identifier: MIT
#include "samples/DamageMethod.h"

#include "samples/JetVersion.h"
#include "samples/Random.h"
#include "samples/SystemTables.h"

namespace vellumo::samples {
namespace {

constexpr std::size_t sectorSize = 512;

constexpr DamageMethodFacts methods[] = {
    {DamageMethod::LineEndsAdded, "line ends added", true},
    {DamageMethod::LineEndsRemoved, "line ends removed", true},
    {DamageMethod::CutAnywhere, "cut anywhere", false},
    {DamageMethod::CutAtPage, "cut at a page", false},
    {DamageMethod::BytesInserted, "bytes inserted", true},
    {DamageMethod::ForeignTail, "foreign tail", false},
    {DamageMethod::PagesSwapped, "pages swapped", true},
    {DamageMethod::PagesZeroed, "pages zeroed", false},
    {DamageMethod::Catalogue, "catalogue", false},
    {DamageMethod::DefinitionPointers, "definition pointers", false},
    {DamageMethod::PageHeaders, "page headers", false},
    {DamageMethod::PagesOfFF, "pages of FF", false},
    {DamageMethod::UsageMaps, "usage maps", false},
    {DamageMethod::SectorsZeroed, "sectors zeroed", true},
    {DamageMethod::PagesDuplicated, "pages duplicated", true},
    {DamageMethod::Counts, "counts", false},
    {DamageMethod::RowBodies, "row bodies", true},
    {DamageMethod::TailCut, "tail cut", false},
    {DamageMethod::SingleBits, "single bits", true},
};

std::uint32_t numberAt(ByteSpan bytes, std::size_t at)
{
    return bytes[at] | static_cast<std::uint32_t>(bytes[at + 1]) << 8 | static_cast<std::uint32_t>(bytes[at + 2]) << 16
        | static_cast<std::uint32_t>(bytes[at + 3]) << 24;
}

class Damager {
public:
    Damager(ByteSpan file, std::uint64_t seed)
        : m_file(file.begin(), file.end())
        , m_isJet3(file[0x14] == 0)
        , m_pageSize(pageSize(m_isJet3 ? JetVersion::Jet3 : JetVersion::Jet4))
        , m_pageCount(file.size() / m_pageSize)
        , m_random(seed)
    {
    }

    [[nodiscard]] Bytes run(DamageMethod method)
    {
        switch (method) {
        case DamageMethod::LineEndsAdded: addLineEnds(); break;
        case DamageMethod::LineEndsRemoved: removeLineEnds(); break;
        case DamageMethod::CutAnywhere: m_file.resize(anyOffset()); break;
        case DamageMethod::CutAtPage: m_file.resize(anyPage() * m_pageSize); break;
        case DamageMethod::BytesInserted: insertBytes(); break;
        case DamageMethod::ForeignTail: scribble(anyPage() * m_pageSize, m_file.size()); break;
        case DamageMethod::PagesSwapped: times(4, [&] { swapPages(anyPage(), anyPage()); }); break;
        case DamageMethod::PagesZeroed: times(4, [&] { fill(anyPage() * m_pageSize, m_pageSize, 0); }); break;
        case DamageMethod::Catalogue: scribbleOn(&Damager::isCatalogue, 256); break;
        case DamageMethod::DefinitionPointers: spoilNumber({4, 4}, m_isJet3 ? Field{35, 4} : Field{55, 4}); break;
        case DamageMethod::PageHeaders: times(3, [&] { spoilHeader(anyPage() * m_pageSize); }); break;
        case DamageMethod::PagesOfFF: times(2, [&] { fill(anyPage() * m_pageSize, m_pageSize, 0xFF); }); break;
        case DamageMethod::UsageMaps: scribbleOn(&Damager::isUsageMap, 64); break;
        case DamageMethod::SectorsZeroed:
            times(4, [&] { fill(anyOffset() / sectorSize * sectorSize, sectorSize, 0); });
            break;
        case DamageMethod::PagesDuplicated: times(3, [&] { copyPage(anyPage(), anyPage()); }); break;
        case DamageMethod::Counts: spoilCount(); break;
        case DamageMethod::RowBodies: scribbleOn(&Damager::isRows, 32); break;
        case DamageMethod::TailCut: m_file.resize(m_file.size() - 1 - below(8 * m_pageSize)); break;
        case DamageMethod::SingleBits:
            times(8, [&] { m_file[anyOffset()] ^= static_cast<std::uint8_t>(1U << below(8)); });
        }
        return std::move(m_file);
    }

private:
    struct Field {
        std::size_t offset, size;
    };
    using PageTest = bool (Damager::*)(std::size_t) const;

    [[nodiscard]] std::size_t below(std::size_t limit)
    {
        return static_cast<std::size_t>(m_random.below(static_cast<int>(limit)));
    }
    [[nodiscard]] std::size_t anyPage() { return 1 + below(m_pageCount - 1); }
    [[nodiscard]] std::size_t anyOffset() { return m_pageSize + below(m_file.size() - m_pageSize); }

    // 1 to `most` times.
    template <typename Work> void times(std::size_t most, Work work)
    {
        for (auto left = 1 + below(most); left > 0; --left)
            work();
    }

    [[nodiscard]] std::uint8_t typeOf(std::size_t page) const { return m_file[page * m_pageSize]; }
    [[nodiscard]] std::uint32_t ownerOf(std::size_t page) const { return numberAt(m_file, page * m_pageSize + 4); }
    [[nodiscard]] bool isDefinition(std::size_t page) const { return typeOf(page) == 2; }
    [[nodiscard]] bool isCatalogue(std::size_t page) const
    {
        return page == objectsPage || (typeOf(page) == 1 && ownerOf(page) == objectsPage);
    }
    [[nodiscard]] bool isUsageMap(std::size_t page) const
    {
        return typeOf(page) == 5 || (typeOf(page) == 1 && ownerOf(page) == 0);
    }
    [[nodiscard]] bool isRows(std::size_t page) const
    {
        return typeOf(page) == 1 && ownerOf(page) > objectsPage && ownerOf(page) < m_pageCount;
    }

    // The offset of a page of this kind; 0 when there is none.
    [[nodiscard]] std::size_t anyPageThat(PageTest is)
    {
        std::vector<std::size_t> found;
        for (std::size_t page = 2; page < m_pageCount; ++page) {
            if ((this->*is)(page)) found.push_back(page * m_pageSize);
        }
        return found.empty() ? 0 : found[below(found.size())];
    }

    void fill(std::size_t from, std::size_t size, std::uint8_t byte)
    {
        std::fill_n(m_file.begin() + static_cast<std::ptrdiff_t>(from), std::min(size, m_file.size() - from), byte);
    }

    void scribble(std::size_t from, std::size_t to)
    {
        for (auto at = from; at < to; ++at)
            m_file[at] = static_cast<std::uint8_t>(below(256));
    }

    // Where the rows of a page begin, or what follows the header of another one.
    [[nodiscard]] std::size_t contentStart(std::size_t page) const
    {
        const std::size_t header = m_isJet3 ? 8 : 12;
        const auto rowCount = numberAt(m_file, page + header) & 0xFFFF;
        if (m_file[page] != 1 || rowCount == 0) return 8;
        return numberAt(m_file, page + header + 2 * rowCount) & 0x1FFF;
    }

    // Random bytes, up to `most`, anywhere in the content of a page of the kind.
    void scribbleOn(PageTest is, std::size_t most)
    {
        const auto page = anyPageThat(is);
        if (page == 0) return;
        const auto start = contentStart(page);
        const auto from = page + start + below(m_pageSize - start);
        scribble(from, std::min(from + 1 + below(most), page + m_pageSize));
    }

    void spoilHeader(std::size_t page) { scribble(page, page + 1 + below(m_isJet3 ? 10 : 14)); }

    void spoilNumber(Field first, Field second)
    {
        const auto page = anyPageThat(&Damager::isDefinition);
        const auto field = below(2) == 0 ? first : second;
        scribble(page + field.offset, page + field.offset + field.size);
    }

    void spoilCount()
    {
        if (below(2) == 0) {
            spoilNumber(m_isJet3 ? Field{25, 2} : Field{45, 2}, m_isJet3 ? Field{27, 8} : Field{47, 8});
            return;
        }
        const auto page = anyPageThat(&Damager::isRows);
        if (page == 0) return;
        const auto at = page + (m_isJet3 ? 8 : 12);
        scribble(at, at + 1 + below(2));
    }

    void copyPage(std::size_t from, std::size_t to)
    {
        const Bytes copy(pageAt(from), pageAt(from + 1));
        std::copy(copy.begin(), copy.end(), pageAt(to));
    }

    void swapPages(std::size_t one, std::size_t other)
    {
        if (one != other) std::swap_ranges(pageAt(one), pageAt(one + 1), pageAt(other));
    }

    [[nodiscard]] Bytes::iterator pageAt(std::size_t page)
    {
        return m_file.begin() + static_cast<std::ptrdiff_t>(page * m_pageSize);
    }

    void addLineEnds()
    {
        Bytes out(m_file.begin(), pageAt(1));
        for (auto at = pageAt(1); at != m_file.end(); ++at) {
            if (*at == '\n') out.push_back('\r');
            out.push_back(*at);
        }
        m_file = std::move(out);
    }

    void removeLineEnds()
    {
        Bytes out(m_file.begin(), pageAt(1));
        for (auto at = pageAt(1); at != m_file.end(); ++at) {
            if (*at != '\r' || at + 1 == m_file.end() || at[1] != '\n') out.push_back(*at);
        }
        m_file = std::move(out);
    }

    void insertBytes()
    {
        const auto from = anyOffset();
        const auto count = 1 + below(64);
        m_file.insert(m_file.begin() + static_cast<std::ptrdiff_t>(from), count, 0);
        scribble(from, from + count);
    }

    Bytes m_file;
    bool m_isJet3;
    std::size_t m_pageSize;
    std::size_t m_pageCount;
    Random m_random;
};

} // namespace

std::span<const DamageMethodFacts> damageMethods() { return methods; }

// Line ends are converted without a choice: what differs with the seed is nothing.
Bytes damaged(ByteSpan file, DamageMethod method, std::uint64_t seed) { return Damager(file, seed).run(method); }

} // namespace vellumo::samples
