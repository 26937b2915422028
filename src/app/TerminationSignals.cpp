// SPDX-License-Identifier: MIT
#include "TerminationSignals.h"

#include "platform/FirstTermination.h"

#include <atomic>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace vellumo {

namespace {

// Signal handlers may do little more than write to a descriptor.
std::atomic<int> writeEnd = -1;

void onTermination(int)
{
    // A full pipe has been told already.
    static_cast<void>(::write(writeEnd, "", 1) == 1);
}

// Not SIG_IGN, which the programs started from here would inherit.
void goOn(int) { }

// Returns the end to read from, -1 when there are no descriptors left.
int openPipe()
{
    int ends[2] = {-1, -1};
    if (::pipe2(ends, O_CLOEXEC | O_NONBLOCK) == 0) writeEnd = ends[1];
    return ends[0];
}

} // namespace

TerminationSignals::TerminationSignals(std::function<void()> terminate)
    : m_terminate(std::move(terminate))
    , m_arrived(openPipe(), QSocketNotifier::Read)
{
    connect(&m_arrived, &QSocketNotifier::activated, this, [this] {
        m_arrived.setEnabled(false);
        m_terminate();
    });
    for (const int signal : {SIGPIPE, SIGXFSZ})
        std::signal(signal, goOn);
    if (writeEnd >= 0) onFirstTermination(onTermination, BlockedCalls::GoOn);
}

} // namespace vellumo
