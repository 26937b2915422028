#pragma once

#include "browser/JumpBarMenu.h"
#include "browser/SelectionHistory.h"

#include <functional>

namespace vellumo {

// The navigation part of the controller: the tables visited, and the jump bar of the main window. It selects nothing
// itself. Main thread only.
class Navigation {
public:
    // Shows a table, wherever the tree has it.
    using Show = std::function<void(const TreeItem&)>;

    // `files` outlives the navigation.
    explicit Navigation(const FileList& files)
        : m_files(files)
        , m_jumpBar(files)
    {
    }

    [[nodiscard]] const SelectionHistory& history() const { return m_history; }
    [[nodiscard]] JumpBarMenu& jumpBar() { return m_jumpBar; }
    [[nodiscard]] const JumpBarMenu& jumpBar() const { return m_jumpBar; }

    void visit(const TreeItem& table) { m_history.visit(m_files.idOf(table)); }
    // To the table visited before, and to the next one. That is no visit. Nothing is shown when the way is closed or
    // the table has gone.
    void goBack(const Show& show);
    void goForth(const Show& show);
    // The tables of the file are about to go.
    void fileWillClose(TAdmMDBFile& file);

private:
    [[nodiscard]] bool showTable(const ItemId& id, const Show& show) const;

    const FileList& m_files;
    SelectionHistory m_history;
    JumpBarMenu m_jumpBar;
};

} // namespace vellumo
