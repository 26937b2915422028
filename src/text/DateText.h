// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <optional>
#include <string>

namespace vellumo {

using Timestamp = std::chrono::system_clock::time_point;

// A date as the file list shows it: "Today 9:07 PM", "Yesterday 9:07 PM", else "5/3/2014 9:07 PM" (day before month),
// in local time, in another language as the message table has it. "" for no date. Whether it is today is told by day
// numbers that are UTC days rounded to the nearest, not by the local calendar.
[[nodiscard]] std::string dateWithFinderFormat(std::optional<Timestamp> date, Timestamp now);

// The date for programs, ISO 8601 in UTC: "2014-03-05T20:07:00Z".
[[nodiscard]] std::string isoText(Timestamp date);

} // namespace vellumo
