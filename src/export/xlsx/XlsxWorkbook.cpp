// SPDX-License-Identifier: MIT
#include "export/xlsx/XlsxWorkbook.h"

#include "export/biff8/UTF8ToUTF16Converter.h"

#include <fmt/format.h>

namespace vellumo::xlsx {

std::unique_ptr<XlsxWorkbook> XlsxWorkbook::create(const std::string& path)
{
    auto package = PackageFile::create(path);
    return package ? std::unique_ptr<XlsxWorkbook>(new XlsxWorkbook(std::move(package))) : nullptr;
}

// What tells that the archive is such a workbook comes first, for those who look no further.
XlsxWorkbook::XlsxWorkbook(std::unique_ptr<PackageFile> package)
    : m_package(std::move(package))
{
    m_package->beginMember("_rels/.rels");
    m_package->write(packageRelationsXML());
}

bool XlsxWorkbook::addSheet(std::string_view name, std::span<const ColumnLayout> columns, bool hasHeader)
{
    const auto claimed = m_names.claim(name);
    if (!claimed) return false;
    endSheet();
    m_hasHeader = hasHeader && !columns.empty();
    m_sheets.push_back({utf8Text(*claimed), ""});
    m_package->beginMember(fmt::format("xl/worksheets/sheet{}.xml", m_sheets.size()));
    m_cells.begin(columns, m_hasHeader);
    return true;
}

void XlsxWorkbook::endSheet()
{
    if (m_sheets.empty()) return;
    m_cells.end();
    if (m_hasHeader) m_sheets.back().filterRange = m_cells.filterRange();
    flush();
}

void XlsxWorkbook::flush()
{
    m_package->write(m_cells.text());
    m_cells.text().clear();
}

bool XlsxWorkbook::finish()
{
    endSheet();
    const auto add = [this](const std::string& name, std::string_view content) {
        m_package->beginMember(name);
        m_package->write(content);
    };
    add("xl/workbook.xml", workbookXML(m_sheets));
    add("xl/_rels/workbook.xml.rels", workbookRelationsXML(m_sheets.size()));
    add("xl/styles.xml", stylesXML());
    add("[Content_Types].xml", contentTypesXML(m_sheets.size()));
    return m_package->finish();
}

} // namespace vellumo::xlsx
