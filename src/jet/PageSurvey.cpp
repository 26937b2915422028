// SPDX-License-Identifier: MIT
#include "jet/PageSurvey.h"

#include "jet/ByteReader.h"
#include "jet/DataPage.h"

namespace vellumo::jet {

namespace {

constexpr std::uint32_t freeMapPointer = freeMapPage << 8; // its first row
constexpr std::uint32_t pagesBetweenQuestions = 1024;

} // namespace

PageMarks freePages(Pages& pages)
{
    PageMarks free(pages.count());
    PageBuffer buffer;
    const auto page = pages.read(freeMapPage, buffer);
    if (!isDataPage(page)) return free;
    const auto place = rowAt(page, pages.format(), freeMapPointer);
    if (!place || place->state != RowState::Live) return free;
    const std::vector<std::uint8_t> map(place->bytes.begin(), place->bytes.end());
    for (const auto number : readPageList(map, pages, buffer).pages)
        free[number] = true;
    // The map grows with the file: no page behind its bits has been used yet.
    for (auto number = endOfInlineMap(map).value_or(pages.count()); number < pages.count(); ++number)
        free[number] = true;
    return free;
}

std::optional<PageSurvey> surveyPages(Pages& pages, const PageMarks& leftOut, const std::function<bool()>& goesOn)
{
    PageSurvey survey;
    PageBuffer buffer;
    std::set<std::uint32_t> continuations;
    for (std::uint32_t number = 1; number < pages.count(); ++number) {
        if (number % pagesBetweenQuestions == 0 && !goesOn()) return std::nullopt;
        if (leftOut[number]) continue;
        const auto page = pages.read(number, buffer);
        if (isDataPage(page)) {
            survey.dataPages[ownerOf(page)].push_back(number);
        } else if (!page.empty() && page[0] == DefinitionPageType) {
            survey.definitions.insert(number);
            continuations.insert(load32(&page[ownerOffset])); // where a data page names its owner, the next page
        }
    }
    for (const auto page : continuations)
        survey.definitions.erase(page);
    return survey;
}

} // namespace vellumo::jet
