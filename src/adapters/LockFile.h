// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <string>

namespace vellumo {

// A lock between programs by a file of its own, in the way of Qt's QLockFile with a stale time of 0, so that both kinds
// keep out of each other's way: the file is created exclusively, locked by flock, and names its owner (one line each:
// process id, program name, host name, machine id, boot id). A lock is taken over when it was made on this host and
// names a process that is gone, that runs another program now, or an earlier start of the machine. A file that does not
// name its owner counts as held.
class LockFile {
public:
    explicit LockFile(std::string path);
    ~LockFile() { unlock(); }
    LockFile(const LockFile&) = delete;
    LockFile& operator=(const LockFile&) = delete;

    // Tries until `patience` is over; false when the lock is held elsewhere or cannot be made.
    [[nodiscard]] bool tryLock(std::chrono::milliseconds patience);
    // Does nothing when it is not locked.
    void unlock();

private:
    enum class Attempt { Locked, Held, Impossible };
    [[nodiscard]] Attempt attempt();

    std::string m_path;
    int m_descriptor = -1;
};

} // namespace vellumo
