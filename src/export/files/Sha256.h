// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <span>
#include <string>

namespace vellumo {

// The SHA-256 of the bytes as 64 hexadecimal digits, small letters. Any thread.
[[nodiscard]] std::string sha256(std::span<const std::byte> bytes);

} // namespace vellumo
