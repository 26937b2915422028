// SPDX-License-Identifier: MIT
#include "export/ExactSQL.h"
#include "export/ExportFormat.h"
#include "export/ExportJob.h"
#include "export/files/OutputFile.h"
#include "export/sql/ExactRows.h"
#include "export/sql/ExactStatements.h"
#include "model/TAdmMDBFile.h"

#include <algorithm>

namespace vellumo {

namespace {

class ExactScriptExport {
public:
    explicit ExactScriptExport(ExportJob& job)
        : m_job(job)
        , m_options(job.options())
        , m_facts(exactDialectFacts(m_options.sqlDialect))
        , m_schema(m_facts, job.file(), exactTables(job), exactSchemaOptions(job))
        , m_statements(m_facts, m_schema, m_options.schemaName)
    {
        addExactFindings(job, m_schema);
    }

    void run() { m_options.isSingleFile ? writeOneScript() : writeScriptPerTable(); }

private:
    void writeOneScript();
    void writeNextTable(const TAdmMDBTable& table);
    void finishOneScript();

    void writeScriptPerTable();
    void writeScript(const ExportEntry& entry, const ExactTable& table);
    void finishScript(const ExportEntry& entry, const TAdmMDBTable& table);

    void beginScript();
    void writeTable(const ExactTable& table);
    void writeRows(const ExactTable& table);
    // Those whose tables have both been written, of which `table` is one; null: any.
    void writeRelations(const ExactTable* table);
    void write(std::string_view text);

    ExportJob& m_job;
    const ExportOptions& m_options;
    const ExactDialectFacts& m_facts;
    ExactSchema m_schema;
    ExactStatements m_statements;
    OutputFile m_file;
    TextBuffer m_utf16;                       // of a piece of the script
    std::vector<const ExactTable*> m_written; // so far, in order
};

void ExactScriptExport::write(std::string_view text)
{
    if (!m_facts.isUTF16) return m_file.write(text);
    m_utf16.clear();
    appendUTF16(m_utf16, text);
    m_file.write(m_utf16.view());
}

void ExactScriptExport::beginScript()
{
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF"; // which becomes that of UTF-16
    if (m_facts.isUTF16) write(byteOrderMark);
    write(m_facts.header);
}

void ExactScriptExport::writeOneScript()
{
    if (!m_file.open(m_job.singleFilePath()))
        return m_job.outputFailed({exportReason::cannotCreate, {}, m_job.singleFileCause(m_file.error())});
    beginScript();
    m_job.forEachTable([&](const ExportEntry&, const TAdmMDBTable& table) { writeNextTable(table); });
    if (!m_job.terminated()) writeRelations(nullptr);
    finishOneScript();
}

void ExactScriptExport::writeNextTable(const TAdmMDBTable& table)
{
    const auto* exact = m_schema.find(table);
    if (exact == nullptr || m_file.failed()) return;
    writeTable(*exact);
    if (m_job.terminated()) return m_job.tableFailed(table.name(), {exportReason::terminated});
    m_written.push_back(exact);
    m_job.updateProgress(m_written.size());
}

// The tables count once the script that holds them all is known to be whole.
void ExactScriptExport::finishOneScript()
{
    if (m_job.terminated()) return m_file.discard();
    write(m_facts.footer);
    if (!m_file.close())
        return m_job.outputFailed({exportReason::cannotWrite, {}, m_job.singleFileCause(m_file.error())});
    for (const auto* table : m_written)
        m_job.tableDone(table->table->name());
}

void ExactScriptExport::writeScriptPerTable()
{
    m_job.forEachTable([&](const ExportEntry& entry, const TAdmMDBTable& table) {
        if (const auto* exact = m_schema.find(table)) writeScript(entry, *exact);
    });
}

void ExactScriptExport::writeScript(const ExportEntry& entry, const ExactTable& table)
{
    const auto& name = table.table->name();
    if (!m_file.open(m_job.outputPath(entry)))
        return m_job.tableFailed(name, {exportReason::cannotCreate, {}, m_job.outputCause(entry, m_file.error())});
    beginScript();
    writeTable(table);
    m_written.push_back(&table);
    writeRelations(&table);
    write(m_facts.footer);
    finishScript(entry, *table.table);
}

void ExactScriptExport::finishScript(const ExportEntry& entry, const TAdmMDBTable& table)
{
    if (m_job.terminated()) {
        m_file.discard();
        return m_job.tableFailed(table.name(), {exportReason::terminated});
    }
    if (!m_file.close())
        return m_job.tableFailed(
            table.name(), {exportReason::cannotWrite, {}, m_job.outputCause(entry, m_file.error())});
    m_job.tableDone(table.name());
    m_job.updateProgress(m_job.report().doneCount());
}

// Rules that cost time row by row come behind the rows.
void ExactScriptExport::writeTable(const ExactTable& table)
{
    if (m_options.exportStructure) {
        if (m_options.includeDropTable) write(m_statements.dropTable(table));
        write(m_statements.remarks(table));
        write(m_statements.createTable(table));
    }
    if (m_options.exportData) writeRows(table);
    if (m_options.exportStructure) {
        write(m_statements.createIndexes(table));
        for (const auto& statement : m_statements.nextNumber(table))
            write(statement);
        write(m_statements.comments(table));
    }
    write("\n");
}

void ExactScriptExport::writeRows(const ExactTable& table)
{
    const auto& store = table.table->rows();
    if (store.empty()) return;
    write(m_statements.beginRows(table));
    ExactRows rows(m_facts, table, m_statements.insertStart(table), [&](std::string_view text) { write(text); });
    if (m_job.hasObjectFolder())
        rows.setObjectText([&](std::size_t column, std::size_t row, const TAdmBlobData& object) {
            return m_job.objectFile(*table.table, column, row, object);
        });
    for (std::size_t group = 0; group < store.groups().size(); ++group) {
        m_job.beginRows(*table.table, store.firstRow(group));
        rows.beginGroup(store.groups()[group], store.firstRow(group));
        for (std::uint32_t row = 0; row < store.groups()[group].rowCount && !m_job.terminated(); ++row)
            rows.addRow(row);
        if (m_job.terminated() || m_file.failed()) return;
    }
    rows.finish();
    write(m_statements.endRows(table));
}

// With a script a table, each relation stands in the one that comes last in the order of the export.
void ExactScriptExport::writeRelations(const ExactTable* table)
{
    if (!m_options.exportStructure) return;
    write(m_facts.beforeRelations);
    for (const auto* child : m_written)
        for (const auto& relation : child->relations) {
            const auto* parent = &m_schema.tables()[relation.referencedTable];
            const bool isDue = table == nullptr || table == child || table == parent;
            if (isDue && std::ranges::find(m_written, parent) != m_written.end())
                write(m_statements.addRelation(*child, relation));
        }
}

} // namespace

void exportExactScript(ExportJob& job) { ExactScriptExport(job).run(); }

} // namespace vellumo
