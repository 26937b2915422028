// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace vellumo::jet {

using ByteSpan = std::span<const std::uint8_t>;

// What differs between the pages of Access 97 (Jet 3) and those of later versions.
struct PageFormat {
    bool isJet3;
    std::size_t size;           // bytes
    std::size_t rowCountOffset; // on a data page: u16 number of rows, then u16 a row
};
constexpr PageFormat jet3Pages{true, 2048, 8};
constexpr PageFormat jet4Pages{false, 4096, 12};

// First byte of a page.
enum PageType : std::uint8_t {
    DataPageType = 1,
    DefinitionPageType = 2,
    IndexNodeType = 3,
    IndexLeafType = 4,
    BitmapPageType = 5,
};
// In the first 8 bytes of a data page: u32 definition page of the table that owns it, or the mark of long values, or
// nothing on a page of usage maps.
constexpr std::size_t ownerOffset = 4;
constexpr std::uint32_t noOwner = 0;
constexpr std::uint32_t freeMapPage = 1;             // has itself for its owner
constexpr std::uint32_t longValueOwner = 0x4C41564C; // "LVAL"

// Memory for one page; keeps what was read last.
class PageBuffer {
    friend class Pages;
    std::vector<std::uint8_t> m_bytes;
    std::uint32_t m_number = 0; // 0: nothing
};

// The pages of an open database, decrypted. Serves one thread.
class Pages {
public:
    virtual ~Pages() = default;
    Pages(const Pages&) = delete;
    Pages& operator=(const Pages&) = delete;

    [[nodiscard]] const PageFormat& format() const { return m_format; }
    // Whole pages in the file; page 0 is its header.
    [[nodiscard]] std::uint32_t count() const { return m_count; }
    // A page, valid until the buffer is used for another one; empty when there is none of this number above 0, or it
    // cannot be read.
    [[nodiscard]] ByteSpan read(std::uint32_t number, PageBuffer& buffer);

protected:
    Pages(const PageFormat& format, std::uint32_t count)
        : m_format(format)
        , m_count(count)
    {
    }
    // `to` has room for a page; `number` is above 0 and below count().
    [[nodiscard]] virtual bool readPage(std::uint32_t number, std::uint8_t* to) = 0;

private:
    const PageFormat& m_format;
    std::uint32_t m_count;
};

// The pages that a usage map names.
struct PageList {
    std::vector<std::uint32_t> pages; // ascending, inside the file, without page 0
    std::uint64_t beyondEnd = 0;      // pages that would lie behind the end of the file
    // Runs of pages of which nothing is known, because that part of the map cannot be read: first page, and the one
    // behind the last.
    struct Gap {
        std::uint32_t first;
        std::uint32_t end;
    };
    std::vector<Gap> gaps;
};

// `map`: the bytes of the row that is the map.
[[nodiscard]] PageList readPageList(ByteSpan map, Pages& pages, PageBuffer& buffer);
// The page behind the last one for which the map has a bit; nullopt for one that keeps its bits on pages of their own.
[[nodiscard]] std::optional<std::uint64_t> endOfInlineMap(ByteSpan map);

} // namespace vellumo::jet
