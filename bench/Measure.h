// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <ctime>
#include <string>
#include <vector>

// Figures of one process: medians of a few runs, and the ratio of each to a reference measured beside it.
namespace vellumo::bench {

template <typename Work> [[nodiscard]] double seconds(Work work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// Of all threads of this process.
template <typename Work> [[nodiscard]] double processorSeconds(Work work)
{
    const auto start = std::clock();
    work();
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

[[nodiscard]] inline double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

template <typename Work> [[nodiscard]] double medianSeconds(int runs, Work work)
{
    std::vector<double> values;
    for (int i = 0; i < runs; ++i)
        values.push_back(seconds(work));
    return median(std::move(values));
}

} // namespace vellumo::bench
