// SPDX-License-Identifier: MIT
#pragma once

#include "browser/JumpBarMenu.h"
#include "browser/TreeItem.h"

#include <functional>
#include <optional>
#include <vector>

namespace vellumo {

// The tables that the user visited: where Back and Next lead, and whether they may be used. Keeps their ids, no
// pointers.
class SelectionHistory {
public:
    using Tables = std::vector<ItemId>;

    // In the order of the visits; the last one is the current table.
    [[nodiscard]] const Tables& previousTables() const { return m_previousTables; }
    // The last one is where Next leads.
    [[nodiscard]] const Tables& nextTables() const { return m_nextTables; }
    [[nodiscard]] bool isBackEnabled() const { return m_isBackEnabled; }
    [[nodiscard]] bool isNextEnabled() const { return !m_nextTables.empty(); }

    // Records a visit: a table visited again at once counts once, and a new visit leads nowhere further.
    void visit(const ItemId& table);

    // Where Back and Next lead; nullopt when they are not enabled.
    [[nodiscard]] std::optional<ItemId> backTarget() const;
    [[nodiscard]] std::optional<ItemId> nextTarget() const;
    // After the target was shown, or could not be: then nothing moves from list to list.
    void finishBack(bool isTargetShown);
    void finishNext(bool isTargetShown);

    // Forgets the tables of a file that is about to close, which are given in the file's order. Cost: little more than
    // linear in these and the visits.
    void removeTables(const Tables& closing);

private:
    Tables m_previousTables;
    Tables m_nextTables;
    // Kept apart from the list: after Next one visited table is enough for Back, after anything else it takes two.
    bool m_isBackEnabled = false;
};

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
