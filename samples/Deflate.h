// SPDX-License-Identifier: MIT
#pragma once

#include "samples/Bytes.h"

namespace vellumo::samples {

// The bytes as a zlib stream: two bytes of header, deflated data, check sum.
[[nodiscard]] Bytes zlibStream(ByteSpan bytes);

} // namespace vellumo::samples
