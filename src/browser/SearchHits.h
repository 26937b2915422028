// SPDX-License-Identifier: MIT
#pragma once

#include "browser/RecordSearch.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// What a search shows of itself.
namespace vellumo {

// A part of a text, in bytes.
struct TextRange {
    std::size_t start;
    std::size_t length;

    bool operator==(const TextRange&) const = default;
};

// The parts of a text for which a search finds it: every occurrence, or the one that the option asks for; in order,
// whole letters. None when the text does not agree, and for an empty search.
[[nodiscard]] std::vector<TextRange> hitsIn(std::string_view text, const SearchSettings& settings);

// "Contains, ignore case", localised.
[[nodiscard]] std::string searchRuleText(const SearchSettings& settings);
// "“ann”: 3 of 12 records"; "" while nothing is searched.
[[nodiscard]] std::string searchResultText(const SearchSettings& settings, std::size_t found, std::size_t recordCount);

} // namespace vellumo
