// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <bit>
#include <concepts>
#include <cstdint>
#include <span>
#include <string_view>
#include <type_traits>
#include <vector>

// Byte strings, and numbers in the byte order of the formats written here: the low byte first.
namespace vellumo::samples {

using Bytes = std::vector<std::uint8_t>;
using ByteSpan = std::span<const std::uint8_t>;

template <std::integral T> void putNumber(std::uint8_t* at, T number)
{
    auto rest = static_cast<std::make_unsigned_t<T>>(number);
    for (std::size_t i = 0; i < sizeof(T); ++i) {
        at[i] = static_cast<std::uint8_t>(rest & 0xFF);
        rest = static_cast<std::make_unsigned_t<T>>(static_cast<std::uint64_t>(rest) >> 8);
    }
}

// The type says how many bytes are written: appendNumber<std::uint16_t>(out, 3).
template <std::integral T> void appendNumber(Bytes& out, std::type_identity_t<T> number)
{
    const auto at = out.size();
    out.resize(at + sizeof(T));
    putNumber<T>(&out[at], number);
}

inline void appendSingle(Bytes& out, float number)
{
    appendNumber<std::uint32_t>(out, std::bit_cast<std::uint32_t>(number));
}

inline void appendDouble(Bytes& out, double number)
{
    appendNumber<std::uint64_t>(out, std::bit_cast<std::uint64_t>(number));
}

inline void appendBytes(Bytes& out, ByteSpan bytes)
{
    const auto at = out.size();
    out.resize(at + bytes.size());
    std::copy(bytes.begin(), bytes.end(), out.begin() + static_cast<std::ptrdiff_t>(at));
}

inline ByteSpan asBytes(std::string_view text)
{
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

inline void appendText(Bytes& out, std::string_view text) { appendBytes(out, asBytes(text)); }

} // namespace vellumo::samples
