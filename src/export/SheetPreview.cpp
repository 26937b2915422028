// SPDX-License-Identifier: MIT
#include "export/SheetPreview.h"

#include "export/xlsx/SheetXML.h"
#include "text/Messages.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <fmt/format.h>

namespace vellumo {

namespace {

bool isDate(CellFormat format) { return format == CellFormat::DateTime || format == CellFormat::DateTimeMilliseconds; }
bool isTime(CellFormat format) { return format == CellFormat::Time || format == CellFormat::TimeMilliseconds; }

const char* kindKey(const WrittenCell& cell)
{
    using enum WrittenCell::Kind;
    switch (cell.kind) {
    case Text: return messageKey("text");
    case Boolean: return messageKey("truth value");
    case Error: return messageKey("error");
    case Number: break;
    }
    if (isDate(cell.format)) return messageKey("date");
    if (isTime(cell.format)) return messageKey("time");
    return cell.format == CellFormat::Decimal ? messageKey("decimal number") : messageKey("number");
}

// As readers make a date of the number.
std::string dateText(double serial, CellFormat format)
{
    using namespace std::chrono;
    constexpr long long dayLength = 86'400'000; // ms
    const auto all = std::llround(serial * dayLength);
    const hh_mm_ss time(milliseconds(all % dayLength));
    auto text = fmt::format("{:02}:{:02}:{:02}", time.hours().count(), time.minutes().count(), time.seconds().count());
    if (format == CellFormat::DateTimeMilliseconds || format == CellFormat::TimeMilliseconds)
        text += fmt::format(".{:03}", time.subseconds().count());
    if (isTime(format)) return text;
    const year_month_day day(sys_days(year(1899) / 12 / 30) + days(all / dayLength));
    return fmt::format("{:04}-{:02}-{:02} {}", static_cast<int>(day.year()), static_cast<unsigned>(day.month()),
        static_cast<unsigned>(day.day()), text);
}

std::string shownValue(const WrittenCell& cell)
{
    using enum WrittenCell::Kind;
    switch (cell.kind) {
    case Text: return std::string(cell.text);
    case Boolean: return cell.number != 0 ? "TRUE" : "FALSE";
    case Error: return "#NUM!";
    case Number: break;
    }
    return isDate(cell.format) || isTime(cell.format) ? dateText(cell.number, cell.format)
                                                      : fmt::format("{}", cell.number);
}

} // namespace

void SheetPreview::take(const WrittenCell& cell)
{
    if (cell.column >= m_columns.size()) m_columns.resize(cell.column + 1);
    auto& column = m_columns[cell.column];
    if (m_hasHeader && cell.row == 0) {
        column.title = cell.text;
        return;
    }
    const auto* kind = kindKey(cell);
    if (std::ranges::find(column.kinds, kind) == column.kinds.end()) column.kinds.push_back(kind);
    const auto row = cell.row - (m_hasHeader ? 1 : 0);
    if (row >= m_rows.size()) m_rows.resize(row + 1);
    if (cell.column >= m_rows[row].size()) m_rows[row].resize(cell.column + 1, "");
    m_rows[row][cell.column] = shownValue(cell);
}

void SheetPreview::moveTo(ExportPreview& preview, std::size_t columns, std::size_t rows)
{
    m_columns.resize(std::max(m_columns.size(), columns));
    m_rows.resize(std::max(m_rows.size(), rows));
    for (const auto& column : m_columns) {
        std::string kinds;
        for (const auto* kind : column.kinds)
            kinds += (kinds.empty() ? "" : ", ") + localized(kind);
        preview.columns.push_back({column.title.value_or(xlsx::columnLetters(preview.columns.size())), kinds});
    }
    for (auto& row : m_rows) {
        row.resize(m_columns.size(), "");
        preview.rows.push_back(std::move(row));
    }
}

} // namespace vellumo
