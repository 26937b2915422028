// SPDX-License-Identifier: MIT
#pragma once

#include "browser/BackgroundWork.h"
#include "model/LookupTexts.h"
#include "model/TAdmMDBFile.h"

#include <deque>
#include <map>
#include <memory>
#include <optional>

namespace vellumo {

// Told how the looking up of a table goes on. Main thread only.
class LookupListener {
public:
    virtual ~LookupListener() = default;
    virtual void lookupDidBegin(const TAdmMDBTable& table) = 0;
    virtual void lookupDidProgress(std::uint64_t rowsDone, std::uint64_t rowsExpected) = 0;
    // Also when it was given up.
    virtual void lookupDidEnd() = 0;
    // find() has something else for the table from now on.
    virtual void lookupDidFind(const TAdmMDBTable& table) = 0;
    // There is too little memory for it.
    virtual void lookupDidFail(const TAdmMDBTable& table) = 0;
};

// Tables with what their lookups show, made when they are first asked for; all windows show the same ones. Those of
// many rows are made on a thread of its own, one after the other. Main thread only.
class LookupTables {
public:
    // Both outlive it.
    LookupTables(LookupListener& listener, MainThread& mainThread)
        : m_listener(listener)
        , m_work(mainThread)
    {
    }

    // The table itself when it has no lookups that can be resolved, and until they are. What comes lives until its file
    // is forgotten.
    [[nodiscard]] const TAdmMDBTable* find(const TAdmMDBTable& table);
    [[nodiscard]] bool isBusy() const { return m_lookedUp != nullptr; }
    // The tables of the file are about to go. Waits for the thread if it reads them, which takes a moment at most.
    void forget(const TAdmMDBFile& file);
    void forgetAll();

private:
    void begin(const TAdmMDBTable& table);
    void beginNext();
    void finish(std::optional<ShownColumns> columns);
    void giveUp();

    LookupListener& m_listener;
    std::map<const TAdmMDBTable*, std::unique_ptr<TAdmMDBTable>> m_tables; // null: nothing else is shown
    std::deque<const TAdmMDBTable*> m_waiting;
    const TAdmMDBTable* m_lookedUp = nullptr; // null while nothing is
    BackgroundWork m_work;
};

} // namespace vellumo
