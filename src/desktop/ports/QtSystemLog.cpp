// SPDX-License-Identifier: MIT
#include "desktop/ports/QtSystemLog.h"

#include <cstdint>
#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>
#include <syslog.h>
#include <unistd.h>

namespace vellumo {

namespace {

constexpr auto identifier = "vellumo";

// The fields of an entry, one a line. The value of MESSAGE stands after its length (8 bytes, little-endian), so that it
// may hold line breaks. Published at systemd.io/JOURNAL_NATIVE_PROTOCOL.
std::string journalEntry(std::string_view line)
{
    std::string entry = "PRIORITY=5\nSYSLOG_IDENTIFIER=" + std::string(identifier) + "\nMESSAGE\n";
    for (int shift = 0; shift < 64; shift += 8)
        entry += static_cast<char>(std::uint64_t(line.size()) >> shift & 0xFF);
    return entry.append(line).append("\n");
}

bool sendToJournal(const std::string& socketPath, std::string_view line)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (socketPath.size() >= sizeof address.sun_path) return false;
    std::memcpy(address.sun_path, socketPath.data(), socketPath.size());
    const int descriptor = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (descriptor < 0) return false;
    const auto entry = journalEntry(line);
    const auto sent = ::sendto(descriptor, entry.data(), entry.size(), MSG_DONTWAIT | MSG_NOSIGNAL,
        reinterpret_cast<const sockaddr*>(&address), sizeof address);
    ::close(descriptor);
    return sent == static_cast<ssize_t>(entry.size());
}

} // namespace

void QtSystemLog::log(std::string_view line)
{
    if (sendToJournal(m_socketPath, line)) return;
    ::openlog(identifier, LOG_PID, LOG_USER);
    ::syslog(LOG_NOTICE, "%.*s", static_cast<int>(line.size()), line.data());
}

} // namespace vellumo
