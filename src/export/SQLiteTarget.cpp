// SPDX-License-Identifier: MIT
#include "export/SQLiteTarget.h"

#include "export/ExportJob.h"
#include "export/files/Replacement.h"
#include "export/sql/SQLiteRows.h"
#include "model/TAdmMDBFile.h"

#include <cerrno>
#include <unistd.h>

namespace vellumo {

namespace {

constexpr const char* foreignKeysOff = "PRAGMA foreign_keys = false;";

} // namespace

SQLiteTarget::SQLiteTarget(ExportJob& job)
    : m_job(job)
    , m_replacement(Replacement::create(job.singleFilePath()))
    , m_creationError(errno)
    , m_connection(ServerType::SQLite, job.loadErrorWindow())
{
}

SQLiteTarget::~SQLiteTarget() { close(); }

bool SQLiteTarget::open() { return createFile() && connect() && switchForeignKeysOff(); }

// Only a regular file gives way; a folder or a device is left alone.
bool SQLiteTarget::createFile()
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

bool SQLiteTarget::connect()
{
    if (!m_connection.connect()) {
        m_job.outputFailed(refused({messageKey("Unable to establish SQLite connection")}));
        return false;
    }
    // Nobody else knows the file yet, and it is flushed when it is done. Refused, these only make the export slower.
    m_connection.queryString("PRAGMA synchronous = OFF");
    m_connection.queryString("PRAGMA locking_mode = EXCLUSIVE");
    return true;
}

// Tables may come in any order.
bool SQLiteTarget::switchForeignKeysOff()
{
    if (m_connection.queryString(foreignKeysOff)) return true;
    m_job.outputFailed(refused({messageKey("Have error when executing query: %@"), {foreignKeysOff}}));
    return false;
}

// Nothing can be made good of a file that the disk does not take.
ExportReason SQLiteTarget::refused(ExportReason reason, std::uint64_t row)
{
    const auto& message = m_connection.getLastErrorMessage();
    if (m_connection.isFileBroken()) {
        m_isDamaged = true;
        m_damageCause = message;
    }
    reason.cause = {.row = row, .reason = message};
    return reason;
}

void SQLiteTarget::writeTable(
    const TAdmMDBTable& table, const std::string& create, SQLiteInserter* rows, const std::vector<std::string>& last)
{
    if (m_isDamaged) return;
    const bool isWhole = this->create(table, create) && (rows == nullptr || insertRows(table, *rows))
        && !m_job.terminated() && commit(table, last);
    if (m_job.terminated())
        m_job.tableFailed(table.name(), {exportReason::terminated});
    else if (isWhole)
        m_finishedTables.push_back(table.name());
    else
        takeBack();
}

bool SQLiteTarget::create(const TAdmMDBTable& table, const std::string& statement)
{
    if (m_connection.queryString("BEGIN;") && m_connection.queryString(statement)) return true;
    m_job.tableFailed(table.name(), refused({messageKey("Create table failed.")}));
    return false;
}

// A stop ends it early; false only when a row was not taken.
bool SQLiteTarget::insertRows(const TAdmMDBTable& table, SQLiteInserter& rows)
{
    for (std::size_t group = 0; group < table.rows().groups().size(); ++group)
        if (!insertGroup(table, group, rows)) return false;
    return true;
}

bool SQLiteTarget::insertGroup(const TAdmMDBTable& table, std::size_t group, SQLiteInserter& rows)
{
    const auto& source = table.rows().groups()[group];
    const auto firstRow = table.rows().firstRow(group);
    m_job.beginRows(table, firstRow);
    rows.beginGroup(source, firstRow);
    for (std::uint32_t row = 0; row < source.rowCount && !m_job.terminated(); ++row) {
        if (rows.insert(row)) continue;
        m_job.tableFailed(table.name(), refused({messageKey("Insert record failed.")}, firstRow + row + 1));
        return false;
    }
    return true;
}

bool SQLiteTarget::commit(const TAdmMDBTable& table, const std::vector<std::string>& last)
{
    bool isDone = true;
    for (const auto& statement : last)
        isDone = isDone && m_connection.queryString(statement);
    if (isDone && m_connection.queryString("COMMIT;")) return true;
    m_job.tableFailed(table.name(), refused({messageKey("Insert record failed.")}));
    return false;
}

void SQLiteTarget::takeBack()
{
    if (m_isDamaged || m_connection.queryString("ROLLBACK;")) return;
    m_isDamaged = true;
    m_damageCause = m_connection.getLastErrorMessage();
}

void SQLiteTarget::runStep(const std::string& statement, ExportReason reason)
{
    if (!m_connection.queryString(statement)) m_job.stepFailed(refused(std::move(reason)));
}

// A journal that is left says that a transaction is only half in the file.
void SQLiteTarget::close()
{
    m_connection.disconnect();
    if (m_replacement && ::unlink((m_replacement->part() + "-journal").c_str()) == 0) m_isDamaged = true;
}

void SQLiteTarget::finish()
{
    static_cast<void>(switchForeignKeysOff());
    close();
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

bool SQLiteTarget::publish()
{
    if (m_isDamaged || !m_replacement->finish()) return false;
    // Of a program that was killed over the older database: they would be played back into this one.
    for (const auto* suffix : {"-journal", "-wal", "-shm"})
        ::unlink((m_replacement->target() + suffix).c_str());
    return true;
}

} // namespace vellumo
