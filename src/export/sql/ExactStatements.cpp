// SPDX-License-Identifier: MIT
#include "export/sql/ExactStatements.h"

#include "export/sql/SQLText.h"
#include "model/TAdmMDBTable.h"

#include <algorithm>
#include <limits>

namespace vellumo {

namespace {

void addItem(std::string& list, std::string_view item, std::string_view separator)
{
    if (!list.empty()) list += separator;
    list += item;
}

} // namespace

ExactStatements::ExactStatements(const ExactDialectFacts& facts, const ExactSchema& schema, std::string schemaName)
    : m_facts(facts)
    , m_schema(schema)
    , m_quotes(sqlDialectFacts(facts.dialect))
    , m_schemaName(m_quotes.takesSchemaName ? std::move(schemaName) : std::string())
{
}

std::string ExactStatements::quoted(std::string_view name) const { return quoteIdentifier(name, m_quotes); }

std::string ExactStatements::qualified(const ExactTable& table) const
{
    return m_schemaName.empty() ? quoted(table.name) : quoted(m_schemaName) + '.' + quoted(table.name);
}

std::string ExactStatements::literal(std::string_view text) const
{
    TextBuffer out;
    m_facts.literals.text(out, text);
    return std::string(out.view());
}

// What all templates of a table may ask for. The name as a literal is that which the server finds the table by.
std::string ExactStatements::fill(std::string_view text, const ExactTable& table) const
{
    const auto name = qualified(table);
    const auto column = table.identity ? quoted(table.columns[*table.identity].name) : std::string();
    const auto isOwnName = m_facts.findsBareNames;
    return fillTemplate(text,
        {{"{table}", name}, {"{escaped}", doubleQuotes(name)}, {"{literal}", literal(isOwnName ? table.name : name)},
            {"{column}", column}, {"{next}", std::to_string(table.lastNumber + 1)},
            {"{last}", std::to_string(table.lastNumber)}});
}

std::string ExactStatements::dropTable(const ExactTable& table) const { return fill(m_facts.dropTable, table); }

std::string ExactStatements::beginRows(const ExactTable& table) const
{
    return fill(m_facts.beginRows, table) + (table.identity ? fill(m_facts.beginIdentityRows, table) : std::string());
}

std::string ExactStatements::endRows(const ExactTable& table) const
{
    return (table.identity ? fill(m_facts.endIdentityRows, table) : std::string()) + fill(m_facts.endRows, table);
}

std::string ExactStatements::insertStart(const ExactTable& table) const
{
    std::string columns;
    for (const auto& column : table.columns)
        addItem(columns, quoted(column.name), ", ");
    return "INSERT INTO " + qualified(table) + " (" + columns + ") VALUES\n";
}

std::string ExactStatements::createTable(const ExactTable& table) const
{
    std::string lines;
    for (const auto& column : table.columns)
        addItem(lines, columnDefinition(table, column), ",\n");
    const auto rest = constraints(table);
    if (!rest.empty()) addItem(lines, rest, ",\n");
    std::string comment;
    if (m_facts.hasInlineComments && !table.comment.empty())
        comment = fillTemplate(m_facts.tableComment, {{"{comment}", literal(table.comment)}});
    return "CREATE TABLE " + qualified(table) + " (\n" + lines + "\n)"
        + fillTemplate(m_facts.tableOptions, {{"{comment}", comment}}) + std::string(m_facts.statementEnd);
}

std::string ExactStatements::columnDefinition(const ExactTable& table, const ExactColumn& column) const
{
    auto definition = "  " + quoted(column.name) + ' ' + column.type;
    const bool isKey = column.isIdentity && isKeyInColumn(table);
    if (column.isIdentity) definition += m_facts.identity;
    if (!column.defaultValue.empty())
        definition += fillTemplate(m_facts.defaultValue, {{"{value}", column.defaultValue}});
    if (column.isNotNull && !isKey) definition += " NOT NULL";
    if (m_facts.hasInlineComments && !column.comment.empty())
        definition += fillTemplate(m_facts.columnComment, {{"{comment}", literal(column.comment)}});
    // Behind the comment: one server takes it nowhere else.
    if (column.isNotEmpty)
        definition += " CHECK (" + fillTemplate(m_facts.check, {{"{column}", quoted(column.name)}}) + ')';
    return definition;
}

bool ExactStatements::isKeyInColumn(const ExactTable& table) const
{
    return m_facts.identityIsPrimaryKey && table.identity.has_value();
}

// The one index that an AutoNumber cannot be without.
bool ExactStatements::needsIndexInside(const ExactTable& table, const ExactIndex& index) const
{
    return m_facts.identityNeedsKey && table.identity && &index == table.indexes.data()
        && index.keys.front().column == *table.identity
        && (table.primaryKey.empty() || table.primaryKey.front().column != *table.identity);
}

std::string ExactStatements::constraints(const ExactTable& table) const
{
    std::string lines;
    if (!table.primaryKey.empty() && !isKeyInColumn(table))
        addItem(lines, "  PRIMARY KEY (" + keys(table, table.primaryKey, false) + ')', ",\n");
    for (const auto& index : table.indexes)
        if (needsIndexInside(table, index))
            addItem(lines, "  INDEX " + quoted(index.name) + " (" + keys(table, index.keys, false) + ')', ",\n");
    if (m_facts.relationPlace == ExactRelationPlace::InCreateTable)
        for (const auto& each : table.relations)
            addItem(lines, "  " + relationClause(table, each), ",\n");
    return lines;
}

std::string ExactStatements::keys(const ExactTable& table, const std::vector<ExactKey>& keys, bool hasDirections) const
{
    std::string list;
    for (const auto& key : keys) {
        auto item = quoted(table.columns[key.column].name);
        if (key.prefixLength > 0) item += '(' + std::to_string(key.prefixLength) + ')';
        if (hasDirections && !key.isAscending) item += " DESC";
        addItem(list, item, ", ");
    }
    return list;
}

std::string ExactStatements::names(const ExactTable& table, const std::vector<std::size_t>& columns) const
{
    std::string list;
    for (const auto column : columns)
        addItem(list, quoted(table.columns[column].name), ", ");
    return list;
}

std::string ExactStatements::createIndex(const ExactTable& table, const ExactIndex& index) const
{
    std::string filter;
    if (index.isUnique && !m_facts.repeatsNullsInUnique)
        for (const auto& key : index.keys)
            if (const auto& column = table.columns[key.column]; !column.isNotNull)
                addItem(filter, fillTemplate(m_facts.nullFilter, {{"{column}", quoted(column.name)}}), " AND ");
    if (!filter.empty()) filter = " WHERE " + filter;
    return std::string("CREATE ") + (index.isUnique ? "UNIQUE " : "") + "INDEX " + quoted(index.name) + " ON "
        + qualified(table) + " (" + keys(table, index.keys, true) + ')' + filter + std::string(m_facts.statementEnd);
}

std::string ExactStatements::createIndexes(const ExactTable& table) const
{
    std::string lines;
    for (const auto& index : table.indexes)
        if (!needsIndexInside(table, index)) lines += createIndex(table, index);
    return lines;
}

// An AutoNumber that has come to its end, or that gives out negative numbers at random, goes on as the server likes.
std::vector<std::string> ExactStatements::nextNumber(const ExactTable& table) const
{
    std::vector<std::string> statements;
    const auto next = table.lastNumber + 1;
    const bool isUseful = next >= m_facts.smallestNext && next <= std::numeric_limits<std::int32_t>::max();
    if (!table.identity || !isUseful) return statements;
    for (auto rest = m_facts.nextNumber; !rest.empty();) {
        const auto length = std::min(rest.find(";\n"), rest.size() - 2) + 2;
        statements.push_back(fill(rest.substr(0, length), table));
        rest.remove_prefix(length);
    }
    return statements;
}

std::string ExactStatements::comments(const ExactTable& table) const
{
    std::string lines;
    if (m_facts.hasInlineComments) return lines;
    const auto schema = m_schemaName.empty() ? std::string("@vellumo") : literal(m_schemaName);
    const auto add = [&](std::string_view form, const std::string& comment, const std::string& column) {
        if (comment.empty()) return;
        lines += fillTemplate(form,
            {{"{comment}", literal(comment)}, {"{table}", qualified(table)}, {"{name}", literal(table.name)},
                {"{schema}", schema}, {"{column}", quoted(column)}, {"{columnName}", literal(column)}});
    };
    add(m_facts.tableComment, table.comment, "");
    for (const auto& column : table.columns)
        add(m_facts.columnComment, column.comment, column.name);
    return lines;
}

// Lines of SQL: nothing in a name may end one.
std::string ExactStatements::remarks(const ExactTable& table) const
{
    std::string lines;
    for (auto remark : table.remarks) {
        std::ranges::replace_if(
            remark, [](char c) { return static_cast<unsigned char>(c) < 0x20; }, ' ');
        lines += "-- left out: " + remark + "\n";
    }
    return lines;
}

std::string ExactStatements::relationClause(const ExactTable& table, const ExactRelation& relation) const
{
    const auto& referenced = m_schema.tables()[relation.referencedTable];
    auto clause = "CONSTRAINT " + quoted(relation.name) + " FOREIGN KEY (" + names(table, relation.columns)
        + ") REFERENCES " + qualified(referenced) + " (" + names(referenced, relation.referencedColumns) + ')';
    if (relation.cascadesUpdates) clause += " ON UPDATE CASCADE";
    if (relation.cascadesDeletes) clause += " ON DELETE CASCADE";
    return clause;
}

std::string ExactStatements::addRelation(const ExactTable& table, const ExactRelation& relation) const
{
    if (m_facts.relationPlace == ExactRelationPlace::InCreateTable) return {};
    return "ALTER TABLE " + qualified(table) + " ADD " + relationClause(table, relation)
        + std::string(relation.isTrusted ? "" : m_facts.untrustedRelation) + std::string(m_facts.statementEnd);
}

} // namespace vellumo
