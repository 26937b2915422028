// SPDX-License-Identifier: MIT
#pragma once

#include "export/ExportOptions.h"
#include "model/TAdmMDBTable.h"

#include <memory>

namespace vellumo {

// A table that has only what was chosen of another, so that no writer needs to know of choices. Objects are
// shared, texts copied where rows were chosen. An index or a primary key of which a column is missing is left out. The
// numbers of the choice are those of columns and rows that `table` has.
[[nodiscard]] std::unique_ptr<TAdmMDBTable> chosenTable(const TAdmMDBTable& table, const TableChoice& choice);

} // namespace vellumo
