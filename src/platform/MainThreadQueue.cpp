// SPDX-License-Identifier: MIT
#include "platform/MainThreadQueue.h"

#include <utility>

namespace vellumo {

void MainThreadQueue::performAndWait(const std::function<void()>& work)
{
    if (std::this_thread::get_id() == m_mainThread) return work();
    bool isDone = false;
    post([&] {
        work();
        const std::lock_guard lock(m_mutex);
        isDone = true;
        m_changed.notify_all();
    });
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [&] { return isDone; });
}

void MainThreadQueue::post(std::function<void()> work)
{
    const std::lock_guard lock(m_mutex);
    m_tasks.push_back(std::move(work));
    m_changed.notify_all();
}

void MainThreadQueue::runUntil(const std::function<bool()>& isDone)
{
    while (!isDone()) {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [&] { return !m_tasks.empty(); });
        const auto task = std::move(m_tasks.front());
        m_tasks.pop_front();
        lock.unlock();
        task();
    }
}

} // namespace vellumo
