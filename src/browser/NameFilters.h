// SPDX-License-Identifier: MIT
#pragma once

#include "model/TAdmMDBFile.h"

#include <span>
#include <string_view>
#include <vector>

// The file search field's filters: a name passes when it contains the field's text, letter case ignored. An empty text
// lets everything pass; the order stays.
namespace vellumo {

[[nodiscard]] std::vector<TAdmMDBTable*> filterTableName(const TAdmMDBFile::Tables& tables, std::string_view text);

// Judges a file by its name without extension; an open file passes also when one of its tables does.
[[nodiscard]] std::vector<TAdmMDBFile*> filterFileName(std::span<TAdmMDBFile* const> files, std::string_view text);

} // namespace vellumo
