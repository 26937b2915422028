// SPDX-License-Identifier: MIT
#pragma once

#include "text/TextBuffer.h"

#include <cstddef>
#include <span>
#include <string_view>

// Values as literals, each in the form that keeps it whole on its way through the server's own command line tool: no
// literal has a raw carriage return in it, or a line that the tool could take for a command.
namespace vellumo {

struct ExactLiterals {
    // Appends a text, which may be empty.
    void (*text)(TextBuffer& out, std::string_view text);
    // One that is plain is what it does not take a call for: the text as it stands, between this and a quote.
    std::string_view plainStart;
    std::size_t longestPlain; // bytes
    // Appends bytes that make a line of moderate length; longer ones are `longBytes`, null where there is no limit.
    void (*bytes)(TextBuffer& out, std::span<const std::byte> bytes);
    std::string_view no;
    std::string_view yes;
    std::string_view dateStart; // of "yyyy-mm-dd hh:mm:ss", perhaps with a fraction
    // "" where the server has no such number.
    std::string_view notANumber;
    std::string_view infinity;
    std::string_view minusInfinity;
    std::string_view minusZero;
    std::string_view floatEnd; // behind a Single and a Double
    std::string_view doubleEnd;
    bool readsShortestDigits; // of a double; false: it wants 17 to find the same one
    bool takesZero;           // U+0000 in a text; false: U+FFFD stands for it
    bool hasEmptyText;        // false: it is null
};

// Whether a text of these bytes alone stands as it is in the literals of every server.
[[nodiscard]] bool isPlainText(std::string_view bytes);

// Appends a text, which is valid UTF-8, as UTF-16, little-endian.
void appendUTF16(TextBuffer& out, std::string_view text);

namespace exactLiterals {
void mySQLText(TextBuffer& out, std::string_view text);
void postgreSQLText(TextBuffer& out, std::string_view text);
void oracleText(TextBuffer& out, std::string_view text);
void sqliteText(TextBuffer& out, std::string_view text);
void sqlServerText(TextBuffer& out, std::string_view text);

void quotedHex(TextBuffer& out, std::span<const std::byte> bytes);   // x'00ff'
void escapedHex(TextBuffer& out, std::span<const std::byte> bytes);  // '\x00ff'
void calledHex(TextBuffer& out, std::span<const std::byte> bytes);   // HEXTORAW('00ff')
void hexadecimal(TextBuffer& out, std::span<const std::byte> bytes); // 0x00ff
} // namespace exactLiterals

} // namespace vellumo
