// SPDX-License-Identifier: MIT
#include "samples/Rc4.h"

#include <array>
#include <numeric>
#include <utility>

namespace vellumo::samples {

void applyRc4(std::span<std::uint8_t> data, ByteSpan key)
{
    std::array<std::uint8_t, 256> state{};
    std::iota(state.begin(), state.end(), std::uint8_t{0});
    std::uint8_t j = 0;
    for (std::size_t i = 0; i < state.size(); ++i) {
        j = static_cast<std::uint8_t>(j + state[i] + key[i % key.size()]);
        std::swap(state[i], state[j]);
    }
    std::uint8_t i = 0;
    j = 0;
    for (auto& byte : data) {
        j = static_cast<std::uint8_t>(j + state[++i]);
        std::swap(state[i], state[j]);
        byte ^= state[static_cast<std::uint8_t>(state[i] + state[j])];
    }
}

} // namespace vellumo::samples
