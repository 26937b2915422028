// SPDX-License-Identifier: MIT
#pragma once

#include "export/ExportPreview.h"
#include "export/biff8/CellWatcher.h"

namespace vellumo {

// The cells of a workbook's only sheet, as a preview shows them.
class SheetPreview {
public:
    // `hasHeader`: the first row has the names of the columns.
    explicit SheetPreview(bool hasHeader)
        : m_hasHeader(hasHeader)
    {
    }
    void take(const WrittenCell& cell);
    // Columns and rows of a sheet of that many, some of which may have had no cell that is not blank. Once.
    void moveTo(ExportPreview& preview, std::size_t columns, std::size_t rows);

private:
    struct Column {
        std::optional<std::string> title;
        std::vector<const char*> kinds; // keys of the message table, in the order of the cells
    };

    bool m_hasHeader;
    std::vector<Column> m_columns;
    std::vector<std::vector<std::optional<std::string>>> m_rows;
};

} // namespace vellumo
