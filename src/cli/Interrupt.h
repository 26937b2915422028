#pragma once

#include <atomic>

namespace vellumo {

// From now on the first Ctrl-C (or a request to terminate) only asks for a clean end; a second one ends the program at
// once. A closed pipe or a file that may grow no further is an error of the write, not the program's end.
void handleSignals();

// Raised by the first Ctrl-C, and never lowered.
[[nodiscard]] const std::atomic<bool>& interruptFlag();
[[nodiscard]] inline bool interrupted() { return interruptFlag(); }

} // namespace vellumo
