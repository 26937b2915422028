// SPDX-License-Identifier: MIT
#include "adapters/XbelRecentDocuments.h"

#include "adapters/GlibOwned.h"
#include "adapters/LockFile.h"
#include "adapters/PrivateFile.h"
#include "platform/DatabasePath.h"
#include "platform/DesktopId.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <fmt/format.h>
#include <glib.h>
#include <memory>
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

namespace {

constexpr const char* mimeType = "application/vnd.ms-access";
constexpr const char* documentGroup = "Database"; // one of the groups that KDE's programs know

using Bookmarks = GlibOwned<GBookmarkFile, g_bookmark_file_free>;

// Null when the library does not take the text as it is.
Bookmarks parse(std::string_view text)
{
    Bookmarks bookmarks(g_bookmark_file_new());
    return g_bookmark_file_load_from_data(bookmarks.get(), text.data(), text.size(), nullptr) != FALSE
        ? std::move(bookmarks)
        : nullptr;
}

std::string textOf(GBookmarkFile* bookmarks)
{
    gsize length = 0;
    const GlibText text(g_bookmark_file_to_data(bookmarks, &length, nullptr));
    return text ? std::string(text.get(), length) : std::string();
}

std::vector<std::string> urisOf(GBookmarkFile* bookmarks)
{
    gsize count = 0;
    const GlibTexts uris(g_bookmark_file_get_uris(bookmarks, &count));
    return {uris.get(), uris.get() + count};
}

bool isOurs(GBookmarkFile* bookmarks, const std::string& uri, const XbelSettings& settings)
{
    return g_bookmark_file_has_application(bookmarks, uri.c_str(), settings.application.c_str(), nullptr) != FALSE;
}

std::int64_t timeOfOurs(GBookmarkFile* bookmarks, const std::string& uri, const XbelSettings& settings)
{
    GDateTime* time = nullptr;
    g_bookmark_file_get_application_info(
        bookmarks, uri.c_str(), settings.application.c_str(), nullptr, nullptr, &time, nullptr);
    return time == nullptr ? 0 : g_date_time_to_unix(time) * G_USEC_PER_SEC + g_date_time_get_microsecond(time);
}

std::string uriOf(const std::string& path)
{
    const GlibText uri(g_filename_to_uri(path.c_str(), nullptr, nullptr));
    return uri ? uri.get() : "";
}

// "" when the URI names no file of this machine.
std::string pathOf(const std::string& uri)
{
    const GlibText path(g_filename_from_uri(uri.c_str(), nullptr, nullptr));
    return path ? path.get() : "";
}

// The text of a bookmark file with its entries told apart.
struct Document {
    std::string text;
    Bookmarks bookmarks; // the text as the library reads it
    BookmarkText marks;

