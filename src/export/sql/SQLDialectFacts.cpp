// SPDX-License-Identifier: MIT
#include "export/sql/SQLDialectFacts.h"

#include <algorithm>

namespace vellumo {

namespace {

constexpr SQLDialectFacts mySQL = {
    .dialect = ServerType::MySQL,
    .name = "mysql",
    .title = "MySQL",
    .openQuote = "`",
    .closeQuote = "`",
    .takesSchemaName = false,
    .header = "SET NAMES 'UTF8';\nSET FOREIGN_KEY_CHECKS = 0;\n\n",
    .footer = "SET FOREIGN_KEY_CHECKS = 1;\n",
    .dropTable = "DROP TABLE IF EXISTS %@ CASCADE;\n",
    .createTableEnd = "\n);",
    .hasTextSize = true,
    .namesPrimaryKey = false,
    .primaryKeyOptions = "",
    .foreignKeyPlace = ForeignKeyPlace::InAlterTable,
    .hasOnUpdate = true,
    .foreignKeyEnd = ";",
    .indexPlace = IndexPlace::InCreateTable,
    .sharesIndexNames = false,
    .qualifiesIndexNames = false,
    .hasKeyDirection = true,
    .commentPlace = CommentPlace::InCreateTable,
    .insertEnd = ");\n",
    .quotesEveryText = false,
    .quotesBoolean = false,
    .dateForm = DateForm::Iso,
    .guidForm = GuidForm::QuotedWithoutDashes,
    .types = {"char", "int", "int", "int", "float", "float", "float", "datetime", "varchar", "varchar", "text(8000)",
        "text(8000)", "varchar(16)", "numeric", "int", "bigint", "datetime(6)", "text(8000)", "text(8000)"},
};

constexpr SQLDialectFacts postgreSQL = {
    .dialect = ServerType::PostgreSQL,
    .name = "postgresql",
    .title = "PostgreSQL",
    .openQuote = "\"",
    .closeQuote = "\"",
    .takesSchemaName = true,
    .header = "",
    .footer = "",
    .dropTable = "DROP TABLE IF EXISTS %@ CASCADE;\n",
    .createTableEnd = "\n);",
    .hasTextSize = true,
    .namesPrimaryKey = true,
    .primaryKeyOptions = "",
    .foreignKeyPlace = ForeignKeyPlace::InAlterTable,
    .hasOnUpdate = true,
    .foreignKeyEnd = ";",
    .indexPlace = IndexPlace::BehindTable,
    .sharesIndexNames = false,
    .qualifiesIndexNames = false,
    .hasKeyDirection = false,
    .commentPlace = CommentPlace::CommentOnColumn,
    .insertEnd = ");\n",
    .quotesEveryText = false,
    .quotesBoolean = true,
    .dateForm = DateForm::Iso,
    .guidForm = GuidForm::Quoted,
    .types = {"BOOL", "SMALLINT", "INTEGER", "INTEGER", "NUMERIC(15,2)", "REAL", "DOUBLE PRECISION",
        "TIMESTAMP WITHOUT TIME ZONE", "BYTEA", "VARCHAR", "BYTEA", "TEXT", "UUID", "NUMERIC(15,2)", "INTEGER",
        "BIGINT", "TIMESTAMP WITHOUT TIME ZONE", "BYTEA", "TEXT"},
};

constexpr SQLDialectFacts oracle = {
    .dialect = ServerType::Oracle,
    .name = "oracle",
    .title = "Oracle",
    .openQuote = "\"",
    .closeQuote = "\"",
    .takesSchemaName = true,
    .header = "",
    .footer = "",
    .dropTable = "DROP TABLE %@ CASCADE CONSTRAINTS;\n",
    .createTableEnd = "\n);",
    .hasTextSize = true,
    .namesPrimaryKey = false,
    .primaryKeyOptions = "",
    .foreignKeyPlace = ForeignKeyPlace::InAlterTable,
    .hasOnUpdate = false,
    .foreignKeyEnd = " ENABLE;",
    .indexPlace = IndexPlace::BehindTable,
    .sharesIndexNames = false,
    .qualifiesIndexNames = true,
    .hasKeyDirection = true,
    .commentPlace = CommentPlace::CommentOnColumn,
    .insertEnd = ");\n",
    .quotesEveryText = true,
    .quotesBoolean = true,
    .dateForm = DateForm::ToDate,
    .guidForm = GuidForm::AsItIs,
    .types = {"NUMBER(1)", "NUMBER(3)", "NUMBER(5)", "NUMBER(11)", "NUMBER(15,2)", "FLOAT", "FLOAT", "TIMESTAMP",
        "BINARY", "VARCHAR2", "BLOB", "CLOB", "NUMBER", "NUMBER", "NUMBER(11)", "NUMBER(19)", "TIMESTAMP(7)", "BLOB",
        "CLOB"},
};

constexpr SQLDialectFacts sqlite = {
    .dialect = ServerType::SQLite,
    .name = "sqlite",
    .title = "SQLite",
    .openQuote = "\"",
    .closeQuote = "\"",
    .takesSchemaName = false,
    .header = "PRAGMA foreign_keys = false;\n\n",
    .footer = "PRAGMA foreign_keys = true;\n",
    .dropTable = "DROP TABLE IF EXISTS %@;\n",
    .createTableEnd = "\n);",
    .hasTextSize = false,
    .namesPrimaryKey = false,
    .primaryKeyOptions = "",
    .foreignKeyPlace = ForeignKeyPlace::InCreateTable,
    .hasOnUpdate = true,
    .foreignKeyEnd = "",
    .indexPlace = IndexPlace::BehindAllTables,
    .sharesIndexNames = true,
    .qualifiesIndexNames = false,
    .hasKeyDirection = true,
    .commentPlace = CommentPlace::Nowhere,
    .insertEnd = ");\n",
    .quotesEveryText = false,
    .quotesBoolean = false,
    .dateForm = DateForm::AsItIs,
    .guidForm = GuidForm::AsItIs,
    .types = {"INTEGER", "INTEGER", "INTEGER", "INTEGER", "REAL", "REAL", "REAL", "TEXT", "BLOB", "TEXT", "BLOB",
        "TEXT", "TEXT", "INTEGER", "INTEGER", "INTEGER", "TEXT", "BLOB", "TEXT"},
};

constexpr SQLDialectFacts sqlServer = {
    .dialect = ServerType::SQLServer,
    .name = "sqlserver",
    .title = "SQL Server",
    .openQuote = "[",
    .closeQuote = "]",
    .takesSchemaName = true,
    .header = "BEGIN TRANSACTION\nGO\n",
    .footer = "COMMIT\n",
    .dropTable = "IF EXISTS (SELECT * FROM sys.all_objects WHERE object_id = OBJECT_ID('%@') AND type IN ('U'))\n"
                 "\tDROP TABLE %@\nGO\n",
    .createTableEnd = ")\nGO",
    .hasTextSize = true,
    .namesPrimaryKey = true,
    .primaryKeyOptions = "CLUSTERED ",
    .foreignKeyPlace = ForeignKeyPlace::InAlterTable,
    .hasOnUpdate = true,
    .foreignKeyEnd = "\nGO",
    .indexPlace = IndexPlace::BehindTable,
    .sharesIndexNames = false,
    .qualifiesIndexNames = true,
    .hasKeyDirection = true,
    .commentPlace = CommentPlace::ExtendedProperty,
    .insertEnd = ");\nGO\n",
    .quotesEveryText = false,
    .quotesBoolean = false,
    .dateForm = DateForm::Iso,
    .guidForm = GuidForm::AsItIs,
    .types = {"bit", "char", "smallint", "int", "money", "real", "float", "smalldatetime", "text", "varchar",
        "varbinary", "text", "Sybase_Replication ID", "numeric", "int", "bigint", "datetime2(7)", "varbinary", "text"},
};

constexpr SQLDialectFacts unknown = {
    .dialect = ServerType(),
    .name = "",
    .title = "",
    .openQuote = "\"",
    .closeQuote = "\"",
    .takesSchemaName = false,
    .header = "",
    .footer = "",
    .dropTable = "DROP TABLE %@;\n",
    .createTableEnd = "\n);",
    .hasTextSize = true,
    .namesPrimaryKey = false,
    .primaryKeyOptions = "",
    .foreignKeyPlace = ForeignKeyPlace::Nowhere,
    .hasOnUpdate = false,
    .foreignKeyEnd = ";",
    .indexPlace = IndexPlace::Nowhere,
    .sharesIndexNames = false,
    .qualifiesIndexNames = false,
    .hasKeyDirection = true,
    .commentPlace = CommentPlace::Nowhere,
    .insertEnd = ");\n",
    .quotesEveryText = false,
    .quotesBoolean = false,
    .dateForm = DateForm::AsItIs,
    .guidForm = GuidForm::AsItIs,
    .types = {},
};

constexpr const SQLDialectFacts* dialects[] = {&mySQL, &postgreSQL, &oracle, &sqlite, &sqlServer};

} // namespace

std::span<const SQLDialectFacts* const> sqlDialects() { return dialects; }

const SQLDialectFacts* findSQLDialect(std::string_view name)
{
    const auto* const* found = std::ranges::find(dialects, name, &SQLDialectFacts::name);
    return found == std::end(dialects) ? nullptr : *found;
}

const SQLDialectFacts& sqlDialectFacts(ServerType dialect)
{
    for (const auto* facts : dialects)
        if (facts->dialect == dialect) return *facts;
    return unknown;
}

std::string convertMDBTypeToDBSPType(ColumnType type, ServerType dialect)
{
    const auto name = sqlDialectFacts(dialect).types[columnTypeIndex(type)];
    return std::string(name.empty() ? factsOf(type).accessName : name);
}

} // namespace vellumo
