// SPDX-License-Identifier: MIT
#include "export/JSONForm.h"

#include "embedded/TAdmBlobData.h"
#include "export/exact/ExactDate.h"
#include "model/TAdmMDBTable.h"
#include "text/ByteScan.h"

#include <algorithm>

namespace vellumo {

namespace {

constexpr auto mustBeEscaped = [](auto byte) { return (byte == '"') | (byte == '\\') | (byte < 0x20); };

void appendEscape(char c, TextBuffer& out)
{
    switch (c) {
    case '"': out += "\\\""; break;
    case '\\': out += "\\\\"; break;
    case '\n': out += "\\n"; break;
    case '\r': out += "\\r"; break;
    case '\t': out += "\\t"; break;
    default: {
        constexpr char digits[] = "0123456789abcdef";
        out += "\\u00";
        out += digits[static_cast<unsigned char>(c) >> 4];
        out += digits[c & 15];
    }
    }
}

void appendString(std::string_view value, TextBuffer& out)
{
    out += '"';
    while (hasByte(value, mustBeEscaped)) {
        const auto* special =
            std::ranges::find_if(value, [](char c) { return mustBeEscaped(static_cast<std::uint8_t>(c)) != 0; });
        out += {value.begin(), special};
        appendEscape(*special, out);
        value = {special + 1, value.end()};
    }
    out += value;
    out += '"';
}

// Other numbers would lose digits.
bool isString(ExactKind kind)
{
    return kind != ExactKind::Boolean && kind != ExactKind::Integer && kind != ExactKind::Single
        && kind != ExactKind::Double;
}

} // namespace

JSONForm::JSONForm(ExportJob& job, const TAdmMDBTable& table, EncodedFile& out)
    : ExactTextForm(job, table, out)
{
    for (std::size_t c = 0; c < columnCount(); ++c) {
        TextBuffer key;
        key += c == 0 ? '{' : ',';
        appendString(table.columns()[c]->name(), key);
        const auto start = std::string(key.view()) + ':';
        const bool isQuoted = isString(exactKind(table.columns()[c]->type()));
        addColumn({start, start + "null", start + (isQuoted ? "\"" : ""), isQuoted ? "\"" : ""});
    }
}

void JSONForm::addRecord(std::uint32_t row)
{
    addCells(row);
    text() += columnCount() == 0 ? "{}\n" : "}\n";
}

bool JSONForm::standAsTheyAre(const ExactCells& cells) const
{
    const auto bytes = cells.texts().bytes();
    switch (cells.kind()) {
    case ExactKind::Integer:
    case ExactKind::BigInteger:
    case ExactKind::Decimal: return true;
    case ExactKind::Single:
    case ExactKind::Double: return bytes.find('n') == bytes.npos && bytes.find("-0") == bytes.npos;
    case ExactKind::Text: return !hasByte(bytes, mustBeEscaped);
    default: return false;
    }
}

void JSONForm::addValue(const ExactCell& cell, std::size_t column, std::uint32_t row)
{
    switch (cell.kind) {
    case ExactKind::Boolean: text() += cell.boolean() ? "true" : "false"; break;
    case ExactKind::Integer: text() += cell.text; break;
    case ExactKind::Single:
    case ExactKind::Double: addReal(cell, column); break;
    case ExactKind::Date:
        text() += '"';
        appendISODate(cell, 'T', text());
        text() += '"';
        break;
    case ExactKind::Guid: appendString(cell.guid(), text()); break;
    case ExactKind::Binary:
        m_bytes.clear();
        cell.appendBytes(m_bytes);
        text() += '"';
        addBase64(std::as_bytes(std::span(m_bytes)));
        text() += '"';
        break;
    case ExactKind::Object: addObject(cell, column, row); break;
    default: appendString(cell.text, text());
    }
}

// JSON has no other numbers, and a reader takes "-0" for an integer, which has no sign then.
void JSONForm::addReal(const ExactCell& cell, std::size_t column)
{
    if (!cell.isFinite()) {
        addFinding(FindingKind::NotANumberAsNull, column);
        text() += "null";
        return;
    }
    text() += cell.text;
    if (cell.text == "-0") text() += ".0";
}

void JSONForm::addObject(const ExactCell& cell, std::size_t column, std::uint32_t row)
{
    if (const auto path = objectPath(cell, column, row)) return appendString(*path, text());
    text() += '"';
    addBase64(cell.object->data());
    text() += '"';
}

} // namespace vellumo
