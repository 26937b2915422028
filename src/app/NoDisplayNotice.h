// SPDX-License-Identifier: MIT
#pragma once

namespace vellumo {

// While Qt looks for a display: where there is none, Qt would end the program with a core dump behind several lines of
// its own. One line tells it instead, and the program ends with status 1. One object a program, on the main thread.
class NoDisplayNotice {
public:
    NoDisplayNotice();
    // There is a display: what Qt had to say until now is said, and messages go their usual way again.
    void end();
};

} // namespace vellumo
