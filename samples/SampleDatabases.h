// SPDX-License-Identifier: MIT
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

// A file of Access 2019: the tables of typesDatabase(), and "Newer" with a column of each kind that only newer files
// have.
[[nodiscard]] DatabaseDescription newerDatabase();

// The tables of typesDatabase(), and: "Parents" of many pages with indexes of several leaves, "Children" that refer to
// them, with objects and memos in chains, and rows from before columns were added and one was deleted. Every table has
// a column "ID" of unique numbers.
[[nodiscard]] DatabaseDescription evolvedDatabase(JetVersion version);

// A table "Spread" over so many pages that their list takes its large form, with two smaller ones.
[[nodiscard]] DatabaseDescription spreadDatabase(JetVersion version);

} // namespace vellumo::samples
