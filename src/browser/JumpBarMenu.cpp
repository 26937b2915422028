// SPDX-License-Identifier: MIT
#include "browser/JumpBarMenu.h"

namespace vellumo {

std::vector<JumpBarMenu::FileItem> JumpBarMenu::items() const
{
    std::vector<FileItem> items;
    if (m_isCleared) return items;
    for (const auto& file : m_files.recentFiles()) {
        auto& item = items.emplace_back(FileItem{file.get(), {}});
        for (const auto& table : file->tables())
            item.tables.push_back(table.get());
    }
    return items;
}

void JumpBarMenu::clear()
{
    m_isCleared = true;
    m_selected = {};
}

} // namespace vellumo
