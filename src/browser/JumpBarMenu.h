// SPDX-License-Identifier: MIT
#pragma once

#include "browser/FileList.h"

#include <vector>

namespace vellumo {

// The menu of a jump bar and the item selected in it: one item a listed file, below it one item a table of that file.
// Titles are the objects' names. The menu keeps no pointer: it asks the list whenever it is asked.
class JumpBarMenu {
public:
    struct FileItem {
        TAdmMDBFile* file;
        std::vector<TAdmMDBTable*> tables; // the submenu
    };

    // `files` outlives the menu, which has no items before the first rebuild.
    explicit JumpBarMenu(const FileList& files)
        : m_files(files)
    {
    }

    // Borrowed until the list or a file changes, as all items here are.
    [[nodiscard]] std::vector<FileItem> items() const;
    [[nodiscard]] TreeItem selectedItem() const { return m_isCleared ? TreeItem() : m_files.find(m_selected); }

    // The files of the list. The selection stays.
    void rebuild() { m_isCleared = false; }
    // No items and no selection until it is rebuilt.
    void clear();

    // The item that stands for `item`, or for its file when the menu has no such table; none when it has no such file.
    // Looks at no object that has gone.
    [[nodiscard]] TreeItem find(const TreeItem& item) const { return find(idOf(item)); }
    void select(const TreeItem& item) { m_selected = idOf(item); }

    // For whoever keeps an item longer, such as a menu that is open.
    [[nodiscard]] ItemId idOf(const TreeItem& item) const { return m_files.idOf(item); }
    [[nodiscard]] TreeItem find(const ItemId& id) const { return m_isCleared ? TreeItem() : m_files.find(id); }

private:
    const FileList& m_files;
    ItemId m_selected;
    bool m_isCleared = true;
};

} // namespace vellumo
