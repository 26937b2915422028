// SPDX-License-Identifier: MIT
#include "export/xlsx/SheetXML.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <fmt/format.h>
#include <iterator>

namespace vellumo::xlsx {

namespace {

constexpr std::string_view declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";

// Bytes that do not stand for themselves, or may not: the last is how U+FFFE and U+FFFF begin.
constexpr auto specialBytes = [] {
    std::array<bool, 256> special{};
    for (std::size_t byte = 0; byte < 0x20; ++byte)
        special[byte] = byte != '\t' && byte != '\n';
    for (const unsigned char byte : {'&', '<', '>', '"', '_', '\xEF'})
        special[byte] = true;
    return special;
}();

bool isSpecial(char c) { return specialBytes[static_cast<unsigned char>(c)]; }

// "_x0041_" and the like.
bool readsLikeEscape(std::string_view text)
{
    const auto isHex = [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
    };
    return text.size() >= 7 && text.starts_with("_x") && text[6] == '_'
        && std::ranges::all_of(text.substr(2, 4), isHex);
}

// What stands at the front of `rest`, which begins with a special byte, and takes it off. True for a character that XML
// does not take.
bool takeSpecial(std::string_view& rest, std::string& out)
{
    const char first = rest.front();
    const bool isEscape = readsLikeEscape(rest);
    const bool isNoncharacter = rest.starts_with("\xEF\xBF\xBE") || rest.starts_with("\xEF\xBF\xBF");
    rest.remove_prefix(isNoncharacter ? 3 : 1);
    switch (first) {
    case '&': out += "&amp;"; return false;
    case '<': out += "&lt;"; return false;
    case '>': out += "&gt;"; return false;
    case '"': out += "&quot;"; return false;
    case '\r': out += "&#13;"; return false; // as it stands it would be read as a line feed
    case '_': out += isEscape ? "_x005F_" : "_"; return false;
    default: break;
    }
    if (isNoncharacter)
        out += rest.data()[-1] == '\xBE' ? "_xFFFE_" : "_xFFFF_";
    else if (first == '\xEF')
        out += first;
    else
        fmt::format_to(std::back_inserter(out), "_x{:04X}_", static_cast<unsigned>(first));
    return first != '\xEF' || isNoncharacter;
}

bool isBlank(char c) { return static_cast<unsigned char>(c) <= ' '; }

constexpr std::string_view mainNamespace = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
constexpr std::string_view officeRelations = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";

} // namespace

std::string columnLetters(std::size_t column)
{
    std::string letters;
    for (auto rest = column + 1; rest > 0; rest = (rest - 1) / 26)
        letters.insert(letters.begin(), static_cast<char>('A' + (rest - 1) % 26));
    return letters;
}

bool appendCellText(std::string_view text, std::string& out)
{
    bool hasEscapes = false;
    while (true) {
        const auto* special = std::ranges::find_if(text, isSpecial);
        out.append(text.begin(), special);
        text.remove_prefix(static_cast<std::size_t>(special - text.begin()));
        if (text.empty()) return hasEscapes;
        hasEscapes = takeSpecial(text, out) || hasEscapes;
    }
}

void SheetXML::begin(std::span<const ColumnLayout> columns, bool hasHeader)
{
    m_hasHeader = hasHeader;
    m_rowCount = 0;
    m_cells.clear();
    auto out = std::back_inserter(m_text);
    fmt::format_to(out, "{}<worksheet xmlns=\"{}\">", declaration, mainNamespace);
    if (hasHeader)
        m_text += "<sheetViews><sheetView workbookViewId=\"0\"><pane ySplit=\"1\" topLeftCell=\"A2\" "
                  "activePane=\"bottomLeft\" state=\"frozen\"/></sheetView></sheetViews>";
    if (!columns.empty()) m_text += "<cols>";
    for (const auto& column : columns) {
        m_cells.push_back("<c r=\"" + columnLetters(m_cells.size()));
        fmt::format_to(
            out, "<col min=\"{0}\" max=\"{0}\" width=\"{1}\" customWidth=\"1\"/>", m_cells.size(), column.width);
    }
    if (!columns.empty()) m_text += "</cols>";
    m_text += "<sheetData>";
    if (hasHeader) addHeader(columns);
}

void SheetXML::addHeader(std::span<const ColumnLayout> columns)
{
    beginRow();
    for (std::size_t c = 0; c < columns.size(); ++c) {
        beginCell(c, headerStyle);
        m_text += " t=\"inlineStr\"><is><t xml:space=\"preserve\">";
        appendCellText(columns[c].title, m_text);
        m_text += "</t></is></c>";
        if (m_watcher) tellWatcher(c, WrittenCell::Kind::Text, columns[c].title);
    }
    endRow();
}

void SheetXML::beginRow()
{
    m_row.clear();
    fmt::format_to(std::back_inserter(m_row), "{}\"", ++m_rowCount);
    (m_text += "<row r=\"") += m_row;
    m_text += '>';
}

void SheetXML::beginCell(std::size_t column, unsigned style)
{
    (m_text += m_cells[column]) += m_row;
    if (style == 0) return;
    m_text += " s=\"";
    m_text += static_cast<char>('0' + style);
    m_text += '"';
}

void SheetXML::addNumber(std::size_t column, std::string_view digits, CellFormat format)
{
    beginCell(column, format == CellFormat::General ? 0 : headerStyle + static_cast<unsigned>(format));
    ((m_text += "><v>") += digits) += "</v></c>";
    if (!m_watcher) return;
    double number = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), number);
    tellWatcher(column, WrittenCell::Kind::Number, {}, number, format);
}

