#pragma once

#include "browser/GridValue.h"

#include <string>
#include <string_view>

// Rows as text: the values of a row parted by one tab, each row ended by a line feed.
namespace vellumo {

// Appends a value and the tab behind it. Line feeds and tabs inside become one space each; null and data without a text
// become nothing. `buffer` is for the texts that have to be made.
void appendCopiedValue(const GridValue& value, std::string& buffer, std::string& out);
// Ends a row: the last tab gives way to the line feed. Nothing happens to an empty text.
void endCopiedRow(std::string& out);

} // namespace vellumo
