// SPDX-License-Identifier: MIT
#pragma once

#include "browser/TreeItem.h"
#include "platform/FileFacts.h"

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace vellumo {

// Takes over size and dates of the file at its path, and tells them. nullopt when that cannot be looked at; it stays as
// it is then.
std::optional<FileFacts> takeFacts(TAdmMDBFile& file, const FileFactsSource& source);

// The files that the user has brought in, open or not, in display order. Closing a file and telling others that it goes
// is the caller's business.
class FileList {
public:
    // Shared, since an export keeps its file while the list may let go of it.
    using Files = std::vector<std::shared_ptr<TAdmMDBFile>>;

    // `facts` outlives the list.
    explicit FileList(const FileFactsSource& facts)
        : m_facts(facts)
    {
    }

    [[nodiscard]] const Files& recentFiles() const { return m_recentFiles; }
    [[nodiscard]] bool empty() const { return m_recentFiles.empty(); }
    [[nodiscard]] bool contains(const TAdmMDBFile* file) const;
    // Whether an entry could not be looked at when that was tried last.
    [[nodiscard]] bool isMissing(const TAdmMDBFile& file) const { return m_missing.contains(&file); }
    // Null when the file is not of the list.
    [[nodiscard]] std::shared_ptr<TAdmMDBFile> share(const TAdmMDBFile& file) const;

    // None for what is not of the list. Looks at no object that has gone.
    [[nodiscard]] ItemId idOf(const TreeItem& item) const;
    // Every table of a file, in its order.
    [[nodiscard]] std::vector<ItemId> tableIds(TAdmMDBFile& file) const;
    // What the id names now. A table is found again when its file was opened anew; while there is none, its file stands
    // for it. Nothing for a file that has left the list.
    [[nodiscard]] TreeItem find(const ItemId& id) const;

    // A new, unopened entry at the front or at the end. A file that cannot be looked at has size 0 and today's dates.
    TAdmMDBFile& createNewMDBFile(std::string_view path, bool insertFront);
    // The same at the end, for a file that the recent documents name.
    TAdmMDBFile& addDocument(std::string_view path);
    // The last entry with the folder and the name of `path`, whatever its extension; null when there is none.
    [[nodiscard]] TAdmMDBFile* findByFolderAndName(std::string_view path) const;
    // Takes an entry out and hands it over; null when it is not of the list.
    std::shared_ptr<TAdmMDBFile> remove(const TAdmMDBFile& file);

    // What tells the list from the recent documents.
    struct Difference {
        std::vector<TAdmMDBFile*> vanished; // were among the documents once and are no longer
        std::vector<std::string> unlisted;  // documents without an entry, in their order
    };
    // Compares by full path, and takes fresh facts for every entry that is among the documents. An entry that never was
    // among them (it could not be opened, or the desktop keeps no such list) does not count as vanished.
    [[nodiscard]] Difference compareWith(const std::vector<std::string>& documents);

    // Equal files keep their order.
    void sortByLastOpenDate();
    void sortByName();

    // Takes fresh facts for an entry, and tells them.
    std::optional<FileFacts> lookAt(TAdmMDBFile& file);

private:
    const FileFactsSource& m_facts;
    Files m_recentFiles;
    std::map<const TAdmMDBFile*, std::uint64_t> m_ids; // of all entries
    std::uint64_t m_lastId = 0;
    std::set<const TAdmMDBFile*> m_missing;    // entries whose files could not be looked at
    std::set<const TAdmMDBFile*> m_documented; // entries that were seen among the recent documents
};

} // namespace vellumo
