#include "browser/FileList.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace vellumo {

bool FileList::contains(const TAdmMDBFile* file) const
{
    return std::any_of(m_recentFiles.begin(), m_recentFiles.end(), [&](const auto& e) { return e.get() == file; });
}

std::shared_ptr<TAdmMDBFile> FileList::share(const TAdmMDBFile& file) const
{
    for (const auto& entry : m_recentFiles)
        if (entry.get() == &file) return entry;
    return nullptr;
}

TAdmMDBFile& FileList::createNewMDBFile(std::string_view path, bool insertFront)
{
    auto file = std::make_shared<TAdmMDBFile>();
    file->setFullPath(path);
    takeFacts(*file, m_facts);
    const auto place = insertFront ? m_recentFiles.begin() : m_recentFiles.end();
    return **m_recentFiles.insert(place, std::move(file));
}

TAdmMDBFile& FileList::addDocument(std::string_view path)
{
    auto& file = createNewMDBFile(path, false);
    m_documented.insert(&file);
    return file;
}

TAdmMDBFile* FileList::findByFolderAndName(std::string_view path) const
{
    TAdmMDBFile wanted;
    wanted.setFullPath(path);
    TAdmMDBFile* found = nullptr;
    for (const auto& entry : m_recentFiles)
        if (entry->name() == wanted.name() && entry->path() == wanted.path()) found = entry.get();
    return found;
}

std::shared_ptr<TAdmMDBFile> FileList::remove(const TAdmMDBFile& file)
{
    auto removed = share(file);
    std::erase(m_recentFiles, removed);
    m_documented.erase(&file);
    return removed;
}

FileList::Files FileList::removeAll()
{
    m_documented.clear();
    return std::exchange(m_recentFiles, {});
}

FileList::Difference FileList::compareWith(const std::vector<std::string>& documents)
{
    const std::unordered_set<std::string> listed(documents.begin(), documents.end());
    std::unordered_set<std::string> entries;
    Difference difference;
    for (const auto& entry : m_recentFiles) {
        const auto path = entry->fullPath();
        entries.insert(path);
        if (listed.contains(path)) {
            takeFacts(*entry, m_facts);
            m_documented.insert(entry.get());
        } else if (m_documented.contains(entry.get())) {
            difference.vanished.push_back(entry.get());
        }
    }
    for (const auto& document : documents)
        if (entries.insert(document).second) difference.unlisted.push_back(document);
    return difference;
}

void FileList::sortByLastOpenDate()
{
    std::stable_sort(m_recentFiles.begin(), m_recentFiles.end(),
        [](const auto& a, const auto& b) { return a->compareByLastOpenDate(*b) < 0; });
}

void FileList::sortByName() { vellumo::sortByName(m_recentFiles); }

void takeFacts(TAdmMDBFile& file, const FileFactsSource& source)
{
    const auto facts = source.facts(file.fullPath());
    if (!facts) return;
    file.setSize(facts->size);
    file.setCreateDate(facts->created);
    file.setModifyDate(facts->modified);
    file.setLastOpenDate(facts->accessed);
}

} // namespace vellumo
