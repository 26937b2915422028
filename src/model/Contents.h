// SPDX-License-Identifier: MIT
#pragma once

#include "rows/ColumnType.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// What a file holds beside tables and relations. Everything is shown, nothing of it is run.
namespace vellumo {

enum class QueryKind : std::uint8_t {
    Select = 1, // the numbers are those under which files store the kinds
    MakeTable,
    Append,
    Update,
    Delete,
    Crosstab,
    DataDefinition,
    PassThrough,
    Union,
};

struct SavedQuery {
    std::string name{}; // UTF-8, as all texts here
    QueryKind kind = QueryKind::Select;
    std::string sql{}; // put together from its parts; passwords in it are masked
};

// A column of a table elsewhere, as far as the file remembers it.
struct LinkedColumn {
    std::string name{};
    ColumnType type = ColumnType::Unknown;
    bool isPrimaryKey = false;
};

// A table of another database that the file only leads to.
struct LinkedTable {
    std::string name{};
    std::string kind{};                  // "Access", "ODBC", or what the connection begins with, such as "Excel 12.0"
    std::string source{};                // the table's name there
    std::string connect{};               // where that is: a path, or a connection whose passwords are masked
    std::vector<LinkedColumn> columns{}; // of tables on a server; empty for others
};

enum class ObjectKind : std::uint8_t { Form, Report, Macro, Module, DataAccessPage };

// A part of the program that somebody made around the tables.
struct ProgramObject {
    ObjectKind kind = ObjectKind::Form;
    std::string name{};
    std::string created{};  // "2023-03-15T12:00:00", in the time of the computer that wrote it; "" when unknown
    std::string modified{}; // the same
};

// Each list in the order of names, the objects by kind first. Those that Access itself made are not among them.
struct FileContents {
    std::vector<SavedQuery> queries{};
    std::vector<LinkedTable> links{};
    std::vector<ProgramObject> objects{};

    [[nodiscard]] bool empty() const { return queries.empty() && links.empty() && objects.empty(); }
};

// Names for programs, never translated ("makeTable", "form").
[[nodiscard]] std::string_view queryKindName(QueryKind kind);
[[nodiscard]] std::string_view objectKindName(ObjectKind kind);
// The same for people, localised ("Make-Table Query", "Form").
[[nodiscard]] std::string queryKindText(QueryKind kind);
[[nodiscard]] std::string objectKindText(ObjectKind kind);

} // namespace vellumo
