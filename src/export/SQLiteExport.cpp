// SPDX-License-Identifier: MIT
#include "SQLite Connection/Connection/SQLConnection.h"
#include "export/ExportFormat.h"
#include "export/ExportJob.h"
#include "export/files/Replacement.h"
#include "export/sql/SQLRowWriter.h"
#include "export/sql/SQLStructure.h"
#include "export/sql/SQLText.h"
#include "model/TAdmMDBFile.h"
#include "text/Format.h"
#include "text/Messages.h"

#include <memory>
#include <unistd.h>

namespace vellumo {

namespace {

constexpr const char* foreignKeysOff = "PRAGMA foreign_keys = false;";

// What a row writer fills; its memory is used again for the next statement.
struct StatementBuffer {
    void write(std::string_view piece) { text += piece; }
    std::string text;
};

class SQLiteExport {
public:
    explicit SQLiteExport(ExportJob& job)
        : m_job(job)
        , m_facts(sqlDialectFacts(ServerType::SQLite))
        , m_structure(m_facts, job.file(), {"", job.options().includeForeignKeys, job.options().includeIndexes})
        , m_names(m_facts.sharesIndexNames)
        , m_replacement(Replacement::create(job.singleFilePath()))
        , m_connection(ServerType::SQLite, job.loadErrorWindow())
    {
    }

    void run();

private:
    [[nodiscard]] bool createFile();
    [[nodiscard]] bool connect();
    [[nodiscard]] bool switchForeignKeysOff();
    void finish();
    [[nodiscard]] bool publish();

    void exportTable(const TAdmMDBTable& table);
    // Both log their failure.
    [[nodiscard]] bool createTable(const TAdmMDBTable& table);
    [[nodiscard]] bool insertRows(const TAdmMDBTable& table);
    [[nodiscard]] bool insertGroup(const RowGroup& group, SQLRowWriter& writer);
    void dropTable(const TAdmMDBTable& table);
    [[nodiscard]] SQLRowWriter rowWriter(const TAdmMDBTable& table) const;

    void createAllIndexes();
    void createIndexes(const TAdmMDBTable& table);
    void createIndex(const TAdmMDBTable& table, const TAdmMDBIndex& index);

