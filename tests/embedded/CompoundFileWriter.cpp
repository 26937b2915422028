#include "embedded/CompoundFileWriter.h"

#include <algorithm>

namespace vellumo::testing {

namespace {

constexpr std::uint32_t freeBlock = 0xFFFFFFFF;
constexpr std::uint32_t endOfChain = 0xFFFFFFFE;
constexpr std::uint32_t tableBlock = 0xFFFFFFFD;
constexpr std::uint32_t extensionBlock = 0xFFFFFFFC;
constexpr std::uint32_t noEntry = 0xFFFFFFFF;
constexpr std::size_t inlineTableBlocks = 109;
constexpr std::size_t threshold = 4096;

std::size_t quotientUp(std::size_t count, std::size_t unit) { return (count + unit - 1) / unit; }

// Blocks of one size and the table that chains them.
struct BlockArea {
    std::size_t blockSize;
    Buffer bytes{};
    std::vector<std::uint32_t> next{};

    std::uint32_t addChain(const Buffer& content)
    {
        const auto count = quotientUp(content.size(), blockSize);
        if (count == 0) return endOfChain;
        const auto first = static_cast<std::uint32_t>(next.size());
        for (std::size_t i = 1; i < count; ++i)
            next.push_back(static_cast<std::uint32_t>(first + i));
        next.push_back(endOfChain);
        bytes.insert(bytes.end(), content.begin(), content.end());
        bytes.resize(next.size() * blockSize);
        return first;
    }
};

struct Entry {
    std::string name;
    unsigned type;
    std::uint32_t firstBlock = endOfChain;
    std::size_t size = 0;
    std::uint32_t right = noEntry;
    std::uint32_t child = noEntry;
};

Buffer tableBytes(const std::vector<std::uint32_t>& next, std::size_t blockSize)
{
    Buffer bytes;
    for (const auto index : next)
        addU32(bytes, index);
    bytes.resize(quotientUp(bytes.size(), blockSize) * blockSize, std::byte{0xFF});
    return bytes;
}

class Writer {
public:
    explicit Writer(const CompoundFileContent& content)
        : m_content(content)
        , m_big{std::size_t{1} << content.bigShift}
        , m_small{std::size_t{1} << content.smallShift}
    {
        // The header is longer than a block of 128 or 256 bytes: the blocks below its end are never used.
        const auto covered = std::max<std::size_t>(512 / m_big.blockSize, 1) - 1;
        m_big.next.assign(covered, freeBlock);
        m_big.bytes.resize(covered * m_big.blockSize);
    }

    CompoundFile write()
    {
        m_entries.push_back({"Root Entry", 5});
        for (const auto& [path, data] : m_content.streams)
            addStream(path, data);
        m_file.blockSize = m_big.blockSize;
        const auto smallTable = tableBytes(m_small.next, m_big.blockSize);
        m_file.smallTableBlock = m_big.addChain(smallTable);
        m_entries[0].size = m_small.bytes.size();
        m_entries[0].firstBlock = m_big.addChain(m_small.bytes);
        m_file.directoryBlock = m_big.addChain(directoryBytes());
        addBigTable();
        finish(smallTable.size() / m_big.blockSize);
        return m_file;
    }

private:
    void addStream(const std::string& path, const Buffer& data)
    {
        const auto slash = path.find('/');
        std::size_t parent = 0;
        if (slash != std::string::npos) {
            parent = m_entries.size();
            m_entries.push_back({path.substr(0, slash), 1});
            link(0, parent);
        }
        auto& area = data.size() < threshold ? m_small : m_big;
        const auto firstBlock = area.addChain(data);
        m_file.firstBlocks.push_back(firstBlock);
        m_entries.push_back({slash == std::string::npos ? path : path.substr(slash + 1), 2, firstBlock, data.size()});
        link(parent, m_entries.size() - 1);
    }

    void link(std::size_t parent, std::size_t entry)
    {
        auto* place = &m_entries[parent].child;
        while (*place != noEntry)
            place = &m_entries[*place].right;
        *place = static_cast<std::uint32_t>(entry);
    }

    [[nodiscard]] Buffer directoryBytes() const
    {
        Buffer bytes;
        for (const auto& entry : m_entries) {
            const auto start = bytes.size();
            bytes.resize(start + 128);
            for (std::size_t i = 0; i < entry.name.size(); ++i)
                bytes[start + 2 * i] = static_cast<std::byte>(entry.name[i]);
            putU16(bytes, start + 64, static_cast<unsigned>(2 * entry.name.size() + 2));
            bytes[start + 66] = static_cast<std::byte>(entry.type);
            bytes[start + 67] = std::byte{1}; // black
            putU32(bytes, start + 68, noEntry);
            putU32(bytes, start + 72, entry.right);
            putU32(bytes, start + 76, entry.child);
            putU32(bytes, start + 116, entry.firstBlock);
            putU32(bytes, start + 120, static_cast<std::uint32_t>(entry.size));
        }
        return bytes;
    }

