// SPDX-License-Identifier: MIT
#pragma once

#include "jet/Pages.h"

#include <functional>
#include <map>
#include <optional>
#include <set>

// What the pages of a file say of themselves, whether anything leads to them or not.
namespace vellumo::jet {

struct PageSurvey {
    std::map<std::uint32_t, std::vector<std::uint32_t>> dataPages; // by owner, ascending
    std::set<std::uint32_t> definitions;                           // first pages of definitions
};

// A mark for each page of a file, by its number.
using PageMarks = std::vector<bool>;

// The pages that hold nothing, as the file says. What was deleted leaves its bytes there, also those that tell what
// kind of page it was and whose. None when the map of them cannot be read.
[[nodiscard]] PageMarks freePages(Pages& pages);

// Looks at all pages but those that are marked. nullopt when `goesOn`, which is asked now and then, says no.
[[nodiscard]] std::optional<PageSurvey> surveyPages(
    Pages& pages, const PageMarks& leftOut, const std::function<bool()>& goesOn);

} // namespace vellumo::jet