    ExportJob& m_job;
    const SQLDialectFacts& m_facts;
    SQLStructure m_structure;
    SQLNameUses m_names;
    std::unique_ptr<Replacement> m_replacement;
    SQLConnection m_connection;
    StatementBuffer m_statement;
    std::vector<std::string> m_finishedTables;
    bool m_isDamaged = false; // the file holds something that it must not be kept with
};

void SQLiteExport::run()
{
    if (!createFile()) return;
    if (!connect() || !switchForeignKeysOff()) {
        m_connection.disconnect();
        return;
    }
    m_job.forEachTable([&](const ExportEntry&, const TAdmMDBTable& table) {
        if (!m_isDamaged) exportTable(table);
    });
    if (m_job.options().includeIndexes && !m_isDamaged) createAllIndexes();
    static_cast<void>(switchForeignKeysOff());
    m_connection.disconnect();
    finish();
}

// Only a regular file gives way; a folder or a device is left alone.
bool SQLiteExport::createFile()
{
    if (m_replacement) {
        m_replacement->makeRoom();
        m_connection.setDbFilePath(m_replacement->part());
        if (m_connection.createDbFile().empty() && m_replacement->adopt()) return true;
    }
    m_job.outputFailed({exportReason::cannotCreate});
    return false;
}

bool SQLiteExport::connect()
{
    if (!m_connection.connect()) {
        m_job.outputFailed({messageKey("Unable to establish SQLite connection")});
        return false;
    }
    // Nobody else knows the file yet, and it is flushed when it is done. Refused, these only make the export slower.
    m_connection.queryString("PRAGMA synchronous = OFF");
    m_connection.queryString("PRAGMA locking_mode = EXCLUSIVE");
    return true;
}

// Tables may come in any order.
bool SQLiteExport::switchForeignKeysOff()
{
    if (m_connection.queryString(foreignKeysOff)) return true;
    m_job.outputFailed({messageKey("Have error when executing query: %@"), {foreignKeysOff}});
    return false;
}

// The tables count once the file is known to be whole; those that were finished before a stop count as well.
void SQLiteExport::finish()
{
    const bool isStopped = m_job.terminated();
    if (!isStopped && !publish()) return m_job.outputFailed({exportReason::cannotWrite});
    for (const auto& table : m_finishedTables)
        m_job.tableDone(table);
}

bool SQLiteExport::publish()
{
    if (m_isDamaged || !m_replacement->finish()) return false;
    // Of a program that was killed over the older database: they would be played back into this one.
    for (const auto* suffix : {"-journal", "-wal", "-shm"})
        ::unlink((m_replacement->target() + suffix).c_str());
    return true;
}

void SQLiteExport::exportTable(const TAdmMDBTable& table)
{
    m_names.take(table.name());
    const bool isWhole = createTable(table) && (!m_job.options().exportData || insertRows(table));
    if (m_job.terminated())
        m_job.tableFailed(table.name(), {exportReason::terminated});
    else if (isWhole)
        m_finishedTables.push_back(table.name());
}

bool SQLiteExport::createTable(const TAdmMDBTable& table)
{
    if (m_connection.queryString(m_structure.createTable(table))) return true;
    m_job.tableFailed(table.name(), {messageKey("Create table failed.")});
    return false;
}

bool SQLiteExport::insertRows(const TAdmMDBTable& table)
{
    auto writer = rowWriter(table);
    for (const auto& group : table.rows().groups()) {
        if (insertGroup(group, writer)) continue;
        m_job.tableFailed(table.name(), {messageKey("Insert record failed.")});
        dropTable(table);
        return false;
    }
    return true;
}

// A stop ends it early; false only when a row was not taken.
bool SQLiteExport::insertGroup(const RowGroup& group, SQLRowWriter& writer)
{
    writer.beginGroup(group);
    for (std::uint32_t row = 0; row < group.rowCount && !m_job.terminated(); ++row) {
        m_statement.text.clear();
        writer.writeRow(m_statement, row);
        if (!m_connection.queryString(m_statement.text)) return false;
    }
    return true;
}

// A table that stays with some of its rows would look like one that has no others.
void SQLiteExport::dropTable(const TAdmMDBTable& table)
{
    m_isDamaged = !m_connection.queryString(format("DROP TABLE %@;", {quoteIdentifier(table.name(), m_facts)}));
}

SQLRowWriter SQLiteExport::rowWriter(const TAdmMDBTable& table) const
{
    std::vector<std::string> names;
    std::vector<SQLRowColumn> columns;
    for (const auto& column : table.columns()) {
        const auto type = column->type();
        const bool isLiteral = factsOf(type).isQuoted || type == ColumnType::ReplicationId;
        names.push_back(column->name());
        columns.push_back(
            {isLiteral ? SQLCellForm::Literal : SQLCellForm::Bare, forbidsZeroLength(*column) ? "\"\"" : "null"});
    }
    auto start = format(
        "INSERT INTO %@ (%@) VALUES (", {quoteIdentifier(table.name(), m_facts), quoteIdentifiers(names, m_facts)});
    return {std::move(start), columns, ");", "."};
}

void SQLiteExport::createAllIndexes()
{
    for (const auto& entry : m_job.entries()) {
        if (m_job.terminated()) return;
        if (const auto* table = m_job.file().findTable(entry.tableName)) createIndexes(*table);
    }
}

void SQLiteExport::createIndexes(const TAdmMDBTable& table)
{
    if (table.indices().empty()) return;
    for (const auto& index : table.indices()) {
        if (m_job.terminated()) break;
        if (!index->isPrimaryKey()) createIndex(table, *index);
    }
    if (m_job.terminated()) m_job.tableFailed(table.name(), {exportReason::terminated});
}

void SQLiteExport::createIndex(const TAdmMDBTable& table, const TAdmMDBIndex& index)
{
    const auto statement = format("CREATE %@INDEX %@ ON %@ (\n\t%@\n);",
        {index.isUnique() ? "UNIQUE " : "", quoteIdentifier(m_names.uniqueName(index.name()), m_facts),
            quoteIdentifier(table.name(), m_facts), m_structure.indexKeys(index, ",\n\t")});
    if (m_connection.queryString(statement)) return;
    m_job.stepFailed({messageKey("Create index %@ for table %@ failed."), {index.name(), table.name()}});
}

} // namespace

void exportSQLiteThread(ExportJob& job) { SQLiteExport(job).run(); }

} // namespace vellumo
