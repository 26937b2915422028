// SPDX-License-Identifier: MIT
#include "text/DateText.h"

#include "text/Format.h"
#include "text/Messages.h"

#include <cmath>
#include <ctime>
#include <fmt/format.h>

namespace vellumo {

namespace {

long long roundedUtcDay(Timestamp time)
{
    const std::chrono::duration<double> sinceEpoch = time.time_since_epoch();
    return std::llround(sinceEpoch.count() / 86400.0);
}

std::tm localTime(Timestamp time)
{
    const auto seconds = std::chrono::system_clock::to_time_t(std::chrono::floor<std::chrono::seconds>(time));
    std::tm parts{};
    localtime_r(&seconds, &parts);
    return parts;
}

std::string clockText(const std::tm& time)
{
    const auto hour = time.tm_hour % 12 == 0 ? 12 : time.tm_hour % 12;
    return fmt::format("{}:{:02} {}", hour, time.tm_min, time.tm_hour < 12 ? "AM" : "PM");
}

} // namespace

std::string dateWithFinderFormat(std::optional<Timestamp> date, Timestamp now)
{
    if (!date) return {};
    const auto local = localTime(*date);
    const auto daysAgo = roundedUtcDay(now) - roundedUtcDay(*date);
    if (daysAgo == 0) return format("%@ %@", {localized("Today"), clockText(local)});
    if (daysAgo == 1) return format("%@ %@", {localized("Yesterday"), clockText(local)});
    return fmt::format("{}/{}/{:04} {}", local.tm_mday, local.tm_mon + 1, local.tm_year + 1900, clockText(local));
}

std::string isoText(Timestamp date)
{
    const auto seconds = std::chrono::floor<std::chrono::seconds>(date);
    const auto day = std::chrono::floor<std::chrono::days>(seconds);
    const std::chrono::year_month_day ymd(day);
    const std::chrono::hh_mm_ss time(seconds - day);
    return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}Z", static_cast<int>(ymd.year()),
        static_cast<unsigned>(ymd.month()), static_cast<unsigned>(ymd.day()), time.hours().count(),
        time.minutes().count(), time.seconds().count());
}

} // namespace vellumo