    [[nodiscard]] std::string_view entry(const BookmarkText::Entry& place) const
    {
        return std::string_view(text).substr(place.start, place.end - place.start);
    }
    // A file that holds this entry only.
    [[nodiscard]] Bookmarks parseAlone(const BookmarkText::Entry& place) const
    {
        return parse(fmt::format("{}{}</xbel>", std::string_view(text).substr(0, marks.headEnd()), entry(place)));
    }
};

// nullopt when the text is no bookmark file that can be read in full.
std::optional<Document> readDocument(std::string text)
{
    auto bookmarks = parse(text);
    auto marks = findBookmarks(text);
    if (!bookmarks || !marks) return std::nullopt;
    return Document{std::move(text), std::move(bookmarks), std::move(*marks)};
}

// Whether an entry holds metadata of others, which the library drops when it writes the entry.
bool hasForeignMetadata(std::string_view entry)
{
    constexpr std::string_view owner = "owner=\"http://freedesktop.org\"";
    for (auto start = entry.find("<metadata"); start != std::string_view::npos;
         start = entry.find("<metadata", start + 1))
        if (entry.substr(start, entry.find('>', start) - start).find(owner) == std::string_view::npos) return true;
    return false;
}

// The one entry of `bookmarks` as text.
std::string entryText(GBookmarkFile* bookmarks)
{
    const auto document = readDocument(textOf(bookmarks));
    if (!document || document->marks.entries.size() != 1) return {};
    return std::string(document->entry(document->marks.entries.front()));
}

// Takes the entry out, with its indentation and its line end.
void cut(std::string& text, BookmarkText::Entry place)
{
    while (place.start > 0 && (text[place.start - 1] == ' ' || text[place.start - 1] == '\t'))
        --place.start;
    if (place.end < text.size() && text[place.end] == '\n') ++place.end;
    text.erase(place.start, place.end - place.start);
}

void addOurs(GBookmarkFile* bookmarks, const std::string& uri, const XbelSettings& settings)
{
    const GlibText known(g_bookmark_file_get_mime_type(bookmarks, uri.c_str(), nullptr));
    if (!known) g_bookmark_file_set_mime_type(bookmarks, uri.c_str(), mimeType);
    if (g_bookmark_file_has_group(bookmarks, uri.c_str(), documentGroup, nullptr) == FALSE)
        g_bookmark_file_add_group(bookmarks, uri.c_str(), documentGroup);
    g_bookmark_file_add_application(bookmarks, uri.c_str(), settings.application.c_str(), settings.command.c_str());
}

// The entry for `uri`; nullptr when there is none.
const BookmarkText::Entry* findEntry(const Document& document, const std::string& uri)
{
    const auto isIn = [&](GBookmarkFile* bookmarks) {
        return g_bookmark_file_has_item(bookmarks, uri.c_str()) != FALSE;
    };
    if (!isIn(document.bookmarks.get())) return nullptr;
    for (const auto& place : document.marks.entries)
        if (const auto alone = document.parseAlone(place); alone && isIn(alone.get())) return &place;
    return nullptr;
}

// The text with an entry of ours for `uri` at the end; nullopt when that cannot be had without loss.
std::optional<std::string> withEntry(const std::string& text, const std::string& uri, const XbelSettings& settings)
{
    auto document = readDocument(text);
    if (!document) return std::nullopt;
    Bookmarks ours(g_bookmark_file_new());
    auto end = document->marks.close;
    if (const auto* place = findEntry(*document, uri)) {
        if (hasForeignMetadata(document->entry(*place))) return std::nullopt;
        ours = document->parseAlone(*place);
        const auto size = document->text.size();
        cut(document->text, *place);
        end -= size - document->text.size();
    }
    addOurs(ours.get(), uri, settings);
    document->text.insert(end, fmt::format("  {}\n", entryText(ours.get())));
    const auto result = parse(document->text);
    return result && isOurs(result.get(), uri, settings) ? std::optional(document->text) : std::nullopt;
}

// Takes our name from an entry, and the entry away when it bears no other.
void forget(Document& document, const BookmarkText::Entry& place, const XbelSettings& settings)
{
    const auto alone = document.parseAlone(place);
    if (!alone) return;
    for (const auto& uri : urisOf(alone.get())) {
        if (!isOurs(alone.get(), uri, settings)) return;
        gsize count = 0;
        const GlibTexts applications(g_bookmark_file_get_applications(alone.get(), uri.c_str(), &count, nullptr));
        if (count == 1) {
            cut(document.text, place);
        } else if (!hasForeignMetadata(document.entry(place))) {
            g_bookmark_file_remove_application(alone.get(), uri.c_str(), settings.application.c_str(), nullptr);
            document.text.replace(place.start, place.end - place.start, entryText(alone.get()));
        }
    }
}

std::optional<std::string> withoutOurs(const std::string& text, const XbelSettings& settings)
{
    auto document = readDocument(text);
    if (!document) return std::nullopt;
    // From the last to the first: the places of those before stay right.
    const auto entries = document->marks.entries;
    for (auto place = entries.rbegin(); place != entries.rend(); ++place)
        forget(*document, *place, settings);
    return parse(document->text) ? std::optional(document->text) : std::nullopt;
}

} // namespace

