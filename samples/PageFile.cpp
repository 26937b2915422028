// SPDX-License-Identifier: MIT
#include "samples/PageFile.h"

#include "samples/Rc4.h"

#include <algorithm>
#include <fcntl.h>
#include <unistd.h>

namespace vellumo::samples {
namespace {

constexpr std::size_t windowBytes = std::size_t{1} << 20;

} // namespace

std::unique_ptr<PageFile> PageFile::create(const std::string& path, JetVersion version, std::uint32_t databaseKey)
{
    const int file = ::open(path.c_str(), O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (file < 0) return nullptr;
    return std::unique_ptr<PageFile>(new PageFile(file, version, databaseKey));
}

PageFile::PageFile(int file, JetVersion version, std::uint32_t databaseKey)
    : m_file(file)
    , m_version(version)
    , m_databaseKey(databaseKey)
    , m_window(windowBytes)
{
}

PageFile::~PageFile() { ::close(m_file); }

void PageFile::write(std::uint32_t page, ByteSpan bytes)
{
    if (page < m_windowStart) {
        Bytes copy(bytes.begin(), bytes.end());
        encode(page, copy);
        writeAt(page * std::uint64_t{pageSize()}, copy);
        return;
    }
    if (page >= m_windowStart + windowPages()) moveWindow(page);
    const auto at = m_window.begin() + static_cast<std::ptrdiff_t>((page - m_windowStart) * pageSize());
    std::copy(bytes.begin(), bytes.end(), at);
    encode(page, {at, at + static_cast<std::ptrdiff_t>(pageSize())});
    m_windowEnd = std::max(m_windowEnd, page + 1);
}

bool PageFile::finish()
{
    moveWindow(m_pageCount);
    // Pages that were given out and never written still belong to the file.
    if (::ftruncate(m_file, static_cast<off_t>(m_pageCount * std::uint64_t{pageSize()})) != 0) m_fFailed = true;
    return !m_fFailed;
}

void PageFile::moveWindow(std::uint32_t firstPage)
{
    if (m_windowEnd > m_windowStart) {
        const auto used = (m_windowEnd - m_windowStart) * pageSize();
        writeAt(m_windowStart * std::uint64_t{pageSize()}, ByteSpan(m_window).first(used));
        std::fill_n(m_window.begin(), used, std::uint8_t{0});
    }
    m_windowStart = firstPage;
    m_windowEnd = firstPage;
}

void PageFile::writeAt(std::uint64_t offset, ByteSpan bytes)
{
    while (!bytes.empty() && !m_fFailed) {
        const auto count = ::pwrite(m_file, bytes.data(), bytes.size(), static_cast<off_t>(offset));
        if (count <= 0) {
            m_fFailed = true;
            return;
        }
        offset += static_cast<std::uint64_t>(count);
        bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
}

void PageFile::encode(std::uint32_t page, std::span<std::uint8_t> bytes) const
{
    if (m_databaseKey == 0 || page == 0) return;
    std::uint8_t key[4];
    putNumber<std::uint32_t>(key, m_databaseKey ^ page);
    applyRc4(bytes, key);
}

} // namespace vellumo::samples
