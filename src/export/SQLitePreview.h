// SPDX-License-Identifier: MIT
#pragma once

#include "export/ExportPreview.h"

namespace vellumo {

class LoadErrorWindow;

// Adds the columns and all rows of the first table of a database with few rows. "", or why that could not be done
// (localised).
[[nodiscard]] std::string readSQLitePreview(const std::string& path, LoadErrorWindow& window, ExportPreview& preview);

} // namespace vellumo
