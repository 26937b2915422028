#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

namespace vellumo::jet {

// Reads one page into memory that stays valid until the next call; empty when the page cannot be read.
using PageSource = std::function<std::span<const std::uint8_t>(std::uint32_t page)>;

// The pages that a usage map names, ascending, as far as they lie below `pageCount`; page 0 is never among them.
// nullopt: a kind of map that is not known, so any page may belong to the table.
[[nodiscard]] std::optional<std::vector<std::uint32_t>> pagesOfUsageMap(
    std::span<const std::uint8_t> map, std::uint32_t pageCount, const PageSource& readPage);

} // namespace vellumo::jet
