// SPDX-License-Identifier: MIT
#pragma once

#include "embedded/cfb/Storage.h"

#include <string_view>

namespace vellumo::cfb {

// Reads one stream of a compound file from the bytes of its storage.
class Stream {
public:
    // `path`: names separated by "/".
    Stream(const Storage& storage, std::string_view path);
    // `entry`: of the storage's directory, and no folder.
    Stream(const Storage& storage, const DirEntry& entry);

    // True when there is no stream of that path; such a one is empty.
    [[nodiscard]] bool fail() const { return m_isMissing; }
    // Bytes, as the directory says. A broken stream ends earlier.
    [[nodiscard]] std::size_t size() const { return m_size; }
    [[nodiscard]] std::size_t tell() const { return m_position; }
    // Any position may be set; behind the end nothing is read.
    void seek(std::size_t position) { m_position = position; }
    // Whether nothing is left to read.
    [[nodiscard]] bool eof() const { return m_position >= m_readable; }

    // Copies up to `buffer.size()` bytes and moves on by what it returns; less than asked at the end.
    std::size_t read(std::span<std::byte> buffer);
    // The next byte, -1 at the end.
    int getch();

private:
    void setUp(const Storage& storage, const DirEntry& entry);

    std::vector<Bytes> m_blocks;
    std::size_t m_blockSize = 1;
    std::size_t m_size = 0;
    std::size_t m_readable = 0; // m_size, or less in a broken stream
    std::size_t m_position = 0;
    bool m_isMissing = true;
};

} // namespace vellumo::cfb
