// SPDX-License-Identifier: MIT
#include "export/exact/ExactDate.h"

#include <charconv>
#include <chrono>
#include <fmt/format.h>

namespace vellumo {

namespace {

constexpr int secondsPerDay = 86400;
constexpr std::int32_t unitsPerSecond = 10'000'000;
constexpr std::int32_t unitsPerMillisecond = 10'000;
constexpr std::size_t plainLength = std::string_view("MM/DD/YYYY hh:mm:ss").size();

// Takes the digits in front of `text` off, and whatever stands behind them.
std::optional<int> takeNumber(std::string_view& text, std::size_t width)
{
    int number = 0;
    if (text.size() < width) return std::nullopt;
    const auto result = std::from_chars(text.data(), text.data() + width, number);
    if (result.ec != std::errc() || result.ptr != text.data() + width) return std::nullopt;
    text.remove_prefix(std::min(width + 1, text.size()));
    return number;
}

// Digits behind the point, as units of 100 ns.
std::int32_t fractionOf(std::string_view digits)
{
    std::int32_t fraction = 0;
    for (std::size_t i = 0; i < 7; ++i)
        fraction = fraction * 10 + (i < digits.size() ? digits[i] - '0' : 0);
    return fraction;
}

std::chrono::sys_days dayOf(const ExactDate& date) { return std::chrono::year(date.year) / date.month / date.day; }

void moveDay(ExactDate& date, int days)
{
    const std::chrono::year_month_day moved(dayOf(date) + std::chrono::days(days));
    date.year = static_cast<int>(moved.year());
    date.month = static_cast<int>(static_cast<unsigned>(moved.month()));
    date.day = static_cast<int>(static_cast<unsigned>(moved.day()));
}

void addMilliseconds(ExactDate& date, std::int32_t milliseconds)
{
    date.fraction += milliseconds * unitsPerMillisecond;
    if (date.fraction < 0) {
        date.fraction += unitsPerSecond;
        --date.second;
    }
    if (date.second >= 0) return;
    date.second += secondsPerDay;
    moveDay(date, -1);
}

} // namespace

std::optional<ExactDate> dateOf(const ExactCell& cell)
{
    auto text = cell.text;
    if (text.size() < plainLength) return std::nullopt;
    const auto month = takeNumber(text, 2);
    const auto day = takeNumber(text, 2);
    const auto year = takeNumber(text, 4);
    const auto hour = takeNumber(text, 2);
    const auto minute = takeNumber(text, 2);
    const auto second = takeNumber(text, 2);
    if (!month || !day || !year || !hour || !minute || !second) return std::nullopt;
    ExactDate date{*year, *month, *day, (*hour * 60 + *minute) * 60 + *second, fractionOf(text)};
    if (cell.milliseconds != 0) addMilliseconds(date, cell.milliseconds);
    return date;
}

std::string_view isoDate(const ExactCell& cell, char separator, ISODateText& place)
{
    char* iso = place.data();
    const auto text = cell.text;
    if (text.size() == plainLength && cell.milliseconds == 0) {
        text.copy(iso, 4, 6);
        iso[4] = '-';
        text.copy(iso + 5, 2, 0);
        iso[7] = '-';
        text.copy(iso + 8, 2, 3);
        iso[10] = separator;
        text.copy(iso + 11, 8, 11);
        return {iso, plainLength};
    }
    const auto date = dateOf(cell);
    if (!date) return text;
    char* end = fmt::format_to(iso, "{:04}-{:02}-{:02}{}{:02}:{:02}:{:02}", date->year, date->month, date->day,
        separator, date->second / 3600, date->second / 60 % 60, date->second % 60);
    if (date->fraction % unitsPerMillisecond != 0)
        end = fmt::format_to(end, ".{:07}", date->fraction);
    else if (date->fraction != 0)
        end = fmt::format_to(end, ".{:03}", date->fraction / unitsPerMillisecond);
    return {iso, static_cast<std::size_t>(end - iso)};
}

double dateSerial(const ExactDate& date)
{
    constexpr std::chrono::sys_days origin = std::chrono::year(1899) / 12 / 30;
    const auto days = (dayOf(date) - origin).count();
    const auto units = static_cast<double>(date.second) * unitsPerSecond + date.fraction;
    return static_cast<double>(days) + units / (static_cast<double>(secondsPerDay) * unitsPerSecond);
}

} // namespace vellumo
