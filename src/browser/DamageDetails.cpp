// SPDX-License-Identifier: MIT
#include "browser/DamageDetails.h"

#include "export/files/OutputFile.h"
#include "export/objects/ObjectFile.h"
#include "text/Format.h"
#include "text/Messages.h"
#include "text/TerminalText.h"

#include <algorithm>
#include <array>
#include <map>

namespace vellumo {

namespace {

bool concernsNothingBut(const std::string& table, const DamageReport& damage)
{
    return std::ranges::all_of(damage.records(), [&](const DamageRecord& record) { return record.table == table; });
}

std::string rowCountText(std::size_t count)
{
    return count == 1 ? localized("1 row") : localizedFormat("%ld rows", {count});
}

} // namespace

std::string damageOf(const TAdmMDBFile& file)
{
    // Tables that were found by looking for lost rows are none of the file's list.
    const auto listed = std::ranges::count(file.tables(), TableOrigin::Catalogue, &TAdmMDBTable::origin);
    return damageSummary(file.damage(), static_cast<std::size_t>(listed));
}

// A sentence for each kind: "A page of rows cannot be read. 480 rows are missing."
std::string damageOf(const TAdmMDBTable& table)
{
    std::map<DamageKind, std::uint64_t> counts;
    for (const auto& record : table.file()->damage().records())
        if (record.table == table.name()) counts[record.kind] += record.count;
    std::string text;
    for (const auto& [kind, count] : counts)
        text += (text.empty() ? "" : " ") + damageText({.kind = kind, .count = count});
    return text;
}

std::string damageBarText(const TreeItem& item)
{
    if (item.isNone() || item.file->damage().empty()) return {};
    auto whole = damageOf(*item.file);
    const auto part = item.isTable() ? damageOf(*item.table) : std::string();
    if (part.empty()) return whole;
    auto text = format("%@: %@", {item.table->name(), part});
    if (concernsNothingBut(item.table->name(), item.file->damage())) return text;
    return text + ' ' + localizedFormat("In the whole file: %@", {whole});
}

Alert salvageResult(const TAdmMDBFile& file, Salvage salvage)
{
    std::size_t rows = 0;
    std::string names;
    for (const auto& table : file.tables()) {
        if (table->origin() == TableOrigin::Catalogue) continue;
        const auto count = table->rows().rowCount();
        rows += count;
        names += (names.empty() ? "" : "\n") + format("%@: %@", {table->name(), rowCountText(count)});
    }
    if (!names.empty())
        return {
            localizedFormat("Found: %@", {rowCountText(rows)}), names, Alert::Style::Sheet, {}, Alert::Kind::Notice};
    return {localized("No lost rows were found."),
        salvage == Salvage::LostAndDeletedRows ? localized("Lost and deleted rows were looked for.")
                                               : localized("Deleted rows were not looked for."),
        Alert::Style::Sheet, {}, Alert::Kind::Notice};
}

Alert openFailureAlert(const TAdmMDBFile& file, Alert::Style style)
{
    Alert alert{localized("Error"), localizedFormat("File (%@) cannot be opened", {file.label()}), style};
    if (const auto failure = file.openFailure()) {
        const auto advice = openFailureAdvice(*failure);
        alert.detail =
            localizedFormat("Reason: %@.", {openFailureText(*failure)}) + (advice.empty() ? "" : " ") + advice;
    }
    return alert;
}

namespace {

std::string number(std::uint64_t value) { return value == 0 ? std::string() : std::to_string(value); }

// "" when it was written, else the reason. The database itself is never written to.
std::string writeText(const std::string& text, const std::string& path, const std::string& databasePath)
{
    if (isDatabase(path, databasePath)) return isDatabaseText();
    OutputFile out;
    if (out.open(path)) {
        out.write(text);
        if (out.close()) return {};
    }
    return out.failureReason();
}

} // namespace

DamageDetails::DamageDetails(const TAdmMDBFile& file, const DesktopPorts& desktop)
    : m_desktop(desktop)
    , m_records(file.damage().records().begin(), file.damage().records().end())
    , m_summary(damageOf(file))
    , m_title(localizedFormat("Damage of %@", {file.name()}))
    , m_databasePath(file.fullPath())
{
}

std::string DamageDetails::header(Column column)
{
    constexpr std::array keys = {messageKey("What"), messageKey("Table"), messageKey("Column"), messageKey("Row"),
        messageKey("Page"), messageKey("Count")};
    static_assert(keys.size() == columnCount);
    return localized(keys[static_cast<std::size_t>(column)]);
}

std::string DamageDetails::text(std::size_t row, Column column) const
{
    const auto& record = m_records[row];
    switch (column) {
    case Column::What: return damageText({.kind = record.kind, .count = record.count});
    case Column::Table: return escapedText(record.table);
    case Column::Column: return escapedText(record.column);
    case Column::Row: return number(record.row);
    case Column::Page: return number(record.page);
    case Column::Count: break;
    }
    return number(record.count);
}

std::string DamageDetails::lines() const
{
    std::string text;
    for (const auto& record : m_records)
        text += escapedText(damageText(record)) + '\n';
    return text;
}

void DamageDetails::copy() const { m_desktop.pasteboard.setText(lines()); }

void DamageDetails::save() const
{
    const auto text = m_databasePath + '\n' + m_summary + "\n\n" + lines();
    const auto database = m_databasePath;
    auto& alerts = m_desktop.alerts;
    const auto path = m_desktop.filePanels.saveFile("txt", fileNamePart(m_title));
    if (!path) return;
    const auto reason = writeText(text, *path, database);
    if (reason.empty()) return;
    alerts.show({localized("Error"), localizedFormat("File (%@) cannot be written", {*path}), Alert::Style::Modal,
        localizedFormat("Reason: %@.", {reason})});
}

} // namespace vellumo
