// SPDX-License-Identifier: MIT
#pragma once

#include "export/ExportOptions.h"

namespace vellumo {

class TAdmMDBFile;

// How the output of a table begins, as its writer makes it: the first lines of a text format, in UTF-8 whatever the
// encoding; of another one the columns with their types, and the first rows. "" where that cannot be made. Quick for a
// table of any size.
[[nodiscard]] std::string exportPreview(
    const TAdmMDBFile& file, const ExportEntry& entry, const ExportOptions& options);

} // namespace vellumo
