// SPDX-License-Identifier: MIT
#pragma once

#include "embedded/Bytes.h"

#include <string>

namespace vellumo {

// Writes `content` to a new file of a unique name in the user's temporary folder, readable by the user alone, and
// returns its path. `suffix` ends the name. "" when the file cannot be made or written; nothing is left behind then.
[[nodiscard]] std::string writeTempFile(Bytes content, const std::string& suffix);

// Makes a new folder of a unique name in the user's temporary folder, for the user alone, and returns its path; "" when
// that fails.
[[nodiscard]] std::string makeTempFolder();

// Writes `content` to a new file at `path`, readable by the user alone, and returns the path. "" when there is such a
// file already, or when it cannot be made or written; nothing is left behind then.
[[nodiscard]] std::string writeNewFile(Bytes content, const std::string& path);

} // namespace vellumo
