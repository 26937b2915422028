#pragma once

#include "browser/RecordSearch.h"

#include <string>
#include <vector>

namespace vellumo {

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
