// SPDX-License-Identifier: MIT
#pragma once

#include "embedded/Bytes.h"

#include <optional>
#include <string>
#include <string_view>

namespace vellumo {

// The bytes as text, in UTF-8 and without their byte-order mark; none when they do not look like text or are malformed.
// UTF-16 and UTF-32 are known by their mark. Without one only 7-bit text passes, the first byte excepted, and only the
// first 2000 bytes are looked at to tell.
[[nodiscard]] std::optional<std::string> decodeText(Bytes bytes);

} // namespace vellumo
