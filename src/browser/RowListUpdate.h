// SPDX-License-Identifier: MIT
#pragma once

#include "browser/BackgroundWork.h"
#include "browser/GridRows.h"

namespace vellumo {

// Brings the row list of a grid up to date: at once, or, where people would notice how long that takes, on a thread of
// its own, while the grid goes on with the list it has. Main thread only.
class RowListUpdate {
public:
    // What the list waits for. Failed: there is too little memory for what is wanted, and the list stays as it is.
    enum class State { UpToDate, Searching, Sorting, Failed };

    // Both outlive it. `didEnd` is called later: isDue() is worth another question.
    RowListUpdate(GridRows& rows, MainThread& mainThread, std::function<void()> didEnd)
        : m_rows(rows)
        , m_didEnd(std::move(didEnd))
        , m_work(mainThread)
    {
    }

    // For GridRows::setTable. Waits for a thread that reads the old one's rows, which takes a moment at most.
    void setTable(const TAdmMDBTable* table);

    // Whether take() would change the list now. Otherwise it is up to date, or begins to be made, or is being made;
    // one that is not wanted any more is given up.
    [[nodiscard]] bool isDue();
    // The list as it is wanted. Only when it is due.
    void take();
    // Waits for the list that is being made; `didEnd` is called.
    void wait() { m_work.wait(); }
    [[nodiscard]] State state() const { return m_state; }

private:
    struct Making {
        RowListTask task; // the thread's alone while it runs, but for the wish
        bool hasFailed = false;
        bool isMade = false;
    };

    [[nodiscard]] bool begin();
    void forget();

    GridRows& m_rows;
    std::function<void()> m_didEnd;
    std::shared_ptr<Making> m_making; // what the list is to be; null while it is up to date
    State m_state = State::UpToDate;
    BackgroundWork m_work; // goes first
};

} // namespace vellumo
