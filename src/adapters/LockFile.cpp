// SPDX-License-Identifier: MIT
#include "adapters/LockFile.h"

#include "adapters/PrivateFile.h"

#include <cerrno>
#include <charconv>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <fmt/format.h>
#include <optional>
#include <string_view>
#include <sys/file.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace vellumo {

namespace {

constexpr std::chrono::milliseconds pause{5}; // between two attempts

std::string firstLineOf(const char* path)
{
    const auto text = readSmallFile(path).value_or("");
    return text.substr(0, text.find('\n'));
}

std::string programName(pid_t process)
{
    std::error_code failed;
    const auto program = std::filesystem::read_symlink(fmt::format("/proc/{}/exe", process), failed);
    return failed ? std::string() : program.filename().string();
}

std::string hostName()
{
    std::string name(256, '\0');
    if (gethostname(name.data(), name.size() - 1) != 0) return {};
    return name.c_str();
}

std::string bootId() { return firstLineOf("/proc/sys/kernel/random/boot_id"); }

std::string ownerText()
{
    return fmt::format(
        "{}\n{}\n{}\n{}\n{}\n", getpid(), programName(getpid()), hostName(), firstLineOf("/etc/machine-id"), bootId());
}

struct Owner {
    pid_t process = 0;
    std::string program;
    std::string host;
    std::string boot; // "" in locks of programs that do not tell
};

std::optional<Owner> parseOwner(std::string_view text)
{
    std::vector<std::string> lines;
    for (auto end = text.find('\n'); end != std::string_view::npos; end = text.find('\n')) {
        lines.emplace_back(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    if (lines.size() < 3) return std::nullopt;
    Owner owner{0, lines[1], lines[2], lines.size() > 4 ? lines[4] : ""};
    const auto& number = lines[0];
    std::from_chars(number.data(), number.data() + number.size(), owner.process);
    return owner.process > 0 ? std::optional(owner) : std::nullopt;
}

bool isGone(const Owner& owner)
{
    if (!owner.host.empty() && owner.host != hostName()) return false;
    if (!owner.boot.empty() && owner.boot != bootId()) return true;
    if (kill(owner.process, 0) != 0 && errno == ESRCH) return true;
    const auto running = programName(owner.process);
    return !running.empty() && !owner.program.empty() && running != owner.program;
}

bool isStale(const std::string& path)
{
    const auto owner = parseOwner(readSmallFile(path).value_or(""));
    return owner && isGone(*owner);
}

// Removes a stale lock, unless its maker turns out to hold it after all.
bool removeStale(const std::string& path)
{
    const int descriptor = open(path.c_str(), O_WRONLY | O_CLOEXEC);
    if (descriptor < 0) return false;
    const bool isRemoved = flock(descriptor, LOCK_EX | LOCK_NB) == 0 && unlink(path.c_str()) == 0;
    close(descriptor);
    return isRemoved;
}

bool writeAll(int descriptor, std::string_view text)
{
    return write(descriptor, text.data(), text.size()) == static_cast<ssize_t>(text.size());
}

} // namespace

LockFile::LockFile(std::string path)
    : m_path(std::move(path))
{
}

LockFile::Attempt LockFile::attempt()
{
    m_descriptor = open(m_path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
    if (m_descriptor < 0) return errno == EEXIST ? Attempt::Held : Attempt::Impossible;
    // Where flock is not to be had, as on some network folders, the file alone is the lock.
    flock(m_descriptor, LOCK_EX | LOCK_NB);
    if (writeAll(m_descriptor, ownerText())) return Attempt::Locked;
    unlock();
    return Attempt::Impossible;
}

bool LockFile::tryLock(std::chrono::milliseconds patience)
{
    const auto end = std::chrono::steady_clock::now() + patience;
    for (;;) {
        const auto result = attempt();
        if (result != Attempt::Held) return result == Attempt::Locked;
        if (isStale(m_path)) {
            // Only one may look again and remove: another would remove the lock made in between.
            LockFile remover(m_path + ".rmlock");
            if (remover.attempt() == Attempt::Locked && isStale(m_path) && removeStale(m_path)) continue;
        }
        if (std::chrono::steady_clock::now() >= end) return false;
        std::this_thread::sleep_for(pause);
    }
}

void LockFile::unlock()
{
    if (m_descriptor < 0) return;
    close(m_descriptor);
    m_descriptor = -1;
    unlink(m_path.c_str());
}

} // namespace vellumo
