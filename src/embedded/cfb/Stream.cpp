// SPDX-License-Identifier: MIT
#include "embedded/cfb/Stream.h"

#include <algorithm>

namespace vellumo::cfb {

Stream::Stream(const Storage& storage, std::string_view path)
{
    const auto* entry = storage.directory().entry(path);
    if (entry != nullptr && !entry->isDirectory()) setUp(storage, *entry);
}

Stream::Stream(const Storage& storage, const DirEntry& entry) { setUp(storage, entry); }

void Stream::setUp(const Storage& storage, const DirEntry& entry)
{
    m_isMissing = false;
    m_size = entry.size;
    m_blocks = storage.blocksOf(entry);
    m_blockSize = storage.blockSizeOf(entry);
    for (const auto& block : m_blocks)
        m_readable += block.size();
    m_readable = std::min(m_readable, m_size);
}

std::size_t Stream::read(std::span<std::byte> buffer)
{
    std::size_t done = 0;
    while (done < buffer.size() && !eof()) {
        const auto block = m_blocks[m_position / m_blockSize].subspan(m_position % m_blockSize);
        const auto count = std::min({block.size(), buffer.size() - done, m_readable - m_position});
        std::copy_n(block.begin(), count, buffer.begin() + static_cast<std::ptrdiff_t>(done));
        done += count;
        m_position += count;
    }
    return done;
}

int Stream::getch()
{
    std::byte next{};
    return read({&next, 1}) == 1 ? std::to_integer<int>(next) : -1;
}

} // namespace vellumo::cfb
