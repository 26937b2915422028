// SPDX-License-Identifier: MIT
#pragma once

#include "model/Contents.h"

#include <optional>
#include <span>

// The SQL of a saved query. Access keeps a query as parts, one a row of a system table, and makes the text of them anew
// whenever somebody wants to see it; so does this.
namespace vellumo {

// A row of the system table. What a text means depends on `attribute`; see the source.
struct QueryPart {
    int attribute = 0;
    std::string order{}; // sorts the parts of one attribute, byte by byte
    std::string name1{};
    std::string name2{};
    std::string expression{};
    std::optional<int> flag{};
    std::optional<int> extra{};
};

struct QueryText {
    QueryKind kind = QueryKind::Select;
    std::string sql{};
    bool isWhole = true; // false: a part is missing or makes no sense; `sql` has what the others say
};

// Of what a name in the text of a query may consist without brackets.
[[nodiscard]] constexpr bool isNameByte(char c)
{
    const auto letter = static_cast<unsigned char>(c | 0x20);
    const auto byte = static_cast<unsigned char>(c);
    return (letter >= 'a' && letter <= 'z') || (byte >= '0' && byte <= '9') || byte == '_' || byte >= 0x80;
}

// Parts in any order. `catalogFlags` are those of the query's entry in the catalogue, which tell the kind again.
[[nodiscard]] QueryText queryText(std::vector<QueryPart> parts, std::uint32_t catalogFlags);

// The parts of `name` that hold more than letters, digits and "_" in brackets: "Order Details.ID" gives
// "[Order Details].ID".
[[nodiscard]] std::string bracketed(std::string_view name);

} // namespace vellumo
