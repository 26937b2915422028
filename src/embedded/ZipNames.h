// SPDX-License-Identifier: MIT
#pragma once

#include "embedded/Bytes.h"

#include <string_view>
#include <vector>

namespace vellumo {

// The names in a zip archive's directory, which stands at its end; when the archive is cut, those that its first
// entries tell of themselves. Views into `zip`; never more than a few thousand.
[[nodiscard]] std::vector<std::string_view> zipNames(Bytes zip);

// What the archive says it is: the content of its first entry when that is named "mimetype" and stored as it is.
[[nodiscard]] std::string_view zipMimeType(Bytes zip);

} // namespace vellumo
