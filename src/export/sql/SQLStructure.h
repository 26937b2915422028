// SPDX-License-Identifier: MIT
#pragma once

#include "export/sql/SQLDialectFacts.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace vellumo {

// Makes the names of indexes unique within one export.
class SQLNameUses {
public:
    // `ignoresCase`: names that differ only in letter case are the same name.
    explicit SQLNameUses(bool ignoresCase)
        : m_ignoresCase(ignoresCase)
    {
    }

    // The name is taken, once, whatever was known of it.
    void take(const std::string& name) { m_uses[key(name)] = 1; }
    // The name itself when it is free, else with "_1" behind it, "_2" the next time, and so on.
    [[nodiscard]] std::string uniqueName(const std::string& name);

private:
    [[nodiscard]] std::string key(const std::string& name) const;

    bool m_ignoresCase;
    std::map<std::string, int> m_uses;
};

class TAdmMDBColumn;
class TAdmMDBFile;
class TAdmMDBForeignKey;
class TAdmMDBIndex;
class TAdmMDBTable;

// Whether the column takes no empty texts, which the exports take for a column that must have a value.
[[nodiscard]] bool forbidsZeroLength(const TAdmMDBColumn& column);

// What of an export's options goes into a definition.
struct SQLStructureOptions {
    std::string schemaName; // "" for none; looked at where the dialect takes one
    bool includeForeignKeys = true;
    bool includeIndexes = true;
};

// The statements that define the tables of a file, in one dialect.
class SQLStructure {
public:
    // Facts and file outlive the object.
    SQLStructure(const SQLDialectFacts& facts, const TAdmMDBFile& file, SQLStructureOptions options);

    // The quoted name, with its schema where there is one.
    [[nodiscard]] std::string qualifiedTable(std::string_view tableName) const;

    [[nodiscard]] std::string dropTable(const TAdmMDBTable& table) const;
    // Without a line end behind it.
    [[nodiscard]] std::string createTable(const TAdmMDBTable& table) const;
    // One statement for each index that is no primary key.
    [[nodiscard]] std::vector<std::string> createIndexes(const TAdmMDBTable& table, SQLNameUses& names) const;
    // Keys with their directions, one behind the other.
    [[nodiscard]] std::string indexKeys(const TAdmMDBIndex& index, std::string_view separator) const;
    // Lines for all columns that have a description.
    [[nodiscard]] std::string columnComments(const TAdmMDBTable& table) const;
    // Lines that add the table's foreign keys to a table that exists.
    [[nodiscard]] std::string addForeignKeys(const TAdmMDBTable& table) const;

private:
    [[nodiscard]] std::string columnDefinition(const TAdmMDBColumn& column) const;
    [[nodiscard]] std::string primaryKey(const TAdmMDBTable& table) const;
    [[nodiscard]] std::string foreignKey(const TAdmMDBForeignKey& relation) const;
    [[nodiscard]] std::string innerIndexes(const TAdmMDBTable& table) const;
    [[nodiscard]] std::string createIndex(
        const TAdmMDBTable& table, const TAdmMDBIndex& index, const std::string& indexName) const;
    [[nodiscard]] std::string commentOn(const TAdmMDBTable& table, const TAdmMDBColumn& column) const;
    [[nodiscard]] std::vector<TAdmMDBForeignKey*> foreignKeys(const TAdmMDBTable& table) const;

    const SQLDialectFacts& m_facts;
    const TAdmMDBFile& m_file;
    SQLStructureOptions m_options;
    std::string m_schemaPrefix;
};

} // namespace vellumo
