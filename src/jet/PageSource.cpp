// SPDX-License-Identifier: MIT
#include "jet/PageSource.h"

#include "jet/DatabasePassword.h"

// glib's header must come before libmdb's, which includes it as C code.
#include <glib.h>

#include <mdbtools.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <mutex>
#include <optional>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace vellumo::jet {

namespace {

// The library's texts and its search for files depend on these.
void clearLibraryEnvironment()
{
    for (const auto* variable : {"MDBPATH", "MDBICONV", "MDB_JET3_CHARSET", "MDBOPTS"})
        unsetenv(variable);
}

OpenFailure failureOf(int error)
{
    switch (error) {
    case ENOENT:
    case ENOTDIR:
    case ELOOP:
    case ENAMETOOLONG: return OpenFailure::Missing;
    case EACCES:
    case EPERM: return OpenFailure::NoPermission;
    case EISDIR: return OpenFailure::NotAFile;
    case ENOMEM: return OpenFailure::TooLittleMemory;
    default: return OpenFailure::Unreadable;
    }
}

// Reads until `size` bytes are there; fewer at the end of the file, -1 on an error.
ssize_t readAt(int descriptor, void* to, std::size_t size, off_t offset)
{
    std::size_t done = 0;
    while (done < size) {
        const auto count =
            pread(descriptor, static_cast<char*>(to) + done, size - done, offset + static_cast<off_t>(done));
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return -1;
        if (count == 0) break;
        done += static_cast<std::size_t>(count);
    }
    return static_cast<ssize_t>(done);
}

constexpr std::size_t startSize = 4096; // what the library reads to know a file, whatever its page size
constexpr std::size_t versionOffset = 20;

// Why a file that begins like this is none that is read; nullopt: it is one. The library itself does not look at the
// mark, and takes a file of zeros for a database.
std::optional<OpenFailure> refusal(std::string_view start, bool newerFormats)
{
    constexpr std::string_view jetMark("\0\1\0\0Standard Jet DB\0", versionOffset);
    constexpr std::string_view newerMark("\0\1\0\0Standard ACE DB\0", versionOffset);
    constexpr unsigned newestKnown = 6;
    const auto mark = start.substr(0, versionOffset);
    if (start.size() <= versionOffset || (mark != jetMark && mark != newerMark)) return OpenFailure::NotADatabase;
    const auto version = static_cast<unsigned char>(start[versionOffset]);
    if (version > newestKnown) return OpenFailure::UnknownNewer;
    const bool isNewer = mark == newerMark || version > MDB_VER_JET4;
    if (isNewer && !newerFormats) return OpenFailure::NewerFormat;
    return std::nullopt;
}

} // namespace

struct PageSource::File {
    explicit File(const char* path)
        : descriptor(::open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK))
        , openError(descriptor < 0 ? errno : 0)
    {
        if (descriptor >= 0 && fstat(descriptor, &facts) != 0) openError = errno;
    }
    ~File()
    {
        if (descriptor >= 0) ::close(descriptor);
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    [[nodiscard]] std::uint64_t size() const { return static_cast<std::uint64_t>(facts.st_size); }

    int descriptor;
    int openError;
    struct stat facts { }; // when it was opened
    std::uint8_t start[startSize]{};
};

