#include "cli/Interrupt.h"

#include "platform/FirstTermination.h"

#include <csignal>

namespace vellumo {

namespace {

// Signal handlers may touch lock-free atomics only.
static_assert(std::atomic<bool>::is_always_lock_free);
std::atomic<bool> isInterrupted = false;

void onInterrupt(int) { isInterrupted = true; }

} // namespace

void handleSignals()
{
    // Nothing else would end a wait for a pipe that nobody reads.
    onFirstTermination(onInterrupt, BlockedCalls::Fail);
    for (const int signal : {SIGPIPE, SIGXFSZ})
        std::signal(signal, SIG_IGN);
}

const std::atomic<bool>& interruptFlag() { return isInterrupted; }

} // namespace vellumo
