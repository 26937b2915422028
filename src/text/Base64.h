// SPDX-License-Identifier: MIT
#pragma once

#include "text/TextBuffer.h"

#include <cstddef>
#include <span>

namespace vellumo {

// Appends the bytes as base64 (RFC 4648, with padding), without line breaks.
void appendBase64(std::span<const std::byte> bytes, TextBuffer& out);

// Bytes that may be encoded by themselves, one run after the other, up to the last: only there is padding needed.
inline constexpr std::size_t base64Run = 3 << 14;

} // namespace vellumo
