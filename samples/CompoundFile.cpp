// SPDX-License-Identifier: MIT
#include "samples/CompoundFile.h"

#include <algorithm>

namespace vellumo::samples {
namespace {

constexpr std::uint32_t freeBlock = 0xFFFFFFFF;
constexpr std::uint32_t endOfChain = 0xFFFFFFFE;
constexpr std::uint32_t tableBlock = 0xFFFFFFFD;
constexpr std::uint32_t extensionBlock = 0xFFFFFFFC;
constexpr std::uint32_t noEntry = 0xFFFFFFFF;
constexpr std::size_t smallStreamLimit = 4096;
constexpr std::size_t headerTableEntries = 109;
constexpr std::size_t headerSize = 512;

enum class EntryType : std::uint8_t { Storage = 1, Stream = 2, Root = 5 };

struct Entry {
    std::string name;
    EntryType type = EntryType::Storage;
    ByteSpan bytes;
    std::vector<std::uint32_t> children;
    std::uint32_t left = noEntry;
    std::uint32_t right = noEntry;
    std::uint32_t child = noEntry;
    std::uint32_t firstBlock = endOfChain;
    std::size_t size = 0;
};

// Siblings are ordered by length first.
bool nameBefore(const Entry& left, const Entry& right)
{
    const auto upper = [](char letter) { return letter >= 'a' && letter <= 'z' ? letter - 32 : letter; };
    if (left.name.size() != right.name.size()) return left.name.size() < right.name.size();
    return std::lexicographical_compare(left.name.begin(), left.name.end(), right.name.begin(), right.name.end(),
        [&](char a, char b) { return upper(a) < upper(b); });
}

class Directory {
public:
    explicit Directory(const std::vector<CompoundStream>& streams)
    {
        entries.push_back({"Root Entry", EntryType::Root, {}, {}});
        for (const auto& stream : streams)
            addStream(stream);
        for (auto& entry : entries) {
            auto& children = entry.children;
            std::sort(children.begin(), children.end(),
                [&](std::uint32_t a, std::uint32_t b) { return nameBefore(entries[a], entries[b]); });
            entry.child = link(children);
        }
    }

    [[nodiscard]] Bytes encode() const
    {
        Bytes out;
        for (const auto& entry : entries)
            encodeEntry(out, entry);
        return out;
    }

    std::vector<Entry> entries;

private:
    void addStream(const CompoundStream& stream)
    {
        std::uint32_t storage = 0;
        std::string_view rest = stream.path;
        for (auto slash = rest.find('/'); slash != rest.npos; slash = rest.find('/')) {
            storage = childNamed(storage, rest.substr(0, slash), EntryType::Storage);
            rest.remove_prefix(slash + 1);
        }
        auto& entry = entries[childNamed(storage, rest, EntryType::Stream)];
        entry.bytes = stream.bytes;
        entry.size = stream.bytes.size();
    }

    std::uint32_t childNamed(std::uint32_t storage, std::string_view name, EntryType type)
    {
        for (const auto child : entries[storage].children) {
            if (entries[child].name == name) return child;
        }
        const auto made = static_cast<std::uint32_t>(entries.size());
        entries.push_back({std::string(name), type, {}, {}});
        entries[storage].children.push_back(made);
        return made;
    }

    // Makes a balanced tree of sorted siblings; its root.
    std::uint32_t link(std::span<const std::uint32_t> siblings)
    {
        if (siblings.empty()) return noEntry;
        const auto middle = siblings.size() / 2;
        auto& entry = entries[siblings[middle]];
        entry.left = link(siblings.first(middle));
        entry.right = link(siblings.subspan(middle + 1));
        return siblings[middle];
    }

