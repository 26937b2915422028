// SPDX-License-Identifier: MIT
#pragma once

#include "SQLite Connection/Connection/ServerType.h"
#include "rows/ColumnType.h"

#include <array>
#include <span>
#include <string>
#include <string_view>

namespace vellumo {

// Where a dialect puts its foreign keys.
enum class ForeignKeyPlace {
    Nowhere,
    InCreateTable,
    InAlterTable, // behind the rows, so that tables may come in any order
};

// Where a dialect puts the indexes that are no primary keys.
enum class IndexPlace {
    Nowhere,
    InCreateTable,
    BehindTable,
    BehindAllTables, // but behind the table when each table has a script of its own
};

// Where a dialect puts the descriptions of columns.
enum class CommentPlace {
    Nowhere,
    InCreateTable,
    CommentOnColumn,
    ExtendedProperty,
};

// How a date cell, "MM/dd/yyyy HH:mm:ss", becomes a value.
enum class DateForm {
    AsItIs,
    Iso,    // "yyyy-MM-dd HH:mm:ss"
    ToDate, // as it is, with a mask that says so
};

// How a GUID cell, "{...}", becomes a value.
enum class GuidForm {
    AsItIs,
    Quoted, // its braces become quotes
    QuotedWithoutDashes,
};

// All that a script needs to know of a dialect. Formats are filled as text/Format.h says.
struct SQLDialectFacts {
    ServerType dialect;
    std::string_view name;      // on the command line
    std::string_view title;     // for people, in every language
    std::string_view openQuote; // around identifiers
    std::string_view closeQuote;
    bool takesSchemaName;

    std::string_view header; // of a script
    std::string_view footer;

    std::string_view dropTable;         // format; takes the qualified table, twice
    std::string_view createTableEnd;    // behind the last line of the definition
    bool hasTextSize;                   // text columns have their length behind the type
    bool namesPrimaryKey;               // by a constraint of its own
    std::string_view primaryKeyOptions; // in front of "PRIMARY KEY"'s column list

    ForeignKeyPlace foreignKeyPlace;
    bool hasOnUpdate; // foreign keys say what an update does
    std::string_view foreignKeyEnd;

    IndexPlace indexPlace;
    bool sharesIndexNames;    // with tables, and whatever the letter case
    bool qualifiesIndexNames; // by the schema
    bool hasKeyDirection;

    CommentPlace commentPlace;

    std::string_view insertEnd;
    bool quotesEveryText; // numbers and booleans too
    bool quotesBoolean;
    DateForm dateForm;
    GuidForm guidForm;

    // The types of columns in the order of columnTypes. "": the Access name.
    std::array<std::string_view, columnTypes.size()> types;
};

// All that there are, in the order of their codes.
[[nodiscard]] std::span<const SQLDialectFacts* const> sqlDialects();
// Null for a name that no dialect has.
[[nodiscard]] const SQLDialectFacts* findSQLDialect(std::string_view name);
// A dialect that is none of the known ones gets double quotes and nothing that is not in every dialect.
[[nodiscard]] const SQLDialectFacts& sqlDialectFacts(ServerType dialect);

// What the dialect calls the type; its Access name where the dialect is unknown.
[[nodiscard]] std::string convertMDBTypeToDBSPType(ColumnType type, ServerType dialect);

} // namespace vellumo
