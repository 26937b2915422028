#pragma once

#include "jet/CellText.h"

#include <map>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace vellumo::jet {

// The Access properties of a table's columns, by column name; each is a name and a value as text: "yes" or "no" for
// true and false, plain digits for numbers. In the order of the file.
using PropertyList = std::vector<std::pair<std::string, std::string>>;
using ColumnProperties = std::map<std::string, PropertyList, std::less<>>;

// Reads the property value of a catalogue entry. What is damaged is left out, all that stands before it is kept.
[[nodiscard]] ColumnProperties parseProperties(std::span<const std::uint8_t> bytes, const TextRules& rules);

} // namespace vellumo::jet
