// SPDX-License-Identifier: MIT
#pragma once

namespace vellumo {

// What becomes of a system call that waits while a request comes.
enum class BlockedCalls { GoOn, Fail };

// Calls `handler` for the first request to terminate the program (also Ctrl-C, and a terminal that closes); a second
// one, also of another kind, ends the program at once. Requests that the caller had ignored (nohup) stay ignored.
// `handler` may do only what a signal handler may. Once a program.
void onFirstTermination(void (*handler)(int signal), BlockedCalls blockedCalls);

} // namespace vellumo
