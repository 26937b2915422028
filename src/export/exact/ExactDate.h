// SPDX-License-Identifier: MIT
#pragma once

#include "export/exact/ExactCells.h"

#include <array>
#include <optional>

namespace vellumo {

// A date with its time of day, in the years 100 to 9999.
struct ExactDate {
    int year = 0;
    int month = 1;
    int day = 1;
    int second = 0;            // of the day
    std::int32_t fraction = 0; // of the second, in units of 100 ns
};

// The date of a cell that has one; nullopt for a text that is none.
[[nodiscard]] std::optional<ExactDate> dateOf(const ExactCell& cell);

using ISODateText = std::array<char, 27>;
// The date as "yyyy-mm-dd hh:mm:ss", with `separator` in place of the blank, then a point and 3 or 7 digits where there
// is a fraction: made in `place`. Of what is no date the text as it stands.
[[nodiscard]] std::string_view isoDate(const ExactCell& cell, char separator, ISODateText& place);
// The same of a text that tells all of the date.
[[nodiscard]] inline std::string_view isoDate(std::string_view text, char separator, ISODateText& place)
{
    return isoDate(ExactCell{ExactState::Value, ExactKind::Date, text}, separator, place);
}
// The same, appended to a std::string or a TextBuffer.
template <typename Out> void appendISODate(const ExactCell& cell, char separator, Out& out)
{
    ISODateText place;
    out += isoDate(cell, separator, place);
}

// Days since 1899-12-30 with the time of day as their fraction, as workbooks count from 1900-03-01 on.
[[nodiscard]] double dateSerial(const ExactDate& date);

} // namespace vellumo
