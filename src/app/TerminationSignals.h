// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QSocketNotifier>

#include <functional>

namespace vellumo {

// Turns the first request to terminate (also Ctrl-C, and a terminal that closes) into a call on the main thread; a
// second one ends the program at once. A closed pipe or a file that may grow no further becomes an error of the write
// instead of the program's end. One object a program, which lives as long as the event loop.
class TerminationSignals : public QObject {
public:
    explicit TerminationSignals(std::function<void()> terminate);

private:
    std::function<void()> m_terminate;
    QSocketNotifier m_arrived;
};

} // namespace vellumo
