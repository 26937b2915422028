// SPDX-License-Identifier: MIT
#pragma once

#include "samples/DatabaseWriter.h"
#include "samples/IndexEntries.h"
#include "samples/LongValues.h"
#include "samples/RowEncoder.h"
#include "samples/TableDefinition.h"
#include "samples/UsageMaps.h"

#include <map>
#include <string>

namespace vellumo::samples {

// Writes one table: its rows, then index pages, usage maps and the definition, whose first page is already given out.
class TableWriter {
public:
    // The arguments outlive the writer.
    TableWriter(PageFile& file, UsageMaps& maps, const TableDescription& table, std::uint32_t definitionPage);

    // `tablePages`: the first definition pages of all tables, which the relations refer to. False: see error().
    [[nodiscard]] bool write(const TableIndexes& indexes, const std::vector<std::uint32_t>& tablePages, bool isSystem);
    [[nodiscard]] const std::string& error() const { return m_error; }
    // What was written where; without the name.
    [[nodiscard]] TablePlaces& places() { return m_places; }

private:
    [[nodiscard]] bool writeRows();
    [[nodiscard]] bool writeRow(const Row& row, std::size_t index);
    struct StoredRow {
        RowPlace row;   // where its bytes are
        RowPlace entry; // where indexes say that it is
    };
    StoredRow placeRow(ByteSpan bytes, RowState state);
    void noteLongValues(std::size_t index, RowPlace rowPlace);
    void noteAutonumber(const Row& row);
    void writeIndexes();
    void writeLongColumnMaps();
    // The place of a new map; an empty one and an error when the pages are too many.
    RowPlace addMap(const std::vector<std::uint32_t>& pages);
    RowPlace addRoomMap(const std::vector<std::uint32_t>& pages);

    PageFile& m_file;
    UsageMaps& m_maps;
    const TableDescription& m_table;
    std::uint32_t m_definitionPage;
    TableShape m_shape;
    std::map<std::size_t, LongValues> m_longValues;
    RowEncoder m_encoder;
    RowPages m_rows;
    RowPages m_movedRows;
    std::vector<IndexEntries> m_indexes; // one for each physical index
    DefinitionFacts m_facts;
    TablePlaces m_places;
    std::string m_error;
};

} // namespace vellumo::samples
