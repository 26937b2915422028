#include "export/OutputFile.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vellumo {

namespace {

constexpr mode_t usualMode = 0666;

// Null when there is none.
std::optional<mode_t> modeOf(const std::string& path)
{
    struct stat facts { };
    if (::stat(path.c_str(), &facts) != 0) return {};
    return facts.st_mode & 07777;
}

void emptyRegularFile(int descriptor)
{
    struct stat facts { };
    if (::fstat(descriptor, &facts) != 0 || !S_ISREG(facts.st_mode)) return;
    // Refused on a file system that broke meanwhile, where nothing else is left to be done either.
    static_cast<void>(::ftruncate(descriptor, 0) == 0);
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
    if (openPart(path)) return true;
    m_replacement.reset();
    m_descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, usualMode);
    return m_descriptor >= 0;
}

bool OutputFile::openPart(const std::string& path)
{
    m_replacement = Replacement::of(path);
    if (!m_replacement) return false;
    const auto mode = modeOf(m_replacement->target);
    // A file that may not be written may not be replaced either.
    if (mode && ::access(m_replacement->target.c_str(), W_OK) != 0) return false;
    m_replacement->discard();
    m_descriptor = ::open(m_replacement->part.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, usualMode);
    if (m_descriptor < 0) return false;
    if (mode) m_failed = ::fchmod(m_descriptor, *mode) != 0;
    return true;
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
        m_failed = written == 0 || (written < 0 && errno != EINTR);
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
    m_failed = !closeDescriptor();
    if (!m_replacement) return !m_failed;
    if (m_failed) m_replacement->discard();
    return !m_failed && m_replacement->finish();
}

void OutputFile::discard()
{
    if (m_descriptor < 0) return;
    if (m_replacement)
        m_replacement->discard();
    else
        emptyRegularFile(m_descriptor);
    static_cast<void>(closeDescriptor());
}

bool OutputFile::closeDescriptor() { return ::close(std::exchange(m_descriptor, -1)) == 0; }

} // namespace vellumo
