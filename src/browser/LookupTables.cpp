// SPDX-License-Identifier: MIT
#include "browser/LookupTables.h"

#include "model/LookupTexts.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <system_error>
#include <utility>

namespace vellumo {

namespace {

// So many rows take no longer than people notice.
constexpr std::uint64_t rowsAtOnce = 20000;
constexpr std::chrono::milliseconds progressInterval(40);

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

// What the thread and the main thread share.
struct LookupTables::Work {
    const TAdmMDBTable* table;
    std::uint64_t rowsExpected;
    std::optional<ShownColumns> columns{}; // the thread's alone until it posts its end
    std::atomic<bool> isStopped = false;
    std::atomic<bool> isProgressPosted = false; // the next one waits until the main thread has seen the last
    std::atomic<std::uint64_t> rowsDone = 0;
    LookupTables* tables; // main thread only; null when nobody waits any more

    static void run(const std::shared_ptr<Work>& self, MainThread& mainThread);
    static void postProgress(const std::shared_ptr<Work>& self, MainThread& mainThread);
};

// On the thread.
void LookupTables::Work::run(const std::shared_ptr<Work>& self, MainThread& mainThread)
{
    auto nextTime = std::chrono::steady_clock::now();
    self->columns = lookUpIfFit(*self->table, [&](std::uint64_t done) {
        self->rowsDone = done;
        if (const auto now = std::chrono::steady_clock::now(); now >= nextTime) {
            nextTime = now + progressInterval;
            postProgress(self, mainThread);
        }
        return !self->isStopped;
    });
    mainThread.post([self] {
        if (self->tables != nullptr) self->tables->finish();
    });
}

void LookupTables::Work::postProgress(const std::shared_ptr<Work>& self, MainThread& mainThread)
{
    if (self->isProgressPosted.exchange(true)) return;
    mainThread.post([self] {
        self->isProgressPosted = false;
        if (self->tables != nullptr) self->tables->m_listener.lookupDidProgress(self->rowsDone, self->rowsExpected);
    });
}

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
    while (!m_work && !m_waiting.empty()) {
        const auto* table = m_waiting.front();
        m_waiting.pop_front();
        begin(*table);
    }
}

void LookupTables::begin(const TAdmMDBTable& table)
{
    m_work = std::make_shared<Work>();
    m_work->table = &table;
    m_work->rowsExpected = lookupRowCount(table);
    m_work->tables = this;
    try {
        m_worker = std::thread([work = m_work, &mainThread = m_mainThread] { Work::run(work, mainThread); });
    } catch (const std::system_error&) { // there are too many already
        m_work.reset();
        return m_listener.lookupDidFail(table);
    }
    m_listener.lookupDidBegin(table);
}

// On the main thread: the thread's last act was to post this.
void LookupTables::finish()
{
    m_worker.join();
    const auto work = std::exchange(m_work, nullptr);
    m_listener.lookupDidEnd();
    auto& place = m_tables[work->table];
    if (work->columns) place = tableWithLookupTexts(*work->table, std::move(*work->columns));
    if (place)
        m_listener.lookupDidFind(*work->table);
    else if (!work->columns)
        m_listener.lookupDidFail(*work->table);
    beginNext();
}

void LookupTables::giveUp()
{
    if (!m_work) return;
    m_work->isStopped = true;
    m_work->tables = nullptr;
    m_worker.join();
    m_work.reset();
}

void LookupTables::forget(const TAdmMDBFile& file)
{
    std::erase_if(m_waiting, [&](const TAdmMDBTable* table) { return table->file() == &file; });
    std::erase_if(m_tables, [&](const auto& entry) { return entry.first->file() == &file; });
    if (!m_work || m_work->table->file() != &file) return;
    giveUp();
    m_listener.lookupDidEnd();
    beginNext();
}

void LookupTables::forgetAll()
{
    m_waiting.clear();
    m_tables.clear();
    if (!m_work) return;
    giveUp();
    m_listener.lookupDidEnd();
}

} // namespace vellumo
