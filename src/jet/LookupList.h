// SPDX-License-Identifier: MIT
#pragma once

#include "jet/Definition.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vellumo::jet {

// Which of the columns of a lookup people see: the first that has no width of 0 ("0;1440"). nullopt when all have.
[[nodiscard]] std::optional<std::size_t> shownLookupColumn(std::string_view widths, std::size_t columnCount);

// The value list of a column that is shown as a list or a combo box: which text stands for which stored value.
class LookupList {
public:
    // No list: every value is shown as it is.
    LookupList() = default;
    // The list that a column's properties hold; none when they hold none, or one that is made of a table.
    explicit LookupList(const PropertyList& properties);

    [[nodiscard]] bool empty() const { return m_shown.empty(); }
    // The text for a stored value; the value itself where the list does not have it. Valid as long as both.
    [[nodiscard]] std::string_view shown(std::string_view stored) const;

private:
    std::map<std::string, std::string, std::less<>> m_shown;
};

} // namespace vellumo::jet
