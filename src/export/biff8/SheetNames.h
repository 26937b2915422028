// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace vellumo::biff8 {

// The sheet names of one workbook. A name that the format does not allow is repaired, the same way every time:
//
// 1. U+0000..001F, ":", "\", "/", "?", "*", "[", "]" and lone surrogates become "_".
// 2. What is longer than 31 UTF-16 units is cut. A number in parentheses at the end, as in "Orders(2)", is kept: the
//    cut falls in front of it. A character outside the basic plane is never cut in half.
// 3. "'" at the beginning or the end becomes "_".
// 4. A name that is taken already, letters of either case counting as the same, or is "History", gets "_2", "_3" and so
//    on at the end, the cut again falling in front of it and of a number in parentheses.
class SheetNames {
public:
    // The repaired name, which is taken from now on. Nullopt for an empty name and for malformed UTF-8.
    [[nodiscard]] std::optional<std::u16string> claim(std::string_view name);
    // `name` as `claim` gave it is free again.
    void release(const std::u16string& name);

private:
    std::set<std::u16string> m_taken; // case-folded
};

} // namespace vellumo::biff8