void SheetXML::tellWatcher(
    std::size_t column, WrittenCell::Kind kind, std::string_view text, double number, CellFormat format) const
{
    m_watcher({m_rowCount - 1, column, kind, text, number, format});
}

void SheetXML::addBoolean(std::size_t column, bool value)
{
    beginCell(column, 0);
    m_text += value ? " t=\"b\"><v>1</v></c>" : " t=\"b\"><v>0</v></c>";
    if (m_watcher) tellWatcher(column, WrittenCell::Kind::Boolean, {}, value ? 1 : 0);
}

bool SheetXML::addText(std::size_t column, std::string_view value)
{
    beginCell(column, 0);
    const bool hasBlanks = !value.empty() && (isBlank(value.front()) || isBlank(value.back()));
    m_text += hasBlanks ? " t=\"inlineStr\"><is><t xml:space=\"preserve\">" : " t=\"inlineStr\"><is><t>";
    const bool hasEscapes = appendCellText(value, m_text);
    m_text += "</t></is></c>";
    if (m_watcher) tellWatcher(column, WrittenCell::Kind::Text, value);
    return hasEscapes;
}

std::string SheetXML::filterRange() const
{
    return fmt::format("$A$1:${}${}", columnLetters(m_cells.size() - 1), m_rowCount);
}

void SheetXML::end()
{
    m_text += "</sheetData>";
    if (m_hasHeader)
        fmt::format_to(
            std::back_inserter(m_text), "<autoFilter ref=\"A1:{}{}\"/>", columnLetters(m_cells.size() - 1), m_rowCount);
    m_text += "</worksheet>";
}

std::string workbookXML(std::span<const SheetEntry> sheets)
{
    std::string list;
    std::string filters;
    for (std::size_t i = 0; i < sheets.size(); ++i) {
        std::string name;
        appendCellText(sheets[i].name, name);
        fmt::format_to(
            std::back_inserter(list), "<sheet name=\"{}\" sheetId=\"{}\" r:id=\"rId{}\"/>", name, i + 1, i + 1);
        if (sheets[i].filterRange.empty()) continue;
        std::string quoted;
        for (const char c : name)
            quoted.append(c == '\'' ? 2 : 1, c);
        fmt::format_to(std::back_inserter(filters),
            "<definedName name=\"_xlnm._FilterDatabase\" localSheetId=\"{}\" hidden=\"1\">'{}'!{}</definedName>", i,
            quoted, sheets[i].filterRange);
    }
    if (!filters.empty()) filters = "<definedNames>" + filters + "</definedNames>";
    return fmt::format("{}<workbook xmlns=\"{}\" "
                       "xmlns:r=\"{}\"><bookViews><workbookView/></bookViews><sheets>{}</sheets>{}</workbook>",
        declaration, mainNamespace, officeRelations, list, filters);
}

