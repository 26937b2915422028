#pragma once

#include <string>
#include <vector>

namespace vellumo {

class ExportWizard;

// What a dialog tells the user beside its controls, so that no rule acts in silence.
struct ExportHint {
    enum class Kind {
        Missing, // has to be given before the export makes sense
        Warning, // the export can start, but not everything will come out as expected
    };
    enum class Place { Tables, Contents, Encoding, Path };
    Kind kind;
    Place place;
    std::string text; // localised

    bool operator==(const ExportHint&) const = default;
};

// For the options as they stand now, in the order of the places. Looks at the folder and the files that the export
// would write.
[[nodiscard]] std::vector<ExportHint> exportHints(const ExportWizard& wizard);

} // namespace vellumo
