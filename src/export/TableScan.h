// SPDX-License-Identifier: MIT
#pragma once

#include "model/TAdmMDBTable.h"

#include <array>
#include <atomic>
#include <functional>
#include <set>
#include <vector>

namespace vellumo {

// What a cell can be that not every target takes, or keeps, as it is.
enum class CellTrait : std::uint8_t {
    Empty,            // null, or a text without a character
    Filled,           // neither
    Object,           // that an export writes
    FurtherFile,      // of a cell with several, behind its first
    BinaryObject,     // whose bytes are no text of at most 65,535 bytes
    LargeText,        // of more than 65,535 bytes
    LongText,         // of more than 32,740 UTF-16 units
    Backslash,        // a text with one
    CarriageReturn,   // a text with one
    Markup,           // a text with "&" or "<"
    Control,          // a text with a character that XML does not have
    OtherLetters,     // a text that is not all ASCII
    SixDigits,        // a number of more than 6 significant digits
    FifteenDigits,    // a number of more than 15
    Fraction,         // a number that is not whole
    TwoDecimals,      // a number of more than 2 digits behind the point
    TenDigits,        // a number of more than 10 digits in front of the point
    ThirteenDigits,   // a number of more than 13
    BeyondSingle,     // a number whose magnitude is above that of every single
    NotANumber,       // infinity, or none at all
    Seconds,          // a time that is not on the minute
    BeyondSmallDates, // a date before 1900 or behind 2079-06-06
    Milliseconds,     // a time that is not on the second
    EmptyText,        // a text without a character, which is no null
    Zeros,            // a text with U+0000
};
inline constexpr std::size_t cellTraits = static_cast<std::size_t>(CellTrait::Zeros) + 1;

// Some of them, one bit each.
using CellTraits = std::uint32_t;
constexpr CellTraits bitOf(CellTrait trait) { return CellTraits{1} << static_cast<unsigned>(trait); }

// Those that are to be counted in a column.
using WantedTraits = std::function<CellTraits(const TAdmMDBColumn&)>;
inline CellTraits allTraits(const TAdmMDBColumn&) { return ~CellTraits{0}; }

// How many cells of a column have a trait.
struct ColumnScan {
    std::array<std::uint64_t, cellTraits> counts = {};

    [[nodiscard]] std::uint64_t operator[](CellTrait trait) const { return counts[static_cast<std::size_t>(trait)]; }
    std::uint64_t& operator[](CellTrait trait) { return counts[static_cast<std::size_t>(trait)]; }
};

struct TableScan {
    std::vector<ColumnScan> columns; // those of the table
    std::set<char32_t> letters;      // other than ASCII, of all its texts; only with OtherLetters
};

// Counts these traits, looking at each cell at most once and at none that cannot have them; the others are counted or
// not. Ends early, with what there is, when `stop` is raised. Any thread, while the table stays as it is.
[[nodiscard]] TableScan scanTable(
    const TAdmMDBTable& table, const std::atomic<bool>& stop, const WantedTraits& wanted = allTraits);

} // namespace vellumo
