// SPDX-License-Identifier: MIT
#pragma once

#include "samples/Bytes.h"
#include "samples/JetVersion.h"

#include <memory>
#include <string>

namespace vellumo::samples {

// A database file under construction: pages are given out in ascending order and written whole, in any order. Pages
// near the end are collected and written in large blocks, so that writing in about ascending order costs one system
// call for many pages. Page 0 is never encoded; with a database key other than 0 the others are.
class PageFile {
public:
    // Creates or empties the file. Null when it cannot be written.
    [[nodiscard]] static std::unique_ptr<PageFile> create(
        const std::string& path, JetVersion version, std::uint32_t databaseKey);
    ~PageFile();
    PageFile(const PageFile&) = delete;
    PageFile& operator=(const PageFile&) = delete;

    [[nodiscard]] JetVersion version() const { return m_version; }
    [[nodiscard]] std::size_t pageSize() const { return samples::pageSize(m_version); }
    [[nodiscard]] std::uint32_t pageCount() const { return m_pageCount; }

    // The number of a new page; all zero until it is written.
    std::uint32_t allocate() { return m_pageCount++; }
    // `bytes` is one whole page.
    void write(std::uint32_t page, ByteSpan bytes);
    // Writes what is still in memory. False when any write failed.
    [[nodiscard]] bool finish();

private:
    PageFile(int file, JetVersion version, std::uint32_t databaseKey);
    [[nodiscard]] std::uint64_t windowPages() const { return m_window.size() / pageSize(); }
    void moveWindow(std::uint32_t firstPage);
    void writeAt(std::uint64_t offset, ByteSpan bytes);
    void encode(std::uint32_t page, std::span<std::uint8_t> bytes) const;

    int m_file;
    JetVersion m_version;
    std::uint32_t m_databaseKey;
    std::uint32_t m_pageCount = 0;
    Bytes m_window; // pages from m_windowStart on that are not on disk yet
    std::uint32_t m_windowStart = 0;
    std::uint32_t m_windowEnd = 0; // one past the last page written into the window
    bool m_fFailed = false;
};

} // namespace vellumo::samples
