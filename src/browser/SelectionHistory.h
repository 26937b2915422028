#pragma once

#include "model/TAdmMDBTable.h"

#include <vector>

namespace vellumo {

// The tables that the user visited: where Back and Next lead, and whether they may be used. Borrows the tables.
class SelectionHistory {
public:
    using Tables = std::vector<TAdmMDBTable*>;

    // In the order of the visits; the last one is the current table.
    [[nodiscard]] const Tables& previousTables() const { return m_previousTables; }
    // The last one is where Next leads.
    [[nodiscard]] const Tables& nextTables() const { return m_nextTables; }
    [[nodiscard]] bool isBackEnabled() const { return m_isBackEnabled; }
    [[nodiscard]] bool isNextEnabled() const { return m_isNextEnabled; }

    // Records a visit: a table visited again at once counts once, and a new visit leads nowhere further.
    void visit(TAdmMDBTable& table);

    // Where Back and Next lead; null when they are not enabled.
    [[nodiscard]] TAdmMDBTable* backTarget() const;
    [[nodiscard]] TAdmMDBTable* nextTarget() const;
    // After the target was shown, or could not be: then nothing moves from list to list.
    void finishBack(bool isTargetShown);
    void finishNext(bool isTargetShown);

    // Forgets the tables of a file that is about to close. Cost: linear in its tables and the visits.
    void removeTablesOf(const TAdmMDBFile& file);

private:
    Tables m_previousTables;
    Tables m_nextTables;
    // Kept apart from the lists: after Next one visited table is enough for Back, after anything else it takes two.
    bool m_isBackEnabled = false;
    bool m_isNextEnabled = false;
};

} // namespace vellumo
