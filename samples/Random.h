// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace vellumo::samples {

// The same numbers for the same seed, on every machine (SplitMix64).
class Random {
public:
    explicit Random(std::uint64_t seed)
        : m_state(seed)
    {
    }
    std::uint64_t next()
    {
        m_state += 0x9E3779B97F4A7C15;
        auto mixed = m_state;
        mixed = (mixed ^ mixed >> 30) * 0xBF58476D1CE4E5B9;
        mixed = (mixed ^ mixed >> 27) * 0x94D049BB133111EB;
        return mixed ^ mixed >> 31;
    }
    // 0 .. limit - 1; limit is above 0.
    int below(int limit) { return static_cast<int>(next() % static_cast<std::uint64_t>(limit)); }

private:
    std::uint64_t m_state;
};

} // namespace vellumo::samples
