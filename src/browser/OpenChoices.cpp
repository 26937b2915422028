// SPDX-License-Identifier: MIT
#include "browser/OpenChoices.h"

#include "jet/UnicodeText.h"
#include "text/Format.h"
#include "text/Messages.h"
#include "text/UTF8.h"

#include <algorithm>
#include <charconv>

namespace vellumo {

namespace {

constexpr const char* newerFilesKey = "openNewerFiles";
constexpr const char* codePagesKey = "textEncodings"; // lines of code page, space, path

const char* scriptOf(int codePage)
{
    switch (codePage) {
    case 437: return messageKey("DOS, United States");
    case 775:
    case 1257: return messageKey("Baltic");
    case 737:
    case 869:
    case 1253: return messageKey("Greek");
    case 852:
    case 1250: return messageKey("Central European");
    case 855:
    case 866:
    case 1251: return messageKey("Cyrillic");
    case 857:
    case 1254: return messageKey("Turkish");
    case 860: return messageKey("Portuguese");
    case 861: return messageKey("Icelandic");
    case 862:
    case 1255: return messageKey("Hebrew");
    case 863: return messageKey("Canadian French");
    case 865: return messageKey("Nordic");
    case 874: return messageKey("Thai");
    case 932: return messageKey("Japanese");
    case 936: return messageKey("Simplified Chinese");
    case 949:
    case 1361: return messageKey("Korean");
    case 950: return messageKey("Traditional Chinese");
    case 1256: return messageKey("Arabic");
    case 1258: return messageKey("Vietnamese");
    case 10000: return messageKey("Macintosh");
    default: return messageKey("Western");
    }
}

bool isKnown(int codePage)
{
    const auto& known = jet::codePageNumbers();
    return std::ranges::find(known, codePage) != known.end();
}

} // namespace

std::vector<TextEncodingItem> textEncodingItems()
{
    std::vector<TextEncodingItem> items;
    for (const auto codePage : jet::codePageNumbers())
        items.push_back({codePage, format("%@ (%ld)", {localized(scriptOf(codePage)), codePage})});
    std::ranges::sort(items, {}, &TextEncodingItem::title);
    return items;
}

void OpenChoices::readFrom(const Defaults& defaults)
{
    m_opensNewerFiles = defaults.boolean(newerFilesKey).value_or(false);
    m_codePages.clear();
    const auto stored = defaults.string(codePagesKey).value_or("");
    for (std::string_view lines = stored; !lines.empty();) {
        const auto line = lines.substr(0, lines.find('\n'));
        lines.remove_prefix(std::min(line.size() + 1, lines.size()));
        int codePage = 0;
        const auto number = std::from_chars(line.data(), line.data() + line.size(), codePage);
        const auto digits = static_cast<std::size_t>(number.ptr - line.data());
        // What another version has stored, or a hand has damaged, counts as never chosen.
        if (isKnown(codePage) && line.size() > digits + 1) m_codePages[std::string(line.substr(digits + 1))] = codePage;
    }
}

void OpenChoices::writeTo(Defaults& defaults) const
{
    defaults.setBoolean(newerFilesKey, m_opensNewerFiles);
    std::string lines;
    for (const auto& [path, codePage] : m_codePages)
        // The store takes only UTF-8, and a line is a file: any other path is remembered until the program ends.
        if (isWellFormedUTF8(path) && path.find('\n') == std::string::npos)
            lines += std::to_string(codePage) + ' ' + path + '\n';
    defaults.setString(codePagesKey, lines);
}

std::optional<int> OpenChoices::codePage(const std::string& path) const
{
    const auto found = m_codePages.find(path);
    return found == m_codePages.end() ? std::nullopt : std::optional(found->second);
}

void OpenChoices::setCodePage(const std::string& path, std::optional<int> codePage)
{
    if (codePage)
        m_codePages[path] = *codePage;
    else
        m_codePages.erase(path);
}

OpenOptions OpenChoices::optionsFor(const TAdmMDBFile& file) const
{
    const auto path = file.fullPath();
    return {.newerFormats = m_opensNewerFiles || m_accepted.contains(path), .codePage = codePage(path)};
}

} // namespace vellumo
