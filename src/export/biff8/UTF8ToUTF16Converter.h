// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

// Texts on their way into a workbook, which holds UTF-16. A surrogate written in three bytes, as some converters leave
// it behind, passes as that one unit here; everything else that is not UTF-8 is malformed.
namespace vellumo {

// UTF-16 as it stands, lone surrogates included; nullopt for malformed input.
[[nodiscard]] std::optional<std::u16string> UTF8ToUTF16Converter(std::string_view text);

// The other way round; each lone surrogate in three bytes.
[[nodiscard]] std::string utf8Text(std::u16string_view units);

// The longest start of a well-formed text with at most so many units of UTF-16.
[[nodiscard]] std::string_view firstUnits(std::string_view text, std::size_t count);

// What a text asks of the workbook.
struct TextMeasure {
    std::size_t units = 0;    // UTF-16
    bool isWide = false;      // some unit is above 00FF: two bytes a unit
    bool needsRepair = false; // holds U+0000 or a surrogate
};
// Nullopt for malformed input.
[[nodiscard]] std::optional<TextMeasure> measureText(std::string_view text);

// The well-formed text with U+FFFD for each U+0000 and each surrogate: readers cut a text at the one and fail at the
// other.
[[nodiscard]] std::string repairedText(std::string_view text);

} // namespace vellumo
