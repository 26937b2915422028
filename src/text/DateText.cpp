// SPDX-License-Identifier: MIT
#include "text/DateText.h"

#include "text/Format.h"
#include "text/Messages.h"

#include <cmath>
#include <ctime>
#include <fmt/format.h>
#include <string_view>
#include <utility>

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

// A pattern with each part of the moment in place of its name.
std::string filled(std::string pattern, const std::tm& time)
{
    const auto hour = time.tm_hour % 12 == 0 ? 12 : time.tm_hour % 12;
    const std::pair<std::string_view, std::string> parts[] = {{"<year>", fmt::format("{:04}", time.tm_year + 1900)},
        {"<month>", fmt::format("{}", time.tm_mon + 1)}, {"<day>", fmt::format("{}", time.tm_mday)},
        {"<hour of 12>", fmt::format("{}", hour)}, {"<hour of 24>", fmt::format("{:02}", time.tm_hour)},
        {"<minute>", fmt::format("{:02}", time.tm_min)}, {"<AM or PM>", time.tm_hour < 12 ? "AM" : "PM"}};
    for (const auto& [name, value] : parts)
        if (const auto place = pattern.find(name); place != std::string::npos)
            pattern.replace(place, name.size(), value);
    return pattern;
}

std::string clockText(const std::tm& time) { return filled(localized("<hour of 12>:<minute> <AM or PM>"), time); }

} // namespace

std::string dateWithFinderFormat(std::optional<Timestamp> date, Timestamp now)
{
    if (!date) return {};
    const auto local = localTime(*date);
    const auto daysAgo = roundedUtcDay(now) - roundedUtcDay(*date);
    if (daysAgo == 0) return format("%@ %@", {localized("Today"), clockText(local)});
    if (daysAgo == 1) return format("%@ %@", {localized("Yesterday"), clockText(local)});
    return format("%@ %@", {filled(localized("<day>/<month>/<year>"), local), clockText(local)});
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
