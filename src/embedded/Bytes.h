#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

// Little-endian numbers in a run of bytes.
namespace vellumo {

using Bytes = std::span<const std::byte>;

// `offset` + 2 must not exceed the size.
[[nodiscard]] inline std::uint16_t u16At(Bytes bytes, std::size_t offset)
{
    const auto low = std::to_integer<unsigned>(bytes[offset]);
    const auto high = std::to_integer<unsigned>(bytes[offset + 1]);
    return static_cast<std::uint16_t>(low | high << 8U);
}

// `offset` + 4 must not exceed the size.
[[nodiscard]] inline std::uint32_t u32At(Bytes bytes, std::size_t offset)
{
    return u16At(bytes, offset) | static_cast<std::uint32_t>(u16At(bytes, offset + 2)) << 16U;
}

[[nodiscard]] inline std::int16_t i16At(Bytes bytes, std::size_t offset)
{
    return static_cast<std::int16_t>(u16At(bytes, offset));
}

[[nodiscard]] inline std::int32_t i32At(Bytes bytes, std::size_t offset)
{
    return static_cast<std::int32_t>(u32At(bytes, offset));
}

} // namespace vellumo
