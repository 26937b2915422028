#include "text/Hex.h"

namespace vellumo {

std::size_t toHex(char* out, std::size_t outCapacity, const std::uint8_t* in, std::size_t count)
{
    const auto length = 2 * count;
    if (out == nullptr) return length;
    if (length > outCapacity) return 0;
    constexpr char digits[] = "0123456789abcdef";
    for (std::size_t i = 0; i < count; ++i) {
        out[2 * i] = digits[in[i] >> 4];
        out[2 * i + 1] = digits[in[i] & 15];
    }
    return length;
}

} // namespace vellumo
