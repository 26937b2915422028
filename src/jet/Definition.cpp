// SPDX-License-Identifier: MIT
#include "jet/Definition.h"

#include "jet/ByteReader.h"
#include "jet/Limits.h"

#include <algorithm>
#include <bitset>
#include <numeric>

namespace vellumo::jet {

std::string propertyText(const PropertyValue& value)
{
    if (const auto* isSet = std::get_if<bool>(&value)) return *isSet ? "yes" : "no";
    if (const auto* number = std::get_if<std::int64_t>(&value)) return std::to_string(*number);
    return std::get<std::string>(value);
}

std::vector<CellKind> cellKinds(const TableDef& table)
{
    std::vector<CellKind> kinds;
    for (const auto& column : table.columns)
        kinds.push_back(isObjectType(column.type) ? CellKind::Blob : CellKind::Text);
    return kinds;
}

std::vector<std::size_t> numberOrder(const std::vector<ColumnDef>& columns)
{
    std::vector<std::size_t> order(columns.size());
    std::iota(order.begin(), order.end(), 0);
    std::ranges::stable_sort(order, {}, [&](std::size_t column) { return columns[column].number; });
    return order;
}

namespace {

// Offsets and sizes in a definition, bytes. The two versions differ in unused fields only.
struct Layout {
    std::size_t rowCount;
    std::size_t kind;        // systemKind or userKind
    std::size_t columnLimit; // highest column number + 1
    std::size_t columnCount;
    std::size_t logicalIndexCount;
    std::size_t physicalIndexCount;
    std::size_t pageMap;      // pointer
    std::size_t indexEntries; // 8 or 12 bytes a physical index
    std::size_t indexEntrySize;

    std::size_t columnSize;
    std::size_t columnNumber;    // offsets inside a column entry; followed by the variable index
    std::size_t columnPrecision; // followed by the scale
    std::size_t columnFlags;     // in Jet 4 followed by a second flag byte
    std::size_t columnOffset;    // in the fixed part
    std::size_t columnBytes;

    std::size_t nameLengthSize; // 1 or 2 bytes before a name
    std::size_t physicalSize;
    std::size_t physicalKeys;
    std::size_t physicalRoot;
    std::size_t physicalFlags;
    std::size_t logicalSize;
    std::size_t logicalPhysical; // offset of the physical index inside a logical one
    std::size_t logicalKind;
};

constexpr Layout jet3{12, 20, 21, 25, 27, 31, 35, 43, 8, 18, 1, 9, 13, 14, 16, 1, 39, 0, 34, 38, 20, 4, 19};
constexpr Layout jet4{16, 40, 41, 45, 47, 51, 55, 63, 12, 25, 5, 11, 15, 21, 23, 2, 52, 4, 38, 46, 28, 8, 23};

constexpr std::size_t totalLength = 8; // offset of u32: bytes of the whole definition, as joined
constexpr std::size_t pageHeaderSize = 8;
constexpr std::size_t nextPageOffset = 4;

constexpr std::uint8_t systemKind = 'S';
constexpr std::uint8_t userKind = 'N';
constexpr int relationType = 2; // of a logical index
constexpr std::uint8_t fixedFlag = 0x01;
constexpr std::uint8_t autoNumberFlag = 0x04;
constexpr std::uint8_t autoIdFlag = 0x40; // the same of a replication id
constexpr std::uint8_t hyperlinkFlag = 0x80;
// In the second flag byte.
constexpr std::uint8_t valueKeyFlag = 0x04;
constexpr std::uint8_t groupKeyFlag = 0x08;
constexpr std::uint8_t historyFlag = 0x20;
constexpr std::uint8_t calculatedFlags = 0xC0;
constexpr std::uint8_t fixedBinaryType = 17; // binary of one length, in system tables
constexpr std::size_t keysPerIndex = 10;
constexpr std::uint16_t noColumn = 0xFFFF;
constexpr std::uint16_t endOfLongValueMaps = 0xFFFF;
constexpr std::size_t longValueMapsSize = 8; // two pointers, behind the number of a memo or object column

struct PhysicalIndex {
    std::vector<std::pair<unsigned, bool>> keys; // column number, ascending
    std::uint32_t root = 0;                      // page
    int flags = 0;
};

class Parser {
public:
    Parser(ByteSpan bytes, bool isJet3, const NameDecoder& decodeName)
        : m_bytes(bytes)
        , m_layout(isJet3 ? jet3 : jet4)
        , m_reader(bytes)
        , m_decodeName(decodeName)
    {
    }

