// SPDX-License-Identifier: MIT
#include "SQLite Connection/Connection/SQLConnection.h"
#include "export/ExportFormat.h"
#include "export/ExportJob.h"
#include "export/files/Replacement.h"
#include "export/sql/SQLStructure.h"
#include "export/sql/SQLText.h"
#include "export/sql/SQLiteRows.h"
#include "model/TAdmMDBFile.h"
#include "text/Format.h"
#include "text/Messages.h"

#include <cerrno>
#include <memory>
#include <unistd.h>

namespace vellumo {

namespace {

constexpr const char* foreignKeysOff = "PRAGMA foreign_keys = false;";

class SQLiteExport {
public:
    explicit SQLiteExport(ExportJob& job)
        : m_job(job)
        , m_facts(sqlDialectFacts(ServerType::SQLite))
        , m_structure(m_facts, job.file(), {"", job.options().includeForeignKeys, job.options().includeIndexes})
        , m_names(m_facts.sharesIndexNames)
        , m_replacement(Replacement::create(job.singleFilePath()))
        , m_creationError(errno)
        , m_connection(ServerType::SQLite, job.loadErrorWindow())
    {
    }

    void run();

private:
    [[nodiscard]] bool writeTables();
    [[nodiscard]] bool createFile();
    [[nodiscard]] bool connect();
    [[nodiscard]] bool switchForeignKeysOff();
    void dropJournal();
    void finish();
    [[nodiscard]] bool publish();

    void exportTable(const TAdmMDBTable& table);
    // These log their failure.
    [[nodiscard]] bool createTable(const TAdmMDBTable& table);
    [[nodiscard]] bool insertRows(const TAdmMDBTable& table);
    [[nodiscard]] bool insertGroup(const TAdmMDBTable& table, std::size_t group, SQLiteRows& rows);
    [[nodiscard]] bool commit(const TAdmMDBTable& table);
    void takeBack();

    [[nodiscard]] ExportReason refused(const char* key, std::uint64_t row = 0);

    void createAllIndexes();
    void createIndexes(const TAdmMDBTable& table);
    void createIndex(const TAdmMDBTable& table, const TAdmMDBIndex& index);

