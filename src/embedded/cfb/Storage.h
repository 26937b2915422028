// SPDX-License-Identifier: MIT
#pragma once

#include "embedded/Bytes.h"
#include "embedded/cfb/DirTree.h"
#include "embedded/cfb/Header.h"

#include <vector>

namespace vellumo::cfb {

// An allocation table: for every block the index of the block that follows it in its chain, or what else the block is:
// 0xFFFFFFFF free, 0xFFFFFFFE the end of its chain, 0xFFFFFFFD and 0xFFFFFFFC part of the tables.
class AllocTable {
public:
    // Adds the entries of the table's next block; a cut entry at its end is dropped.
    void append(Bytes block);

    // The blocks of the chain that begins with `start`, in order. It ends before an index that is no block of this
    // table, and before a block that it holds already: a chain that loops gives each of its blocks once.
    [[nodiscard]] std::vector<std::uint32_t> follow(std::uint32_t start) const;

private:
    std::vector<std::uint32_t> m_next;
};

enum class StorageResult {
    Opened = 0,
    Closed,           // not opened yet, or closed again
    NotACompoundFile, // shorter than a header, or without the signature
    Malformed,        // a senseless header, table blocks that are not there, or no root entry
};

// A compound file (the OLE 2 container, published as [MS-CFB]) in memory, for reading. The bytes are borrowed: they
// outlive the storage and its streams. What it allocates is bounded by the size of the file, whatever the file claims.
class Storage {
public:
    explicit Storage(Bytes file);

    // Loads the tables and the directory. An open storage is loaded anew.
    void open();
    [[nodiscard]] StorageResult result() const { return m_result; }
    // Streams taken from the storage stay usable.
    void close();

    // Empty unless opened.
    [[nodiscard]] const DirTree& directory() const { return m_directory; }
    // The blocks that hold the bytes of `entry`, in order, all but the last of the same size (`blockSizeOf`). Fewer
    // than its size asks for when its chain is broken.
    [[nodiscard]] std::vector<Bytes> blocksOf(const DirEntry& entry) const;
    [[nodiscard]] std::size_t blockSizeOf(const DirEntry& entry) const;

private:
    [[nodiscard]] StorageResult load();
    [[nodiscard]] bool loadBigTable();
    [[nodiscard]] bool appendBigTableBlock(std::uint32_t index);
    [[nodiscard]] bool isSmall(const DirEntry& entry) const { return entry.size < m_header.threshold; }
    // Empty when the block lies outside the file; short when the file ends inside it.
    [[nodiscard]] Bytes bigBlock(std::uint32_t index) const;
    [[nodiscard]] Bytes smallBlock(std::uint32_t index) const;
    using BlockAt = Bytes (Storage::*)(std::uint32_t) const;
    [[nodiscard]] std::vector<Bytes> chain(
        const AllocTable& table, std::uint32_t start, BlockAt blockAt, std::size_t blockSize) const;
    [[nodiscard]] std::vector<Bytes> bigChain(std::uint32_t start) const;
    [[nodiscard]] std::vector<Bytes> smallChain(std::uint32_t start) const;

    Bytes m_file;
    StorageResult m_result = StorageResult::Closed;
    Header m_header;
    AllocTable m_bigTable;
    AllocTable m_smallTable;
    DirTree m_directory;
    std::vector<Bytes> m_smallArea; // the root entry's stream, which holds the small blocks
};

} // namespace vellumo::cfb
