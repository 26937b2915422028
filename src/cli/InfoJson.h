// SPDX-License-Identifier: MIT
#pragma once

#include "model/TAdmMDBFile.h"

#include <nlohmann/json_fwd.hpp>

namespace vellumo {

// What is known of an open file, and of one of its tables, for programs: the keys and words are the same in every
// language, what is not known or not there is null.
[[nodiscard]] nlohmann::ordered_json infoJson(const TAdmMDBFile& file);
[[nodiscard]] nlohmann::ordered_json infoJson(const TAdmMDBTable& table);

} // namespace vellumo
