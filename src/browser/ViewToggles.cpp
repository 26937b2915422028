// SPDX-License-Identifier: MIT
#include "browser/ViewToggles.h"

#include "text/Messages.h"

namespace vellumo {

namespace {

struct Description {
    const char* key;
    bool isShownInitially;
    const char* titleWhileShown;
    const char* titleWhileHidden;
};

constexpr std::array<Description, 7> descriptions = {{
    {"fileTreeShown", true, messageKey("Hide File List"), messageKey("Show File List")},
    {"informationViewShown", true, messageKey("Hide Information View"), messageKey("Show Information View")},
    {"textViewShown", false, messageKey("Hide Text View"), messageKey("Show Text View")},
    {"jumpBarShown", false, messageKey("Hide Jump Bar"), messageKey("Show Jump Bar")},
    {"numRowsShown", true, messageKey("Hide Row Count in File List"), messageKey("Show Row Count in File List")},
    {"lookupTextsShown", false, messageKey("Hide Lookup Texts"), messageKey("Show Lookup Texts")},
    {"captionsShown", false, messageKey("Hide Captions in Headers"), messageKey("Show Captions in Headers")},
}};

} // namespace

ViewToggles::ViewToggles()
{
    for (std::size_t i = 0; i < descriptions.size(); ++i)
        m_isShown[i] = descriptions[i].isShownInitially;
}

void ViewToggles::readFrom(const Defaults& defaults)
{
    for (std::size_t i = 0; i < descriptions.size(); ++i)
        m_isShown[i] = defaults.boolean(descriptions[i].key).value_or(descriptions[i].isShownInitially);
}

void ViewToggles::writeTo(Defaults& defaults) const
{
    for (std::size_t i = 0; i < descriptions.size(); ++i)
        defaults.setBoolean(descriptions[i].key, m_isShown[i]);
}

void ViewToggles::flip(ViewToggle toggle)
{
    auto& isShown = m_isShown[static_cast<std::size_t>(toggle)];
    isShown = !isShown;
}

std::string ViewToggles::menuTitle(ViewToggle toggle) const
{
    const auto& description = descriptions[static_cast<std::size_t>(toggle)];
    return localized(isShown(toggle) ? description.titleWhileShown : description.titleWhileHidden);
}

} // namespace vellumo
