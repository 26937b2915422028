#pragma once

#include "browser/FileList.h"
#include "browser/TreeItem.h"

#include <vector>

namespace vellumo {

// The menu of a jump bar and the item selected in it: one item a listed file, below it one item a table of that file.
// Titles are the objects' names.
class JumpBarMenu {
public:
    struct FileItem {
        TAdmMDBFile* file;
        std::vector<TAdmMDBTable*> tables; // the submenu
    };

    [[nodiscard]] const std::vector<FileItem>& items() const { return m_items; }
    [[nodiscard]] const TreeItem& selectedItem() const { return m_selectedItem; }

    // One item a file. The selection stays if its item is there again.
    void rebuild(const FileList::Files& files);
    // No items and no selection.
    void clear();

    // The item that stands for `item`, or for its file when the menu has no such table; none when it has no such file.
    // Looks at no object that is not in the menu.
    [[nodiscard]] TreeItem find(const TreeItem& item) const;
    void select(const TreeItem& item) { m_selectedItem = find(item); }

private:
    std::vector<FileItem> m_items;
    TreeItem m_selectedItem;
};

} // namespace vellumo
