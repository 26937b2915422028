// SPDX-License-Identifier: MIT
#pragma once

#include "samples/Description.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vellumo::samples {

// Where a stored long value lies in the file, for tests that damage it. Offsets count from the start of the file.
struct LongValuePlace {
    std::size_t row = 0;            // number of the row as the row source counts
    std::size_t column = 0;         // index in TableDescription::columns
    std::uint64_t headerOffset = 0; // the 12 bytes in the row: length and kind, pointer, 0
    struct Piece {
        std::uint32_t pointer = 0;    // page << 8 | row
        std::uint64_t fileOffset = 0; // in a chain: 4 bytes of pointer to the next piece, then data
    };
    std::vector<Piece> pieces; // empty when the value is kept in the row
};

struct TablePlaces {
    std::string name;
    std::vector<std::uint32_t> definitionPages;
    std::vector<std::uint32_t> dataPages; // ascending
    std::uint64_t dataMapOffset = 0;      // the usage map row that names them
    std::vector<LongValuePlace> longValues;
};

struct WriteResult {
    std::string error; // for people; empty = written. After an error no file is left.
    std::uint32_t pageCount = 0;
    std::vector<TablePlaces> tables; // in the order of the description, then the hidden ones of complex columns

    [[nodiscard]] bool ok() const { return error.empty(); }
};

// Writes a database file. Rows go straight to disk: memory depends on the number of tables, long values and
// index entries, not on the number of rows. An existing file is replaced. The same description always gives the same
// bytes.
[[nodiscard]] WriteResult writeDatabase(const DatabaseDescription& description, const std::string& path);

} // namespace vellumo::samples
