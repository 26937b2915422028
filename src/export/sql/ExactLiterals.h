// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

// Values as literals, each in the form that keeps it whole on its way through the server's own command line tool: no
// literal has a raw carriage return in it, or a line that the tool could take for a command.
namespace vellumo {

struct ExactLiterals {
    // Appends a text, which may be empty.
    void (*text)(std::string& out, std::string_view text);
    // Appends bytes that make a line of moderate length; longer ones are `longBytes`, null where there is no limit.
    void (*bytes)(std::string& out, std::span<const std::byte> bytes);
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

// Appends a text, which is valid UTF-8, as UTF-16, little-endian.
void appendUTF16(std::string& out, std::string_view text);

namespace exactLiterals {
void mySQLText(std::string& out, std::string_view text);
void postgreSQLText(std::string& out, std::string_view text);
void oracleText(std::string& out, std::string_view text);
void sqliteText(std::string& out, std::string_view text);
void sqlServerText(std::string& out, std::string_view text);

void quotedHex(std::string& out, std::span<const std::byte> bytes);   // x'00ff'
void escapedHex(std::string& out, std::span<const std::byte> bytes);  // '\x00ff'
void calledHex(std::string& out, std::span<const std::byte> bytes);   // HEXTORAW('00ff')
void hexadecimal(std::string& out, std::span<const std::byte> bytes); // 0x00ff
} // namespace exactLiterals

} // namespace vellumo
