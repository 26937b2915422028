// SPDX-License-Identifier: MIT
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

// Little-endian numbers in a run of bytes, at places that the caller has checked.
namespace vellumo {

using Bytes = std::span<const std::byte>;

static_assert(std::endian::native == std::endian::little, "files are read as the machine has its numbers");

template <typename T> [[nodiscard]] T loadNumber(const void* from)
{
    T value;
    std::memcpy(&value, from, sizeof value);
    return value;
}

[[nodiscard]] inline std::uint16_t load16(const void* from) { return loadNumber<std::uint16_t>(from); }
[[nodiscard]] inline std::uint32_t load32(const void* from) { return loadNumber<std::uint32_t>(from); }

// `offset` + 2 must not exceed the size.
[[nodiscard]] inline std::uint16_t u16At(Bytes bytes, std::size_t offset) { return load16(&bytes[offset]); }

// `offset` + 4 must not exceed the size.
[[nodiscard]] inline std::uint32_t u32At(Bytes bytes, std::size_t offset) { return load32(&bytes[offset]); }

[[nodiscard]] inline std::int16_t i16At(Bytes bytes, std::size_t offset)
{
    return static_cast<std::int16_t>(u16At(bytes, offset));
}

[[nodiscard]] inline std::int32_t i32At(Bytes bytes, std::size_t offset)
{
    return static_cast<std::int32_t>(u32At(bytes, offset));
}

} // namespace vellumo
