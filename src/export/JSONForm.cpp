// SPDX-License-Identifier: MIT
#include "export/JSONForm.h"

#include "embedded/TAdmBlobData.h"
#include "export/exact/ExactDate.h"
#include "model/TAdmMDBTable.h"

#include <algorithm>

namespace vellumo {

namespace {

bool mustBeEscaped(char c) { return c == '"' || c == '\\' || static_cast<unsigned char>(c) < 0x20; }

void appendEscape(char c, std::string& out)
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

void appendString(std::string_view value, std::string& out)
{
    out += '"';
    while (true) {
        const auto* special = std::ranges::find_if(value, mustBeEscaped);
        out.append(value.begin(), special);
        if (special == value.end()) break;
        appendEscape(*special, out);
        value = {special + 1, value.end()};
    }
    out += '"';
}

} // namespace

JSONForm::JSONForm(ExportJob& job, const TAdmMDBTable& table, EncodedFile& out)
    : ExactTextForm(job, table, out)
{
    for (const auto& column : table.columns()) {
        auto& key = m_keys.emplace_back(m_keys.empty() ? "{" : ",");
        appendString(column->name(), key);
        key += ':';
    }
}

void JSONForm::addRecord(std::uint32_t row)
{
    for (std::size_t c = 0; c < columnCount(); ++c) {
        text() += m_keys[c];
        if (const auto value = cell(c, row); value.hasValue())
            addValue(value, c, row);
        else
            text() += "null";
    }
    text() += m_keys.empty() ? "{}\n" : "}\n";
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
