// SPDX-License-Identifier: MIT
#include "samples/TableWriter.h"

#include "samples/IndexTree.h"
#include "text/Format.h"

#include <algorithm>

namespace vellumo::samples {
namespace {

std::map<std::size_t, LongValues> longColumnsOf(const TableDescription& table, PageFile& file)
{
    std::map<std::size_t, LongValues> columns;
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        const auto type = table.columns[i].type;
        if (type == ColumnType::Memo || type == ColumnType::Ole) columns.emplace(i, file);
    }
    return columns;
}

} // namespace

TableWriter::TableWriter(PageFile& file, UsageMaps& maps, const TableDescription& table, std::uint32_t definitionPage)
    : m_file(file)
    , m_maps(maps)
    , m_table(table)
    , m_definitionPage(definitionPage)
    , m_shape(table, file.version())
    , m_longValues(longColumnsOf(table, file))
    , m_encoder(m_table, m_shape, file.version(), m_longValues)
    , m_rows(file, definitionPage)
    , m_movedRows(file, definitionPage)
{
}

bool TableWriter::write(const TableIndexes& indexes, const std::vector<std::uint32_t>& tablePages, bool isSystem)
{
    for (const auto& index : indexes.physical)
        m_indexes.emplace_back(m_table, m_shape, index, m_file.version());
    if (!writeRows()) return false;
    m_facts.isSystem = isSystem;
    m_facts.tablePages = tablePages;
    if (m_table.statedRowCount) m_facts.rowCount = *m_table.statedRowCount;
    auto& pages = m_places.dataPages;
    std::merge(m_rows.pages().begin(), m_rows.pages().end(), m_movedRows.pages().begin(), m_movedRows.pages().end(),
        std::back_inserter(pages));
    const auto map = addMap(pages);
    m_places.dataMapOffset = map.fileOffset;
    m_facts.pages = map.pointer();
    m_facts.pagesWithRoom = addRoomMap(pages).pointer();
    writeIndexes();
    writeLongColumnMaps();
    if (!m_error.empty()) return false;
    const auto definition = encodeDefinition(m_table, m_shape, indexes, m_facts, m_file.version());
    if (!definition) {
        m_error = localizedFormat("A name in table <%@> cannot be stored.", {m_table.name});
        return false;
    }
    m_places.definitionPages = writeDefinition(m_file, m_definitionPage, *definition);
    return true;
}

bool TableWriter::writeRows()
{
    Row row;
    for (std::size_t index = 0; m_table.rows; ++index) {
        row.state = RowState::Live;
        row.columnCount = 0;
        row.slack = 0;
        if (!m_table.rows(index, row)) break;
        if (!writeRow(row, index)) return false;
    }
    m_rows.finish();
    m_movedRows.finish();
    for (auto& [column, values] : m_longValues)
        values.finish();
    return true;
}

bool TableWriter::writeRow(const Row& row, std::size_t index)
{
    const auto bytes = m_encoder.encode(row);
    if (bytes.empty()) {
        m_error = m_encoder.error();
        return false;
    }
    const auto place = placeRow(bytes, row.state);
    if (row.state == RowState::Live || row.state == RowState::Moved) {
        ++m_facts.rowCount;
        noteLongValues(index, place.row);
        for (auto& entries : m_indexes)
            entries.add(row, place.entry);
    }
    noteAutonumber(row);
    return true;
}

TableWriter::StoredRow TableWriter::placeRow(ByteSpan bytes, RowState state)
{
    switch (state) {
    case RowState::Live: {
        const auto place = m_rows.add(bytes);
        return {place, place};
    }
    case RowState::Deleted: return {m_rows.add(bytes, RowPages::Deleted), {}};
    case RowState::DeletedEmpty: return {m_rows.add({}, RowPages::Deleted), {}};
    case RowState::Moved: break;
    }
    const auto place = m_movedRows.add(bytes, RowPages::MovedHere);
    std::uint8_t pointer[4];
    putNumber<std::uint32_t>(pointer, place.pointer());
    return {place, m_rows.add(pointer, RowPages::Pointer)};
}

void TableWriter::noteLongValues(std::size_t index, RowPlace rowPlace)
{
    for (const auto& value : m_encoder.longValues()) {
        auto& noted = m_places.longValues.emplace_back();
        noted.row = index;
        noted.column = value.column;
        noted.headerOffset = rowPlace.fileOffset + value.headerOffset;
        for (const auto& piece : value.pieces)
            noted.pieces.push_back({piece.pointer(), piece.fileOffset});
    }
}

void TableWriter::noteAutonumber(const Row& row)
{
    for (std::size_t i = 0; i < std::min(row.values.size(), m_table.columns.size()); ++i) {
        const auto* const number = std::get_if<std::int64_t>(&row.values[i]);
        if (m_table.columns[i].autonumber && number != nullptr)
            m_facts.lastAutonumber = std::max(m_facts.lastAutonumber, static_cast<std::uint32_t>(*number));
    }
}

void TableWriter::writeIndexes()
{
    for (auto& index : m_indexes) {
        const auto entries = index.take();
        const auto tree = writeIndexTree(m_file, m_definitionPage, entries);
        m_facts.indexes.push_back(
            {addMap(tree.pages).pointer(), tree.rootPage, static_cast<std::uint32_t>(entries.size())});
    }
}

void TableWriter::writeLongColumnMaps()
{
    for (const auto& [column, values] : m_longValues) {
        if (m_table.columns[column].deleted) continue;
        const auto number = m_shape.places[column].number;
        m_facts.longColumns.push_back({number, addMap(values.pages()).pointer(), addRoomMap(values.pages()).pointer()});
    }
}

RowPlace TableWriter::addMap(const std::vector<std::uint32_t>& pages)
{
    const auto place = m_maps.add(pages);
    if (!place) {
        m_error = localizedFormat("Table <%@> has more pages than the format can name.", {m_table.name});
        return {};
    }
    return *place;
}

// Only the page filled last may still have room.
RowPlace TableWriter::addRoomMap(const std::vector<std::uint32_t>& pages)
{
    return addMap(pages.empty() ? pages : std::vector<std::uint32_t>{pages.back()});
}

} // namespace vellumo::samples
