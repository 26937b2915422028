// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace vellumo {

// Diagnostics for those who look after the program, not for its user. Any thread.
class SystemLog {
public:
    virtual ~SystemLog() = default;
    virtual void log(std::string_view line) = 0;
};

} // namespace vellumo