    std::optional<ParsedDefinition> parse()
    {
        if (m_bytes.size() < m_layout.indexEntries) return std::nullopt;
        const auto columnCount = load16(&m_bytes[m_layout.columnCount]);
        const auto logicalCount = load32(&m_bytes[m_layout.logicalIndexCount]);
        const auto physicalCount = load32(&m_bytes[m_layout.physicalIndexCount]);
        if (columnCount > mostColumns || !isPlausible(logicalCount, m_layout.logicalSize)
            || !isPlausible(physicalCount, m_layout.physicalSize))
            return std::nullopt;

        ParsedDefinition parsed;
        auto& table = parsed.table;
        table.statedRowCount = load32(&m_bytes[m_layout.rowCount]);
        table.lastAutoNumber = static_cast<std::int32_t>(load32(&m_bytes[m_layout.rowCount + 4]));
        table.isSystem = m_bytes[m_layout.kind] == systemKind;
        table.columnLimit = load16(&m_bytes[m_layout.columnLimit]);
        table.pageMapPointer = load32(&m_bytes[m_layout.pageMap]);
        m_reader.seek(m_layout.indexEntries + physicalCount * m_layout.indexEntrySize);
        readColumns(columnCount, table);
        if (!m_reader.isGood() || !haveOwnNumbers(table)) return std::nullopt;
        takeHistories(table);
        readIndices(logicalCount, physicalCount, table);
        // A definition that breaks off among its indexes still tells how to read the rows.
        if (!m_reader.isGood()) table.indices.clear();
        parsed.isSound = m_reader.isGood() && endsWell();
        return parsed;
    }

private:
    [[nodiscard]] bool isPlausible(std::uint32_t count, std::size_t entrySize) const
    {
        return count <= m_bytes.size() / entrySize;
    }

    std::string readName()
    {
        const std::size_t length =
            m_layout.nameLengthSize == 1 ? m_reader.number<std::uint8_t>() : m_reader.number<std::uint16_t>();
        return m_decodeName(m_reader.take(length));
    }

    void readColumns(std::size_t count, TableDef& table)
    {
        for (std::size_t i = 0; i < count; ++i) {
            const auto entry = m_reader.take(m_layout.columnSize);
            if (!m_reader.isGood()) return;
            table.columns.push_back(column(entry));
        }
        for (auto& column : table.columns)
            column.name = readName();
    }

    // Rows tell columns apart by their numbers.
    [[nodiscard]] static bool haveOwnNumbers(const TableDef& table)
    {
        std::bitset<mostColumns + 1> used;
        for (const auto& column : table.columns) {
            if (column.number > mostColumns || column.number >= table.columnLimit || used[column.number]) return false;
            used[column.number] = true;
        }
        return true;
    }

    // The columns of histories are nobody's to see, and neither are the indexes over them.
    static void takeHistories(TableDef& table)
    {
        for (auto& column : table.columns)
            if (isHistory(column)) table.histories.push_back({std::move(column)});
        std::erase_if(table.columns, isHistory);
    }
    static bool isHistory(const ColumnDef& column) { return column.complexKind == ComplexKind::Versions; }

    // Behind the indexes: u16 number of each memo or object column with two pointers, then the end mark; and there the
    // length that the definition states is used up.
    [[nodiscard]] bool endsWell()
    {
        while (m_reader.isGood() && m_reader.number<std::uint16_t>() != endOfLongValueMaps)
            m_reader.skip(longValueMapsSize);
        return m_reader.isGood() && load32(&m_bytes[totalLength]) == m_reader.position();
    }

    [[nodiscard]] ColumnDef column(ByteSpan entry) const
    {
        ColumnDef column;
        column.type = entry[0] == fixedBinaryType ? ColumnType::Binary : columnTypeOfCode(entry[0]);
        column.number = load16(&entry[m_layout.columnNumber]);
        column.variableIndex = load16(&entry[m_layout.columnNumber + 2]);
        column.fixedOffset = load16(&entry[m_layout.columnOffset]);
        column.size = load16(&entry[m_layout.columnBytes]);
        // The two bytes hold the sort order in columns of any other type.
        if (column.type == ColumnType::Numeric) {
            column.precision = entry[m_layout.columnPrecision];
            column.scale = entry[m_layout.columnPrecision + 1];
        }
        const auto flags = entry[m_layout.columnFlags];
        column.isFixed = (flags & fixedFlag) != 0;
        const auto isId = column.type == ColumnType::ReplicationId;
        const auto isComplexNumber = column.type == ColumnType::ComplexAutoNumber;
        column.isAutoNumber = !isComplexNumber && (flags & (isId ? autoIdFlag : autoNumberFlag)) != 0;
        column.isHyperlink = column.type == ColumnType::Memo && (flags & hyperlinkFlag) != 0;
        // Jet 3 has no second flag byte; what follows there is the offset.
        if (m_layout.nameLengthSize == 2) readMoreFlags(entry, column);
        return column;
    }

