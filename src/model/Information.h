// SPDX-License-Identifier: MIT
#pragma once

#include "rows/ColumnType.h"
#include "text/DateText.h"

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

// What is known of an object, as values. Labels and words for people are made of them where they are shown.
namespace vellumo {

enum class PropertyId : std::uint8_t {
    Name,
    Where,
    Size,
    Created,
    Modified,
    LastOpened,
    RowCount,
    ColumnCount,
    Type,
    ResultType,
    Expression,
    Precision,
    Scale,
    AllowZeroLength,
    DecimalPlaces,
    DefaultValue,
    Required,
    UnicodeCompression,
    TextAlignment,
    Description,
    TextFormat,
    IndexKeys,
    PrimaryKey,
    Unique,
    Columns,
    ReferencedTable,
    ReferencedColumns,
    OnUpdateCascade,
    OnDeleteCascade,
    // Behind the others, where an object has them.
    DatabasePassword,
    Caption,
    Format,
    InputMask,
    ValidationRule,
    ValidationText,
    RowSource,
};

enum class TextAlignment : std::uint8_t { Left = 0, Right = 1, Center = 2, Justified = 3, Natural = 4 };
enum class TextFormat : std::uint8_t { Plain, Rich, Unknown };

struct FileSize {
    std::uint64_t bytes;
};
struct DecimalPlaces {
    static constexpr std::int64_t automatic = 255; // as many as the value needs
    std::int64_t count;
};
struct IdlePassword { }; // there is one, which encrypts nothing
struct ColumnTypeInfo {
    ColumnType type;
    bool isCalculated;
};
struct IndexKey {
    std::string name; // of the column
    bool isAscending = true;

    bool operator==(const IndexKey&) const = default;
};

using InfoValue = std::variant<std::string, std::int64_t, bool, FileSize, Timestamp, ColumnTypeInfo, DecimalPlaces,
    TextAlignment, TextFormat, IdlePassword, std::vector<std::string>, std::vector<IndexKey>>;

struct InfoProperty {
    PropertyId id;
    InfoValue value;
};
// In the order in which it is shown.
using Information = std::vector<InfoProperty>;

// Label and value for people, localised.
[[nodiscard]] std::string infoLabel(PropertyId id);
[[nodiscard]] std::string infoText(const InfoValue& value);

} // namespace vellumo
