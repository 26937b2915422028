#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace vellumo {

// Where the entries stand in the text of a bookmark file (XBEL 1.0: `<bookmark>` elements inside one `<xbel>`).
struct BookmarkText {
    struct Entry {
        std::size_t start; // of "<bookmark"
        std::size_t end;   // behind its closing tag
    };
    std::vector<Entry> entries;
    std::size_t close = 0; // of "</xbel>"

    // Text of the file up to its first entry, or up to the closing tag when there is none.
    [[nodiscard]] std::size_t headEnd() const { return entries.empty() ? close : entries.front().start; }
};

// `text` has been accepted by an XML parser. nullopt when the file has no closing "</xbel>" or an entry is not closed.
[[nodiscard]] std::optional<BookmarkText> findBookmarks(std::string_view text);

} // namespace vellumo
