// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
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
[[nodiscard]] std::vector<std::string> leftOutObjects(const TAdmMDBTable& table);

// How many files the column's cells have behind their first, which is all that is written as a cell's value.
[[nodiscard]] std::size_t furtherFileCount(const TAdmMDBTable& table, std::size_t column);

} // namespace vellumo
