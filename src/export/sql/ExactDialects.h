// SPDX-License-Identifier: MIT
#pragma once

#include "SQLite Connection/Connection/ServerType.h"
#include "export/sql/ExactLiterals.h"
#include "rows/ColumnType.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

// What each server needs to hold the values, keys and constraints of an Access file as they are. Another server is
// another row here and a column of the type table. Templates are filled by fillTemplate: "{table}" and the like.
namespace vellumo {

// Where foreign keys stand.
enum class ExactRelationPlace { InCreateTable, InAlterTable };

// How bytes get to a server that takes no literal of them all: with a block of statements around their row.
struct ExactLongBytes {
    std::size_t shorterBytes;  // the most that a literal can hold
    std::string_view none;     // in the row
    std::string_view text;     // {variables}, {insert} the row's statement, {columns}, {names}, {pieces}
    std::string_view variable; // {name}
    std::string_view append;   // {name}, {length}, {bytes}
};

struct ExactDialectFacts {
    ServerType dialect;

    // Names. `longestName` counts bytes or characters.
    std::size_t longestName;
    bool countsNameBytes;
    bool isBasicPlaneOnly;     // no characters beyond U+FFFF, and no blank at the end
    bool sharesIndexNames;     // with tables, and with those of all tables
    std::string_view reserved; // names that no column may have, each between blanks, in lower case
    std::string_view reservedTablePrefix;

    // The script as a whole.
    bool isUTF16; // with a byte order mark
    std::string_view header;
    std::string_view footer;
    std::string_view statementEnd; // behind each statement that is no template

    // A table: {table} the qualified name, {escaped} that inside of a literal, {literal} as one of its own, {column}
    // its AutoNumber, {next} and {last} numbers.
    std::string_view dropTable;
    std::string_view tableOptions;  // behind the definition; {comment} a clause that may be empty
    std::string_view tableComment;  // that clause, or a statement; {comment} the literal
    std::string_view columnComment; // the same of a column; "" where there are none
    bool hasInlineComments;         // they are clauses
    std::size_t longestComment;     // characters; 0: as long as it likes
    bool findsBareNames;            // {literal} is the bare name
    std::string_view identity;      // behind the type of an AutoNumber
    bool identityNeedsKey;          // that begins with it
    bool identityIsPrimaryKey;      // the word is the definition of the key: only for the table's sole key
    std::string_view nextNumber;    // a statement; "" for none
    std::int64_t smallestNext;
    std::string_view check; // that a text is not empty: {column}; "" where an empty text is null
    bool checksCascades;    // false: none on a column that a cascading update changes

    // Rows.
    std::string_view beginRows; // of a table
    std::string_view endRows;
    std::string_view beginIdentityRows; // around them where the table has an identity
    std::string_view endIdentityRows;
    std::size_t rowsInStatement;
    std::size_t bytesInStatement;
    std::string_view valueSeparator;
    const ExactLongBytes* longBytes; // null: a literal holds any
    bool takesHugeValues;            // false: statements of more than 16 MiB only when it is configured so
    int fractionDigits;              // of seconds, that it keeps
    int keptDigits;       // of decimal numbers that become binary ones; 0: all. Those of more are `digitsType`
    int declaredDigits;   // the most that a decimal type can state, on both sides of the point; 0: any
    int declaredDecimals; // and behind it. Columns that need more are `floatingType`, or without one `digitsType`
    std::string_view floatingType; // of decimal numbers, each with a point of its own; "" for none
    std::string_view digitsType;   // a text

    // Indexes and relations.
    bool repeatsNullsInUnique; // false: `nullFilter` keeps them out of a unique index
    std::string_view nullFilter;
    bool padsBlanks;              // blanks at the end of a text do not count in a key
    std::size_t longestKeyBytes;  // of an index; 0: no limit
    std::size_t bytesInCharacter; // of a key, which has room for the longest text then; 0: the texts themselves count
    bool hasPrefixKeys;           // a longer one can be cut to the beginnings of texts, and is not unique then
    bool indexesMemos;
    std::size_t longestRow;        // bytes of a row beside what lies elsewhere; 0: no limit. Where it is less than the
    std::string_view wideTextType; // columns need, texts that are in no key get this type
    ExactRelationPlace relationPlace;
    bool hasOnUpdate;
    bool takesOneCascadePath;           // a row may not be reached by two cascades
    std::string_view untrustedRelation; // behind a relation that rows break; "": it is left out
    std::string_view beforeRelations;   // of the script

    ExactLiterals literals;
    // Default values.
    std::string_view defaultValue; // format around an expression
    std::string_view now;
    std::string_view today;
    std::string_view guid;
};

[[nodiscard]] const ExactDialectFacts& exactDialectFacts(ServerType dialect);

// How the server declares a column of the type, with {n} for its size, {p} and {s} for digits in all and behind the
// point, {f} for the digits of a fraction of a second. Binary for a type that is none.
[[nodiscard]] std::string_view exactType(ColumnType type, ServerType dialect);

} // namespace vellumo
