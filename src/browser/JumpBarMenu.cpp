#include "browser/JumpBarMenu.h"

#include <algorithm>

namespace vellumo {

void JumpBarMenu::rebuild(const FileList::Files& files)
{
    m_items.clear();
    for (const auto& file : files) {
        FileItem item{file.get(), {}};
        for (const auto& table : file->tables())
            item.tables.push_back(table.get());
        m_items.push_back(std::move(item));
    }
    if (find(m_selectedItem) != m_selectedItem) m_selectedItem = {};
}

void JumpBarMenu::clear()
{
    m_items.clear();
    m_selectedItem = {};
}

TreeItem JumpBarMenu::find(const TreeItem& item) const
{
    for (const auto& [file, tables] : m_items) {
        if (file != item.file) continue;
        const bool hasTable = std::find(tables.begin(), tables.end(), item.table) != tables.end();
        return {file, hasTable ? item.table : nullptr};
    }
    return {};
}

} // namespace vellumo
