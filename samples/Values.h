// SPDX-License-Identifier: MIT
#pragma once

#include "samples/Bytes.h"

#include <array>
#include <cstdint>
#include <string>
#include <variant>
#include <vector>

// What a cell of a written table can hold.
namespace vellumo::samples {

struct Currency {
    std::int64_t tenThousandths = 0;
};

struct Date {
    double days = 0; // as stored: days since 1899-12-30; before that day the time of day is subtracted
};

// A day of the Gregorian calendar from 1899-12-30 on, and a time of that day.
[[nodiscard]] Date dateOf(int year, int month, int day, int hour = 0, int minute = 0, int second = 0);

struct Guid {
    // In the order in which the text form shows them: {00010203-0405-0607-0809-0A0B0C0D0E0F}.
    std::array<std::uint8_t, 16> bytes{};
};

struct Numeric {
    bool negative = false;
    std::array<std::uint32_t, 4> magnitude{}; // times 10 ^ scale of the column, most significant word first
};

[[nodiscard]] Numeric numericOf(std::int64_t scaledValue);

enum class LongStorage {
    BySize, // the smallest of the following that holds the value
    Inline, // in the row itself
    Single, // one row of a long-value page
    Chain,  // linked rows
};

// A memo or object value whose place is chosen.
struct LongValue {
    std::variant<std::string, Bytes> content; // text is UTF-8
    LongStorage storage = LongStorage::BySize;
    std::uint32_t linkSize = 0; // data bytes in a link of a chain; 0 = as many as fit
};

// Days since 0001-01-01 and units of 100 ns of the day.
struct ExtendedDate {
    std::uint64_t days = 0;
    std::uint64_t units = 0;
};

// The values of a cell that has several.
struct FileValue {
    std::string name;
    std::string extension; // ASCII
    Bytes content;
    bool isPacked = true;
};
struct VersionValue {
    std::string text;
    Date modified;
};
using FileValues = std::vector<FileValue>;
using TextValues = std::vector<std::string>;
using NumberValues = std::vector<std::int64_t>;
using VersionValues = std::vector<VersionValue>;

// std::monostate is null. Which alternatives a column takes follows from its type: int64_t for whole numbers; text
// (UTF-8) for Text and Memo; Bytes for Binary and Ole, and in a Text or Memo column for bytes to be stored as they are;
// Memo and Ole take LongValue too.
using Value = std::variant<std::monostate, bool, std::int64_t, float, double, Currency, Date, std::string, Bytes, Guid,
    Numeric, LongValue, ExtendedDate, FileValues, TextValues, NumberValues, VersionValues>;

} // namespace vellumo::samples
