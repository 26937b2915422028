// SPDX-License-Identifier: MIT
#include "export/files/Replacement.h"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <fmt/format.h>
#include <random>
#include <string_view>
#include <unistd.h>
#include <utility>

namespace vellumo {

namespace {

constexpr mode_t modeBits = 07777;

// "", and the reason in errno, when there is something at `path` that cannot be replaced.
std::string targetOf(const std::string& path)
{
    std::error_code error;
    if (path.empty()) return errno = ENOENT, std::string();
    if (std::filesystem::symlink_status(path, error).type() == std::filesystem::file_type::not_found) return path;
    const auto target = std::filesystem::canonical(path, error);
    if (error) return errno = error.value(), std::string();
    if (std::filesystem::is_regular_file(target, error)) return target.string();
    errno = std::filesystem::is_directory(target, error) ? EISDIR : EINVAL;
    return {};
}

// In a folder like /tmp nobody may move the files of others.
bool isKeptFromUs(const std::filesystem::path& target, const struct stat& file)
{
    struct stat folder { };
    const auto parent = target.has_parent_path() ? target.parent_path() : std::filesystem::path(".");
    if (::stat(parent.c_str(), &folder) != 0 || (folder.st_mode & S_ISVTX) == 0) return false;
    const auto us = ::geteuid();
    return us != 0 && us != file.st_uid && us != folder.st_uid;
}

// A new file beside the target, -1 when the folder takes none. `part`: its name.
int openPart(const std::filesystem::path& target, std::string& part)
{
    constexpr int attempts = 100;
    const auto base = target.filename().native().substr(0, NAME_MAX - std::string_view(".01234567.part").size());
    std::random_device random;
    for (int i = 0; i < attempts; ++i) {
        part = target.parent_path() / fmt::format("{}.{:08x}.part", base, random());
        const int descriptor = ::open(part.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (descriptor >= 0 || errno != EEXIST) return descriptor;
    }
    return -1;
}

// After a crash the name must not lead to a file that is not all there.
bool flushToDisk(const std::string& path, int mode)
{
    const int file = ::open(path.c_str(), mode | O_CLOEXEC);
    if (file < 0) return false;
    const bool isFlushed = ::fsync(file) == 0;
    const int error = errno;
    ::close(file);
    errno = error;
    return isFlushed;
}

// Nor must an older file come back. A folder that cannot be opened or flushed for its kind keeps its names anyhow.
bool flushFolderOf(const std::filesystem::path& path)
{
    const auto folder = path.has_parent_path() ? path.parent_path() : std::filesystem::path(".");
    return flushToDisk(folder, O_RDONLY | O_DIRECTORY) || (errno != EIO && errno != ENOSPC && errno != EDQUOT);
}

} // namespace

Replacement::Replacement(std::string target, std::string part, int descriptor)
    : m_target(std::move(target))
    , m_part(std::move(part))
    , m_descriptor(descriptor)
{
}

std::unique_ptr<Replacement> Replacement::create(const std::string& path)
{
    auto target = targetOf(path);
    if (target.empty()) return nullptr;
    std::string part;
    const int descriptor = openPart(target, part);
    if (descriptor < 0) return nullptr;
    std::unique_ptr<Replacement> made(new Replacement(std::move(target), std::move(part), descriptor));
    if (made->takeAfterOlderFile()) return made;
    const int error = errno;
    made.reset();
    errno = error;
    return nullptr;
}

Replacement::~Replacement()
{
    closeDescriptor();
    if (!m_isFinished) ::unlink(m_part.c_str());
}

bool Replacement::takeAfterOlderFile()
{
    struct stat older { };
    if (::stat(m_target.c_str(), &older) != 0) return true;
    // A file that may not be written may not be replaced either.
    if (::access(m_target.c_str(), W_OK) != 0) return false;
    if (isKeptFromUs(m_target, older)) return errno = EPERM, false;
    // Refused where it belongs to somebody else: then it becomes ours.
    static_cast<void>(::fchown(m_descriptor, older.st_uid, older.st_gid) == 0);
    m_olderMode = older.st_mode & modeBits;
    return ::fchmod(m_descriptor, *m_olderMode) == 0;
}

int Replacement::takeDescriptor() { return std::exchange(m_descriptor, -1); }

std::FILE* Replacement::takeStream()
{
    auto* const stream = ::fdopen(m_descriptor, "w+b");
    if (stream != nullptr) m_descriptor = -1;
    return stream;
}

void Replacement::makeRoom()
{
    closeDescriptor();
    ::unlink(m_part.c_str());
}

bool Replacement::adopt() const { return !m_olderMode || ::chmod(m_part.c_str(), *m_olderMode) == 0; }

bool Replacement::finish()
{
    closeDescriptor();
    m_isFinished = flushToDisk(m_part, O_WRONLY) && std::rename(m_part.c_str(), m_target.c_str()) == 0;
    return m_isFinished && flushFolderOf(m_target);
}

void Replacement::closeDescriptor()
{
    if (m_descriptor >= 0) ::close(takeDescriptor());
}

} // namespace vellumo
