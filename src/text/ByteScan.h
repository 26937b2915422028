// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vellumo {

// Whether some byte of the blocks of that length is one; what is shorter than a block is left in `bytes`.
template <std::size_t Length, typename IsOne>
[[nodiscard]] bool hasByteInBlocks(std::string_view& bytes, const IsOne& isOne)
{
    for (; bytes.size() >= Length; bytes.remove_prefix(Length)) {
        const char* block = bytes.data();
        std::uint8_t found = 0;
        for (std::size_t i = 0; i < Length; ++i)
            found |= isOne(static_cast<std::uint8_t>(block[i]));
        if (found != 0) return true;
    }
    return false;
}

// Whether some byte is one of these: `isOne(std::uint8_t)` is not 0 then. Many bytes are looked at in one step, as long
// as there is no branch in `isOne`: "&" and "|" in place of "&&" and "||".
template <typename IsOne> [[nodiscard]] bool hasByte(std::string_view bytes, const IsOne& isOne)
{
    return hasByteInBlocks<64>(bytes, isOne) || hasByteInBlocks<8>(bytes, isOne) || hasByteInBlocks<1>(bytes, isOne);
}

} // namespace vellumo
