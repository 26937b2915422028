// SPDX-License-Identifier: MIT
#pragma once

#include "samples/Bytes.h"

namespace vellumo::samples {

// The RC4 stream cipher over `data`, in place; the same call decodes.
void applyRc4(std::span<std::uint8_t> data, ByteSpan key);

} // namespace vellumo::samples