std::string workbookRelationsXML(std::size_t sheetCount)
{
    auto xml = fmt::format(
        "{}<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">", declaration);
    for (std::size_t i = 1; i <= sheetCount; ++i)
        fmt::format_to(std::back_inserter(xml),
            "<Relationship Id=\"rId{0}\" Type=\"{1}/worksheet\" Target=\"worksheets/sheet{0}.xml\"/>", i,
            officeRelations);
    fmt::format_to(std::back_inserter(xml),
        "<Relationship Id=\"rId{}\" Type=\"{}/styles\" Target=\"styles.xml\"/></Relationships>", sheetCount + 1,
        officeRelations);
    return xml;
}

std::string contentTypesXML(std::size_t sheetCount)
{
    constexpr std::string_view type = "application/vnd.openxmlformats-officedocument.spreadsheetml.";
    auto xml = fmt::format(
        "{0}<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\"><Default Extension=\"rels\" "
        "ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/><Default Extension=\"xml\" "
        "ContentType=\"application/xml\"/><Override PartName=\"/xl/workbook.xml\" ContentType=\"{1}sheet.main+xml\"/>"
        "<Override PartName=\"/xl/styles.xml\" ContentType=\"{1}styles+xml\"/>",
        declaration, type);
    for (std::size_t i = 1; i <= sheetCount; ++i)
        fmt::format_to(std::back_inserter(xml),
            "<Override PartName=\"/xl/worksheets/sheet{}.xml\" ContentType=\"{}worksheet+xml\"/>", i, type);
    return xml + "</Types>";
}

std::string_view packageRelationsXML()
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
           "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\"><Relationship "
           "Id=\"rId1\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/officeDocument\" "
           "Target=\"xl/workbook.xml\"/></Relationships>";
}

std::string stylesXML()
{
    std::string codes;
    std::string formats;
    for (std::size_t i = 0; i < cellFormatCodes.size(); ++i) {
        fmt::format_to(std::back_inserter(codes), "<numFmt numFmtId=\"{}\" formatCode=\"{}\"/>", firstFreeFormat + i,
            cellFormatCodes[i]);
        fmt::format_to(std::back_inserter(formats),
            "<xf numFmtId=\"{}\" fontId=\"0\" fillId=\"0\" borderId=\"0\" xfId=\"0\" applyNumberFormat=\"1\"/>",
            firstFreeFormat + i);
    }
    constexpr std::string_view font = "<sz val=\"11\"/><name val=\"Calibri\"/><family val=\"2\"/>";
    return fmt::format(
        "{0}<styleSheet xmlns=\"{1}\"><numFmts count=\"{2}\">{3}</numFmts><fonts count=\"2\"><font>{4}</font>"
        "<font><b/>{4}</font></fonts><fills count=\"2\"><fill><patternFill patternType=\"none\"/></fill>"
        "<fill><patternFill patternType=\"gray125\"/></fill></fills><borders count=\"1\"><border><left/>"
        "<right/><top/><bottom/><diagonal/></border></borders><cellStyleXfs count=\"1\"><xf "
        "numFmtId=\"0\" fontId=\"0\" fillId=\"0\" borderId=\"0\"/></cellStyleXfs><cellXfs count=\"{5}\">"
        "<xf numFmtId=\"0\" fontId=\"0\" fillId=\"0\" borderId=\"0\" xfId=\"0\"/><xf numFmtId=\"0\" "
        "fontId=\"1\" fillId=\"0\" borderId=\"0\" xfId=\"0\" applyFont=\"1\"/>{6}</cellXfs><cellStyles "
        "count=\"1\"><cellStyle name=\"Normal\" xfId=\"0\" builtinId=\"0\"/></cellStyles></styleSheet>",
        declaration, mainNamespace, cellFormatCodes.size(), codes, font, cellFormatCodes.size() + 2, formats);
}

} // namespace vellumo::xlsx
