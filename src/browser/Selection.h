// SPDX-License-Identifier: MIT
#pragma once

#include "browser/FileList.h"

namespace vellumo {

// What is selected, and what a menu of the tree is open for: the one place that knows. Tree, jump bar, grid,
// information pane and history follow it. It keeps no pointer: what has gone is not selected, and of a table that has
// gone its file is. Main thread only.
class Selection {
public:
    // `files` outlives the selection.
    explicit Selection(const FileList& files)
        : m_files(files)
    {
    }

    // Borrowed until the list or the file changes, as all items here are.
    [[nodiscard]] TreeItem item() const { return m_files.find(m_selected); }
    void select(const TreeItem& item) { m_selected = m_files.idOf(item); }

    // The row under the pointer while a menu of the tree is open; none otherwise.
    [[nodiscard]] TreeItem clickedItem() const { return m_files.find(m_clicked); }
    void setClickedItem(const TreeItem& item) { m_clicked = m_files.idOf(item); }

    // The tables of a file are about to go: of them, the file stays selected, and no row stays clicked.
    void fileWillClose(TAdmMDBFile& file)
    {
        if (item().file == &file) select(TreeItem::of(file));
        if (clickedItem().file == &file) m_clicked = {};
    }

private:
    const FileList& m_files;
    ItemId m_selected;
    ItemId m_clicked;
};

} // namespace vellumo