    ExportJob& m_job;
    const SQLDialectFacts& m_facts;
    SQLStructure m_structure;
    SQLNameUses m_names;
    std::unique_ptr<Replacement> m_replacement; // null: errno then is m_creationError
    int m_creationError;
    SQLConnection m_connection;
    std::vector<std::string> m_finishedTables;
    bool m_isDamaged = false;  // the file holds, or lacks, what it must not be kept with
    std::string m_damageCause; // as the library tells it
};

void SQLiteExport::run()
{
    const bool isWritten = createFile() && writeTables();
    m_connection.disconnect();
    dropJournal();
    if (isWritten) finish();
}

bool SQLiteExport::writeTables()
{
    if (!connect() || !switchForeignKeysOff()) return false;
    m_job.forEachTable([&](const ExportEntry&, const TAdmMDBTable& table) {
        if (!m_isDamaged) exportTable(table);
    });
    if (m_job.options().includeIndexes && !m_isDamaged) createAllIndexes();
    static_cast<void>(switchForeignKeysOff());
    return true;
}

// The library takes it away itself, unless a transaction is only half in the file.
void SQLiteExport::dropJournal()
{
    if (m_replacement && ::unlink((m_replacement->part() + "-journal").c_str()) == 0) m_isDamaged = true;
}

// Only a regular file gives way; a folder or a device is left alone.
bool SQLiteExport::createFile()
{
    std::string refusal;
    if (m_replacement) {
        m_replacement->makeRoom();
        m_connection.setDbFilePath(m_replacement->part());
        refusal = m_connection.createDbFile();
        if (refusal.empty() && m_replacement->adopt()) return true;
    }
    auto cause = m_job.singleFileCause(m_replacement ? 0 : m_creationError);
    if (!refusal.empty()) cause.reason = refusal;
    m_job.outputFailed({exportReason::cannotCreate, {}, std::move(cause)});
    return false;
}

bool SQLiteExport::connect()
{
    if (!m_connection.connect()) {
        m_job.outputFailed(refused(messageKey("Unable to establish SQLite connection")));
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
    auto reason = refused(messageKey("Have error when executing query: %@"));
    reason.arguments = {foreignKeysOff};
    m_job.outputFailed(std::move(reason));
    return false;
}

// What the library said of the last statement. Nothing can be made good of a file that the disk does not take.
ExportReason SQLiteExport::refused(const char* key, std::uint64_t row)
{
    const auto& message = m_connection.getLastErrorMessage();
    if (m_connection.isFileBroken()) {
        m_isDamaged = true;
        m_damageCause = message;
    }
    return {key, {}, {.row = row, .reason = message}};
}

// The tables count once the file is known to be whole and has its name: after a stop none does.
void SQLiteExport::finish()
{
    if (m_job.terminated()) return;
    // A file without a table must not take the place of one that has some.
    if (m_finishedTables.empty() && !m_isDamaged) {
        if (m_job.report().failures.empty()) m_job.outputFailed({messageKey("No table was exported.")});
        return;
    }
    if (!publish()) {
        auto cause = m_job.singleFileCause(m_isDamaged ? 0 : errno);
        if (m_isDamaged) cause.reason = m_damageCause;
        return m_job.outputFailed({exportReason::cannotWrite, {}, std::move(cause)});
    }
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

// One transaction a table, which makes the difference between a few statements and a great many a second. A table of
// which a row is refused is taken back: with some of its rows it would look like one that has no others.
void SQLiteExport::exportTable(const TAdmMDBTable& table)
{
    m_names.take(table.name());
    const bool isWhole = createTable(table) && (!m_job.options().exportData || insertRows(table)) && !m_job.terminated()
        && commit(table);
    if (m_job.terminated())
        m_job.tableFailed(table.name(), {exportReason::terminated});
    else if (isWhole)
        m_finishedTables.push_back(table.name());
    else
        takeBack();
}

bool SQLiteExport::createTable(const TAdmMDBTable& table)
{
    if (m_connection.queryString("BEGIN;") && m_connection.queryString(m_structure.createTable(table))) return true;
    m_job.tableFailed(table.name(), refused(messageKey("Create table failed.")));
    return false;
}

// A stop ends it early; false only when a row was not taken.
bool SQLiteExport::insertRows(const TAdmMDBTable& table)
{
    SQLiteRows rows(m_connection, table);
    for (std::size_t group = 0; group < table.rows().groups().size(); ++group)
        if (!insertGroup(table, group, rows)) return false;
    return true;
}

bool SQLiteExport::insertGroup(const TAdmMDBTable& table, std::size_t group, SQLiteRows& rows)
{
    const auto& source = table.rows().groups()[group];
    rows.beginGroup(source);
    for (std::uint32_t row = 0; row < source.rowCount && !m_job.terminated(); ++row) {
        if (rows.insert(row)) continue;
        const auto number = table.rows().firstRow(group) + row + 1;
        m_job.tableFailed(table.name(), refused(messageKey("Insert record failed."), number));
        return false;
    }
    return true;
}

bool SQLiteExport::commit(const TAdmMDBTable& table)
{
    if (m_connection.queryString("COMMIT;")) return true;
    m_job.tableFailed(table.name(), refused(messageKey("Insert record failed.")));
    return false;
}

void SQLiteExport::takeBack()
{
    if (m_isDamaged || m_connection.queryString("ROLLBACK;")) return;
    m_isDamaged = true;
    m_damageCause = m_connection.getLastErrorMessage();
}

void SQLiteExport::createAllIndexes()
{
    for (const auto& entry : m_job.entries()) {
        if (m_job.terminated() || m_isDamaged) return;
        if (const auto* table = m_job.file().findTable(entry.tableName)) createIndexes(*table);
    }
}

void SQLiteExport::createIndexes(const TAdmMDBTable& table)
{
    if (table.indices().empty()) return;
    for (const auto& index : table.indices()) {
        if (m_job.terminated() || m_isDamaged) break;
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
    auto reason = refused(messageKey("Create index %@ for table %@ failed."));
    reason.arguments = {index.name(), table.name()};
    m_job.stepFailed(std::move(reason));
}

} // namespace

void exportSQLiteThread(ExportJob& job) { SQLiteExport(job).run(); }

} // namespace vellumo
