// SPDX-License-Identifier: MIT
#include "browser/FileOpener.h"

#include <atomic>
#include <chrono>
#include <system_error>
#include <utility>

namespace vellumo {

namespace {

// Often enough for a moving bar, and the main thread is left alone for the rest of the time.
constexpr std::chrono::milliseconds progressInterval(40);

} // namespace

// What the worker and the main thread share of one opening.
struct FileOpener::Reading {
    TAdmMDBFile content; // the worker's alone until it posts its end
    std::atomic<bool> isStopped = false;
    std::atomic<bool> isProgressPosted = false; // the next one waits until the main thread has seen the last
    std::atomic<std::uint64_t> rowsDone = 0;
    std::atomic<std::uint64_t> rowsExpected = 0;
    FileOpener* opener; // main thread only; null when it has gone

    static void run(const std::shared_ptr<Reading>& self, OpenOptions options, MainThread& mainThread);
    static void postProgress(const std::shared_ptr<Reading>& self, MainThread& mainThread);
};

// On the worker.
void FileOpener::Reading::run(const std::shared_ptr<Reading>& self, OpenOptions options, MainThread& mainThread)
{
    auto nextTime = std::chrono::steady_clock::now();
    options.observer = [&](std::uint64_t rowsDone, std::uint64_t rowsExpected) {
        self->rowsDone = rowsDone;
        self->rowsExpected = rowsExpected;
        if (const auto now = std::chrono::steady_clock::now(); now >= nextTime) {
            nextTime = now + progressInterval;
            postProgress(self, mainThread);
        }
        return !self->isStopped;
    };
    // Whether it is open is seen by its content.
    static_cast<void>(self->content.open(options));
    mainThread.post([self] {
        if (self->opener != nullptr) self->opener->finish();
    });
}

void FileOpener::Reading::postProgress(const std::shared_ptr<Reading>& self, MainThread& mainThread)
{
    if (self->isProgressPosted.exchange(true)) return;
    mainThread.post([self] {
        self->isProgressPosted = false;
        if (self->opener != nullptr) self->opener->m_view.openDidProgress(self->rowsDone, self->rowsExpected);
    });
}

FileOpener::~FileOpener()
{
    if (!m_reading) return;
    m_reading->isStopped = true;
    m_reading->opener = nullptr;
    m_worker.join();
}

void FileOpener::enqueue(std::function<void()> step)
{
    if (m_isStoppedForGood) return;
    m_steps.push_back(std::move(step));
    runSteps();
}

void FileOpener::runSteps()
{
    while (!m_reading && !m_steps.empty()) {
        const auto step = std::move(m_steps.front());
        m_steps.pop_front();
        step();
    }
}

void FileOpener::open(const std::shared_ptr<TAdmMDBFile>& file, OpenOptions options, Done done)
{
    if (file->active()) return done(OpenResult::Opened);
    m_reading = std::make_shared<Reading>();
    m_reading->content.setFullPath(file->fullPath());
    m_reading->opener = this;
    if (!startWorker(std::move(options))) {
        m_reading.reset();
        return done(OpenResult::Failed);
    }
    m_file = file;
    m_done = std::move(done);
    m_view.openDidBegin(*file);
}

// False when there are too many threads already.
bool FileOpener::startWorker(OpenOptions options)
{
    try {
        m_worker = std::thread([reading = m_reading, options = std::move(options), &mainThread = m_mainThread] {
            Reading::run(reading, options, mainThread);
        });
    } catch (const std::system_error&) {
        return false;
    }
    return true;
}

// On the main thread: the worker's last act was to post this.
void FileOpener::finish()
{
    m_worker.join();
    const auto reading = std::exchange(m_reading, nullptr);
    const auto file = std::exchange(m_file, nullptr);
    const auto done = std::exchange(m_done, nullptr);
    const bool isStopped = reading->isStopped;
    if (!isStopped) file->takeContentOf(reading->content);
    m_view.openDidEnd();
    done(isStopped ? OpenResult::Stopped : file->active() ? OpenResult::Opened : OpenResult::Failed);
    runSteps();
}

void FileOpener::stop()
{
    if (m_reading) m_reading->isStopped = true;
}

void FileOpener::stopForGood()
{
    m_isStoppedForGood = true;
    m_steps.clear();
    stop();
}

bool FileOpener::isOpening(const TAdmMDBFile& file) const { return m_file.get() == &file; }

} // namespace vellumo
