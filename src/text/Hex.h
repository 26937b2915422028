#pragma once

#include <cstddef>
#include <cstdint>

namespace vellumo {

// Writes the lower-case hexadecimal text of `count` bytes at `in` to `out`, high digit first, without a terminator,
// and returns its length, 2 * count. Without an output buffer (null) only the length is returned; a text that does not
// fit into `outCapacity` is not written at all and 0 is returned.
std::size_t toHex(char* out, std::size_t outCapacity, const std::uint8_t* in, std::size_t count);

} // namespace vellumo