XbelSettings userXbelSettings()
{
    return {
        fmt::format("{}/recently-used.xbel", g_get_user_data_dir()), desktopId, "vellumo %u", userRecentFilesPolicy()};
}

XbelRecentDocuments::XbelRecentDocuments(XbelSettings settings)
    : m_settings(std::move(settings))
{
}

// In the order of the file. While it is there but cannot be read, what it held when it could be: nobody took our
// entries away.
const std::vector<XbelRecentDocuments::Noted>& XbelRecentDocuments::storedDocuments() const
{
    const auto text = readSmallFile(m_settings.path);
    const auto bookmarks = text ? parse(*text) : nullptr;
    if (!bookmarks && mayExist(m_settings.path)) return m_lastLoaded;
    m_lastLoaded.clear();
    if (!bookmarks) return m_lastLoaded;
    for (const auto& uri : urisOf(bookmarks.get()))
        if (isOurs(bookmarks.get(), uri, m_settings))
            if (auto path = pathOf(uri); !path.empty())
                m_lastLoaded.push_back({std::move(path), timeOfOurs(bookmarks.get(), uri, m_settings)});
    return m_lastLoaded;
}

std::vector<std::string> XbelRecentDocuments::paths() const
{
    auto noted = storedDocuments();
    std::erase_if(noted, [&](const Noted& document) { return m_forgotten.contains(document.path); });
    noted.insert(noted.end(), m_thisRunOnly.begin(), m_thisRunOnly.end());
    // Of two noted at the same time, the one further down was noted later.
    std::reverse(noted.begin(), noted.end());
    std::stable_sort(noted.begin(), noted.end(), [](const Noted& a, const Noted& b) { return a.time > b.time; });
    std::vector<std::string> paths;
    for (const auto& document : noted)
        if (auto path = fileMeantBy(document.path); std::find(paths.begin(), paths.end(), path) == paths.end())
            paths.push_back(std::move(path));
    return paths;
}

std::string XbelRecentDocuments::fileMeantBy(const std::string& path) const
{
    const auto files = databaseFilesMeantBy(path);
    const auto listed = std::ranges::find_first_of(m_cleared, files);
    if (files.size() > 1 && listed != m_cleared.end()) return *listed;
    return files.size() == 1 ? files.front() : path;
}

// Replaces the file's text by what `edit` makes of it (nullopt: leave it); false when nothing could be written.
bool XbelRecentDocuments::rewrite(const std::function<std::optional<std::string>(const std::string& text)>& edit)
{
    if (!makeFolderFor(m_settings.path)) return false;
    LockFile lock(m_settings.path + ".lock");
    m_isLockFree = lock.tryLock(m_isLockFree ? m_settings.lockPatience : std::chrono::milliseconds(0));
    if (!m_isLockFree) return false;
    const Bookmarks empty(g_bookmark_file_new());
    const auto text = mayExist(m_settings.path) ? readSmallFile(m_settings.path) : textOf(empty.get());
    if (!text) return false;
    const auto edited = edit(*text);
    return edited && (*edited == *text || writePrivateFile(m_settings.path, *edited));
}

void XbelRecentDocuments::note(const std::string& given)
{
    const auto path = fileMeantBy(given);
    std::erase_if(m_thisRunOnly, [&](const Noted& noted) { return noted.path == path; });
    m_forgotten.erase(path);
    const auto uri = uriOf(path);
    if (!uri.empty() && mayBeNoted(m_settings.policy, path)
        && rewrite([&](const std::string& text) { return withEntry(text, uri, m_settings); }))
        return;
    m_thisRunOnly.push_back({path, g_get_real_time()});
}

void XbelRecentDocuments::clear()
{
    m_cleared = paths();
    m_thisRunOnly.clear();
    if (!mayExist(m_settings.path)) return;
    // What stays in the file all the same is hidden for this run; the next start shows it again.
    static_cast<void>(rewrite([&](const std::string& text) { return withoutOurs(text, m_settings); }));
    for (const auto& document : storedDocuments())
        m_forgotten.insert(document.path);
}

} // namespace vellumo
