// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <string_view>

namespace vellumo {

// So many bytes, which are compared in one step.
template <std::size_t Length> using ByteBlock __attribute__((vector_size(Length))) = std::uint8_t;

// Of at least that many bytes, 8 or 16. The last block may have some of the one before in it.
template <std::size_t Length, typename IsOne> [[nodiscard]] bool hasByteInBlocks(std::string_view bytes, IsOne isOne)
{
    const auto isIn = [&](const char* start) {
        ByteBlock<Length> block;
        std::memcpy(&block, start, Length);
        const auto found = isOne(block);
        std::uint64_t words[Length / sizeof(std::uint64_t)];
        std::memcpy(words, &found, Length);
        static_assert(std::size(words) <= 2, "those between the first and the last would be passed over");
        return (words[0] | words[std::size(words) - 1]) != 0;
    };
    for (; bytes.size() > Length; bytes.remove_prefix(Length))
        if (isIn(bytes.data())) return true;
    return isIn(bytes.data() + bytes.size() - Length);
}

// Whether some byte is one of these: isOne(byte) is not 0 then. It is called with blocks of bytes, too, of which it
// tells the same one by one: made of comparisons, "&" and "|" alone.
template <typename IsOne> [[nodiscard]] bool hasByte(std::string_view bytes, IsOne isOne)
{
    if (bytes.size() >= 16) return hasByteInBlocks<16>(bytes, isOne);
    if (bytes.size() >= 8) return hasByteInBlocks<8>(bytes, isOne);
    for (const char byte : bytes)
        if (isOne(static_cast<std::uint8_t>(byte))) return true;
    return false;
}

} // namespace vellumo
