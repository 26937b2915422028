// SPDX-License-Identifier: MIT
#pragma once

#include "samples/Description.h"

namespace vellumo::samples {

// The description with its columns of several values as a file stores them: their cells hold numbers of groups, the
// values are rows of further, hidden tables, and a system table leads from the columns to these. The tables added stand
// behind the others; for columns whose values are given by hand there are none.
[[nodiscard]] DatabaseDescription withValueTables(const DatabaseDescription& description);

} // namespace vellumo::samples
