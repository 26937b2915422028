// SPDX-License-Identifier: MIT
#pragma once

#include "export/sql/ExactSchema.h"
#include "export/sql/SQLDialectFacts.h"

#include <string>

namespace vellumo {

// The statements that make the tables of an exact schema, each with its end behind it.
class ExactStatements {
public:
    // Both outlive it. `schemaName`: "" for none; looked at where the dialect takes one.
    ExactStatements(const ExactDialectFacts& facts, const ExactSchema& schema, std::string schemaName);

    [[nodiscard]] std::string dropTable(const ExactTable& table) const;
    [[nodiscard]] std::string createTable(const ExactTable& table) const;
    // Behind the rows.
    [[nodiscard]] std::string createIndex(const ExactTable& table, const ExactIndex& index) const;
    [[nodiscard]] std::string createIndexes(const ExactTable& table) const;
    [[nodiscard]] std::vector<std::string> nextNumber(const ExactTable& table) const;
    [[nodiscard]] std::string comments(const ExactTable& table) const;
    [[nodiscard]] std::string remarks(const ExactTable& table) const;
    // Behind both tables and their rows; "" where relations stand in the definition.
    [[nodiscard]] std::string addRelation(const ExactTable& table, const ExactRelation& relation) const;

    [[nodiscard]] std::string beginRows(const ExactTable& table) const;
    [[nodiscard]] std::string endRows(const ExactTable& table) const;
    // "INSERT INTO ... VALUES".
    [[nodiscard]] std::string insertStart(const ExactTable& table) const;

private:
    [[nodiscard]] std::string quoted(std::string_view name) const;
    [[nodiscard]] std::string qualified(const ExactTable& table) const;
    [[nodiscard]] std::string literal(std::string_view text) const;
    [[nodiscard]] std::string fill(std::string_view text, const ExactTable& table) const;
    [[nodiscard]] std::string columnDefinition(const ExactTable& table, const ExactColumn& column) const;
    [[nodiscard]] std::string constraints(const ExactTable& table) const;
    [[nodiscard]] std::string relationClause(const ExactTable& table, const ExactRelation& relation) const;
    [[nodiscard]] std::string keys(
        const ExactTable& table, const std::vector<ExactKey>& keys, bool hasDirections) const;
    [[nodiscard]] std::string names(const ExactTable& table, const std::vector<std::size_t>& columns) const;
    [[nodiscard]] bool isKeyInColumn(const ExactTable& table) const;
    [[nodiscard]] bool needsIndexInside(const ExactTable& table, const ExactIndex& index) const;

    const ExactDialectFacts& m_facts;
    const ExactSchema& m_schema;
    const SQLDialectFacts& m_quotes;
    std::string m_schemaName;
};

} // namespace vellumo
