#include "cli/Interrupt.h"

#include "export/ExportWizard.h"
#include "platform/FirstTermination.h"

#include <atomic>
#include <csignal>

namespace vellumo {

namespace {

// Signal handlers may touch lock-free atomics only.
static_assert(std::atomic<bool>::is_always_lock_free && std::atomic<ExportWizard*>::is_always_lock_free);
std::atomic<bool> isInterrupted = false;
std::atomic<ExportWizard*> target = nullptr;

void onInterrupt(int)
{
    isInterrupted = true;
    if (auto* wizard = target.load()) wizard->stop();
}

} // namespace

void handleSignals()
{
    // Nothing else would end a wait for a pipe that nobody reads.
    onFirstTermination(onInterrupt, BlockedCalls::Fail);
    for (const int signal : {SIGPIPE, SIGXFSZ})
        std::signal(signal, SIG_IGN);
}

bool interrupted() { return isInterrupted; }

InterruptTarget::InterruptTarget(ExportWizard& wizard)
{
    target = &wizard;
    // The signal may have come just before.
    if (isInterrupted) wizard.stop();
}

InterruptTarget::~InterruptTarget() { target = nullptr; }

} // namespace vellumo