    static void encodeEntry(Bytes& out, const Entry& entry)
    {
        const auto start = out.size();
        out.resize(start + 128);
        for (std::size_t i = 0; i < entry.name.size() && i < 31; ++i)
            out[start + 2 * i] = static_cast<std::uint8_t>(entry.name[i]);
        putNumber<std::uint16_t>(
            &out[start + 64], static_cast<std::uint16_t>(2 * std::min<std::size_t>(entry.name.size() + 1, 32)));
        out[start + 66] = static_cast<std::uint8_t>(entry.type);
        out[start + 67] = 1; // black
        putNumber<std::uint32_t>(&out[start + 68], entry.left);
        putNumber<std::uint32_t>(&out[start + 72], entry.right);
        putNumber<std::uint32_t>(&out[start + 76], entry.child);
        putNumber<std::uint32_t>(&out[start + 116], entry.type == EntryType::Storage ? 0 : entry.firstBlock);
        putNumber<std::uint32_t>(&out[start + 120], static_cast<std::uint32_t>(entry.size));
    }
};

class CompoundEncoder {
public:
    CompoundEncoder(const std::vector<CompoundStream>& streams, int bigBlockShift, int smallBlockShift)
        : m_shift(bigBlockShift)
        , m_smallShift(smallBlockShift)
        , m_blockSize(std::size_t{1} << bigBlockShift)
        , m_smallBlockSize(std::size_t{1} << smallBlockShift)
        , m_directory(streams)
    {
        // Where blocks are shorter than the header, it covers some of them.
        m_table.assign(std::max(headerSize / m_blockSize, std::size_t{1}) - 1, freeBlock);
        m_blocks.resize(m_table.size() * m_blockSize);
    }

    Bytes encode()
    {
        for (auto& entry : m_directory.entries) {
            if (entry.type == EntryType::Stream) placeStream(entry);
        }
        m_directory.entries[0].firstBlock = addChain(m_smallBlocks);
        m_directory.entries[0].size = m_smallBlocks.size();
        const auto directoryStart = addChain(m_directory.encode());
        Bytes smallTable;
        for (const auto next : m_smallTable)
            appendNumber<std::uint32_t>(smallTable, next);
        padTable(smallTable);
        const auto smallTableStart = addChain(smallTable);
        placeTables();

        Bytes out = header(directoryStart, smallTableStart, smallTable.size() / m_blockSize);
        appendBytes(out, ByteSpan(m_blocks).subspan(out.size() - m_blockSize));
        return out;
    }

private:
    [[nodiscard]] std::size_t tableEntries() const { return m_blockSize / 4; }

    void placeStream(Entry& entry)
    {
        if (entry.size >= smallStreamLimit) {
            entry.firstBlock = addChain(entry.bytes);
        } else if (entry.size > 0) {
            entry.firstBlock = static_cast<std::uint32_t>(m_smallTable.size());
            extendChain(m_smallTable, (entry.size + m_smallBlockSize - 1) / m_smallBlockSize);
            appendBytes(m_smallBlocks, entry.bytes);
            m_smallBlocks.resize(m_smallTable.size() * m_smallBlockSize);
        }
    }

    static void extendChain(std::vector<std::uint32_t>& table, std::size_t count)
    {
        for (; count > 1; --count)
            table.push_back(static_cast<std::uint32_t>(table.size() + 1));
        if (count == 1) table.push_back(endOfChain);
    }

    std::uint32_t addChain(ByteSpan bytes)
    {
        if (bytes.empty()) return endOfChain;
        const auto first = static_cast<std::uint32_t>(m_table.size());
        extendChain(m_table, (bytes.size() + m_blockSize - 1) / m_blockSize);
        appendBytes(m_blocks, bytes);
        m_blocks.resize(m_table.size() * m_blockSize);
        return first;
    }

    void padTable(Bytes& table) const
    {
        while (table.size() % m_blockSize != 0)
            table.push_back(0xFF);
    }

    // The allocation table covers its own blocks and those of the extension table.
    void placeTables()
    {
        std::size_t tables = 0;
        std::size_t extensions = 0;
        while (tables * tableEntries() < m_table.size() + tables + extensions) {
            ++tables;
            const auto beyond = tables > headerTableEntries ? tables - headerTableEntries : 0;
            extensions = (beyond + tableEntries() - 2) / (tableEntries() - 1);
        }
        m_firstTable = static_cast<std::uint32_t>(m_table.size());
        m_tableCount = tables;
        m_extensionCount = extensions;
        m_table.insert(m_table.end(), tables, tableBlock);
        m_table.insert(m_table.end(), extensions, extensionBlock);
        Bytes bytes;
        for (const auto next : m_table)
            appendNumber<std::uint32_t>(bytes, next);
        bytes.resize(tables * m_blockSize, 0xFF);
        appendBytes(m_blocks, bytes);
        appendExtensions();
    }

