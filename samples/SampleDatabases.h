#pragma once

#include "samples/Description.h"

#include <cstdint>

// Databases for tests and measurements.
namespace vellumo::samples {

// One table "Rows" of 9 columns: two short texts, byte, integer, long, double, date, currency, boolean. A million rows
// are about 90 MB. Rows are made when they are written.
[[nodiscard]] DatabaseDescription millionDatabase(std::size_t rowCount = 1'000'000);

// A table "Wide" of 255 columns of every type but objects, and a table "Objects" with objects of every kind and
// storage.
[[nodiscard]] DatabaseDescription wideDatabase();

// Tables "Table 1", "Table 2", .. with a few rows each.
[[nodiscard]] DatabaseDescription manyTablesDatabase(std::size_t tableCount);

// A table "Types" with a column of every type and rows with the edges of their ranges, a table "Rows" with moved,
// deleted and short rows, a table "Memos" with long values of every storage.
[[nodiscard]] DatabaseDescription typesDatabase(JetVersion version);

} // namespace vellumo::samples