    // The table describes its own blocks too, so their number is searched for.
    void addBigTable()
    {
        const auto perBlock = m_big.blockSize / 4;
        std::size_t tables = 1;
        while (tables * perBlock < m_big.next.size() + tables + extensionCount(tables))
            ++tables;
        for (std::size_t i = 0; i < tables; ++i)
            m_file.tableBlocks.push_back(static_cast<std::uint32_t>(m_big.next.size() + i));
        m_firstExtension = m_file.tableBlocks.back() + 1;
        m_big.next.resize(m_big.next.size() + tables, tableBlock);
        m_big.next.resize(m_big.next.size() + extensionCount(tables), extensionBlock);
        const auto table = tableBytes(m_big.next, m_big.blockSize);
        m_big.bytes.insert(m_big.bytes.end(), table.begin(), table.end());
        addExtensionBlocks(perBlock - 1);
    }

    void addExtensionBlocks(std::size_t listedPerBlock)
    {
        const auto count = extensionCount(m_file.tableBlocks.size());
        for (std::size_t i = 0; i < count; ++i) {
            for (std::size_t j = 0; j < listedPerBlock; ++j) {
                const auto table = inlineTableBlocks + i * listedPerBlock + j;
                addU32(m_big.bytes, table < m_file.tableBlocks.size() ? m_file.tableBlocks[table] : freeBlock);
            }
            addU32(m_big.bytes, i + 1 < count ? static_cast<std::uint32_t>(m_firstExtension + i + 1) : endOfChain);
        }
    }

    [[nodiscard]] std::size_t extensionCount(std::size_t tables) const
    {
        const auto beyondHeader = tables > inlineTableBlocks ? tables - inlineTableBlocks : 0;
        return quotientUp(beyondHeader, m_big.blockSize / 4 - 1);
    }

    void finish(std::size_t smallTableBlocks)
    {
        auto& bytes = m_file.bytes;
        bytes.resize(m_big.blockSize);
        bytes.insert(bytes.end(), m_big.bytes.begin(), m_big.bytes.end());
        if (bytes.size() < 512) bytes.resize(512);
        const unsigned char signature[] = {0xD0, 0xCF, 0x11, 0xE0, 0xA1, 0xB1, 0x1A, 0xE1};
        std::transform(std::begin(signature), std::end(signature), bytes.begin(), [](auto c) { return std::byte{c}; });
        putU16(bytes, 24, 0x3E);
        putU16(bytes, 26, m_content.bigShift == 12 ? 4 : 3);
        putU16(bytes, 28, 0xFFFE);
        putU16(bytes, 30, m_content.bigShift);
        putU16(bytes, 32, m_content.smallShift);
        const auto extensions = static_cast<std::uint32_t>(extensionCount(m_file.tableBlocks.size()));
        putU32(bytes, 44, static_cast<std::uint32_t>(m_file.tableBlocks.size()));
        putU32(bytes, 48, m_file.directoryBlock);
        putU32(bytes, 56, threshold);
        putU32(bytes, 60, m_file.smallTableBlock);
        putU32(bytes, 64, static_cast<std::uint32_t>(smallTableBlocks));
        putU32(bytes, 68, extensions == 0 ? endOfChain : m_firstExtension);
        putU32(bytes, 72, extensions);
        for (std::size_t i = 0; i < inlineTableBlocks; ++i)
            putU32(bytes, 76 + 4 * i, i < m_file.tableBlocks.size() ? m_file.tableBlocks[i] : freeBlock);
    }

    const CompoundFileContent& m_content;
    BlockArea m_big;
    BlockArea m_small;
    std::vector<Entry> m_entries;
    std::uint32_t m_firstExtension = endOfChain;
    CompoundFile m_file;
};

} // namespace

void putU16(Buffer& buffer, std::size_t offset, unsigned value)
{
    buffer[offset] = static_cast<std::byte>(value);
    buffer[offset + 1] = static_cast<std::byte>(value >> 8U);
}

void putU32(Buffer& buffer, std::size_t offset, std::uint32_t value)
{
    putU16(buffer, offset, value);
    putU16(buffer, offset + 2, value >> 16U);
}

void addU16(Buffer& buffer, unsigned value)
{
    buffer.resize(buffer.size() + 2);
    putU16(buffer, buffer.size() - 2, value);
}

void addU32(Buffer& buffer, std::uint32_t value)
{
    buffer.resize(buffer.size() + 4);
    putU32(buffer, buffer.size() - 4, value);
}

Change set8(std::size_t offset, unsigned value)
{
    return [=](Buffer& buffer) { buffer[offset] = static_cast<std::byte>(value); };
}

Change set16(std::size_t offset, unsigned value)
{
    return [=](Buffer& buffer) { putU16(buffer, offset, value); };
}

Change set32(std::size_t offset, std::uint32_t value)
{
    return [=](Buffer& buffer) { putU32(buffer, offset, value); };
}

Change resizeTo(std::size_t size)
{
    return [=](Buffer& buffer) { buffer.resize(size); };
}

Change both(const Change& first, const Change& second)
{
    return [=](Buffer& buffer) { first(buffer), second(buffer); };
}

std::size_t CompoundFile::offsetOfLink(std::size_t block) const
{
    const auto perBlock = blockSize / 4;
    return offsetOfBlock(tableBlocks[block / perBlock]) + 4 * (block % perBlock);
}

std::size_t CompoundFile::offsetOfSmallLink(std::size_t block) const
{
    return offsetOfBlock(smallTableBlock) + 4 * block;
}

std::size_t CompoundFile::offsetOfEntry(std::size_t entry) const { return offsetOfBlock(directoryBlock) + 128 * entry; }

CompoundFile writeCompoundFile(const CompoundFileContent& content) { return Writer(content).write(); }

} // namespace vellumo::testing
