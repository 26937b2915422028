// SPDX-License-Identifier: MIT
#include "export/SheetValue.h"

#include "embedded/TAdmBlobData.h"
#include "export/biff8/UTF8ToUTF16Converter.h"
#include "export/exact/ExactDate.h"
#include "model/TAdmMDBTable.h"
#include "text/Format.h"

namespace vellumo {

namespace {

using SheetKind = SheetValue::Kind;

constexpr std::size_t longestText = 32767;           // UTF-16 units
constexpr int surestDigits = 15;                     // every number of so many has a double of its own
constexpr double firstSureDay = 61;                  // 1900-03-01: before it sheets have a day too many
constexpr std::int32_t unitsPerMillisecond = 10'000; // finer than that a day's number does not tell

bool holds(std::string_view text, std::string_view what) { return text.find(what) != std::string_view::npos; }

} // namespace

void SheetValues::addFinding(FindingKind kind, std::size_t column, std::string_view detail)
{
    m_job.addFinding(kind, m_table.name(), m_table.columns()[column]->name(), 1, detail);
}

SheetValue SheetValues::temporary() const { return {SheetKind::Text, CellFormat::General, m_text, 0, true}; }

SheetValue SheetValues::of(const ExactCell& cell, std::size_t column, std::size_t row)
{
    // Damaged objects have lines of their own in every report.
    if (cell.state == ExactState::Unreadable && cell.kind != ExactKind::Object)
        addFinding(FindingKind::Unreadable, column);
    if (!cell.hasValue()) return {};
    switch (cell.kind) {
    case ExactKind::Boolean: return {SheetKind::Boolean, CellFormat::General, cell.text};
    case ExactKind::Integer: return {SheetKind::Number, CellFormat::General, cell.text};
    case ExactKind::BigInteger: return numberOf(cell, column, CellFormat::General);
    case ExactKind::Decimal: return numberOf(cell, column, CellFormat::Decimal);
    case ExactKind::Single:
    case ExactKind::Double:
        if (cell.isFinite()) return {SheetKind::Number, CellFormat::General, cell.text};
        addFinding(FindingKind::NotANumberAsText, column);
        return {SheetKind::Text, CellFormat::General, cell.text};
    case ExactKind::Date: return dateValue(cell, column);
    case ExactKind::Guid: return {SheetKind::Text, CellFormat::General, cell.guid()};
    case ExactKind::Text: return textOf(cell.text, column);
    case ExactKind::Binary:
        if (cell.text.size() > longestText) return bytesLeftOut(cell.text.size() / 2, column);
        return textOf(cell.text, column);
    case ExactKind::Object: break;
    }
    return objectOf(cell, column, row);
}

SheetValue SheetValues::numberOf(const ExactCell& cell, std::size_t column, CellFormat format)
{
    if (cell.significantDigits() <= surestDigits) return {SheetKind::Number, format, cell.text};
    addFinding(FindingKind::DigitsAsText, column);
    return {SheetKind::Text, CellFormat::General, cell.text};
}

// The first day of Access is a time of day to a sheet.
SheetValue SheetValues::dateValue(const ExactCell& cell, std::size_t column)
{
    const auto date = dateOf(cell);
    if (date && date->fraction % unitsPerMillisecond == 0) {
        const auto serial = dateSerial(*date);
        const bool hasFraction = date->fraction != 0;
        if (serial >= firstSureDay)
            return {
                SheetKind::Number, hasFraction ? CellFormat::DateTimeMilliseconds : CellFormat::DateTime, {}, serial};
        if (serial >= 0 && serial < 1)
            return {SheetKind::Number, hasFraction ? CellFormat::TimeMilliseconds : CellFormat::Time, {}, serial};
    }
    addFinding(FindingKind::DateAsText, column);
    m_text.clear();
    appendISODate(cell, ' ', m_text);
    return temporary();
}

SheetValue SheetValues::textOf(std::string_view text, std::size_t column)
{
    if (text.empty()) {
        addFinding(FindingKind::EmptyText, column);
        return {};
    }
    SheetValue value{SheetKind::Text, CellFormat::General, text};
    const bool hasZeros = text.find('\0') != std::string_view::npos;
    const bool hasLineBreaks = holds(text, "\r\n");
    if (hasZeros || hasLineBreaks) {
        if (hasZeros) addFinding(FindingKind::CharactersReplaced, column);
        if (hasLineBreaks) addFinding(FindingKind::LineBreaks, column);
        m_text.clear();
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (text[i] == '\0')
                m_text += "\uFFFD";
            else if (!text.substr(i).starts_with("\r\n"))
                m_text += text[i];
        }
        value = temporary();
    }
    if (value.text.size() <= longestText) return value; // never more units than bytes
    const auto start = firstUnits(value.text, longestText);
    if (start.size() < value.text.size()) addFinding(FindingKind::TextCut, column, "32767");
    value.text = start;
    return value;
}

SheetValue SheetValues::objectOf(const ExactCell& cell, std::size_t column, std::size_t row)
{
    if (m_job.hasObjectFolder()) {
        m_text = m_job.objectFile(m_table, column, row, *cell.object);
        return m_text.empty() ? SheetValue() : temporary();
    }
    const auto bytes = cell.object->data();
    if (2 * bytes.size() > longestText) return bytesLeftOut(bytes.size(), column);
    m_text.resize(2 * bytes.size());
    toHex(m_text.data(), m_text.size(), reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    auto value = textOf(m_text, column);
    value.isTemporary = true;
    return value;
}

SheetValue SheetValues::bytesLeftOut(std::size_t byteCount, std::size_t column)
{
    addFinding(FindingKind::BytesLeftOut, column);
    m_text = format("(%ld bytes)", {byteCount});
    return temporary();
}

} // namespace vellumo
