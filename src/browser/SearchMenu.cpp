#include "browser/SearchMenu.h"

#include "text/Messages.h"

namespace vellumo {

std::vector<SearchMenuItem> searchMenu(const SearchSettings& settings)
{
    const auto option = [&](SearchOption o, const char* key) {
        return SearchMenuItem{static_cast<int>(o), localized(key), o == settings.searchOption};
    };
    return {
        {SearchMenuItem::caseTag, localized("Ignore Case"), settings.ignoreCase},
        {SearchMenuItem::optionsTag, localized("Search Option"), false},
        option(SearchOption::Contains, messageKey("Contains")),
        option(SearchOption::BeginsWith, messageKey("Begins With")),
        option(SearchOption::Equals, messageKey("Equals")),
        option(SearchOption::EndsWith, messageKey("Ends With")),
    };
}

} // namespace vellumo
