// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

// How much a file may ask for. Each is far above what a sound file needs; where one is reached, the reader goes on
// without the rest and says so in the damage report.
namespace vellumo::jet {

// A definition: 255 columns, their names, and all indexes a table can have take less than 200 KB.
constexpr std::size_t mostDefinitionBytes = 1 << 20;
constexpr std::size_t mostColumns = 255;
// A row number is one byte of a pointer.
constexpr std::size_t mostRowsOnPage = 255;
// Stored bytes of the cells of a page, a byte of the page. Sound cells never share a byte; in a damaged page all of
// them may name the same.
constexpr std::size_t cellBytesPerPageByte = 2;
// Characters of a property's name, which Access holds to this too. Each of any number of properties repeats a name.
constexpr std::size_t mostPropertyNameLength = 64;
// Bytes of memos and objects that lie on pages of their own, of all tables together, a byte of the file. A sound file
// stores each value once; the same pages named by many rows would multiply them.
constexpr std::uint64_t longValueBytesPerFileByte = 2;
// Bytes that packed objects become, of all tables together: a picture of one colour packs a thousandfold, a whole file
// of such pictures is none that anybody has.
constexpr std::uint64_t unpackedBytesPerFileByte = 32;
constexpr std::uint64_t unpackedBytesAtLeast = std::uint64_t{256} << 20;

} // namespace vellumo::jet
