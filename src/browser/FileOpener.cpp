// SPDX-License-Identifier: MIT
#include "browser/FileOpener.h"

#include <utility>

namespace vellumo {

void FileOpener::enqueue(std::function<void()> step)
{
    if (m_isStoppedForGood) return;
    m_steps.push_back(std::move(step));
    runSteps();
}

void FileOpener::runSteps()
{
    while (!m_file && !m_steps.empty()) {
        const auto step = std::move(m_steps.front());
        m_steps.pop_front();
        step();
    }
}

void FileOpener::open(const std::shared_ptr<TAdmMDBFile>& file, OpenOptions options, Done done)
{
    if (file->active()) return done(OpenResult::Opened);
    const auto content = std::make_shared<TAdmMDBFile>();
    content->setFullPath(file->fullPath());
    const auto read = [content, options = std::move(options)](BackgroundWork::Control& control) mutable {
        options.observer = [&](std::uint64_t rowsDone, std::uint64_t rowsExpected) {
            return control.progress(rowsDone, rowsExpected);
        };
        // Whether it is open is seen by its content.
        static_cast<void>(content->open(options));
    };
    const bool hasBegun = m_reading.begin(
        read, [this, content](bool wasStopped) { finish(*content, wasStopped); },
        [this](std::uint64_t rowsDone, std::uint64_t rowsExpected) { m_view.openDidProgress(rowsDone, rowsExpected); });
    if (!hasBegun) return done(OpenResult::Failed);
    m_file = file;
    m_done = std::move(done);
    m_view.openDidBegin(*file);
}

void FileOpener::finish(TAdmMDBFile& content, bool wasStopped)
{
    const auto file = std::exchange(m_file, nullptr);
    const auto done = std::exchange(m_done, nullptr);
    if (!wasStopped) file->takeContentOf(content);
    m_view.openDidEnd();
    done(wasStopped ? OpenResult::Stopped : file->active() ? OpenResult::Opened : OpenResult::Failed);
    runSteps();
}

void FileOpener::stopForGood()
{
    m_isStoppedForGood = true;
    m_steps.clear();
    stop();
}

bool FileOpener::isOpening(const TAdmMDBFile& file) const { return m_file.get() == &file; }

} // namespace vellumo
