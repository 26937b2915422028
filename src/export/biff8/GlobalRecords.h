// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

// The records of the workbook globals, the first part of the stream: what Microsoft's [MS-XLS] asks for, with a single
// font and a single cell format.
namespace vellumo::biff8 {

// The format of all cells.
inline constexpr std::uint16_t cellFormatIndex = 15;

// From BOF up to the sheet list. At least one sheet, at most 4112.
void appendGlobalsHead(std::string& bytes, std::size_t sheetCount);

struct SheetEntry {
    std::u16string name;      // 1 to 31 units
    std::uint32_t offset = 0; // of the sheet's BOF in the stream
};
// The sheet list; as long whatever the offsets are.
void appendSheetList(std::string& bytes, std::span<const SheetEntry> sheets);

// What stands between the sheet list and the strings.
void appendCountry(std::string& bytes);

void appendBeginOfSheet(std::string& bytes);
void appendEnd(std::string& bytes);

} // namespace vellumo::biff8
