// SPDX-License-Identifier: MIT
#include "export/files/OutputFile.h"

#include <cerrno>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace vellumo {

namespace {

// nullopt for what is no regular file.
std::optional<off_t> sizeOfRegularFile(int descriptor)
{
    struct stat facts { };
    if (::fstat(descriptor, &facts) != 0 || !S_ISREG(facts.st_mode)) return std::nullopt;
    return facts.st_size;
}

// Whatever errno said before is what it says behind. Links are followed.
bool isRegularFile(const std::string& path)
{
    const int error = errno;
    struct stat facts { };
    const bool isRegular = path != standardOutputPath && ::stat(path.c_str(), &facts) == 0 && S_ISREG(facts.st_mode);
    errno = error;
    return isRegular;
}

} // namespace

OutputFile::OutputFile()
    : m_buffer(new char[capacity]) // not value-initialised: every byte is written before it is read
{
}

bool OutputFile::open(const std::string& path)
{
    m_used = 0;
    m_failed = false;
    m_error = 0;
    m_replacement = path == standardOutputPath ? nullptr : Replacement::create(path);
    if (m_replacement)
        m_descriptor = m_replacement->takeDescriptor();
    else if (!isRegularFile(path))
        openInPlace(path);
    if (m_descriptor < 0) m_error = errno;
    return m_descriptor >= 0;
}

void OutputFile::openInPlace(const std::string& path)
{
    // Opened by its name, a file that the output was appended to would be emptied.
    m_descriptor = path == standardOutputPath ? ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0)
                                              : ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    m_sizeBefore = m_descriptor < 0 ? 0 : sizeOfRegularFile(m_descriptor).value_or(0);
}

void OutputFile::takeBack() const
{
    if (!sizeOfRegularFile(m_descriptor)) return;
    // Refused on a file system that broke meanwhile, where nothing else is left to be done either.
    static_cast<void>(::ftruncate(m_descriptor, m_sizeBefore) == 0);
}

std::string OutputFile::failureReason() const
{
    return m_error == 0 ? std::string() : std::generic_category().message(m_error);
}

void OutputFile::noteFailure()
{
    if (!m_failed) m_error = errno;
    m_failed = true;
}

void OutputFile::writeThrough(std::string_view bytes)
{
    flush();
    if (bytes.size() < capacity) return write(bytes);
    writeNow(bytes);
}

void OutputFile::flush() { writeNow({m_buffer.get(), std::exchange(m_used, 0)}); }

void OutputFile::writeNow(std::string_view bytes)
{
    while (!bytes.empty() && !m_failed) {
        const auto written = ::write(m_descriptor, bytes.data(), bytes.size());
        if (written > 0) bytes.remove_prefix(static_cast<std::size_t>(written));
        if (written == 0) errno = ENOSPC;
        if (written == 0 || (written < 0 && errno != EINTR)) noteFailure();
    }
}

bool OutputFile::close()
{
    flush();
    if (m_failed) {
        discard();
        return false;
    }
    // Network file systems report a full disk only now.
    if (!closeDescriptor()) noteFailure();
    const auto replacement = std::move(m_replacement);
    if (!m_failed && replacement && !replacement->finish()) noteFailure();
    return !m_failed;
}

void OutputFile::discard()
{
    if (m_descriptor < 0) return;
    if (!m_replacement) takeBack();
    static_cast<void>(closeDescriptor());
    m_replacement.reset();
}

bool OutputFile::closeDescriptor() { return ::close(std::exchange(m_descriptor, -1)) == 0; }

} // namespace vellumo
