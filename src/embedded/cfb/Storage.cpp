// SPDX-License-Identifier: MIT
#include "embedded/cfb/Storage.h"

#include <algorithm>

namespace vellumo::cfb {

void AllocTable::append(Bytes block)
{
    for (std::size_t offset = 0; offset + 4 <= block.size(); offset += 4)
        m_next.push_back(u32At(block, offset));
}

std::vector<std::uint32_t> AllocTable::follow(std::uint32_t start) const
{
    std::vector<std::uint32_t> chain;
    std::vector<bool> isTaken(m_next.size());
    // The special values are larger than any table.
    for (auto index = start; index < m_next.size(); index = m_next[index]) {
        if (isTaken[index]) break;
        isTaken[index] = true;
        chain.push_back(index);
    }
    return chain;
}

Storage::Storage(Bytes file)
    : m_file(file)
{
}

void Storage::open()
{
    close();
    const auto result = load();
    if (result != StorageResult::Opened) close();
    m_result = result;
}

void Storage::close() { *this = Storage(m_file); }

StorageResult Storage::load()
{
    if (!m_header.load(m_file)) return StorageResult::NotACompoundFile;
    if (!m_header.isValid() || !loadBigTable()) return StorageResult::Malformed;
    for (const auto& block : bigChain(m_header.firstSmallTableBlock))
        m_smallTable.append(block);
    for (const auto& block : bigChain(m_header.firstDirectoryBlock))
        m_directory.append(block);
    const auto* root = m_directory.root();
    if (root == nullptr) return StorageResult::Malformed;
    m_smallArea = bigChain(root->firstBlock);
    return StorageResult::Opened;
}

// The header lists the first 109 blocks of the table. Each extension block lists further ones and ends with the index
// of the next extension block.
bool Storage::loadBigTable()
{
    // Checked first: a block listed twice counts twice, so the table never outgrows the file.
    std::size_t missing = m_header.bigTableBlockCount;
    if (missing > m_file.size() >> m_header.bigShift) return false;
    for (std::size_t i = 0; i < Header::inlineTableBlocks && missing > 0; ++i, --missing)
        if (!appendBigTableBlock(m_header.bigTableBlocks[i])) return false;

    auto extension = m_header.firstExtensionBlock;
    for (std::size_t i = 0; i < m_header.extensionBlockCount && missing > 0; ++i) {
        const auto block = bigBlock(extension);
        if (block.size() < m_header.bigBlockSize()) return false;
        const auto nextOffset = block.size() - 4;
        for (std::size_t offset = 0; offset < nextOffset && missing > 0; offset += 4, --missing)
            if (!appendBigTableBlock(u32At(block, offset))) return false;
        extension = u32At(block, nextOffset);
    }
    return missing == 0;
}

bool Storage::appendBigTableBlock(std::uint32_t index)
{
    const auto block = bigBlock(index);
    m_bigTable.append(block);
    return !block.empty();
}

Bytes Storage::bigBlock(std::uint32_t index) const
{
    // The header takes the place of one block. The shift is below 31, so the offset fits.
    const auto offset = (std::uint64_t{index} + 1) << m_header.bigShift;
    if (offset >= m_file.size()) return {};
    return m_file.subspan(offset, std::min(m_header.bigBlockSize(), m_file.size() - offset));
}

Bytes Storage::smallBlock(std::uint32_t index) const
{
    const auto offset = std::uint64_t{index} << m_header.smallShift;
    const auto area = offset >> m_header.bigShift;
    if (area >= m_smallArea.size()) return {};
    // Both sizes are powers of two: a small block never reaches into the next big one.
    const auto& block = m_smallArea[area];
    const auto start = offset & (m_header.bigBlockSize() - 1);
    if (start >= block.size()) return {};
    return block.subspan(start, std::min(m_header.smallBlockSize(), block.size() - start));
}

std::vector<Bytes> Storage::chain(
    const AllocTable& table, std::uint32_t start, BlockAt blockAt, std::size_t blockSize) const
{
    std::vector<Bytes> blocks;
    for (const auto index : table.follow(start)) {
        const auto block = (this->*blockAt)(index);
        if (!block.empty()) blocks.push_back(block);
        // What comes after a gap would stand in the wrong place.
        if (block.size() < blockSize) break;
    }
    return blocks;
}

std::vector<Bytes> Storage::bigChain(std::uint32_t start) const
{
    return chain(m_bigTable, start, &Storage::bigBlock, m_header.bigBlockSize());
}

std::vector<Bytes> Storage::smallChain(std::uint32_t start) const
{
    return chain(m_smallTable, start, &Storage::smallBlock, m_header.smallBlockSize());
}

std::vector<Bytes> Storage::blocksOf(const DirEntry& entry) const
{
    return isSmall(entry) ? smallChain(entry.firstBlock) : bigChain(entry.firstBlock);
}

std::size_t Storage::blockSizeOf(const DirEntry& entry) const
{
    return isSmall(entry) ? m_header.smallBlockSize() : m_header.bigBlockSize();
}

} // namespace vellumo::cfb
