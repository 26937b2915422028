// SPDX-License-Identifier: MIT
#include "browser/SearchHits.h"

#include "text/CaseFold.h"
#include "text/Format.h"
#include "text/Messages.h"

namespace vellumo {

namespace {

// A text as it is compared, with the place in the original that each of its bytes comes from.
struct ComparedText {
    std::string text;
    std::vector<std::size_t> starts; // of the letter that the byte belongs to; one more for the end
};

bool isContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

ComparedText comparedText(std::string_view text, bool ignoreCase)
{
    ComparedText compared;
    for (std::size_t start = 0; start < text.size();) {
        auto end = start + 1;
        while (end < text.size() && isContinuation(text[end]))
            ++end;
        // Letters are folded one by one, whatever stands beside them.
        const auto letter = text.substr(start, end - start);
        compared.text += ignoreCase ? foldCase(letter) : letter;
        compared.starts.resize(compared.text.size(), start);
        start = end;
    }
    compared.starts.push_back(text.size());
    return compared;
}

// Where the occurrences start that the option asks for.
std::vector<std::size_t> occurrences(std::string_view text, std::string_view pattern, SearchOption option)
{
    std::vector<std::size_t> places;
    if (option == SearchOption::Contains) {
        for (auto place = text.find(pattern); place != text.npos; place = text.find(pattern, place + pattern.size()))
            places.push_back(place);
    } else if (option == SearchOption::EndsWith ? text.ends_with(pattern)
            : option == SearchOption::Equals    ? text == pattern
                                                : text.starts_with(pattern)) {
        places.push_back(option == SearchOption::EndsWith ? text.size() - pattern.size() : 0);
    }
    return places;
}

} // namespace

std::vector<TextRange> hitsIn(std::string_view text, const SearchSettings& settings)
{
    if (settings.text.empty()) return {};
    const auto [compared, starts] = comparedText(text, settings.ignoreCase);
    const auto pattern = settings.ignoreCase ? foldCase(settings.text) : settings.text;
    std::vector<TextRange> hits;
    for (const auto place : occurrences(compared, pattern, settings.searchOption)) {
        // A letter that agrees in part is marked as a whole.
        auto end = place + pattern.size();
        while (end < compared.size() && starts[end] == starts[end - 1])
            ++end;
        hits.push_back({starts[place], starts[end] - starts[place]});
    }
    return hits;
}

std::string searchRuleText(const SearchSettings& settings)
{
    std::string option;
    for (const auto& item : searchMenu(settings))
        if (item.isChecked && item.tag != SearchMenuItem::caseTag) option = item.title;
    return format(
        "%@, %@", {option, localized(settings.ignoreCase ? messageKey("ignore case") : messageKey("match case"))});
}

std::string searchResultText(const SearchSettings& settings, std::size_t found, std::size_t recordCount)
{
    if (settings.text.empty()) return {};
    return localizedFormat("“%@”: %d of %d records", {settings.text, found, recordCount});
}

} // namespace vellumo
