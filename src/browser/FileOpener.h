// SPDX-License-Identifier: MIT
#pragma once

#include "browser/BackgroundWork.h"
#include "browser/MainWindowView.h"

#include <deque>
#include <functional>
#include <memory>

namespace vellumo {

enum class OpenResult { Opened, Failed, Stopped };

// Opens files on a thread of its own, one after the other, while the window shows how far it is. A file of the list
// gets its content in one step, on the main thread, when it was read whole: until then it is a closed file like any
// other.
//
// Main thread only, and everything it calls is called there.
class FileOpener {
public:
    using Done = std::function<void(OpenResult)>;

    // Both outlive the opener.
    FileOpener(MainWindowView& view, MainThread& mainThread)
        : m_view(view)
        , m_reading(mainThread)
    {
    }

    // Runs `step` when all steps before it have run and no file is being opened: at once, or later. Not at all after
    // stopForGood.
    void enqueue(std::function<void()> step);
    // Begins to open a file as the options say, whose observer is not used, or is done at once with one that is open
    // already. Only from a step, which does nothing after it. `done` is called once, when the file has taken its
    // content or stays closed; not when the opener goes. Stopped: by the user, so there is nothing to complain about.
    void open(const std::shared_ptr<TAdmMDBFile>& file, OpenOptions options, Done done);

    // Gives up the file that is being opened, if any: it counts as stopped even if it was read to its end meanwhile.
    void stop() { m_reading.stop(); }
    // The same, and from now on nothing is opened any more: neither what waits nor what comes.
    void stopForGood();

    // Whether this file is being opened: nobody may close it, take it out of the list or open it.
    [[nodiscard]] bool isOpening(const TAdmMDBFile& file) const;
    // Whether a file is being opened, or a step waits.
    [[nodiscard]] bool isBusy() const { return m_file != nullptr || !m_steps.empty(); }

private:
    void finish(TAdmMDBFile& content, bool wasStopped);
    void runSteps();

    MainWindowView& m_view;
    std::deque<std::function<void()>> m_steps;
    std::shared_ptr<TAdmMDBFile> m_file; // the one being opened, or null
    Done m_done;
    BackgroundWork m_reading; // goes first; its thread stops within a few pages
    bool m_isStoppedForGood = false;
};

} // namespace vellumo
