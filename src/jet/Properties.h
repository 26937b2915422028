// SPDX-License-Identifier: MIT
#pragma once

#include "jet/CellText.h"

#include <map>
#include <string>

namespace vellumo::jet {

struct ParsedProperties {
    PropertyList table;
    std::map<std::string, PropertyList, std::less<>> columns; // by column name
    bool isWhole = false;                                     // false: what stands behind a damaged place is missing
};

// Reads the property value of a catalogue entry.
[[nodiscard]] ParsedProperties parseProperties(ByteSpan bytes, const TextRules& rules);

} // namespace vellumo::jet
