// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// Full case folding as Unicode defines it (CaseFolding.txt, status C and F), independent of any locale: two texts that
// differ only in letter case fold to the same bytes. The folding of a text is the foldings of its characters, one after
// the other. Malformed UTF-8 stays as it is. Any thread.
namespace vellumo {

[[nodiscard]] std::string foldCase(std::string_view text);

// They differ in letter case alone, as the names of Access are compared.
[[nodiscard]] bool isSameName(std::string_view left, std::string_view right);

// In lower case, in which texts keep more of their differences: "ß" is not "ss".
[[nodiscard]] std::string lowerCase(std::string_view text);

// True when no byte is above 0x7F.
[[nodiscard]] bool isAscii(std::string_view text);

// Most bytes that one byte of a text can fold to.
constexpr std::size_t foldGrowth = 3;

struct FoldedEnd {
    char* end;         // behind what was written
    bool keepsLengths; // every character folded to as many bytes as it had
};
// Writes the folding of `text` to `out`, which has room for foldGrowth bytes a byte.
[[nodiscard]] FoldedEnd foldCaseInto(std::string_view text, char* out);

} // namespace vellumo
