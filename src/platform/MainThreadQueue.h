// SPDX-License-Identifier: MIT
#pragma once

#include "platform/MainThread.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

namespace vellumo {

// The main thread of a program without an event loop: the thread that made the queue runs what others ask for while it
// waits in `runUntil`.
class MainThreadQueue : public MainThread {
public:
    void performAndWait(const std::function<void()>& work) override;
    void post(std::function<void()> work) override;

    // Main thread only. `isDone` is asked at first, and again after each piece of work.
    void runUntil(const std::function<bool()>& isDone);

private:
    const std::thread::id m_mainThread = std::this_thread::get_id();
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<std::function<void()>> m_tasks;
};

} // namespace vellumo
