#pragma once

#include "jet/DamageReport.h"

#include <span>
#include <string>
#include <vector>

namespace vellumo {

// Whether a record is of one of the tables, or of the file as a whole. No tables: it always is.
[[nodiscard]] bool concerns(const DamageRecord& record, std::span<const std::string> tables);

// What was lost of the tables (all that there are when none is named) and of the file as a whole, as the lines of a
// report (localised): at most 20, then one that counts the rest. When all that was lost is elsewhere, a line says so;
// only of a sound file there is none.
[[nodiscard]] std::vector<std::string> damageLines(
    const DamageReport& report, std::span<const std::string> tables = {});

} // namespace vellumo
