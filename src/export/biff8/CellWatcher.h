// SPDX-License-Identifier: MIT
#pragma once

#include "export/biff8/CellFormats.h"

#include <cstddef>
#include <functional>
#include <string_view>

namespace vellumo {

// A cell as it stands in a workbook. Row and column count from 0.
struct WrittenCell {
    enum class Kind : std::uint8_t { Text, Number, Boolean, Error };
    std::uint32_t row;
    std::size_t column;
    Kind kind;
    std::string_view text = {}; // UTF-8; valid as long as the call
    double number = 0;          // 1 or 0 of a boolean
    CellFormat format = CellFormat::General;
};

// Told by a workbook of each cell that it takes and that is not blank; titles are cells too.
using CellWatcher = std::function<void(const WrittenCell& cell)>;

} // namespace vellumo
