// SPDX-License-Identifier: MIT
#pragma once

#include "jet/PageBuilder.h"
#include "jet/UnicodeText.h"

#include <algorithm>
#include <cstdlib>

// Inputs that are the pages of a database.
namespace vellumo {

inline void require(bool holds)
{
    if (!holds) std::abort();
}

inline const jet::CodePage& western()
{
    static const jet::CodePage codePage(1252);
    return codePage;
}

// Puts the bytes on page 1 and those behind it, and zeros behind the last.
inline void putPages(jet::ByteSpan bytes, test::MemoryPages& pages)
{
    const auto size = pages.format().size;
    for (std::uint32_t page = 1; page < pages.count(); ++page) {
        const auto rest = bytes.subspan((page - 1) * size);
        pages.content[page] = test::textOf(rest.first(std::min(size, rest.size())));
        pages.content[page].resize(size);
    }
}

// How many pages a file has whose pages from 1 on hold so many bytes.
inline std::uint32_t pageCountOf(std::size_t bytes, const jet::PageFormat& format)
{
    return static_cast<std::uint32_t>(1 + (bytes + format.size - 1) / format.size);
}

} // namespace vellumo
