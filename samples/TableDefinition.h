// SPDX-License-Identifier: MIT
#pragma once

#include "samples/IndexPlan.h"
#include "samples/PageFile.h"
#include "samples/TableShape.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace vellumo::samples {

// What a table's definition says that only writing the table tells.
struct DefinitionFacts {
    struct IndexPages {
        std::uint32_t map = 0; // pointer
        std::uint32_t rootPage = 0;
        std::uint32_t entryCount = 0;
    };
    struct LongColumnMaps {
        int columnNumber = 0;
        std::uint32_t pages = 0; // pointers
        std::uint32_t pagesWithRoom = 0;
    };
    bool isSystem = false;
    std::uint32_t rowCount = 0;
    std::uint32_t lastAutonumber = 0;
    std::uint32_t pages = 0; // pointers to usage maps
    std::uint32_t pagesWithRoom = 0;
    std::vector<IndexPages> indexes; // one for each physical index
    std::vector<LongColumnMaps> longColumns;
    std::vector<std::uint32_t> tablePages; // first definition page of every table, for the relations
};

// The definition as one byte string, its first 8 bytes (the page header) left zero. nullopt when a name cannot be
// represented in the version.
[[nodiscard]] std::optional<Bytes> encodeDefinition(const TableDescription& table, const TableShape& shape,
    const TableIndexes& indexes, const DefinitionFacts& facts, JetVersion version);

// Writes the byte string to `firstPage` and, where it is longer than that, to new pages. The pages used, in order.
std::vector<std::uint32_t> writeDefinition(PageFile& file, std::uint32_t firstPage, const Bytes& definition);

} // namespace vellumo::samples
