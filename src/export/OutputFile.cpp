#include "export/OutputFile.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vellumo {

namespace {

// All zero, which is no file's status, when it cannot be told.
struct stat statusOf(int descriptor)
{
    struct stat facts { };
    if (::fstat(descriptor, &facts) != 0) facts = {};
    return facts;
}

// Removes `path` when it names the regular file with these facts itself, not something that links to it.
void removeOpenFile(const std::string& path, const struct stat& facts)
{
    struct stat named { };
    if (!S_ISREG(facts.st_mode) || ::lstat(path.c_str(), &named) != 0) return;
    if (named.st_dev == facts.st_dev && named.st_ino == facts.st_ino) ::unlink(path.c_str());
}

} // namespace

OutputFile::OutputFile()
    : m_buffer(new char[capacity]) // not value-initialised: every byte is written before it is read
{
}

bool OutputFile::open(const std::string& path)
{
    m_descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    m_path = path;
    m_used = 0;
    m_failed = false;
    return m_descriptor >= 0;
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
    const auto facts = statusOf(m_descriptor);
    if (closeDescriptor()) return true;
    // Network file systems report a full disk only now.
    m_failed = true;
    removeOpenFile(m_path, facts);
    return false;
}

void OutputFile::discard()
{
    if (m_descriptor < 0) return;
    const auto facts = statusOf(m_descriptor);
    // Nothing of the content stays, even if the file has other names or sits behind a link.
    if (S_ISREG(facts.st_mode) && ::ftruncate(m_descriptor, 0) != 0) m_failed = true;
    removeOpenFile(m_path, facts);
    static_cast<void>(closeDescriptor());
}

bool OutputFile::closeDescriptor() { return ::close(std::exchange(m_descriptor, -1)) == 0; }

} // namespace vellumo
