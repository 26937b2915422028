// SPDX-License-Identifier: MIT
#pragma once

#include "embedded/Bytes.h"

namespace vellumo {

// Inflates the raw deflate stream (RFC 1951, no zlib header) in `source` in one go and returns zlib's status. Z_OK: the
// stream ended inside `source`, and `destination` is narrowed to the bytes written. After any other status it keeps its
// size and holds bytes of no meaning: Z_BUF_ERROR when the room did not suffice or a length exceeds 32 bits,
// Z_DATA_ERROR when `source` ended first, wants a dictionary or is no deflate stream.
[[nodiscard]] int inflateRaw(std::span<std::byte>& destination, Bytes source);

// The same, but `destination` is narrowed to the bytes written after every status: as far as it went, they are good.
[[nodiscard]] int inflateRawAsFarAsItGoes(std::span<std::byte>& destination, Bytes source);

} // namespace vellumo
