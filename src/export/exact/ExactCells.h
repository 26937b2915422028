// SPDX-License-Identifier: MIT
#pragma once

#include "rows/ColumnType.h"
#include "rows/RowGroup.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace vellumo {

class TAdmMDBTable;

// What a cell is to an export that keeps every value as the file holds it: asked by each writer of that style, so that
// none of them looks at column types.
enum class ExactKind : std::uint8_t {
    Boolean,
    Integer,    // of at most 32 bits
    BigInteger, // of 64
    Single,     // with 32 bits
    Double,     // with 64
    Decimal,    // Currency, and numbers of a precision and scale
    Date,
    Guid,
    Text,
    Binary,
    Object,
};

// What the type's cells are. Unknown types hold bytes.
[[nodiscard]] ExactKind exactKind(ColumnType type);

enum class ExactState : std::uint8_t {
    Null,
    Value,
    Unreadable, // the file has a value that could not be read, which its damage report tells
};

// One cell. Valid until the next one of its column is asked for.
struct ExactCell {
    ExactState state = ExactState::Null;
    ExactKind kind = ExactKind::Text;
    // Boolean "0", "1"; Integer, BigInteger, Decimal: digits with a sign and a point, no exponent; Single, Double: the
    // shortest digits that give the value back, or "nan", "inf", "-inf"; Guid: {8-4-4-4-12}; Text: the whole text,
    // zeros included, which may be empty; Binary: two hexadecimal digits a byte. Date: see dateOf (ExactDate.h).
    std::string_view text{};
    // Date: what the value is ahead of its text, or behind it.
    std::int32_t milliseconds = 0;
    // Object: never null with a value.
    const TAdmBlobData* object = nullptr;

    [[nodiscard]] bool hasValue() const { return state == ExactState::Value; }
    [[nodiscard]] bool boolean() const { return text == "1"; }
    [[nodiscard]] std::int64_t integer() const;
    // Single and Double, infinite and not-a-number too; Decimal: the nearest one.
    [[nodiscard]] double real() const;
    // Single and Double: neither infinite nor not-a-number.
    [[nodiscard]] bool isFinite() const;
    // Guid, without its braces.
    [[nodiscard]] std::string_view guid() const;
    // Decimal and Integer: digits, zeros in front and behind the point's last one that is none left out.
    [[nodiscard]] int significantDigits() const;
    // The bytes of Binary, behind those of `out`.
    void appendBytes(std::string& out) const;
};

// How the cells of a column in a group become text, when not one by one: by their texts alone, each of which is a
// value, or null where it is empty.
enum class TextForm : std::uint8_t {
    None,
    AsItIs,
    Date,    // "MM/dd/yyyy HH:mm:ss"
    Boolean, // "0" or "1"
};

// The cells of one column in one group of rows. Neither may go before the object does.
class ExactCells {
public:
    ExactCells(ColumnType type, const RowGroup& group, std::size_t column);

    [[nodiscard]] ExactKind kind() const { return m_kind; }
    // Every cell has the value that its text tells, or is null where that is empty. Looks at all texts. Never of
    // objects.
    [[nodiscard]] bool areTexts() const
    {
        if (m_kind == ExactKind::Object || m_texts->notes() != nullptr) return false;
        return m_kind == ExactKind::Text || m_texts->bytes().find(unreadableStart) == std::string_view::npos;
    }
    [[nodiscard]] const TextChunk& texts() const { return *m_texts; }
    // `row` counts from the group's first; any order.
    [[nodiscard]] ExactCell at(std::uint32_t row)
    {
        if (m_kind == ExactKind::Object) return objectAt(row);
        const auto text = m_texts->text(row);
        if (m_texts->notes() != nullptr) return notedAt(row, text);
        if (text.empty()) return {ExactState::Null, m_kind};
        return {isReadable(text) ? ExactState::Value : ExactState::Unreadable, m_kind, text};
    }

private:
    // What cannot be read stands as U+FFFD; no value but a text begins with a letter beyond ASCII.
    static constexpr char unreadableStart = '\xEF';
    [[nodiscard]] bool isReadable(std::string_view text) const
    {
        return m_kind == ExactKind::Text || text.front() != unreadableStart;
    }
    [[nodiscard]] ExactCell objectAt(std::uint32_t row) const;
    [[nodiscard]] ExactCell notedAt(std::uint32_t row, std::string_view text);

    ExactKind m_kind;
    const TextChunk* m_texts;
    const std::vector<std::shared_ptr<TAdmBlobData>>* m_objects;
    std::string m_text; // with the zeros that the chunk's does not have
};

// Whether some date of the column has a fraction of a second.
[[nodiscard]] bool hasFractions(const TAdmMDBTable& table, std::size_t column);

} // namespace vellumo
