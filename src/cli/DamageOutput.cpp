// SPDX-License-Identifier: MIT
#include "cli/DamageOutput.h"

#include "cli/ConsoleOutput.h"
#include "export/ExportReport.h"
#include "model/TAdmMDBFile.h"
#include "text/Format.h"
#include "text/Messages.h"

#include <nlohmann/json.hpp>

namespace vellumo {

namespace {

using Json = nlohmann::ordered_json;

Json textOrNull(const std::string& text) { return text.empty() ? Json() : Json(text); }
Json numberOrNull(std::uint64_t number) { return number == 0 ? Json() : Json(number); }

} // namespace

std::string damageSection(const TAdmMDBFile& file, std::span<const std::string> tables)
{
    const auto lines = damageLines(file.damage(), tables);
    if (lines.empty()) return {};
    auto text = format("\n%@\n", {localized("Damage:")});
    for (const auto& line : lines)
        text += format("    %@\n", {messageLine(line)});
    return text;
}

Json damageJson(const TAdmMDBFile& file, std::span<const std::string> tables)
{
    auto list = Json::array();
    for (const auto& record : file.damage().records()) {
        if (!concerns(record, tables)) continue;
        list.push_back({{"kind", damageKindName(record.kind)}, {"table", textOrNull(record.table)},
            {"column", textOrNull(record.column)}, {"page", numberOrNull(record.page)},
            {"row", numberOrNull(record.row)}, {"count", record.count}, {"text", damageText(record, untranslated)}});
    }
    return list;
}

void printDamage(const TAdmMDBFile& file, std::span<const std::string> tables)
{
    for (const auto& line : damageLines(file.damage(), tables))
        printError(line);
}

ExitStatus doneWith(const TAdmMDBFile& file) { return file.damage().empty() ? ExitStatus::Done : ExitStatus::Damaged; }

} // namespace vellumo
