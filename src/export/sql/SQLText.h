#pragma once

#include "export/sql/SQLDialectFacts.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// The small texts of which SQL statements are made.
namespace vellumo {

// The name between the dialect's quotes, each closing quote within doubled.
[[nodiscard]] std::string quoteIdentifier(std::string_view name, const SQLDialectFacts& facts);
// Several of them, separated by ", ".
[[nodiscard]] std::string quoteIdentifiers(const std::vector<std::string>& names, const SQLDialectFacts& facts);

// The text with each "'" doubled; without quotes around.
[[nodiscard]] std::string doubleQuotes(std::string_view text);
// The text with each "\" and each "'" doubled; without quotes around. Backslashes are doubled for every dialect.
[[nodiscard]] std::string escapeLiteral(std::string_view text);

// A binary value, such as "x'00ff'".
[[nodiscard]] std::string encodeSqlBlobValue(std::span<const std::byte> bytes);

} // namespace vellumo
