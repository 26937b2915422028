// SPDX-License-Identifier: MIT
#include "model/ConnectionText.h"

#include "text/Ascii.h"

#include <algorithm>

namespace vellumo {

namespace {

constexpr std::string_view mask = "***";
constexpr std::string_view blanks = " \t\r\n";

std::string_view withoutBlanks(std::string_view text)
{
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    return text.substr(0, text.find_last_not_of(blanks) + 1);
}

bool isPasswordKey(std::string_view key)
{
    constexpr std::string_view keys[] = {
        "pwd", "password", "database password", "jet oledb:database password", "jet oledb:new database password"};
    return std::ranges::find(keys, asciiLower(withoutBlanks(key))) != std::end(keys);
}

// Length of the value that `text` begins with: to the next of `ends`, or where its braces or quotes close.
std::size_t valueLength(std::string_view text, std::string_view ends)
{
    const auto start = std::min(text.find_first_not_of(blanks), text.size());
    const auto opening = start < text.size() ? text[start] : ' ';
    const auto closing = opening == '{' ? '}' : opening;
    // A quote that itself ends what is looked at opens nothing.
    const bool isEnclosed =
        (opening == '{' || opening == '"' || opening == '\'') && ends.find(opening) == std::string_view::npos;
    const auto closed = isEnclosed ? text.find(closing, start + 1) : start;
    return std::min(text.find_first_of(ends, std::min(closed, text.size())), text.size());
}

// Masks the values behind `key=` where the key stands at one of the places that `isStart` allows.
std::string masked(std::string_view text, std::string_view starts, std::string_view ends, bool mayBeginWithKey)
{
    std::string result;
    std::size_t keyStart = mayBeginWithKey ? 0 : std::string_view::npos;
    for (std::size_t i = 0; i < text.size(); ++i) {
        result += text[i];
        if (starts.find(text[i]) != std::string_view::npos) {
            keyStart = i + 1;
        } else if (text[i] == '=' && keyStart != std::string_view::npos) {
            if (isPasswordKey(text.substr(keyStart, i - keyStart))) {
                const auto length = valueLength(text.substr(i + 1), ends);
                if (length != 0) result += mask;
                i += length;
            }
            keyStart = std::string_view::npos;
        }
    }
    return result;
}

} // namespace

std::string maskedConnection(std::string_view connection) { return masked(connection, ";", ";", true); }

// A column may be called PWD: then no semicolon, bracket or quote stands right before the name.
std::string withoutPasswords(std::string_view sql) { return masked(sql, ";[\"'", ";]\"'", false); }

} // namespace vellumo
