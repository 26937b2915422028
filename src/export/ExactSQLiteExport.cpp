// SPDX-License-Identifier: MIT
#include "export/ExactSQL.h"
#include "export/ExportJob.h"
#include "export/SQLiteTarget.h"
#include "export/sql/ExactSQLiteRows.h"
#include "export/sql/ExactStatements.h"
#include "model/TAdmMDBFile.h"

namespace vellumo {

namespace {

class ExactSQLiteExport {
public:
    explicit ExactSQLiteExport(ExportJob& job)
        : m_job(job)
        , m_facts(exactDialectFacts(ServerType::SQLite))
        , m_schema(m_facts, job.file(), exactTables(job), exactSchemaOptions(job))
        , m_statements(m_facts, m_schema, "")
        , m_target(job)
    {
        addExactFindings(job, m_schema);
    }

    void run();

private:
    void exportTable(const ExactTable& table);
    void createIndexes(const ExactTable& table);

    ExportJob& m_job;
    const ExactDialectFacts& m_facts;
    ExactSchema m_schema;
    ExactStatements m_statements;
    SQLiteTarget m_target;
};

void ExactSQLiteExport::run()
{
    if (!m_target.open()) return;
    m_job.forEachTable([&](const ExportEntry&, const TAdmMDBTable& table) {
        if (const auto* exact = m_schema.find(table)) exportTable(*exact);
    });
    for (const auto& table : m_schema.tables())
        createIndexes(table);
    m_target.finish();
}

void ExactSQLiteExport::exportTable(const ExactTable& table)
{
    ExactSQLiteRows rows(m_target.connection(), table, m_statements.insertStart(table));
    if (m_job.hasObjectFolder())
        rows.setObjectText([&](std::size_t column, std::size_t row, const TAdmBlobData& object) {
            return m_job.objectFile(*table.table, column, row, object);
        });
    m_target.writeTable(*table.table, m_statements.createTable(table), m_job.options().exportData ? &rows : nullptr,
        m_statements.nextNumber(table));
}

void ExactSQLiteExport::createIndexes(const ExactTable& table)
{
    for (const auto& index : table.indexes) {
        if (m_job.terminated() || m_target.isDamaged()) return;
        m_target.runStep(m_statements.createIndex(table, index),
            {messageKey("Create index %@ for table %@ failed."), {index.name, table.table->name()}});
    }
}

} // namespace

void exportExactSQLite(ExportJob& job) { ExactSQLiteExport(job).run(); }

} // namespace vellumo
