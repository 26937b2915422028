// SPDX-License-Identifier: MIT
#pragma once

#include "jet/Database.h"
#include "model/Contents.h"

namespace vellumo {

// Queries, linked tables, forms and the like of a file. What cannot be read of one leaves it listed with what there is.
[[nodiscard]] FileContents readContents(
    jet::Database& database, const std::vector<jet::CatalogEntry>& catalog, DamageReport& damage);

} // namespace vellumo
