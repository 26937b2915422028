#include "browser/DamageTexts.h"

#include "text/Format.h"
#include "text/Messages.h"

#include <algorithm>
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
    if (!names.empty()) return {localizedFormat("Found: %@", {rowCountText(rows)}), names, Alert::Style::Sheet};
    return {localized("No lost rows were found."),
        salvage == Salvage::LostAndDeletedRows ? localized("Lost and deleted rows were looked for.")
                                               : localized("Deleted rows were not looked for."),
        Alert::Style::Sheet};
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

} // namespace vellumo
