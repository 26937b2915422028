#pragma once

#include "embedded/Bytes.h"

#include <string>

namespace vellumo {

// Writes `content` to a new file of a unique name in the user's temporary folder, readable by the user alone, and
// returns its path. `suffix` ends the name. "" when the file cannot be made or written; nothing is left behind then.
[[nodiscard]] std::string writeTempFile(Bytes content, const std::string& suffix);

} // namespace vellumo
