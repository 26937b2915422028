// SPDX-License-Identifier: MIT
#include "embedded/TempFile.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace vellumo {

namespace {

std::string tempFolder()
{
    const auto* folder = std::getenv("TMPDIR");
    return folder != nullptr && *folder != '\0' ? folder : "/tmp";
}

bool writeAll(int descriptor, Bytes content)
{
    while (!content.empty()) {
        const auto written = ::write(descriptor, content.data(), content.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        content = content.subspan(static_cast<std::size_t>(written));
    }
    return true;
}

// Fills the new file and closes it.
std::string filled(int descriptor, Bytes content, const std::string& path)
{
    if (descriptor < 0) return {};
    const auto isWritten = writeAll(descriptor, content);
    // Some file systems tell only at the end that the disk is full.
    if (::close(descriptor) == 0 && isWritten) return path;
    ::unlink(path.c_str());
    return {};
}

constexpr const char* nameTemplate = "/Vellumo-XXXXXXXXX";

} // namespace

std::string writeTempFile(Bytes content, const std::string& suffix)
{
    auto path = tempFolder() + nameTemplate + suffix;
    const auto descriptor = mkstemps(path.data(), static_cast<int>(suffix.size()));
    return filled(descriptor, content, path);
}

std::string makeTempFolder()
{
    auto path = tempFolder() + nameTemplate;
    return mkdtemp(path.data()) == nullptr ? std::string() : path;
}

std::string writeNewFile(Bytes content, const std::string& path)
{
    const auto descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
    return filled(descriptor, content, path);
}

} // namespace vellumo
