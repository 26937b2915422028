// SPDX-License-Identifier: MIT
#include "samples/TableDefinition.h"

#include "samples/TextCodec.h"

#include <algorithm>

namespace vellumo::samples {
namespace {

constexpr std::uint32_t jet4Mark = 1625; // found in many places of Jet 4 definitions, never read
constexpr std::uint32_t jet4IndexMark = 1923;
constexpr std::uint16_t sortOrder = 0x0409;
constexpr std::uint16_t codePage = 1252;
constexpr std::size_t maxIndexKeys = 10;
constexpr std::size_t pageHeaderSize = 8;

class DefinitionEncoder {
public:
    DefinitionEncoder(const TableDescription& table, const TableShape& shape, JetVersion version, bool isSystem)
        : m_table(table)
        , m_shape(shape)
        , m_version(version)
        , m_isJet4(version == JetVersion::Jet4)
        , m_isSystem(isSystem)
    {
    }

    void header(const TableIndexes& indexes, const DefinitionFacts& facts)
    {
        m_out.resize(pageHeaderSize + 4); // the length is filled in at the end
        jet4Only<std::uint32_t>(jet4Mark);
        number<std::uint32_t>(facts.rowCount);
        number<std::uint32_t>(facts.lastAutonumber);
        if (m_isJet4) {
            m_out.push_back(1);
            m_out.resize(m_out.size() + 15);
        }
        m_out.push_back(m_isSystem ? 'S' : 'N');
        number<std::uint16_t>(m_shape.columnCount);
        number<std::uint16_t>(m_shape.variableCount);
        number<std::uint16_t>(m_shape.listedCount);
        number<std::uint32_t>(static_cast<std::uint32_t>(indexes.logical.size()));
        number<std::uint32_t>(static_cast<std::uint32_t>(indexes.physical.size()));
        number<std::uint32_t>(facts.pages);
        number<std::uint32_t>(facts.pagesWithRoom);
        for (std::size_t i = 0; i < indexes.physical.size(); ++i) {
            number<std::uint32_t>(0);
            number<std::uint32_t>(facts.indexes[i].entryCount);
            jet4Only<std::uint32_t>(0);
        }
    }

    void columns()
    {
        for (std::size_t i = 0; i < m_table.columns.size(); ++i) {
            if (!m_table.columns[i].deleted) column(m_table.columns[i], m_shape.places[i]);
        }
        for (const auto& column : m_table.columns) {
            if (!column.deleted) name(column.name);
        }
    }

    void physicalIndex(const PhysicalIndex& index, const DefinitionFacts::IndexPages& pages)
    {
        jet4Only<std::uint32_t>(jet4IndexMark);
        for (std::size_t i = 0; i < maxIndexKeys; ++i) {
            const bool isUsed = i < index.keys.size();
            number<std::uint16_t>(isUsed ? index.keys[i].columnNumber : 0xFFFF);
            m_out.push_back(isUsed && !index.keys[i].ascending ? 0 : 1);
        }
        number<std::uint32_t>(pages.map);
        number<std::uint32_t>(pages.rootPage);
        jet4Only<std::uint32_t>(0);
        m_out.push_back(static_cast<std::uint8_t>(index.flags | (m_isJet4 ? 0x80 : 0)));
        if (m_isJet4) m_out.resize(m_out.size() + 5);
    }

    void logicalIndex(const LogicalIndex& index, const std::vector<std::uint32_t>& tablePages)
    {
        const bool isRelation = index.kind == LogicalIndex::Relation;
        jet4Only<std::uint32_t>(jet4Mark);
        number<std::uint32_t>(static_cast<std::uint32_t>(index.number));
        number<std::uint32_t>(static_cast<std::uint32_t>(index.physical));
        m_out.push_back(index.side);
        number<std::uint32_t>(static_cast<std::uint32_t>(index.otherNumber));
        number<std::uint32_t>(isRelation ? tablePages[index.otherTable] : 0);
        m_out.push_back(isRelation ? index.cascadeUpdates : 4);
        m_out.push_back(isRelation ? index.cascadeDeletes : 4);
        m_out.push_back(index.kind);
        jet4Only<std::uint32_t>(0);
    }

    void name(const std::string& text)
    {
        const auto encoded = encodeText(text, m_version);
        const auto limit = m_isJet4 ? 0xFFFFU : 0xFFU;
        if (!encoded || encoded->size() > limit) {
            m_fFailed = true;
            return;
        }
        if (m_isJet4)
            number<std::uint16_t>(static_cast<int>(encoded->size()));
        else
            m_out.push_back(static_cast<std::uint8_t>(encoded->size()));
        appendBytes(m_out, *encoded);
    }

    void longColumn(const DefinitionFacts::LongColumnMaps& maps)
    {
        number<std::uint16_t>(maps.columnNumber);
        number<std::uint32_t>(maps.pages);
        number<std::uint32_t>(maps.pagesWithRoom);
    }

