// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vellumo {

class TAdmMDBTable;

// What a column's rows have in them, as far as its declaration depends on it, and how many a server does not take.
struct ColumnSurvey {
    std::size_t nulls = 0;
    std::size_t emptyTexts = 0;
    std::size_t unreadable = 0;
    std::size_t zeroTexts = 0; // with U+0000 in them
    std::size_t notANumbers = 0;
    std::size_t infinities = 0;
    std::size_t minusZeros = 0;
    std::size_t longestText = 0;  // in characters; of texts that may be longer than their column says
    std::size_t longestBytes = 0; // of texts, bytes and objects
    int wholeDigits = 0;          // of numbers with a precision and scale: in front of the point, and in all
    int significantDigits = 0;
    int decimals = 0;              // of these numbers: digits behind the point
    int fractionDigits = 0;        // of seconds: 0, 3 or 7
    std::size_t seventhDigits = 0; // fractions whose last of 7 digits is not 0
    std::size_t hugeValues = 0;    // whose literals have more than 16 MiB
    std::int64_t largest = 0;      // of an AutoNumber column
};

// One a column, in their order.
[[nodiscard]] std::vector<ColumnSurvey> surveyRows(const TAdmMDBTable& table);

// The table's column of exactly this name, and those of several; nullopt when it lacks one.
[[nodiscard]] std::optional<std::size_t> columnIndex(const TAdmMDBTable& table, std::string_view name);
[[nodiscard]] std::optional<std::vector<std::size_t>> columnIndexes(
    const TAdmMDBTable& table, const std::vector<std::string>& names);

// Which keys are the same key.
enum class KeyComparison {
    Exact,
    PaddedBlanks, // blanks at the end of a text do not count
    IgnoringCase,
};

// Rows whose key, made of these columns, a row before them has. Keys with a null in them are like no other.
[[nodiscard]] std::size_t countRepeats(
    const TAdmMDBTable& table, std::span<const std::size_t> columns, KeyComparison comparison);

// Rows whose key, without a null in it, is none of the referenced table's. Soon ends, with any number, once `stop`,
// unless it is null, is raised.
[[nodiscard]] std::size_t countOrphans(const TAdmMDBTable& table, std::span<const std::size_t> columns,
    const TAdmMDBTable& referenced, std::span<const std::size_t> referencedColumns, KeyComparison comparison,
    const std::atomic<bool>* stop = nullptr);

} // namespace vellumo
