// SPDX-License-Identifier: MIT
#include "text/Base64.h"

namespace vellumo {

void appendBase64(std::span<const std::byte> bytes, TextBuffer& out)
{
    constexpr char digits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    const auto length = (bytes.size() + 2) / 3 * 4;
    auto* to = out.room(length);
    out.commit(length);
    for (; bytes.size() >= 3; bytes = bytes.subspan(3)) {
        const auto triple = std::to_integer<unsigned>(bytes[0]) << 16 | std::to_integer<unsigned>(bytes[1]) << 8
            | std::to_integer<unsigned>(bytes[2]);
        for (unsigned shift = 18; shift <= 18; shift -= 6)
            *to++ = digits[triple >> shift & 63];
    }
    if (bytes.empty()) return;
    const auto rest =
        std::to_integer<unsigned>(bytes[0]) << 16 | (bytes.size() > 1 ? std::to_integer<unsigned>(bytes[1]) << 8 : 0);
    *to++ = digits[rest >> 18];
    *to++ = digits[rest >> 12 & 63];
    *to++ = bytes.size() > 1 ? digits[rest >> 6 & 63] : '=';
    *to = '=';
}

} // namespace vellumo
