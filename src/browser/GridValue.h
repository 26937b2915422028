// SPDX-License-Identifier: MIT
#pragma once

#include "model/TAdmMDBTable.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace vellumo {

// A null in a cell.
struct NullCell {
    bool operator==(const NullCell&) const = default;
};
// The value of a grid cell: none at all (no table is shown), null, a text, or an object (never a null pointer). A text
// lives as long as the table's rows.
using GridValue = std::variant<std::monostate, NullCell, std::string_view, std::shared_ptr<TAdmBlobData>>;

// `table` may be null; `column` is below its column count, `row` (a row number of its store) below its row count.
[[nodiscard]] GridValue getValueForTableColumn(const TAdmMDBTable* table, std::size_t column, std::size_t row);

// What a cell draws: the text, for null "[NULL]" (localised), for an object its type and size (".bmp [12 KB]"). ""
// without a value.
[[nodiscard]] std::string cellDisplayText(const GridValue& value);

// What the value says in full; nullopt for null, for an object without a text, and without a value. `buffer` keeps what
// had to be made.
[[nodiscard]] std::optional<std::string_view> valueText(const GridValue& value, std::string& buffer);
// What people are told of a value without a text (localised): "[NULL]", "[NON-TEXTUAL DATA]", or "No fields selected".
[[nodiscard]] std::string textInstead(const GridValue& value);

// What is to be said of an object beside its content: that it is damaged; "" for a sound one.
[[nodiscard]] std::string objectNote(const TAdmBlobData& object);

// Rows as text: the values of a row parted by one tab, each row ended by a line feed.

// Appends a value and the tab behind it. Line feeds and tabs inside become one space each; null and data without a text
// become nothing. `buffer` is for the texts that have to be made.
void appendCopiedValue(const GridValue& value, std::string& buffer, std::string& out);
// Ends a row: the last tab gives way to the line feed. Nothing happens to an empty text.
void endCopiedRow(std::string& out);

} // namespace vellumo
