// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace vellumo {

class TAdmMDBTable;
struct ExportOptions;

// Texts that are written, and converted into the output's encoding, one by one.
using TextPieces = std::vector<std::string>;

// What a text file holds around the cells of a table.
struct TextFrame {
    TextPieces begin;
    std::vector<TextPieces> gaps; // of each row: before the first cell, between two cells, behind the last
    TextPieces end;
};

// CSV and TXT: the header line, delimiters and line ends. XML: tags. `table` has the columns; its rows do not matter.
[[nodiscard]] TextFrame textFrame(const TAdmMDBTable& table, const ExportOptions& options);

} // namespace vellumo
