// SPDX-License-Identifier: MIT
#include "text/Messages.h"

#include <clocale>
#include <libintl.h>

namespace vellumo {

namespace {
constexpr const char* domain = "vellumo";
}

void initMessages(const char* localeDir)
{
    std::setlocale(LC_MESSAGES, "");
    bindtextdomain(domain, localeDir);
    // The output is UTF-8 whatever LC_CTYPE says.
    bind_textdomain_codeset(domain, "UTF-8");
}

std::string localized(const char* key)
{
    // gettext answers the empty key with the header of its catalogue.
    return *key == '\0' ? std::string() : std::string(dgettext(domain, key));
}

std::string messagesLanguage()
{
    constexpr std::string_view field = "\nLanguage: ";
    const std::string_view header = dgettext(domain, "");
    const auto found = header.find(field);
    if (found == std::string_view::npos) return {};
    const auto begin = found + field.size();
    return std::string(header.substr(begin, header.find('\n', begin) - begin));
}

} // namespace vellumo
