#pragma once

#include "model/TAdmMDBTable.h"

#include <memory>
#include <string>
#include <string_view>
#include <variant>

namespace vellumo {

// The value of a grid cell: none at all (no table is shown), a text ("[NULL]", localised, for null), or an object
// (never a null pointer). A text lives as long as the table's rows.
using GridValue = std::variant<std::monostate, std::string_view, std::shared_ptr<TAdmBlobData>>;

// The texts that stand for a value that cannot be shown, localised.
[[nodiscard]] const std::string& nullText();           // "[NULL]"
[[nodiscard]] const std::string& nonTextualDataText(); // "[NON-TEXTUAL DATA]"
[[nodiscard]] const std::string& noFieldsText();       // "No fields selected"

// `table` may be null; `column` is below its column count, `row` (a row number of its store) below its row count.
[[nodiscard]] GridValue getValueForTableColumn(const TAdmMDBTable* table, std::size_t column, std::size_t row);

// What a cell draws: the text, or for an object its type and size (".bmp [12 KB]"). "" without a value.
[[nodiscard]] std::string cellDisplayText(const GridValue& value);

// The value as text in full: for an object its content, or "[NON-TEXTUAL DATA]". `buffer` keeps what had to be made.
[[nodiscard]] std::string_view valueDescription(const GridValue& value, std::string& buffer);

// What is to be said of an object beside its content: that it is damaged; "" for a sound one.
[[nodiscard]] std::string objectNote(const TAdmBlobData& object);

} // namespace vellumo
