// SPDX-License-Identifier: MIT
#pragma once

#include "platform/MainThread.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <stop_token>
#include <thread>

namespace vellumo {

// One piece of work at a time on a thread of its own, and how far it is. Main thread only, but for the work itself.
class BackgroundWork {
public:
    // What the work sees of those who wait for it. On its thread.
    class Control {
    public:
        virtual ~Control() = default;
        // To be told as often as one likes. False: the work is to end.
        virtual bool progress(std::uint64_t done, std::uint64_t expected) = 0;
        [[nodiscard]] virtual std::stop_token stopToken() const = 0;
    };
    // Throws nothing. What it uses lives as long as it runs.
    using Work = std::function<void(Control&)>;
    // The main thread's side. Either is called later than begin.
    using Progressed = std::function<void(std::uint64_t done, std::uint64_t expected)>; // often enough for a bar
    using Ended = std::function<void(bool wasStopped)>; // once; new work may begin from here

    // `mainThread` outlives it.
    explicit BackgroundWork(MainThread& mainThread)
        : m_mainThread(mainThread)
    {
    }
    ~BackgroundWork() { giveUp(); }
    BackgroundWork(const BackgroundWork&) = delete;
    BackgroundWork& operator=(const BackgroundWork&) = delete;

    // While nothing runs. False, and nothing is called: there are too many threads already.
    [[nodiscard]] bool begin(Work work, Ended ended, Progressed progressed = {});
    [[nodiscard]] bool isRunning() const { return m_shared != nullptr; }
    // The work is to end. It counts as stopped even if it has come to its end meanwhile.
    void stop();
    // The same, waits for it, and nobody is told.
    void giveUp();
    // Waits until it has come to its end, and tells of it.
    void wait();

private:
    struct Shared;

    void finish();

    MainThread& m_mainThread;
    std::shared_ptr<Shared> m_shared; // null while nothing runs; shared with the thread
    std::thread m_thread;
    Ended m_ended;
    Progressed m_progressed;
};

} // namespace vellumo