// A handle of the library whose file is a stream of ours: it reads from the shared descriptor, and tells the library
// nothing of errors, which would stick to its stream and be printed.
struct PageSource::Handle {
    explicit Handle(const File& file)
        : descriptor(file.descriptor)
        , size(file.facts.st_size)
    {
        auto start = std::make_unique<std::uint8_t[]>(startSize);
        std::memcpy(start.get(), file.start, startSize);
        mdb = mdb_open_buffer(start.get(), startSize, MDB_NOFLAGS);
        if (mdb == nullptr) return;
        auto* stream = fopencookie(this, "r", {readStream, nullptr, seekStream, nullptr});
        if (stream == nullptr) {
            mdb_close(mdb);
            mdb = nullptr;
            return;
        }
        // Of one page, so that exactly the page asked for is read, in one piece.
        buffer.resize(static_cast<std::size_t>(mdb->fmt->pg_size));
        setvbuf(stream, buffer.data(), _IOFBF, buffer.size());
        fclose(mdb->f->stream);
        mdb->f->stream = stream;
    }
    ~Handle()
    {
        if (mdb != nullptr) mdb_close(mdb);
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    // The key of an encrypted file of a newer format, 0 for any other. The library would apply it in the way of the old
    // ones.
    [[nodiscard]] std::uint32_t takeNewerKey() const
    {
        return mdb->f->jet_version > MDB_VER_JET4 ? std::exchange(mdb->f->db_key, 0U) : 0;
    }

    static ssize_t readStream(void* cookie, char* to, std::size_t size)
    {
        auto& self = *static_cast<Handle*>(cookie);
        const auto count = readAt(self.descriptor, to, size, self.position);
        if (count != static_cast<ssize_t>(size)) {
            self.hasFailed = true;
            std::memset(to, 0, size);
        }
        self.position += static_cast<off_t>(size);
        return static_cast<ssize_t>(size);
    }
    static int seekStream(void* cookie, off64_t* offset, int whence)
    {
        auto& self = *static_cast<Handle*>(cookie);
        const auto base = whence == SEEK_END ? self.size : whence == SEEK_CUR ? self.position : 0;
        self.position = base + *offset;
        *offset = self.position;
        return 0;
    }

    std::vector<char> buffer; // of the stream
    MdbHandle* mdb = nullptr;
    int descriptor;
    off_t size;
    off_t position = 0;
    bool hasFailed = false; // the last read did not give all that was asked for
};

PageSource::PageSource(
    std::shared_ptr<const File> file, std::unique_ptr<Handle> handle, std::unique_ptr<PageCipher> cipher)
    : Pages(handle->mdb->f->jet_version == MDB_VER_JET3 ? jet3Pages : jet4Pages,
        static_cast<std::uint32_t>(
            std::min<std::uint64_t>(file->size() / static_cast<std::uint64_t>(handle->mdb->fmt->pg_size), 0xFFFFFF)))
    , m_file(std::move(file))
    , m_handle(std::move(handle))
    , m_cipher(std::move(cipher))
{
}

PageSource::~PageSource() = default;

std::unique_ptr<PageSource> PageSource::open(const std::string& path, const OpenOptions& options, OpenFailure& failure)
{
    static std::once_flag isEnvironmentCleared;
    std::call_once(isEnvironmentCleared, clearLibraryEnvironment);
    auto file = std::make_shared<File>(path.c_str());
    if (file->openError != 0) {
        failure = failureOf(file->openError);
        return nullptr;
    }
    if (!S_ISREG(file->facts.st_mode)) {
        failure = OpenFailure::NotAFile;
        return nullptr;
    }
    const auto count = readAt(file->descriptor, file->start, startSize, 0);
    if (count < 0) {
        failure = OpenFailure::Unreadable;
        return nullptr;
    }
    const std::string_view start(reinterpret_cast<const char*>(file->start), static_cast<std::size_t>(count));
    if (const auto refused = refusal(start, options.newerFormats)) {
        failure = *refused;
        return nullptr;
    }
    auto handle = std::make_unique<Handle>(*file);
    // A header that the library makes nothing of, or not even a page of it.
    if (handle->mdb == nullptr || start.size() < static_cast<std::size_t>(handle->mdb->fmt->pg_size)) {
        failure = OpenFailure::NotADatabase;
        return nullptr;
    }
    std::unique_ptr<PageCipher> cipher;
    if (const auto key = handle->takeNewerKey(); key != 0) {
        cipher = openCipher(file->start, key, options.password, failure);
        if (!cipher) return nullptr;
    }
    return std::unique_ptr<PageSource>(new PageSource(std::move(file), std::move(handle), std::move(cipher)));
}

std::unique_ptr<PageSource> PageSource::another() const
{
    auto handle = std::make_unique<Handle>(*m_file);
    if (handle->mdb == nullptr) return nullptr;
    static_cast<void>(handle->takeNewerKey());
    return std::unique_ptr<PageSource>(
        new PageSource(m_file, std::move(handle), m_cipher ? m_cipher->clone() : nullptr));
}

int PageSource::formatVersion() const { return static_cast<int>(m_handle->mdb->f->jet_version); }

int PageSource::codePage() const { return m_handle->mdb->f->code_page; }

bool PageSource::isEncrypted() const { return m_cipher || m_handle->mdb->f->db_key != 0; }

bool PageSource::hasIdlePassword() const
{
    return formatVersion() <= MDB_VER_JET4 && hasDatabasePassword(m_file->start, formatVersion() == MDB_VER_JET3);
}

std::uint64_t PageSource::fileSize() const { return m_file->size(); }

bool PageSource::isCutOrChanged() const
{
    struct stat now { };
    if (m_file->size() % format().size != 0 || fstat(m_file->descriptor, &now) != 0) return true;
    const auto& then = m_file->facts;
    return now.st_size != then.st_size || now.st_mtim.tv_sec != then.st_mtim.tv_sec
        || now.st_mtim.tv_nsec != then.st_mtim.tv_nsec;
}

bool PageSource::readPage(std::uint32_t number, std::uint8_t* to)
{
    auto* mdb = m_handle->mdb;
    m_handle->hasFailed = false;
    mdb->cur_pg = 0; // the library would not read the page again that it read last
    if (mdb_read_pg(mdb, number) != mdb->fmt->pg_size || m_handle->hasFailed) return false;
    std::memcpy(to, mdb->pg_buf, format().size);
    return !m_cipher || m_cipher->decrypt(number, {to, format().size});
}

} // namespace vellumo::jet
