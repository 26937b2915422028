// SPDX-License-Identifier: MIT
#pragma once

#include "jet/Pages.h"

#include <optional>

// A data page: rows fill it from its end, row 0 first; a table of their offsets follows the header. Row k ends where
// row k - 1 starts. The two highest bits of an offset are flags.
namespace vellumo::jet {

enum class RowState : std::uint8_t {
    Live,
    MovedHere, // from another page, where a pointer is left; to be read here
    MovedAway, // 4 bytes: a pointer to where it went, which is where it is read
    Deleted,
    Damaged, // its place makes no sense, or that of the row before, where it would end
};

struct RowPlace {
    RowState state = RowState::Damaged;
    ByteSpan bytes{}; // of the whole row; empty when damaged
};

// Walks over the rows of a page in their order.
class RowPlaces {
public:
    // `page` is a whole data page, whoever owns it.
    RowPlaces(ByteSpan page, const PageFormat& format);

    // False when the page claims more rows than fit on one; those that fit are there all the same.
    [[nodiscard]] bool isCountPlausible() const { return m_isCountPlausible; }
    [[nodiscard]] std::size_t count() const { return m_count; }
    // The next row; to be called count() times at most.
    [[nodiscard]] RowPlace next();

private:
    ByteSpan m_page;
    const std::uint8_t* m_offsets;
    std::size_t m_count;
    std::size_t m_next = 0;
    std::size_t m_lowest; // rows start here at the earliest
    std::size_t m_end;    // of the next row
    bool m_isEndKnown = true;
    bool m_isCountPlausible = true;
};

[[nodiscard]] bool isDataPage(ByteSpan page);
// What the page says its owner is. `page` is a data page.
[[nodiscard]] std::uint32_t ownerOf(ByteSpan page);

// The place on `page` that a pointer (page << 8 | row number) leads to; nullopt when it has fewer rows. `page` is a
// data page.
[[nodiscard]] std::optional<RowPlace> rowAt(ByteSpan page, const PageFormat& format, std::uint32_t pointer);
[[nodiscard]] constexpr std::uint32_t pageOf(std::uint32_t pointer) { return pointer >> 8; }

} // namespace vellumo::jet
