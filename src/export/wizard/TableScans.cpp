// SPDX-License-Identifier: MIT
#include "export/wizard/TableScans.h"

#include "export/ChosenTable.h"
#include "model/TAdmMDBFile.h"
#include "platform/MainThread.h"

#include <new>
#include <system_error>

namespace vellumo {

TableScans::TableScans(
    std::vector<Wanted> tables, const TAdmMDBFile* relationsOf, MainThread& mainThread, std::function<void()> changed)
    : m_mainThread(mainThread)
{
    m_state->changed = std::move(changed);
    try {
        m_thread = std::thread([this, wanted = std::move(tables), relationsOf] { run(wanted, relationsOf); });
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

std::optional<RelationScan> TableScans::find(const TAdmMDBForeignKey& relation) const
{
    const auto found = m_state->relations.find(&relation);
    return found == m_state->relations.end() ? std::nullopt : std::optional(found->second);
}

void TableScans::run(const std::vector<Wanted>& tables, const TAdmMDBFile* relationsOf)
{
    try {
        scanTables(tables);
        if (relationsOf != nullptr) scanRelations(*relationsOf);
    } catch (const std::bad_alloc&) {
        // As above.
    }
}

void TableScans::scanTables(const std::vector<Wanted>& tables)
{
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
}

void TableScans::scanRelations(const TAdmMDBFile& file)
{
    for (const auto& relation : file.allForeignKeys()) {
        const auto scan = scanRelation(file, *relation, m_stop);
        if (m_stop) return;
        if (!scan) continue;
        m_mainThread.post([state = m_state, key = relation.get(), scan = *scan] {
            if (state->isGone) return;
            state->relations[key] = scan;
            state->changed();
        });
    }
}

} // namespace vellumo
