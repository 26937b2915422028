// SPDX-License-Identifier: MIT
#include "browser/BackgroundWork.h"

#include <atomic>
#include <chrono>
#include <system_error>
#include <utility>

namespace vellumo {

namespace {

// Often enough for a moving bar, and the main thread is left alone for the rest of the time.
constexpr std::chrono::milliseconds progressInterval(40);

} // namespace

// What the thread and the main thread share.
struct BackgroundWork::Shared : Control, std::enable_shared_from_this<Shared> {
    Shared(BackgroundWork& work, MainThread& thread)
        : owner(&work)
        , mainThread(thread)
    {
    }
    bool progress(std::uint64_t doneNow, std::uint64_t expectedNow) override;
    [[nodiscard]] std::stop_token stopToken() const override { return stop.get_token(); }
    void postProgress();
    void postEnd();

    BackgroundWork* owner; // main thread only; null when nobody waits any more
    MainThread& mainThread;
    std::stop_source stop;
    std::atomic<bool> isProgressPosted = false; // the next one waits until the main thread has seen the last
    std::atomic<std::uint64_t> done = 0;
    std::atomic<std::uint64_t> expected = 0;
    std::chrono::steady_clock::time_point nextTime = std::chrono::steady_clock::now(); // the thread's alone
};

bool BackgroundWork::Shared::progress(std::uint64_t doneNow, std::uint64_t expectedNow)
{
    done = doneNow;
    expected = expectedNow;
    if (const auto now = std::chrono::steady_clock::now(); now >= nextTime) {
        nextTime = now + progressInterval;
        postProgress();
    }
    return !stop.stop_requested();
}

void BackgroundWork::Shared::postProgress()
{
    if (isProgressPosted.exchange(true)) return;
    mainThread.post([self = shared_from_this()] {
        self->isProgressPosted = false;
        // A copy: whoever is told may give the work up.
        const auto progressed = self->owner == nullptr ? Progressed() : self->owner->m_progressed;
        if (progressed) progressed(self->done, self->expected);
    });
}

void BackgroundWork::Shared::postEnd()
{
    mainThread.post([self = shared_from_this()] {
        if (self->owner != nullptr) self->owner->finish();
    });
}

bool BackgroundWork::begin(Work work, Ended ended, Progressed progressed)
{
    auto shared = std::make_shared<Shared>(*this, m_mainThread);
    try {
        m_thread = std::thread([shared, work = std::move(work)] {
            work(*shared);
            shared->postEnd();
        });
    } catch (const std::system_error&) {
        return false;
    }
    m_shared = std::move(shared);
    m_ended = std::move(ended);
    m_progressed = std::move(progressed);
    return true;
}

// On the main thread, when the thread has nothing left to do.
void BackgroundWork::finish()
{
    m_thread.join();
    const auto shared = std::exchange(m_shared, nullptr);
    shared->owner = nullptr;
    m_progressed = nullptr;
    const auto ended = std::exchange(m_ended, nullptr);
    ended(shared->stop.stop_requested());
}

void BackgroundWork::stop()
{
    if (m_shared) m_shared->stop.request_stop();
}

void BackgroundWork::giveUp()
{
    if (!m_shared) return;
    stop();
    m_thread.join();
    std::exchange(m_shared, nullptr)->owner = nullptr;
    m_ended = nullptr;
    m_progressed = nullptr;
}

void BackgroundWork::wait()
{
    if (m_shared) finish();
}

} // namespace vellumo
