// SPDX-License-Identifier: MIT
#include "browser/Navigation.h"

#include <set>

namespace vellumo {

namespace {

using Tables = SelectionHistory::Tables;
using TableSet = std::set<ItemId>;

void collapseEqualLastPairs(Tables& tables)
{
    while (tables.size() >= 2 && tables.back() == tables[tables.size() - 2])
        tables.pop_back();
}

// Takes the tables that are gone out of the end of the list, so far that its last two entries are there to stay.
void trimEnd(Tables& tables, const TableSet& gone)
{
    while (!tables.empty() && gone.contains(tables.back()))
        tables.pop_back();
    while (tables.size() >= 2 && gone.contains(tables[tables.size() - 2]))
        tables.erase(tables.end() - 2);
}

void collapseEnd(Tables& tables, const TableSet& gone)
{
    trimEnd(tables, gone);
    while (tables.size() >= 2 && tables.back() == tables[tables.size() - 2]) {
        tables.pop_back();
        trimEnd(tables, gone);
    }
}

} // namespace

void SelectionHistory::visit(const ItemId& table)
{
    if (m_previousTables.empty() || m_previousTables.back() != table) {
        m_previousTables.push_back(table);
        m_nextTables.clear();
    }
    m_isBackEnabled = m_previousTables.size() >= 2;
}

std::optional<ItemId> SelectionHistory::backTarget() const
{
    if (!m_isBackEnabled || m_previousTables.empty()) return std::nullopt;
    const auto count = m_previousTables.size();
    return m_previousTables[count >= 2 ? count - 2 : 0];
}

std::optional<ItemId> SelectionHistory::nextTarget() const
{
    return m_nextTables.empty() ? std::nullopt : std::optional(m_nextTables.back());
}

void SelectionHistory::finishBack(bool isTargetShown)
{
    if (isTargetShown && !m_previousTables.empty()) {
        m_nextTables.push_back(m_previousTables.back());
        m_previousTables.pop_back();
    }
    collapseEqualLastPairs(m_previousTables);
    if (m_previousTables.size() < 2) m_isBackEnabled = false;
}

void SelectionHistory::finishNext(bool isTargetShown)
{
    if (isTargetShown && !m_nextTables.empty()) {
        m_previousTables.push_back(m_nextTables.back());
        m_nextTables.pop_back();
    }
    collapseEqualLastPairs(m_nextTables);
    if (!m_previousTables.empty()) m_isBackEnabled = true;
}

// The tables go one after the other, and after each one the ends of the lists are tidied; which entries survive depends
// on that. Only the ends are looked at on the way, what is gone further inside is taken out at once afterwards.
void SelectionHistory::removeTables(const Tables& closing)
{
    TableSet gone;
    for (const auto& table : closing) {
        gone.insert(table);
        collapseEnd(m_previousTables, gone);
        collapseEnd(m_nextTables, gone);
        while (!m_previousTables.empty() && !m_nextTables.empty() && m_previousTables.back() == m_nextTables.back()) {
            m_nextTables.pop_back();
            trimEnd(m_nextTables, gone);
        }
    }
    const auto isGone = [&](const ItemId& table) { return gone.contains(table); };
    std::erase_if(m_previousTables, isGone);
    std::erase_if(m_nextTables, isGone);
    if (m_previousTables.empty()) m_isBackEnabled = false;
}

void Navigation::goBack(const Show& show)
{
    if (const auto target = m_history.backTarget()) m_history.finishBack(showTable(*target, show));
}

void Navigation::goForth(const Show& show)
{
    if (const auto target = m_history.nextTarget()) m_history.finishNext(showTable(*target, show));
}

bool Navigation::showTable(const ItemId& id, const Show& show) const
{
    const auto item = m_files.find(id);
    if (item.isTable()) show(item);
    return item.isTable();
}

void Navigation::fileWillClose(TAdmMDBFile& file)
{
    m_history.removeTables(m_files.tableIds(file));
    m_jumpBar.clear();
}

} // namespace vellumo
