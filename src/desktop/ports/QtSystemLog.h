// SPDX-License-Identifier: MIT
#pragma once

#include "platform/SystemLog.h"

#include <string>

namespace vellumo {

// The system's journal, or its syslog where there is no journal.
class QtSystemLog : public SystemLog {
public:
    // Of the journal's own protocol, a datagram a message.
    static constexpr const char* journalSocket = "/run/systemd/journal/socket";

    explicit QtSystemLog(std::string socketPath = journalSocket)
        : m_socketPath(std::move(socketPath))
    {
    }

    void log(std::string_view line) override;

private:
    const std::string m_socketPath;
};

} // namespace vellumo