    [[nodiscard]] std::optional<Bytes> finish()
    {
        if (m_fFailed) return std::nullopt;
        number<std::uint16_t>(0xFFFF);
        putNumber<std::uint32_t>(&m_out[pageHeaderSize], static_cast<std::uint32_t>(m_out.size()));
        return std::move(m_out);
    }

private:
    template <std::integral T, std::integral From> void number(From value)
    {
        appendNumber<T>(m_out, static_cast<T>(value));
    }
    template <std::integral T> void jet4Only(T value)
    {
        if (m_isJet4) appendNumber<T>(m_out, value);
    }

    [[nodiscard]] std::uint8_t columnFlags(const ColumnDescription& column, bool isFixed) const
    {
        int flags = 2;
        if (isFixed) flags |= 1;
        if (column.autonumber) flags |= column.type == ColumnType::Guid ? 0x40 : 4;
        if (column.type == ColumnType::Complex) flags |= 4;
        if (m_isSystem) flags |= 0x10;
        if (column.hyperlink) flags |= 0x80;
        return static_cast<std::uint8_t>(flags);
    }

    // What stands where a numeric column has its precision and scale is the sort order for all others.
    void sortOrderOrScale(const ColumnDescription& column)
    {
        if (column.type == ColumnType::Numeric) {
            m_out.push_back(static_cast<std::uint8_t>(column.precision));
            m_out.push_back(static_cast<std::uint8_t>(column.scale));
        } else {
            number<std::uint16_t>(sortOrder);
        }
    }

    void column(const ColumnDescription& column, const ColumnPlace& place)
    {
        m_out.push_back(static_cast<std::uint8_t>(column.entryType.value_or(column.type)));
        jet4Only<std::uint32_t>(jet4Mark);
        number<std::uint16_t>(place.number);
        number<std::uint16_t>(place.variableIndex);
        number<std::uint16_t>(m_isSystem ? 0 : place.number);
        if (!m_isJet4) number<std::uint16_t>(1);
        if (column.type == ColumnType::Complex) {
            number<std::uint32_t>(column.complexId);
        } else {
            sortOrderOrScale(column);
            number<std::uint16_t>(m_isJet4 ? 0 : codePage);
        }
        m_out.push_back(columnFlags(column, place.isFixed));
        if (m_isJet4) {
            m_out.push_back(static_cast<std::uint8_t>(
                (column.compressed ? 1 : 0) | (column.calculated ? 0xC0 : 0) | column.moreFlags));
            number<std::uint32_t>(0);
        }
        number<std::uint16_t>(place.fixedOffset);
        number<std::uint16_t>(place.size);
    }

    const TableDescription& m_table;
    const TableShape& m_shape;
    JetVersion m_version;
    bool m_isJet4;
    bool m_isSystem;
    Bytes m_out;
    bool m_fFailed = false;
};

// Bytes 2 and 3: a mark in Jet 3; in Jet 4 the room left on the last page.
std::uint16_t headerField(JetVersion version, bool isLast, std::size_t used)
{
    if (version == JetVersion::Jet3) return 0x4356; // "VC"
    const auto room = pageSize(version) - pageHeaderSize;
    return isLast && used < room ? static_cast<std::uint16_t>(room - used) : 0;
}

} // namespace

std::optional<Bytes> encodeDefinition(const TableDescription& table, const TableShape& shape,
    const TableIndexes& indexes, const DefinitionFacts& facts, JetVersion version)
{
    DefinitionEncoder encoder(table, shape, version, facts.isSystem);
    encoder.header(indexes, facts);
    encoder.columns();
    for (std::size_t i = 0; i < indexes.physical.size(); ++i)
        encoder.physicalIndex(indexes.physical[i], facts.indexes[i]);
    for (const auto& index : indexes.logical)
        encoder.logicalIndex(index, facts.tablePages);
    for (const auto& index : indexes.logical)
        encoder.name(index.name);
    for (const auto& maps : facts.longColumns)
        encoder.longColumn(maps);
    return encoder.finish();
}

std::vector<std::uint32_t> writeDefinition(PageFile& file, std::uint32_t firstPage, const Bytes& definition)
{
    std::vector<std::uint32_t> pages{firstPage};
    const auto pageRoom = file.pageSize() - pageHeaderSize;
    for (std::size_t at = pageHeaderSize; at < definition.size(); at += pageRoom) {
        const auto part = ByteSpan(definition).subspan(at, std::min(pageRoom, definition.size() - at));
        const bool isLast = at + part.size() == definition.size();
        Bytes page(file.pageSize());
        page[0] = 2;
        page[1] = 1;
        putNumber<std::uint16_t>(&page[2], headerField(file.version(), isLast, pageHeaderSize + part.size()));
        const auto current = pages.back();
        if (!isLast) pages.push_back(file.allocate());
        putNumber<std::uint32_t>(&page[4], isLast ? 0 : pages.back());
        std::copy(part.begin(), part.end(), page.begin() + pageHeaderSize);
        file.write(current, page);
    }
    return pages;
}

} // namespace vellumo::samples
