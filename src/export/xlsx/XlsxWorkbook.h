// SPDX-License-Identifier: MIT
#pragma once

#include "export/biff8/SheetNames.h"
#include "export/xlsx/PackageFile.h"
#include "export/xlsx/SheetXML.h"

namespace vellumo::xlsx {

// A workbook of Office Open XML, written sheet by sheet while its cells come: nothing of them is kept. An error of the
// disk sticks, and `finish` tells.
class XlsxWorkbook {
public:
    static constexpr std::uint32_t maximumRows = 1'048'576;
    static constexpr std::size_t maximumTextUnits = 32767; // UTF-16

    // Null, and the reason in errno, when there can be no file at `path` (PackageFile.h tells why).
    [[nodiscard]] static std::unique_ptr<XlsxWorkbook> create(const std::string& path);

    // Ends the sheet before and makes one that the cells go to. False, and nothing is changed, for a name that no sheet
    // can have (SheetNames tells how the others are repaired).
    [[nodiscard]] bool addSheet(std::string_view name, std::span<const ColumnLayout> columns, bool hasHeader);

    // Rows of the sheet added last, each begun and ended.
    [[nodiscard]] SheetXML& cells() { return m_cells; }
    // To be called after each row.
    void passOn()
    {
        if (m_cells.text().size() >= enough) flush();
    }
    [[nodiscard]] bool failed() const { return m_package->failed(); }
    // The system's reason (errno) for the first failure; 0 for none, and where none is known.
    [[nodiscard]] int error() const { return m_package->error(); }

    // Call at most once, with a sheet at least. False when the file could not be written whole: then there is no new
    // one.
    [[nodiscard]] bool finish();

private:
    static constexpr std::size_t enough = std::size_t{64} << 10;

    explicit XlsxWorkbook(std::unique_ptr<PackageFile> package);
    void endSheet();
    void flush();

    std::unique_ptr<PackageFile> m_package;
    biff8::SheetNames m_names;
    std::vector<SheetEntry> m_sheets;
    SheetXML m_cells;
    bool m_hasHeader = false; // the sheet added last
};

} // namespace vellumo::xlsx
