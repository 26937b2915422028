// SPDX-License-Identifier: MIT
#include "export/wizard/TableScans.h"

#include "export/ChosenTable.h"
#include "platform/MainThread.h"

#include <new>
#include <system_error>

namespace vellumo {

TableScans::TableScans(std::vector<Wanted> tables, MainThread& mainThread, std::function<void()> changed)
    : m_mainThread(mainThread)
{
    m_state->changed = std::move(changed);
    try {
        m_thread = std::thread([this, wanted = std::move(tables)] { run(wanted); });
    } catch (const std::system_error&) {
        // Too many threads already: then the export tells what was lost, and nobody before.
    }
}

TableScans::~TableScans()
{
    m_stop = true;
    if (m_thread.joinable()) m_thread.join();
    m_state->isGone = true;
}

const TableScan* TableScans::find(std::string_view tableName) const
{
    const auto found = m_state->scans.find(tableName);
    return found == m_state->scans.end() ? nullptr : &found->second;
}

void TableScans::run(const std::vector<Wanted>& tables)
{
    try {
        for (const auto& [table, choice] : tables) {
            const auto chosen = choice.isAll() ? nullptr : chosenTable(*table, choice);
            auto scan = scanTable(chosen ? *chosen : *table, m_stop);
            if (m_stop) return;
            m_mainThread.post([state = m_state, name = table->name(), scan = std::move(scan)] {
                if (state->isGone) return;
                state->scans[name] = scan;
                state->changed();
            });
        }
    } catch (const std::bad_alloc&) {
        // As above.
    }
}

} // namespace vellumo
