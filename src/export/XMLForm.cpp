// SPDX-License-Identifier: MIT
#include "export/XMLForm.h"

#include "embedded/TAdmBlobData.h"
#include "export/exact/ExactDate.h"
#include "model/TAdmMDBTable.h"
#include "text/ByteScan.h"
#include "text/Format.h"
#include "text/UTF8.h"

#include <algorithm>
#include <fmt/format.h>

namespace vellumo {

namespace {

// Letters beyond ASCII that every edition of XML has in its names. There are more, and parsers that do not know them.
constexpr struct {
    std::uint32_t first;
    std::uint32_t last;
} nameLetters[] = {{0xC0, 0xD6}, {0xD8, 0xF6}, {0xF8, 0x131}, {0x134, 0x13E}, {0x141, 0x148}, {0x14A, 0x17E},
    {0x391, 0x3A1}, {0x3A3, 0x3CE}, {0x401, 0x40C}, {0x40E, 0x44F}, {0x451, 0x45C}, {0x45E, 0x481}, {0x3041, 0x3094},
    {0x30A1, 0x30FA}, {0x4E00, 0x9FA5}, {0xAC00, 0xD7A3}};

bool isNameCharacter(std::uint32_t code, bool isFirst)
{
    const auto isBetween = [code](std::uint32_t first, std::uint32_t last) { return code >= first && code <= last; };
    if (isBetween('a', 'z') || isBetween('A', 'Z') || code == '_') return true;
    if (isBetween('0', '9') || code == '-' || code == '.') return !isFirst;
    return std::ranges::any_of(nameLetters, [&](const auto& range) { return isBetween(range.first, range.last); });
}

// "_x0041_" and the like.
bool readsLikeEscape(std::string_view text)
{
    const auto isHex = [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
    };
    return text.size() >= 7 && text.starts_with("_x") && text[6] == '_'
        && std::ranges::all_of(text.substr(2, 4), isHex);
}

// How a byte of a text stands in XML.
enum class ByteUse : std::uint8_t { Plain, Escaped, Forbidden };

ByteUse useOf(char c)
{
    if (c == '&' || c == '<' || c == '>' || c == '\r') return ByteUse::Escaped;
    const bool isControl = static_cast<unsigned char>(c) < 0x20;
    return isControl && c != '\n' && c != '\t' ? ByteUse::Forbidden : ByteUse::Plain;
}

// U+FFFE and U+FFFF are no characters.
bool isNoncharacter(std::string_view text)
{
    return text.starts_with("\xEF\xBF\xBE") || text.starts_with("\xEF\xBF\xBF");
}

// Whether there may be a character among these bytes that is not written as it is.
bool mayHaveSpecials(std::string_view bytes)
{
    return hasByte(bytes, [](auto byte) {
        const auto isControl = (byte < 0x20) & (byte != '\n') & (byte != '\t');
        return isControl | (byte == '&') | (byte == '<') | (byte == '>') | (byte == 0xEF);
    });
}

bool isForbidden(std::string_view text)
{
    if (!mayHaveSpecials(text)) return false;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (useOf(text[i]) == ByteUse::Forbidden || (text[i] == '\xEF' && isNoncharacter(text.substr(i)))) return true;
    return false;
}

void appendEscaped(std::string_view value, TextBuffer& out)
{
    for (auto rest = value; !rest.empty();) {
        const auto* special = std::ranges::find(rest, ByteUse::Escaped, useOf);
        out += {rest.begin(), special};
        if (special == rest.end()) return;
        switch (*special) {
        case '&': out += "&amp;"; break;
        case '<': out += "&lt;"; break;
        case '>': out += "&gt;"; break;
        default: out += "&#13;"; // as it stands it would be read as a line feed
        }
        rest = {special + 1, rest.end()};
    }
}

// As XML Schema writes numbers.
std::string_view realText(const ExactCell& cell)
{
    if (cell.isFinite()) return cell.text;
    if (cell.text == "nan") return "NaN";
    return cell.text == "inf" ? "INF" : "-INF";
}

} // namespace

std::string xmlName(std::string_view name, TextEncoder& encoder)
{
    std::string out;
    std::string bytes;
    for (auto rest = name; !rest.empty();) {
        const auto character = firstCharacter(rest);
        const auto code = firstCodePoint(character);
        bytes.clear();
        const bool isKept =
            isNameCharacter(code, out.empty()) && !readsLikeEscape(rest) && encoder.append(character, bytes);
        if (isKept)
            out += character;
        else
            fmt::format_to(std::back_inserter(out), "_x{:0{}X}_", code, code > 0xFFFF ? 8 : 4);
        rest.remove_prefix(character.size());
    }
    return out.empty() ? "_" : out;
}

XMLForm::XMLForm(ExportJob& job, const TAdmMDBTable& table, EncodedFile& out)
    : ExactTextForm(job, table, out)
{
    for (const auto& column : table.columns()) {
        const auto name = xmlName(column->name(), out.encoder());
        const auto start = "\t<" + name;
        m_ends.push_back("</" + name + ">\n");
        addColumn({start, start + " xsi:nil=\"true\"/>\n", start + '>', m_ends.back()});
    }
}

void XMLForm::begin()
{
    text() +=
        format("<?xml version=\"1.0\" encoding=\"%@\"?>\n", {textEncodingRegisteredName(job().options().encoding)});
    text() += "<RECORDS xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\">\n";
}

void XMLForm::end() { text() += "</RECORDS>\n"; }

void XMLForm::addRecord(std::uint32_t row)
{
    text() += "<RECORD>\n";
    addCells(row);
    text() += "</RECORD>\n";
}

bool XMLForm::standAsTheyAre(const ExactCells& cells) const
{
    const auto bytes = cells.texts().bytes();
    switch (cells.kind()) {
    case ExactKind::Integer:
    case ExactKind::BigInteger:
    case ExactKind::Decimal: return true;
    case ExactKind::Single:
    case ExactKind::Double: return bytes.find('n') == bytes.npos;
    case ExactKind::Text: return !mayHaveSpecials(bytes);
    default: return false;
    }
}

void XMLForm::addValue(const ExactCell& cell, std::size_t column, std::uint32_t row)
{
    if (cell.kind == ExactKind::Text && isForbidden(cell.text)) {
        addFinding(FindingKind::TextEncoded, column);
        text() += " encoding=\"base64\">";
        addBase64(std::as_bytes(std::span(cell.text)));
    } else {
        text() += '>';
        addContent(cell, column, row);
    }
    text() += m_ends[column];
}

void XMLForm::addContent(const ExactCell& cell, std::size_t column, std::uint32_t row)
{
    switch (cell.kind) {
    case ExactKind::Boolean: text() += cell.boolean() ? "true" : "false"; break;
    case ExactKind::Single:
    case ExactKind::Double: text() += realText(cell); break;
    case ExactKind::Date: appendISODate(cell, 'T', text()); break;
    case ExactKind::Guid: text() += cell.guid(); break;
    case ExactKind::Text: appendEscaped(cell.text, text()); break;
    case ExactKind::Binary:
        m_bytes.clear();
        cell.appendBytes(m_bytes);
        addBase64(std::as_bytes(std::span(m_bytes)));
        break;
    case ExactKind::Object:
        if (const auto path = objectPath(cell, column, row))
            appendEscaped(*path, text());
        else
            addBase64(cell.object->data());
        break;
    default: text() += cell.text;
    }
}

} // namespace vellumo
