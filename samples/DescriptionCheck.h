// SPDX-License-Identifier: MIT
#pragma once

#include "samples/Description.h"

#include <string>

namespace vellumo::samples {

// Why the description cannot be written, for people; empty when it can, as far as that is seen before rows are asked
// for.
[[nodiscard]] std::string checkDescription(const DatabaseDescription& description);

} // namespace vellumo::samples