    void readMoreFlags(ByteSpan entry, ColumnDef& column) const
    {
        const auto flags = entry[m_layout.columnFlags + 1];
        column.isCalculated = (flags & calculatedFlags) == calculatedFlags;
        column.isValueKey = (flags & valueKeyFlag) != 0;
        column.isGroupKey = (flags & groupKeyFlag) != 0;
        if (column.type != ColumnType::ComplexAutoNumber) return;
        column.complexId = load32(&entry[m_layout.columnPrecision]);
        if ((flags & historyFlag) != 0) column.complexKind = ComplexKind::Versions;
    }

    // A logical index names the physical one that holds its keys by position. Numbers of indexes have gaps in real
    // files, so positions and numbers must not be mixed up.
    void readIndices(std::uint32_t logicalCount, std::uint32_t physicalCount, TableDef& table)
    {
        std::vector<PhysicalIndex> physical;
        for (std::uint32_t i = 0; i < physicalCount && m_reader.isGood(); ++i)
            physical.push_back(physicalIndex(m_reader.take(m_layout.physicalSize)));
        for (const auto& index : physical)
            if (index.root != 0) table.indexRoots.push_back(index.root);
        for (std::uint32_t i = 0; i < logicalCount && m_reader.isGood(); ++i) {
            const auto entry = m_reader.take(m_layout.logicalSize);
            if (entry.empty()) return;
            IndexDef index;
            index.type = entry[m_layout.logicalKind];
            const auto position = load32(&entry[m_layout.logicalPhysical]);
            // The entry of a relation lends the keys of another index and is no index of its own.
            if (position < physical.size() && index.type != relationType) {
                index.flags = physical[position].flags;
                index.keys = keysOf(physical[position], table.columns);
            }
            table.indices.push_back(std::move(index));
        }
        for (auto& index : table.indices)
            index.name = readName();
    }

    [[nodiscard]] PhysicalIndex physicalIndex(ByteSpan entry) const
    {
        PhysicalIndex index;
        if (entry.empty()) return index;
        for (std::size_t k = 0; k < keysPerIndex; ++k) {
            const auto* key = &entry[m_layout.physicalKeys + 3 * k];
            if (load16(key) != noColumn) index.keys.emplace_back(load16(key), key[2] == 1);
        }
        index.root = load32(&entry[m_layout.physicalRoot]);
        index.flags = entry[m_layout.physicalFlags];
        return index;
    }

    static std::vector<IndexKeyDef> keysOf(const PhysicalIndex& physical, const std::vector<ColumnDef>& columns)
    {
        std::vector<IndexKeyDef> keys;
        for (const auto& [number, isAscending] : physical.keys) {
            const auto found = std::find_if(
                columns.begin(), columns.end(), [n = number](const ColumnDef& column) { return column.number == n; });
            if (found != columns.end())
                keys.push_back({static_cast<std::size_t>(found - columns.begin()), isAscending});
        }
        return keys;
    }

    ByteSpan m_bytes;
    const Layout& m_layout;
    ByteReader m_reader;
    const NameDecoder& m_decodeName;
};

} // namespace

DefinitionBytes readDefinition(Pages& pages, PageBuffer& buffer, std::uint32_t firstPage)
{
    DefinitionBytes definition;
    auto& bytes = definition.bytes;
    auto next = firstPage;
    // A chain that is longer than the file circles.
    for (std::uint32_t read = 0; next != 0 && read < pages.count() && bytes.size() < mostDefinitionBytes; ++read) {
        const auto page = pages.read(next, buffer);
        if (page.empty() || page[0] != DefinitionPageType) return definition;
        const auto content = bytes.empty() ? page : page.subspan(pageHeaderSize);
        bytes.insert(bytes.end(), content.begin(), content.end());
        next = load32(&page[nextPageOffset]);
    }
    definition.isComplete = next == 0 && !bytes.empty();
    return definition;
}

std::optional<bool> isSystemDefinition(ByteSpan page, bool isJet3)
{
    const auto kind = page[(isJet3 ? jet3 : jet4).kind];
    return kind == systemKind || kind == userKind ? std::optional(kind == systemKind) : std::nullopt;
}

std::optional<ParsedDefinition> parseDefinition(ByteSpan bytes, bool isJet3, const NameDecoder& decodeName)
{
    return Parser(bytes, isJet3, decodeName).parse();
}

} // namespace vellumo::jet
