// SPDX-License-Identifier: MIT
#include "jet/DamageReport.h"

#include "text/Format.h"
#include "text/Messages.h"

#include <algorithm>

namespace vellumo {

namespace {

struct KindFacts {
    DamageKind kind;
    const char* name;
    const char* one;  // the sentence for a count of 1
    const char* many; // with the count; the same as `one` where a count makes no sense
};

constexpr KindFacts kinds[] = {
    {DamageKind::File, "file", messageKey("The file ends early or changed while it was read."), nullptr},
    {DamageKind::Catalogue, "catalogue", messageKey("A part of the list of tables cannot be read."),
        messageKey("%ld entries of the list of tables cannot be read.")},
    {DamageKind::Table, "table", messageKey("The table cannot be read: its definition is damaged."), nullptr},
    {DamageKind::LostTable, "lostTable", messageKey("The list of tables lacks a table that is in the file."),
        messageKey("The list of tables lacks %ld tables that are in the file.")},
    {DamageKind::Definition, "definition", messageKey("A part of the definition cannot be read."), nullptr},
    {DamageKind::Properties, "properties", messageKey("Some properties cannot be read."), nullptr},
    {DamageKind::Relations, "relations", messageKey("Some relations cannot be read."), nullptr},
    {DamageKind::Queries, "queries", messageKey("A part of the saved queries cannot be read."),
        messageKey("Parts of %ld saved queries cannot be read.")},
    {DamageKind::PageList, "pageList", messageKey("The list of the table's pages cannot be read."), nullptr},
    {DamageKind::LostPage, "lostPage", messageKey("The list of the table's pages lacks a page of its rows."),
        messageKey("The list of the table's pages lacks %ld pages of its rows.")},
    {DamageKind::Page, "page", messageKey("A page of rows cannot be read."),
        messageKey("%ld pages of rows cannot be read.")},
    {DamageKind::Row, "row", messageKey("A row cannot be read."), messageKey("%ld rows cannot be read.")},
    {DamageKind::MissingRows, "missingRows", messageKey("1 row is missing."), messageKey("%ld rows are missing.")},
    {DamageKind::Value, "value", messageKey("A value cannot be read."), messageKey("%ld values cannot be read.")},
    {DamageKind::LongText, "longText", messageKey("A text breaks off."), messageKey("%ld texts break off.")},
    {DamageKind::Object, "object", messageKey("An object is damaged."), messageKey("%ld objects are damaged.")},
    {DamageKind::Index, "index", messageKey("A page of an index cannot be read."),
        messageKey("%ld pages of indexes cannot be read.")},
    {DamageKind::Budget, "budget", messageKey("Something was left out because it would take too much memory."),
        messageKey("%ld values or rows were left out because they would take too much memory.")},
};

const KindFacts& factsOf(DamageKind kind) { return *std::ranges::find(kinds, kind, &KindFacts::kind); }

bool hasPlace(const DamageRecord& record) { return record.page != 0 || record.row != 0; }

// "Orders, column Note, row 17, page 203", as far as it is known.
std::string placeText(const DamageRecord& record, Translation translate)
{
    std::string text = record.table;
    const auto add = [&](const std::string& part) { text += text.empty() ? part : ", " + part; };
    if (!record.column.empty()) add(format(translate(messageKey("column %@")), {record.column}));
    if (record.row != 0) add(format(translate(messageKey("row %ld")), {record.row}));
    if (record.page != 0) add(format(translate(messageKey("page %ld")), {record.page}));
    return text;
}

} // namespace

std::string_view damageKindName(DamageKind kind) { return factsOf(kind).name; }

std::string damageText(const DamageRecord& record, Translation translate)
{
    const auto& facts = factsOf(record.kind);
    const auto isOne = record.count == 1 || facts.many == nullptr;
    const auto sentence = isOne ? translate(facts.one) : format(translate(facts.many), {record.count});
    const auto place = placeText(record, translate);
    return place.empty() ? sentence : place + ": " + sentence;
}

void DamageReport::add(DamageRecord record)
{
    auto& kept = m_kept[{record.table, record.column, record.kind}];
    if (hasPlace(record) && kept.places < placesKept) {
        ++kept.places;
        m_records.push_back(std::move(record));
        return;
    }
    if (kept.rest) {
        m_records[*kept.rest].count += record.count;
        return;
    }
    kept.rest = m_records.size();
    record.page = 0;
    record.row = 0;
    m_records.push_back(std::move(record));
}

void DamageReport::append(const DamageReport& other, std::string_view table, std::uint64_t rowsBefore)
{
    for (auto record : other.m_records) {
        if (record.table.empty()) record.table = table;
        if (record.row != 0) record.row += rowsBefore;
        add(std::move(record));
    }
}

std::uint64_t DamageReport::total(DamageKind kind) const
{
    std::uint64_t sum = 0;
    for (const auto& record : m_records)
        if (record.kind == kind) sum += record.count;
    return sum;
}

std::uint64_t DamageReport::total(DamageKind kind, std::string_view table) const
{
    std::uint64_t sum = 0;
    for (const auto& record : m_records)
        if (record.kind == kind && record.table == table) sum += record.count;
    return sum;
}

std::uint64_t DamageReport::missingRows() const { return total(DamageKind::Row) + total(DamageKind::MissingRows); }

bool DamageReport::concerns(std::string_view table) const
{
    return std::ranges::any_of(m_records, [&](const DamageRecord& record) { return record.table == table; });
}

std::string damageSummary(const DamageReport& report, std::size_t tableCount)
{
    if (report.empty()) return {};
    std::string text;
    const auto add = [&](const std::string& part) { text += text.empty() ? part : ", " + part; };
    const auto lostTables = report.total(DamageKind::Table) + report.total(DamageKind::LostTable);
    if (report.total(DamageKind::Catalogue) != 0) add(localized("The list of tables is damaged"));
    if (lostTables != 0)
        add(localizedFormat("%ld of %ld tables could not be read", {lostTables, lostTables + tableCount}));
    if (const auto rows = report.missingRows(); rows != 0)
        add(rows == 1 ? localized("1 row is missing") : localizedFormat("%ld rows are missing", {rows}));
    if (const auto values = report.total(DamageKind::Value) + report.total(DamageKind::LongText); values != 0)
        add(values == 1 ? localized("1 value is damaged") : localizedFormat("%ld values are damaged", {values}));
    if (const auto objects = report.total(DamageKind::Object); objects != 0)
        add(objects == 1 ? localized("1 object is damaged") : localizedFormat("%ld objects are damaged", {objects}));
    if (text.empty()) add(localized("The file is damaged"));
    return text + '.';
}

} // namespace vellumo
