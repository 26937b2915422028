// SPDX-License-Identifier: MIT
#pragma once

#include "export/ExportOptions.h"

#include <span>
#include <string>
#include <vector>

namespace vellumo {

class TAdmMDBFile;

// What the user is told of an export before it starts, so that no rule acts in silence.
struct ExportHint {
    enum class Kind {
        Missing, // has to be given before the export makes sense
        Warning, // the export can start, but not everything will come out as expected
        Note,    // the export does something that is not asked for by name
    };
    enum class Place { Tables, Contents, Objects, Path };
    Kind kind;
    Place place;
    std::string text; // localised

    bool operator==(const ExportHint&) const = default;
};

// For an export of the selected ones of the tables, in the order of the places. Looks at the folder and the files that
// the export would write.
[[nodiscard]] std::vector<ExportHint> exportHints(
    const TAdmMDBFile& file, std::span<const ExportEntry> tables, const ExportOptions& options);

} // namespace vellumo
