// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace vellumo {

class TAdmBlobData;
class TAdmMDBTable;

// The object that an export writes for a cell, asked by every writer: null for an empty cell, and for a damaged object,
// whose bytes would pass for a whole file's.
[[nodiscard]] const TAdmBlobData* exportedObject(const std::shared_ptr<TAdmBlobData>& cell);

// What that leaves out of a table, a line a column (localised): "Products.Picture: 2 damaged objects were left out."
// `hasFiles`: the objects became files beside, the further ones of a cell too.
[[nodiscard]] std::vector<std::string> leftOutObjects(const TAdmMDBTable& table, bool hasFiles = false);

} // namespace vellumo
