// SPDX-License-Identifier: MIT
#include "browser/LookupTables.h"

#include "model/LookupTexts.h"

#include <algorithm>
#include <utility>

namespace vellumo {

namespace {

// So many rows take no longer than people notice.
constexpr std::uint64_t rowsAtOnce = 20000;

// nullopt: stopped, or there is too little memory.
std::optional<ShownColumns> lookUpIfFit(const TAdmMDBTable& table, const LookupObserver& observer)
{
    try {
        return lookUp(table, observer);
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    }
}

} // namespace

const TAdmMDBTable* LookupTables::find(const TAdmMDBTable& table)
{
    const auto [place, isNew] = m_tables.try_emplace(&table);
    if (isNew) {
        const auto rowCount = lookupRowCount(table);
        auto columns = rowCount <= rowsAtOnce ? lookUpIfFit(table, {}) : std::nullopt;
        if (columns) {
            place->second = tableWithLookupTexts(table, std::move(*columns));
        } else {
            m_waiting.push_back(&table);
            beginNext();
        }
    }
    return place->second ? place->second.get() : &table;
}

void LookupTables::beginNext()
{
    while (!isBusy() && !m_waiting.empty()) {
        const auto* table = m_waiting.front();
        m_waiting.pop_front();
        begin(*table);
    }
}

void LookupTables::begin(const TAdmMDBTable& table)
{
    const auto columns = std::make_shared<std::optional<ShownColumns>>();
    const auto work = [&table, columns, expected = lookupRowCount(table)](BackgroundWork::Control& control) {
        *columns = lookUpIfFit(table, [&](std::uint64_t done) { return control.progress(done, expected); });
    };
    const bool hasBegun = m_work.begin(
        work, [this, columns](bool) { finish(std::move(*columns)); },
        [this](std::uint64_t done, std::uint64_t expected) { m_listener.lookupDidProgress(done, expected); });
    if (!hasBegun) return m_listener.lookupDidFail(table);
    m_lookedUp = &table;
    m_listener.lookupDidBegin(table);
}

void LookupTables::finish(std::optional<ShownColumns> columns)
{
    const auto& table = *std::exchange(m_lookedUp, nullptr);
    m_listener.lookupDidEnd();
    auto& place = m_tables[&table];
    if (columns) place = tableWithLookupTexts(table, std::move(*columns));
    if (place)
        m_listener.lookupDidFind(table);
    else if (!columns)
        m_listener.lookupDidFail(table);
    beginNext();
}

void LookupTables::giveUp()
{
    m_work.giveUp();
    m_lookedUp = nullptr;
    m_listener.lookupDidEnd();
}

void LookupTables::forget(const TAdmMDBFile& file)
{
    std::erase_if(m_waiting, [&](const TAdmMDBTable* table) { return table->file() == &file; });
    std::erase_if(m_tables, [&](const auto& entry) { return entry.first->file() == &file; });
    if (!isBusy() || m_lookedUp->file() != &file) return;
    giveUp();
    beginNext();
}

void LookupTables::forgetAll()
{
    m_waiting.clear();
    m_tables.clear();
    if (isBusy()) giveUp();
}

} // namespace vellumo
