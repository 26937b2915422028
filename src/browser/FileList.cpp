// SPDX-License-Identifier: MIT
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

ItemId FileList::idOf(const TreeItem& item) const
{
    const auto entry = m_ids.find(item.file);
    if (entry == m_ids.end()) return {};
    ItemId id;
    id.file = entry->second;
    if (!item.isTable()) return id;
    const auto& tables = item.file->tables();
    const auto place = std::ranges::find(tables, item.table, &std::unique_ptr<TAdmMDBTable>::get);
    if (place == tables.end()) return id;
    id.table = static_cast<int>(place - tables.begin());
    id.tableName = item.table->name();
    return id;
}

std::vector<ItemId> FileList::tableIds(TAdmMDBFile& file) const
{
    std::vector<ItemId> ids;
    const auto fileId = idOf(TreeItem::of(file)).file;
    for (const auto& table : file.tables())
        ids.push_back({fileId, static_cast<int>(ids.size()), table->name()});
    return ids;
}

TreeItem FileList::find(const ItemId& id) const
{
    const auto isNamed = [&](const auto& file) { return m_ids.at(file.get()) == id.file; };
    const auto file = std::ranges::find_if(m_recentFiles, isNamed);
    if (id.isNone() || file == m_recentFiles.end()) return {};
    if (!id.isTable()) return TreeItem::of(**file);
    const auto& tables = (*file)->tables();
    const auto place = static_cast<std::size_t>(id.table);
    if (place < tables.size() && tables[place]->name() == id.tableName) return TreeItem::of(*tables[place]);
    return {file->get(), (*file)->findTable(id.tableName)};
}

TAdmMDBFile& FileList::createNewMDBFile(std::string_view path, bool insertFront)
{
    auto file = std::make_shared<TAdmMDBFile>();
    file->setFullPath(path);
    lookAt(*file);
    m_ids[file.get()] = ++m_lastId;
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
    m_missing.erase(&file);
    m_ids.erase(&file);
    return removed;
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
            lookAt(*entry);
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

std::optional<FileFacts> FileList::lookAt(TAdmMDBFile& file)
{
    const auto facts = takeFacts(file, m_facts);
    if (facts)
        m_missing.erase(&file);
    else
        m_missing.insert(&file);
    return facts;
}

std::optional<FileFacts> takeFacts(TAdmMDBFile& file, const FileFactsSource& source)
{
    const auto facts = source.facts(file.fullPath());
    if (!facts) return facts;
    file.setSize(facts->size);
    file.setCreateDate(facts->created);
    file.setModifyDate(facts->modified);
    file.setLastOpenDate(facts->accessed);
    return facts;
}

} // namespace vellumo
