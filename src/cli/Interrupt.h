#pragma once

namespace vellumo {

class ExportWizard;

// From now on the first Ctrl-C (or a request to terminate) only asks for a clean end; a second one ends the program at
// once. A closed pipe or a file that may grow no further is an error of the write, not the program's end.
void handleSignals();

[[nodiscard]] bool interrupted();

// The export that an interruption stops, as long as this object lives.
class InterruptTarget {
public:
    explicit InterruptTarget(ExportWizard& wizard);
    ~InterruptTarget();
    InterruptTarget(const InterruptTarget&) = delete;
    InterruptTarget& operator=(const InterruptTarget&) = delete;
};

} // namespace vellumo
