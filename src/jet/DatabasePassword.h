// SPDX-License-Identifier: MIT
#pragma once

#include "jet/Pages.h"

namespace vellumo::jet {

// Whether a file of Access 97 to 2003 has a database password. It is kept in the header, and nothing is encrypted with
// it: only Access asks for it. `start`: the file's first bytes, at least 0x98 of them.
[[nodiscard]] bool hasDatabasePassword(ByteSpan start, bool isJet3);

} // namespace vellumo::jet
