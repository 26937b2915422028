// SPDX-License-Identifier: MIT
#pragma once

#include "export/sql/ExactDialects.h"
#include "export/sql/ExactNames.h"
#include "export/sql/ExactSurvey.h"

#include <optional>
#include <vector>

namespace vellumo {

class TAdmMDBColumn;
class TAdmMDBFile;
class TAdmMDBForeignKey;
class TAdmMDBIndex;
class TAdmMDBTable;

// What a server cannot hold, or not hold to, as the file has it.
enum class ExactLoss {
    NameChanged,      // detail: the name there
    NullsAgainstRule, // null in a column that forbids it
    EmptyAgainstRule, // an empty text in a column that forbids it
    DefaultLeftOut,   // detail: the expression
    CommentCut,
    NumberingLost,      // an AutoNumber that the server does not continue
    RepeatedKeys,       // an index that is not unique there; detail: its name
    IndexLeftOut,       // detail: its name
    IndexShortened,     // to the beginnings of texts, and not unique; detail: its name
    RelationUnchecked,  // rows break it; detail: its name
    RelationLeftOut,    // of another cause; detail: its name
    CascadeLost,        // detail: its name
    Unreadable,         // written as null
    NotANumber,         // infinite values too, written as null
    MinusZero,          // written as 0
    CharactersReplaced, // by U+FFFD
    EmptyTextAsNull,
    DigitsAsText,
    FractionRounded, // the last digit of a date's seven
    TooLong,         // a value that the server takes only when it is configured so
};
struct ExactNote {
    ExactLoss loss;
    std::string table;
    std::string column; // "" for what concerns the table
    std::size_t count = 1;
    std::string detail{};
};

struct ExactColumn {
    const TAdmMDBColumn* column;
    std::string name; // on the server, not quoted
    std::string type; // as declared
    int fractionDigits = 0;
    bool isNotNull = false;
    bool isNotEmpty = false; // kept by a check
    bool isIdentity = false;
    std::string defaultValue{}; // an expression; "" for none
    std::string comment{};      // "" for none
};

struct ExactKey {
    std::size_t column;
    bool isAscending = true;
    std::size_t prefixLength = 0; // characters of a text's beginning, which is all that counts; 0: all of it
};
struct ExactIndex {
    std::string name;
    std::vector<ExactKey> keys;
    bool isUnique = false;
};

struct ExactRelation {
    std::string name;
    std::vector<std::size_t> columns;
    std::size_t referencedTable; // among those of the schema
    std::vector<std::size_t> referencedColumns;
    bool cascadesUpdates = false;
    bool cascadesDeletes = false;
    bool isTrusted = true; // false: rows break it
};

struct ExactTable {
    const TAdmMDBTable* table;
    std::string name; // on the server, not quoted
    std::vector<ExactColumn> columns;
    std::vector<ColumnSurvey> surveys; // of the columns
    std::vector<ExactKey> primaryKey{};
    std::vector<ExactIndex> indexes{};
    std::vector<ExactRelation> relations{};
    std::optional<std::size_t> identity{}; // the column
    std::int64_t lastNumber = 0;           // of the identity
    std::string comment{};
    std::vector<std::string> remarks{}; // what was left out, for the script's reader
};

struct ExactSchemaOptions {
    bool includeForeignKeys = true;
    bool includeIndexes = true;
    bool hasObjectPaths = false; // in the place of objects, which are files
};

// What becomes of the tables on the server: names, types, rules, keys and relations that hold for the rows. All rows
// are looked at once, so that no rule is written that they break.
class ExactSchema {
public:
    // All outlive the schema.
    ExactSchema(const ExactDialectFacts& facts, const TAdmMDBFile& file, std::vector<const TAdmMDBTable*> tables,
        ExactSchemaOptions options);

    [[nodiscard]] const std::vector<ExactTable>& tables() const { return m_tables; }
    // Null for a table that is not among them.
    [[nodiscard]] const ExactTable* find(const TAdmMDBTable& table) const;
    // What cannot be held, and values that the server does not take.
    [[nodiscard]] const std::vector<ExactNote>& notes() const { return m_notes; }

private:
    void addTable(const TAdmMDBTable& table);
    void addColumn(const TAdmMDBColumn& column, TakenNames& taken, ExactTable& made);
    [[nodiscard]] std::string declaredType(const TAdmMDBColumn& column, const ColumnSurvey& survey);
    void setRules(const TAdmMDBColumn& column, const ColumnSurvey& survey, ExactColumn& made);
    void setDefault(const TAdmMDBColumn& column, ExactColumn& made);
    [[nodiscard]] std::string commentOf(std::string_view text, std::string_view table, std::string_view column);
    void noteValues(const TAdmMDBColumn& column, const ColumnSurvey& survey);
    void widenRows(ExactTable& made);
    // Of an index or a relation.
    [[nodiscard]] bool isInKey(const TAdmMDBColumn& column) const;

    // ExactKeys.cpp
    void addKeys(ExactTable& made);
    void addIndex(const TAdmMDBIndex& index, TakenNames& taken, ExactTable& made);
    void setPrimaryKey(const TAdmMDBIndex& index, ExactTable& made);
    void setIdentity(ExactTable& made);
    [[nodiscard]] std::vector<ExactKey> keysOf(const TAdmMDBIndex& index, const ExactTable& made) const;
    [[nodiscard]] bool fits(ExactIndex& index, const ExactTable& made);
    [[nodiscard]] std::size_t keyBytes(const ExactKey& key, const ExactTable& made) const;
    [[nodiscard]] bool repeats(const std::vector<ExactKey>& keys, const ExactTable& made, const std::string& index);

    void addRelations();
    void addRelation(const TAdmMDBForeignKey& relation, TakenNames& taken);
    [[nodiscard]] std::vector<std::size_t> uniqueKey(
        const ExactTable& table, const std::vector<std::size_t>& columns) const;
    void limitCascades(const TAdmMDBForeignKey& relation, ExactRelation& added, const ExactTable& child);
    [[nodiscard]] bool isOnlyCascade(const ExactRelation& added, const ExactTable& child) const;

    void note(ExactLoss loss, std::string_view table, std::string_view column, std::size_t count = 1,
        std::string_view detail = {});
    void leaveOut(ExactLoss loss, ExactTable& table, std::size_t count, const std::string& relation);

    const ExactDialectFacts& m_facts;
    const TAdmMDBFile& m_file;
    ExactSchemaOptions m_options;
    std::vector<ExactTable> m_tables;
    std::vector<ExactNote> m_notes;
    TakenNames m_tableNames; // and those of indexes, where they share
};

} // namespace vellumo
