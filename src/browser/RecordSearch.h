// SPDX-License-Identifier: MIT
#pragma once

#include "rows/RowStore.h"

#include <cstdint>
#include <span>
#include <stop_token>
#include <string>
#include <vector>

namespace vellumo {

// How a value has to agree with the search text. The numbers are the tags of the search menu's items.
enum class SearchOption : std::uint32_t { Contains = 0, BeginsWith = 1, Equals = 2, EndsWith = 3 };

// What the data search field and its menu ask for. An empty text asks for nothing: every record is shown.
struct SearchSettings {
    std::string text; // UTF-8
    SearchOption searchOption = SearchOption::Contains;
    bool ignoreCase = true;

    bool operator==(const SearchSettings&) const = default;
};

// The numbers of the records in which at least one text value agrees with the settings, ascending; all records when the
// text is empty. Null and object cells never agree. With case ignored two texts are compared in their full Unicode case
// folding, so "STRASSE" finds "Straße" and "k" finds the Kelvin sign; with case honoured byte by byte. When it is
// stopped, those found until then.
[[nodiscard]] std::vector<std::uint32_t> filterData(
    const RowStore& rows, const SearchSettings& settings, const std::stop_token& stop = {});

// The same, looking only at the records `candidates` (ascending numbers).
[[nodiscard]] std::vector<std::uint32_t> filterData(const RowStore& rows, const SearchSettings& settings,
    std::span<const std::uint32_t> candidates, const std::stop_token& stop = {});

// True when every record that agrees with `next` also agrees with `previous`, so that only the records found for
// `previous` need a look.
[[nodiscard]] bool isNarrower(const SearchSettings& next, const SearchSettings& previous);

// An item of the data search field's menu.
struct SearchMenuItem {
    static constexpr int caseTag = 100;
    static constexpr int optionsTag = 101; // heads the options; tells nothing, does nothing

    int tag; // an option's own tag is its SearchOption
    std::string title;
    bool isChecked;
};

// The menu for the settings in force, in order.
[[nodiscard]] std::vector<SearchMenuItem> searchMenu(const SearchSettings& settings);

} // namespace vellumo
