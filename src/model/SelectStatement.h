// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// A SELECT statement taken apart as far as it tells from which columns of which tables its own are made.
namespace vellumo {

// A part of a column that is put together with "&".
struct WrittenTerm {
    enum class Kind { Name, Text, All }; // a column, a text, "*"
    Kind kind = Kind::Name;
    std::string qualifier{}; // of a name or "*": the table's name there; may be empty
    std::string text{};
};

struct WrittenColumn {
    std::vector<WrittenTerm> terms{}; // none: an expression that is not read
    std::string name{};               // "" when it has none of its own
};

struct WrittenSource {
    std::string name{};  // of a table or query
    std::string alias{}; // by which the columns call it
};

struct SelectStatement {
    std::vector<WrittenColumn> columns{};
    std::vector<WrittenSource> sources{}; // at least one; several are joined
    bool isLimited = false;               // by a condition, a join or a number: rows of its sources are left out
};

// Names compare without case. nullopt for another statement, a union, and one over a statement inside of it.
[[nodiscard]] std::optional<SelectStatement> parseSelect(std::string_view sql);
// Whether it begins like one; what does not may be a name.
[[nodiscard]] bool isSelect(std::string_view sql);

} // namespace vellumo
