// SPDX-License-Identifier: MIT
#include "platform/FirstTermination.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>

namespace vellumo {

namespace {

constexpr std::array requests{SIGINT, SIGTERM, SIGHUP};

// Signal handlers may touch lock-free atomics only.
static_assert(std::atomic<void (*)(int)>::is_always_lock_free);
std::atomic<void (*)(int)> firstHandler = nullptr;

bool isHandledBy(int signal, void (*handler)(int))
{
    struct sigaction action { };
    return ::sigaction(signal, nullptr, &action) == 0 && action.sa_handler == handler;
}

void onFirst(int signal)
{
    const auto error = errno;
    for (const int request : requests)
        if (isHandledBy(request, onFirst)) std::signal(request, SIG_DFL);
    firstHandler.load()(signal);
    errno = error;
}

} // namespace

void onFirstTermination(void (*handler)(int signal), BlockedCalls blockedCalls)
{
    firstHandler = handler;
    struct sigaction action { };
    action.sa_handler = onFirst;
    action.sa_flags = blockedCalls == BlockedCalls::GoOn ? SA_RESTART : 0;
    // Two that come together count as two: the other waits until the first was handled.
    for (const int request : requests)
        ::sigaddset(&action.sa_mask, request);
    for (const int request : requests)
        if (!isHandledBy(request, SIG_IGN)) ::sigaction(request, &action, nullptr);
}

} // namespace vellumo
