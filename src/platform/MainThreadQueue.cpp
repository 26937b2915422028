#include "platform/MainThreadQueue.h"

namespace vellumo {

void MainThreadQueue::performAndWait(const std::function<void()>& work)
{
    if (std::this_thread::get_id() == m_mainThread) return work();
    Task task{&work};
    std::unique_lock lock(m_mutex);
    m_tasks.push_back(&task);
    m_changed.notify_all();
    m_changed.wait(lock, [&] { return task.isDone; });
}

void MainThreadQueue::runUntil(const std::function<bool()>& isDone)
{
    while (!isDone()) {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [&] { return !m_tasks.empty(); });
        auto* task = m_tasks.front();
        m_tasks.pop_front();
        lock.unlock();
        (*task->work)();
        lock.lock();
        task->isDone = true;
        m_changed.notify_all();
    }
}

} // namespace vellumo
