// SPDX-License-Identifier: MIT
#pragma once

#include "browser/FileList.h"
#include "browser/TreeItem.h"

#include <map>
#include <string>
#include <vector>

namespace vellumo {

// The displayed value of a tree row. The row count is drawn behind the name, in grey.
struct TreeItemText {
    static constexpr const char* rowCountFont = "Helvetica";
    static constexpr int rowCountPoints = 12;

    std::string name;
    std::string rowCount; // "  (12)"; empty when it is not to be shown

    bool operator==(const TreeItemText&) const = default;
};

// What the tree shows: the files at the top level and the tables of each open file below, both narrowed by the file
// search. What was listed once is kept until the next reload, so that asking again costs nothing.
class TreeDataSource {
public:
    // `files` outlives the source.
    explicit TreeDataSource(const FileList& files)
        : m_files(files)
    {
    }

    // The file search field's text; takes effect with the next reload.
    void setFilterText(std::string text) { m_filterText = std::move(text); }
    [[nodiscard]] bool useFileFilter() const { return !m_filterText.empty(); }

    // Lists everything anew at the next question.
    void reload();
    // Forgets the tables of a file that is about to close.
    void removeTablesOf(const TAdmMDBFile& file) { m_tableEntities.erase(&file); }

    // The files at the top level.
    [[nodiscard]] const std::vector<TAdmMDBFile*>& fileEntities();
    // The tables below a file; none while it is not open.
    [[nodiscard]] const std::vector<TAdmMDBTable*>& tableEntities(const TAdmMDBFile& file);

    // The tree's questions; the root is the item that stands for nothing.
    [[nodiscard]] std::size_t numberOfChildrenOfItem(const TreeItem& item);
    // `index` is below the number of children.
    [[nodiscard]] TreeItem child(std::size_t index, const TreeItem& item);
    [[nodiscard]] bool isItemExpandable(const TreeItem& item) const;
    [[nodiscard]] TreeItemText objectValueByItem(const TreeItem& item, bool numRowsShown) const;
    // Whether the item has a place in the tree at present. Looks at no object that has gone.
    [[nodiscard]] bool contains(const TreeItem& item);

private:
    const FileList& m_files;
    std::string m_filterText;
    bool m_isListed = false;
    std::vector<TAdmMDBFile*> m_fileEntities;
    std::map<const TAdmMDBFile*, std::vector<TAdmMDBTable*>> m_tableEntities;
};

} // namespace vellumo
