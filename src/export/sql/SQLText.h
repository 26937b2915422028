// SPDX-License-Identifier: MIT
#pragma once

#include "export/sql/SQLDialectFacts.h"

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vellumo {

// The small texts of which SQL statements are made.

// The name between the dialect's quotes, each closing quote within doubled.
[[nodiscard]] std::string quoteIdentifier(std::string_view name, const SQLDialectFacts& facts);
// Several of them, separated by ", ".
[[nodiscard]] std::string quoteIdentifiers(const std::vector<std::string>& names, const SQLDialectFacts& facts);

// The text with each "'" doubled; without quotes around.
[[nodiscard]] std::string doubleQuotes(std::string_view text);
// The text with each "\" doubled: what a literal of it stands for that was escaped for another server.
[[nodiscard]] std::string doubleBackslashes(std::string_view text);
// The text with each "\" and each "'" doubled; without quotes around. Backslashes are doubled for every dialect.
[[nodiscard]] std::string escapeLiteral(std::string_view text);

// A binary value, such as "x'00ff'".
[[nodiscard]] std::string encodeSqlBlobValue(std::span<const std::byte> bytes);

using SQLDateText = std::array<char, 19>;

// "yyyy-MM-dd HH:mm:ss" of a date cell, "MM/dd/yyyy HH:mm:ss"; nullopt for a text of any other form and for a date that
// the calendar does not have.
[[nodiscard]] std::optional<SQLDateText> sqlDateText(std::string_view cell);

} // namespace vellumo
