// SPDX-License-Identifier: MIT
#pragma once

#include "rows/TextChunk.h"

#include <array>
#include <span>
#include <string>
#include <vector>

// Texts as the format stores them, turned into UTF-8. What cannot be decoded becomes U+FFFD. Zero characters at the
// end, which programs leave behind as terminators, are dropped; one inside a text becomes U+FFFD, since what follows it
// would be lost to every reader that takes a zero for the end. The zeros themselves go to the notes of the row.
namespace vellumo::jet {

// Jet 4: UTF-16, or the compressed form that begins with FF FE. False when it ends inside a character.
bool appendJet4Text(std::span<const std::uint8_t> stored, TextColumnBuilder& out);

// The Windows code pages that texts can be read in.
[[nodiscard]] const std::vector<int>& codePageNumbers();

// Jet 3: bytes of the code page of the file.
class CodePage {
public:
    // Windows code page number; one that is not known is read as 1252.
    explicit CodePage(int number);

    void append(std::span<const std::uint8_t> stored, TextColumnBuilder& out) const;

private:
    struct Utf8 {
        char bytes[4]{};
        std::uint8_t length = 0;
    };
    void appendCharacters(std::span<const std::uint8_t> stored, TextColumnBuilder& out) const;
    void appendMultiByte(std::span<const std::uint8_t> stored, TextColumnBuilder& out) const;
    [[nodiscard]] std::string textWithZeros(std::span<const std::uint8_t> stored) const;

    std::string m_iconvName;
    bool m_isSingleByte = true;
    std::array<Utf8, 256> m_characters{};
};

constexpr std::string_view replacementCharacter = "\xEF\xBF\xBD";

} // namespace vellumo::jet
