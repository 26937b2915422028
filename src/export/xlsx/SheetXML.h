// SPDX-License-Identifier: MIT
#pragma once

#include "export/biff8/CellWatcher.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

// The parts of a workbook of Office Open XML (ECMA-376), as text.
namespace vellumo::xlsx {

// What a sheet's column shows above its cells, and how wide it is, in digits of the standard font.
struct ColumnLayout {
    std::string title;
    unsigned width = 0;
};

// Column 0 is "A", column 26 "AA".
[[nodiscard]] std::string columnLetters(std::size_t column);

// Appends a text as cells have it: characters that XML does not take, and underscores that would read as the begin of
// one of these, become "_xHHHH_". True when there was such a character.
bool appendCellText(std::string_view text, std::string& out);

// Collects the XML of one sheet after the other, cell by cell: rows from the top, cells from the left.
class SheetXML {
public:
    // Null: nobody. In place of the one before.
    void setWatcher(CellWatcher watcher) { m_watcher = std::move(watcher); }

    // What is to be written, to be taken from here.
    [[nodiscard]] std::string& text() { return m_text; }

    // `hasHeader`: the titles are the first row, which stays in sight. At least one column has one.
    void begin(std::span<const ColumnLayout> columns, bool hasHeader);
    void beginRow();
    // `digits`: a number as C++ and XML write it.
    void addNumber(std::size_t column, std::string_view digits, CellFormat format);
    void addBoolean(std::size_t column, bool value);
    // As appendCellText.
    bool addText(std::size_t column, std::string_view value);
    void endRow() { m_text += "</row>"; }
    void end();

    // Rows so far, the header included.
    [[nodiscard]] std::uint32_t rowCount() const { return m_rowCount; }
    // "$A$1:$C$9", all cells of a sheet with a header.
    [[nodiscard]] std::string filterRange() const;

private:
    static constexpr unsigned headerStyle = 1;

    void beginCell(std::size_t column, unsigned style);
    void addHeader(std::span<const ColumnLayout> columns);
    void tellWatcher(std::size_t column, WrittenCell::Kind kind, std::string_view text, double number = 0,
        CellFormat format = CellFormat::General) const;

    CellWatcher m_watcher;
    std::string m_text;
    std::vector<std::string> m_cells; // `<c r="A` for each column
    std::string m_row;                // the number of the row, and a quote
    std::uint32_t m_rowCount = 0;
    bool m_hasHeader = false;
};

// The other members of the package; `sheetCount` sheets.
struct SheetEntry {
    std::string name;        // as workbooks have them
    std::string filterRange; // "" without a filter
};
[[nodiscard]] std::string workbookXML(std::span<const SheetEntry> sheets);
[[nodiscard]] std::string workbookRelationsXML(std::size_t sheetCount);
[[nodiscard]] std::string contentTypesXML(std::size_t sheetCount);
[[nodiscard]] std::string_view packageRelationsXML();
[[nodiscard]] std::string stylesXML();

} // namespace vellumo::xlsx
