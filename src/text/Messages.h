// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

// The message table: every text that a person sees is looked up here, the English text itself being the key.
namespace vellumo {

// Makes the translations below `localeDir` (LANG/LC_MESSAGES/vellumo.mo) available and takes the language from the
// environment. Touches no other locale category: numbers and dates never depend on it. Call once, before threads start.
void initMessages(const char* localeDir);

// The translation of `key`, UTF-8; the key itself where there is none.
[[nodiscard]] std::string localized(const char* key);

// The language that texts are translated into, as its code ("de", "pt_BR"); empty when they stay as they are.
[[nodiscard]] std::string messagesLanguage();

// What a key becomes: localized for people, untranslated for programs, which find the same texts in every language.
using Translation = std::string (*)(const char* key);
[[nodiscard]] inline std::string untranslated(const char* key) { return key; }

// Marks a text that is looked up later, for the collector of texts (xgettext).
constexpr const char* messageKey(const char* key) { return key; }

} // namespace vellumo
