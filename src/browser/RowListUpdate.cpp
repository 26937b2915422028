// SPDX-License-Identifier: MIT
#include "browser/RowListUpdate.h"

#include <new>
#include <utility>

namespace vellumo {

void RowListUpdate::setTable(const TAdmMDBTable* table)
{
    forget();
    m_rows.setTable(table);
}

void RowListUpdate::forget()
{
    m_work.giveUp();
    m_making.reset();
    m_state = State::UpToDate;
}

bool RowListUpdate::isDue()
{
    if (m_rows.isCurrent()) {
        forget();
        return false;
    }
    if (m_making && m_making->task.list.wish == m_rows.wish()) return m_state == State::UpToDate;
    forget();
    return !begin();
}

// False: there is no need to, or there are too many threads already.
bool RowListUpdate::begin()
{
    m_making = std::make_shared<Making>(Making{m_rows.task()});
    const auto& task = m_making->task;
    if (!task.takesLong()) return false;
    const auto state = task.needsSearch() ? State::Searching : State::Sorting;
    const auto make = [making = m_making](BackgroundWork::Control& control) {
        try {
            making->task.run(control.stopToken());
        } catch (const std::bad_alloc&) {
            making->hasFailed = true;
        }
    };
    const bool hasBegun = m_work.begin(make, [this](bool) {
        m_making->isMade = !m_making->hasFailed;
        m_state = m_making->hasFailed ? State::Failed : State::UpToDate;
        m_didEnd();
    });
    if (hasBegun) m_state = state;
    return hasBegun;
}

void RowListUpdate::take()
{
    const auto making = std::exchange(m_making, nullptr);
    if (!making->isMade) making->task.run();
    m_rows.take(std::move(making->task));
}

} // namespace vellumo
