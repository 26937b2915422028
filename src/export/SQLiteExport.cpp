// SPDX-License-Identifier: MIT
#include "export/ExactSQL.h"
#include "export/ExportFormat.h"
#include "export/ExportJob.h"
#include "export/SQLiteTarget.h"
#include "export/sql/SQLStructure.h"
#include "export/sql/SQLText.h"
#include "export/sql/SQLiteRows.h"
#include "model/TAdmMDBFile.h"
#include "text/Format.h"

namespace vellumo {

namespace {

class SQLiteExport {
public:
    explicit SQLiteExport(ExportJob& job)
        : m_job(job)
        , m_facts(sqlDialectFacts(ServerType::SQLite))
        , m_structure(m_facts, job.file(), {"", job.options().includeForeignKeys, job.options().includeIndexes})
        , m_names(m_facts.sharesIndexNames)
        , m_target(job)
    {
    }

    void run();

private:
    void exportTable(const TAdmMDBTable& table);
    void createAllIndexes();
    void createIndexes(const TAdmMDBTable& table);
    void createIndex(const TAdmMDBTable& table, const TAdmMDBIndex& index);

    ExportJob& m_job;
    const SQLDialectFacts& m_facts;
    SQLStructure m_structure;
    SQLNameUses m_names;
    SQLiteTarget m_target;
};

void SQLiteExport::run()
{
    if (!m_target.open()) return;
    m_job.forEachTable([&](const ExportEntry&, const TAdmMDBTable& table) { exportTable(table); });
    if (m_job.options().includeIndexes) createAllIndexes();
    m_target.finish();
}

void SQLiteExport::exportTable(const TAdmMDBTable& table)
{
    m_names.take(table.name());
    SQLiteRows rows(m_target.connection(), table);
    m_target.writeTable(table, m_structure.createTable(table), m_job.options().exportData ? &rows : nullptr);
}

void SQLiteExport::createAllIndexes()
{
    for (const auto& entry : m_job.entries()) {
        if (m_job.terminated() || m_target.isDamaged()) return;
        if (const auto* table = m_job.findTable(entry.tableName)) createIndexes(*table);
    }
}

void SQLiteExport::createIndexes(const TAdmMDBTable& table)
{
    if (table.indices().empty()) return;
    for (const auto& index : table.indices()) {
        if (m_job.terminated() || m_target.isDamaged()) break;
        if (!index->isPrimaryKey()) createIndex(table, *index);
    }
    if (m_job.terminated()) m_job.tableFailed(table.name(), {exportReason::terminated});
}

void SQLiteExport::createIndex(const TAdmMDBTable& table, const TAdmMDBIndex& index)
{
    const auto statement = format("CREATE %@INDEX %@ ON %@ (\n\t%@\n);",
        {index.isUnique() ? "UNIQUE " : "", quoteIdentifier(m_names.uniqueName(index.name()), m_facts),
            quoteIdentifier(table.name(), m_facts), m_structure.indexKeys(index, ",\n\t")});
    m_target.runStep(statement, {messageKey("Create index %@ for table %@ failed."), {index.name(), table.name()}});
}

} // namespace

void exportSQLiteThread(ExportJob& job)
{
    if (job.options().isExact)
        exportExactSQLite(job);
    else
        SQLiteExport(job).run();
}

} // namespace vellumo