    // An extension block: numbers of table blocks, and in its last place the number of the next one.
    void appendExtensions()
    {
        auto tableIndex = headerTableEntries;
        for (std::size_t i = 0; i < m_extensionCount; ++i) {
            for (std::size_t slot = 0; slot + 1 < tableEntries(); ++slot)
                appendNumber<std::uint32_t>(m_blocks, tableBlockNumber(tableIndex++));
            const bool isLast = i + 1 == m_extensionCount;
            appendNumber<std::uint32_t>(
                m_blocks, isLast ? endOfChain : firstExtension() + static_cast<std::uint32_t>(i + 1));
        }
    }

    [[nodiscard]] std::uint32_t firstExtension() const
    {
        return m_firstTable + static_cast<std::uint32_t>(m_tableCount);
    }
    [[nodiscard]] std::uint32_t tableBlockNumber(std::size_t index) const
    {
        return index < m_tableCount ? m_firstTable + static_cast<std::uint32_t>(index) : freeBlock;
    }

    [[nodiscard]] Bytes header(std::uint32_t directory, std::uint32_t smallTable, std::size_t smallTableBlocks) const
    {
        Bytes out{0xD0, 0xCF, 0x11, 0xE0, 0xA1, 0xB1, 0x1A, 0xE1};
        out.resize(24);
        appendNumber<std::uint16_t>(out, 0x3E);
        appendNumber<std::uint16_t>(out, m_shift == 12 ? 4 : 3);
        appendNumber<std::uint16_t>(out, 0xFFFE);
        appendNumber<std::uint16_t>(out, static_cast<std::uint16_t>(m_shift));
        appendNumber<std::uint16_t>(out, static_cast<std::uint16_t>(m_smallShift));
        out.resize(40);
        const auto directoryBlocks = (128 * m_directory.entries.size() + m_blockSize - 1) / m_blockSize;
        appendNumber<std::uint32_t>(out, m_shift == 12 ? static_cast<std::uint32_t>(directoryBlocks) : 0);
        appendNumber<std::uint32_t>(out, static_cast<std::uint32_t>(m_tableCount));
        appendNumber<std::uint32_t>(out, directory);
        appendNumber<std::uint32_t>(out, 0);
        appendNumber<std::uint32_t>(out, smallStreamLimit);
        appendNumber<std::uint32_t>(out, smallTable);
        appendNumber<std::uint32_t>(out, static_cast<std::uint32_t>(smallTableBlocks));
        appendNumber<std::uint32_t>(out, m_extensionCount == 0 ? endOfChain : firstExtension());
        appendNumber<std::uint32_t>(out, static_cast<std::uint32_t>(m_extensionCount));
        for (std::size_t i = 0; i < headerTableEntries; ++i)
            appendNumber<std::uint32_t>(out, tableBlockNumber(i));
        out.resize(std::max(headerSize, m_blockSize));
        return out;
    }

    int m_shift;
    int m_smallShift;
    std::size_t m_blockSize;
    std::size_t m_smallBlockSize;
    Directory m_directory;
    Bytes m_blocks;
    std::vector<std::uint32_t> m_table;
    Bytes m_smallBlocks;
    std::vector<std::uint32_t> m_smallTable;
    std::uint32_t m_firstTable = 0;
    std::size_t m_tableCount = 0;
    std::size_t m_extensionCount = 0;
};

} // namespace

Bytes compoundFile(const std::vector<CompoundStream>& streams, int bigBlockShift, int smallBlockShift)
{
    return CompoundEncoder(streams, bigBlockShift, smallBlockShift).encode();
}

} // namespace vellumo::samples
