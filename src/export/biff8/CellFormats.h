// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace vellumo {

// How a sheet shows a number.
enum class CellFormat : std::uint8_t { General, DateTime, DateTimeMilliseconds, Time, TimeMilliseconds, Decimal };

// In the order of the formats but for General, which needs none; as workbooks of every kind write them.
inline constexpr std::array<std::string_view, 5> cellFormatCodes = {
    R"(yyyy\-mm\-dd\ hh:mm:ss)", R"(yyyy\-mm\-dd\ hh:mm:ss.000)", "hh:mm:ss", "hh:mm:ss.000", "#,##0.00##"};

// The numbers from here on are free for formats of a workbook's own.
inline constexpr std::uint16_t firstFreeFormat = 164;

} // namespace vellumo
