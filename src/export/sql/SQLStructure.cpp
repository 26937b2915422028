// SPDX-License-Identifier: MIT
#include "export/sql/SQLStructure.h"

#include "export/sql/SQLText.h"
#include "model/TAdmMDBFile.h"
#include "text/CaseFold.h"
#include "text/Format.h"

#include <algorithm>

namespace vellumo {

std::string SQLNameUses::uniqueName(const std::string& name)
{
    auto& uses = m_uses[key(name)];
    const auto count = uses++;
    return count == 0 ? name : name + '_' + std::to_string(count);
}

std::string SQLNameUses::key(const std::string& name) const { return m_ignoresCase ? lowerCase(name) : name; }

namespace {

// Stands where the user of the script has to fill in a name.
constexpr std::string_view schemaPlaceholder = "<SCHEMA>";

std::string_view action(bool isCascade) { return isCascade ? "CASCADE" : "SET NULL"; }

} // namespace

bool forbidsZeroLength(const TAdmMDBColumn& column) { return column.allowZeroLength() == false; }

SQLStructure::SQLStructure(const SQLDialectFacts& facts, const TAdmMDBFile& file, SQLStructureOptions options)
    : m_facts(facts)
    , m_file(file)
    , m_options(std::move(options))
{
    if (facts.takesSchemaName && !m_options.schemaName.empty())
        m_schemaPrefix = quoteIdentifier(m_options.schemaName, facts) + '.';
}

std::string SQLStructure::qualifiedTable(std::string_view tableName) const
{
    return m_schemaPrefix + quoteIdentifier(tableName, m_facts);
}

std::string SQLStructure::dropTable(const TAdmMDBTable& table) const
{
    const auto name = qualifiedTable(table.name());
    return format(m_facts.dropTable, {name, name});
}

std::string SQLStructure::createTable(const TAdmMDBTable& table) const
{
    auto statement = "CREATE TABLE " + qualifiedTable(table.name()) + " (";
    for (const auto& column : table.columns())
        statement.append(column == table.columns().front() ? "\n\t" : ",\n\t").append(columnDefinition(*column));
    statement += primaryKey(table);
    if (m_facts.foreignKeyPlace == ForeignKeyPlace::InCreateTable && m_options.includeForeignKeys)
        for (const auto* relation : foreignKeys(table))
            statement += ",\n\t" + foreignKey(*relation);
    if (m_facts.indexPlace == IndexPlace::InCreateTable && m_options.includeIndexes) statement += innerIndexes(table);
    return statement.append(m_facts.createTableEnd);
}

std::string SQLStructure::columnDefinition(const TAdmMDBColumn& column) const
{
    auto definition =
        quoteIdentifier(column.name(), m_facts) + ' ' + convertMDBTypeToDBSPType(column.type(), m_facts.dialect);
    if (m_facts.hasTextSize && column.type() == ColumnType::Text) definition += format("(%d)", {column.fieldSize()});
    if (forbidsZeroLength(column) || column.isPrimaryKey()) definition += " NOT NULL";
    if (m_facts.commentPlace == CommentPlace::InCreateTable && column.description())
        definition += format(" COMMENT '%@'", {escapeLiteral(*column.description())});
    return definition;
}

std::string SQLStructure::primaryKey(const TAdmMDBTable& table) const
{
    std::vector<std::string> keyColumns;
    for (const auto& column : table.columns())
        if (column->isPrimaryKey()) keyColumns.push_back(column->name());
    if (keyColumns.empty()) return {};
    std::string constraint;
    if (m_facts.namesPrimaryKey) constraint = "CONSTRAINT " + quoteIdentifier(table.name() + "_pkey", m_facts) + ' ';
    return format(
        ",\n\t%@PRIMARY KEY %@(%@)", {constraint, m_facts.primaryKeyOptions, quoteIdentifiers(keyColumns, m_facts)});
}

std::string SQLStructure::foreignKey(const TAdmMDBForeignKey& relation) const
{
    auto clause = format("CONSTRAINT %@ FOREIGN KEY (%@) REFERENCES %@ (%@)",
        {quoteIdentifier(relation.name(), m_facts), quoteIdentifiers(relation.referencingColumns(), m_facts),
            qualifiedTable(relation.referencedTable()), quoteIdentifiers(relation.referencedColumns(), m_facts)});
    if (m_facts.hasOnUpdate) clause += format(" ON UPDATE %@", {action(relation.onUpdateCascade())});
    return clause += format(" ON DELETE %@", {action(relation.onDeleteCascade())});
}

std::string SQLStructure::innerIndexes(const TAdmMDBTable& table) const
{
    std::string lines;
    for (const auto& index : table.indices())
        if (!index->isPrimaryKey())
            lines += format(",\n\tINDEX %@ (%@)", {quoteIdentifier(index->name(), m_facts), indexKeys(*index, ", ")});
    return lines;
}

std::vector<std::string> SQLStructure::createIndexes(const TAdmMDBTable& table, SQLNameUses& names) const
{
    std::vector<std::string> statements;
    for (const auto& index : table.indices())
        if (!index->isPrimaryKey()) statements.push_back(createIndex(table, *index, names.uniqueName(index->name())));
    return statements;
}

std::string SQLStructure::createIndex(
    const TAdmMDBTable& table, const TAdmMDBIndex& index, const std::string& indexName) const
{
    return format("CREATE %@INDEX %@%@ ON %@ (%@);",
        {index.isUnique() ? "UNIQUE " : "", m_facts.qualifiesIndexNames ? m_schemaPrefix : std::string(),
            quoteIdentifier(indexName, m_facts), qualifiedTable(table.name()), indexKeys(index, ", ")});
}

std::string SQLStructure::indexKeys(const TAdmMDBIndex& index, std::string_view separator) const
{
    std::string keys;
    for (const auto& key : index.keys()) {
        if (!keys.empty()) keys += separator;
        keys += quoteIdentifier(key.name, m_facts);
        if (m_facts.hasKeyDirection) keys += key.isAscending ? " ASC" : " DESC";
    }
    return keys;
}

std::string SQLStructure::columnComments(const TAdmMDBTable& table) const
{
    std::string lines;
    for (const auto& column : table.columns())
        if (column->description()) lines += commentOn(table, *column);
    return lines;
}

std::string SQLStructure::commentOn(const TAdmMDBTable& table, const TAdmMDBColumn& column) const
{
    const auto& description = *column.description();
    switch (m_facts.commentPlace) {
    case CommentPlace::Nowhere:
    case CommentPlace::InCreateTable: return {};
    case CommentPlace::CommentOnColumn:
        return format("COMMENT ON COLUMN %@.%@ IS '%@';\n",
            {qualifiedTable(table.name()), quoteIdentifier(column.name(), m_facts), escapeLiteral(description)});
    case CommentPlace::ExtendedProperty: break;
    }
    const auto schema =
        m_options.schemaName.empty() ? std::string(schemaPlaceholder) : doubleQuotes(m_options.schemaName);
    return format("EXEC sp_addextendedproperty 'MS_Description', '%@', 'SCHEMA', '%@', 'TABLE', '%@', 'COLUMN', '%@'\n"
                  "GO\n",
        {doubleQuotes(description), schema, doubleQuotes(table.name()), doubleQuotes(column.name())});
}

std::string SQLStructure::addForeignKeys(const TAdmMDBTable& table) const
{
    std::string lines;
    for (const auto* relation : foreignKeys(table))
        lines += format(
            "ALTER TABLE %@ ADD %@%@\n", {qualifiedTable(table.name()), foreignKey(*relation), m_facts.foreignKeyEnd});
    return lines;
}

// No server takes a relation over columns that the table does not have, so such a one is left out.
std::vector<TAdmMDBForeignKey*> SQLStructure::foreignKeys(const TAdmMDBTable& table) const
{
    auto relations = m_file.foreignKeysForTable(table.name());
    std::erase_if(relations, [&](const TAdmMDBForeignKey* relation) {
        const auto& columns = relation->referencingColumns();
        return !std::all_of(columns.begin(), columns.end(),
            [&](const std::string& column) { return table.findColumn(column) != nullptr; });
    });
    return relations;
}

} // namespace vellumo
