// SPDX-License-Identifier: MIT
#include "samples/Values.h"

#include <chrono>

namespace vellumo::samples {

Date dateOf(int year, int month, int day, int hour, int minute, int second)
{
    using namespace std::chrono;
    const auto toDay = [](int y, int m, int d) {
        return sys_days{std::chrono::year{y} / std::chrono::month{static_cast<unsigned>(m)}
            / std::chrono::day{static_cast<unsigned>(d)}};
    };
    const auto days = (toDay(year, month, day) - toDay(1899, 12, 30)).count();
    return {static_cast<double>(days) + (hour * 3600 + minute * 60 + second) / 86400.0};
}

Numeric numericOf(std::int64_t scaledValue)
{
    const bool negative = scaledValue < 0;
    const auto magnitude =
        negative ? 0 - static_cast<std::uint64_t>(scaledValue) : static_cast<std::uint64_t>(scaledValue);
    return {negative, {0, 0, static_cast<std::uint32_t>(magnitude >> 32), static_cast<std::uint32_t>(magnitude)}};
}

} // namespace vellumo::samples
