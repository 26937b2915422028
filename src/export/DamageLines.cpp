#include "export/DamageLines.h"

#include "text/Format.h"
#include "text/Messages.h"

#include <algorithm>

namespace vellumo {

bool concerns(const DamageRecord& record, std::span<const std::string> tables)
{
    return tables.empty() || record.table.empty() || std::ranges::find(tables, record.table) != tables.end();
}

std::vector<std::string> damageLines(const DamageReport& report, std::span<const std::string> tables)
{
    constexpr std::size_t shownLines = 20;
    std::vector<std::string> lines;
    std::size_t count = 0;
    for (const auto& record : report.records())
        if (concerns(record, tables) && ++count <= shownLines) lines.push_back(damageText(record));
    if (count > shownLines) lines.push_back(localizedFormat("... and %ld more", {count - shownLines}));
    if (count == 0 && !report.empty()) lines.push_back(localized("Other parts of the file are damaged."));
    return lines;
}

} // namespace vellumo
