#include "adapters/BookmarkText.h"

#include <algorithm>
#include <array>

namespace vellumo {

namespace {

constexpr auto npos = std::string_view::npos;

// Offset behind `mark`, searched from `from`; npos when it is not there.
std::size_t behind(std::string_view text, std::string_view mark, std::size_t from)
{
    const auto found = text.find(mark, from);
    return found == npos ? npos : found + mark.size();
}

// Offset behind the ">" that closes the tag at `start`; those inside quotes do not.
std::size_t behindTag(std::string_view text, std::size_t start)
{
    char quote = 0;
    for (auto i = start; i < text.size(); ++i) {
        if (quote != 0) {
            if (text[i] == quote) quote = 0;
        } else if (text[i] == '"' || text[i] == '\'') {
            quote = text[i];
        } else if (text[i] == '>') {
            return i + 1;
        }
    }
    return npos;
}

// Offset behind the piece of markup that starts with the "<" at `start`.
std::size_t behindMarkup(std::string_view text, std::size_t start)
{
    struct Kind {
        std::string_view open;
        std::string_view close;
    };
    static constexpr std::array<Kind, 3> kinds{{{"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}}};
    const auto rest = text.substr(start);
    const auto kind = std::find_if(kinds.begin(), kinds.end(), [&](const Kind& k) { return rest.starts_with(k.open); });
    return kind == kinds.end() ? behindTag(text, start) : behind(text, kind->close, start + kind->open.size());
}

// "name" of "<name ...>", "/name" of "</name>".
std::string_view tagName(std::string_view markup)
{
    markup.remove_prefix(1);
    return markup.substr(0, markup.find_first_of(" \t\r\n>/", 1));
}

} // namespace

std::optional<BookmarkText> findBookmarks(std::string_view text)
{
    BookmarkText found;
    bool isInEntry = false;
    bool isClosed = false;
    for (auto start = text.find('<'); start != npos;) {
        const auto end = behindMarkup(text, start);
        if (end == npos) return std::nullopt;
        const auto markup = text.substr(start, end - start);
        const auto name = tagName(markup);
        if (name == "bookmark") {
            found.entries.push_back({start, end});
            isInEntry = !markup.ends_with("/>");
        } else if (name == "/bookmark" && isInEntry) {
            found.entries.back().end = end;
            isInEntry = false;
        } else if (name == "/xbel") {
            found.close = start;
            isClosed = true;
        }
        start = text.find('<', end);
    }
    if (isInEntry || !isClosed) return std::nullopt;
    return found;
}

} // namespace vellumo
