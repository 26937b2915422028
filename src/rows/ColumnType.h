// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vellumo {

// The type of a column. The numbers are the codes under which files store types; those from 256 on are types that a
// file tells in another way.
enum class ColumnType : std::uint16_t {
    Unknown = 0, // a code that no column should have
    Boolean = 1,
    Byte = 2,
    Integer = 3,
    LongInteger = 4,
    Currency = 5,
    Single = 6,
    Double = 7,
    DateTime = 8,
    Binary = 9,
    Text = 10,
    Ole = 11,
    Memo = 12,
    ReplicationId = 15,
    Numeric = 16,
    ComplexAutoNumber = 18,
    BigInt = 19,
    DateTimeExtended = 20,
    Attachment = 256,
    MultipleValues = 257,
};

// What the texts of a column mean when they are put in order.
enum class SortKind : std::uint8_t { Text, Number, Date };

// All that the program decides by a column's type alone. How a stored value becomes text is told by CellAppender, what
// an SQL server calls the type by its SQLDialectFacts.
struct ColumnTypeFacts {
    ColumnType type;
    std::string_view accessName;
    SortKind sortKind;
    bool isQuoted;         // a literal: in quotes in text files and in SQL
    bool hasDecimalSymbol; // its decimal point is written as the user wants it
    bool isSheetNumber;    // a number in the cells of a workbook
};

// In the order of the codes, Unknown last.
inline constexpr std::array<ColumnTypeFacts, 20> columnTypes = {{
    {ColumnType::Boolean, "Boolean", SortKind::Number, false, false, false},
    {ColumnType::Byte, "Byte", SortKind::Number, false, false, false},
    {ColumnType::Integer, "Integer", SortKind::Number, false, false, true},
    {ColumnType::LongInteger, "Long Integer", SortKind::Number, false, false, true},
    {ColumnType::Currency, "Currency", SortKind::Number, false, true, true},
    {ColumnType::Single, "Single", SortKind::Number, false, true, true},
    {ColumnType::Double, "Double", SortKind::Number, false, true, true},
    {ColumnType::DateTime, "DateTime", SortKind::Date, true, false, false},
    {ColumnType::Binary, "Binary", SortKind::Text, true, false, false},
    {ColumnType::Text, "Text", SortKind::Text, true, false, false},
    {ColumnType::Ole, "OLE", SortKind::Text, false, false, false},
    {ColumnType::Memo, "Memo/Hyperlink", SortKind::Text, true, false, false},
    {ColumnType::ReplicationId, "Replication ID", SortKind::Text, false, false, false},
    {ColumnType::Numeric, "Numeric", SortKind::Number, false, false, true},
    {ColumnType::ComplexAutoNumber, "Complex Value auto number", SortKind::Number, false, false, false},
    {ColumnType::BigInt, "BigInt", SortKind::Number, false, false, false},
    {ColumnType::DateTimeExtended, "Date/Time Extended", SortKind::Date, true, false, false},
    {ColumnType::Attachment, "Attachment", SortKind::Text, false, false, false},
    {ColumnType::MultipleValues, "Multiple Values", SortKind::Text, true, false, false},
    {ColumnType::Unknown, "", SortKind::Text, false, false, false},
}};

// The place of a type among columnTypes.
[[nodiscard]] constexpr std::size_t columnTypeIndex(ColumnType type)
{
    std::size_t index = 0;
    while (columnTypes[index].type != type && index + 1 < columnTypes.size())
        ++index;
    return index;
}

// Whether cells are decoded objects, and not texts.
[[nodiscard]] constexpr bool isObjectType(ColumnType type)
{
    return type == ColumnType::Ole || type == ColumnType::Attachment;
}

[[nodiscard]] constexpr const ColumnTypeFacts& factsOf(ColumnType type) { return columnTypes[columnTypeIndex(type)]; }

// Unknown for a code that no file stores, or a name, that is none.
[[nodiscard]] constexpr ColumnType columnTypeOfCode(std::int64_t code)
{
    constexpr std::int64_t codeLimit = 256;
    for (const auto& facts : columnTypes)
        if (static_cast<std::int64_t>(facts.type) == code && code < codeLimit) return facts.type;
    return ColumnType::Unknown;
}
[[nodiscard]] constexpr ColumnType columnTypeNamed(std::string_view accessName)
{
    for (const auto& facts : columnTypes)
        if (facts.accessName == accessName) return facts.type;
    return ColumnType::Unknown;
}

} // namespace vellumo
