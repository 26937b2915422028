// SPDX-License-Identifier: MIT
#pragma once

#include "export/biff8/CellFormats.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

// The records of the workbook globals, the first part of the stream: what Microsoft's [MS-XLS] asks for, with a single
// font.
namespace vellumo::biff8 {

// Where the format of cells stands among those of the workbook; those that are not General follow in their order.
inline constexpr std::uint16_t cellFormatIndex = 15;
[[nodiscard]] constexpr std::uint16_t formatIndex(CellFormat format)
{
    return static_cast<std::uint16_t>(cellFormatIndex + static_cast<unsigned>(format));
}

// From BOF up to the sheet list. At least one sheet, at most 4112. `hasFormats`: some cell has another format than
// General.
void appendGlobalsHead(std::string& bytes, std::size_t sheetCount, bool hasFormats);

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
