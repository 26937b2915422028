// SPDX-License-Identifier: MIT
#include "browser/TreeDataSource.h"

#include "browser/NameFilters.h"
#include "text/Format.h"

#include <algorithm>

namespace vellumo {

void TreeDataSource::reload()
{
    m_isListed = false;
    m_fileEntities.clear();
    m_tableEntities.clear();
}

const std::vector<TAdmMDBFile*>& TreeDataSource::fileEntities()
{
    if (m_isListed) return m_fileEntities;
    m_fileEntities.clear();
    for (const auto& file : m_files.recentFiles())
        m_fileEntities.push_back(file.get());
    if (useFileFilter()) m_fileEntities = filterFileName(m_fileEntities, m_filterText);
    m_isListed = true;
    return m_fileEntities;
}

const std::vector<TAdmMDBTable*>& TreeDataSource::tableEntities(const TAdmMDBFile& file)
{
    static const std::vector<TAdmMDBTable*> none;
    if (!file.active()) return none;
    const auto [place, isNew] = m_tableEntities.try_emplace(&file);
    // Without a filter text every table passes.
    if (isNew) place->second = filterTableName(file.tables(), m_filterText);
    return place->second;
}

std::size_t TreeDataSource::numberOfChildrenOfItem(const TreeItem& item)
{
    if (item.isNone()) return fileEntities().size();
    return item.isFile() ? tableEntities(*item.file).size() : 0;
}

TreeItem TreeDataSource::child(std::size_t index, const TreeItem& item)
{
    return item.isNone() ? TreeItem::of(*fileEntities()[index]) : TreeItem::of(*tableEntities(*item.file)[index]);
}

bool TreeDataSource::isItemExpandable(const TreeItem& item) const { return item.isFile() && item.file->active(); }

TreeItemText TreeDataSource::objectValueByItem(const TreeItem& item, bool numRowsShown) const
{
    if (item.isNone()) return {};
    if (item.isFile()) return {item.file->name(), ""};
    return {item.table->name(), numRowsShown ? format("  (%d)", {item.table->rows().rowCount()}) : ""};
}

bool TreeDataSource::contains(const TreeItem& item)
{
    const auto& files = fileEntities();
    if (std::find(files.begin(), files.end(), item.file) == files.end()) return false;
    if (item.isFile()) return true;
    const auto& tables = tableEntities(*item.file);
    return std::find(tables.begin(), tables.end(), item.table) != tables.end();
}

} // namespace vellumo
