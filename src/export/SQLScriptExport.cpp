// SPDX-License-Identifier: MIT
#include "export/ExactSQL.h"
#include "export/ExportFormat.h"
#include "export/ExportJob.h"
#include "export/files/OutputFile.h"
#include "export/sql/SQLRowWriter.h"
#include "export/sql/SQLStructure.h"
#include "export/sql/SQLText.h"
#include "model/TAdmMDBFile.h"
#include "text/Format.h"

namespace vellumo {

namespace {

class SQLScriptExport {
public:
    explicit SQLScriptExport(ExportJob& job)
        : m_job(job)
        , m_options(job.options())
        , m_facts(sqlDialectFacts(m_options.sqlDialect))
        , m_structure(
              m_facts, job.file(), {m_options.schemaName, m_options.includeForeignKeys, m_options.includeIndexes})
        , m_names(m_facts.sharesIndexNames)
    {
    }

    void run() { m_options.isSingleFile ? writeOneScript() : writeScriptPerTable(); }

private:
    void writeOneScript();
    void writeNextTable(const TAdmMDBTable& table);
    void writeFinalPass();
    [[nodiscard]] std::string finalStatements(const TAdmMDBTable& table);
    void finishOneScript();
    void oneScriptFailed(const char* reasonKey);

    void writeScriptPerTable();
    void writeScript(const ExportEntry& entry, const TAdmMDBTable& table);
    void finishScript(const ExportEntry& entry, const TAdmMDBTable& table);
    void scriptFailed(const ExportEntry& entry, const char* reasonKey);

    void takeName(const TAdmMDBTable& table);
    void writeTable(const TAdmMDBTable& table);
    void writeStructure(const TAdmMDBTable& table);
    void writeIndexesBehindTable(const TAdmMDBTable& table);
    void writeRows(const TAdmMDBTable& table);
    [[nodiscard]] SQLRowWriter rowWriter(const TAdmMDBTable& table) const;
    [[nodiscard]] SQLCellForm cellForm(ColumnType type) const;
    [[nodiscard]] SQLCellForm literalForm(ColumnType type) const;

    [[nodiscard]] bool addsForeignKeys() const;
    [[nodiscard]] bool hasFinalPass() const;

    ExportJob& m_job;
    const ExportOptions& m_options;
    const SQLDialectFacts& m_facts;
    SQLStructure m_structure;
    SQLNameUses m_names; // of indexes, over all scripts of the run
    OutputFile m_file;
    std::vector<const TAdmMDBTable*> m_written; // by the one script, completely
    bool m_isAbandoned = false;                 // by a stop within a table, which is logged
};

void SQLScriptExport::writeOneScript()
{
    if (!m_file.open(m_job.singleFilePath())) return oneScriptFailed(exportReason::cannotCreate);
    m_file.write(m_facts.header);
    m_job.forEachTable([&](const ExportEntry&, const TAdmMDBTable& table) {
        takeName(table);
        writeNextTable(table);
    });
    if (hasFinalPass() && !m_isAbandoned) writeFinalPass();
    finishOneScript();
}

void SQLScriptExport::writeNextTable(const TAdmMDBTable& table)
{
    if (m_file.failed()) return;
    writeTable(table);
    if (m_job.terminated()) {
        m_isAbandoned = true;
        return m_job.tableFailed(table.name(), {exportReason::terminated});
    }
    m_written.push_back(&table);
    m_job.updateProgress(m_written.size());
}

bool SQLScriptExport::addsForeignKeys() const
{
    return m_facts.foreignKeyPlace == ForeignKeyPlace::InAlterTable && m_options.exportStructure
        && m_options.includeForeignKeys;
}

bool SQLScriptExport::hasFinalPass() const
{
    if (m_facts.indexPlace == IndexPlace::BehindAllTables && m_options.exportStructure && m_options.includeIndexes)
        return true;
    return addsForeignKeys() && !m_job.file().allForeignKeys().empty();
}

void SQLScriptExport::writeFinalPass()
{
    for (const auto* table : m_written) {
        if (m_job.terminated()) break;
        m_file.write(finalStatements(*table));
    }
    if (m_job.terminated()) m_job.stepFailed({exportReason::terminated});
}

std::string SQLScriptExport::finalStatements(const TAdmMDBTable& table)
{
    if (addsForeignKeys()) return m_structure.addForeignKeys(table);
    std::string lines;
    for (const auto& statement : m_structure.createIndexes(table, m_names))
        lines += statement + '\n';
    return lines;
}

void SQLScriptExport::oneScriptFailed(const char* reasonKey)
{
    m_job.outputFailed({reasonKey, {}, m_job.singleFileCause(m_file.error())});
}

// The tables count once the script that holds them all is known to be whole: after a stop none does.
void SQLScriptExport::finishOneScript()
{
    if (m_job.terminated() || m_written.empty()) return m_file.discard();
    m_file.write(m_facts.footer);
    if (!m_file.close()) return oneScriptFailed(exportReason::cannotWrite);
    for (const auto* table : m_written)
        m_job.tableDone(table->name());
}

void SQLScriptExport::writeScriptPerTable()
{
    m_job.forEachTable([&](const ExportEntry& entry, const TAdmMDBTable& table) {
        takeName(table);
        writeScript(entry, table);
    });
}

void SQLScriptExport::writeScript(const ExportEntry& entry, const TAdmMDBTable& table)
{
    if (!m_file.open(m_job.outputPath(entry))) return scriptFailed(entry, exportReason::cannotCreate);
    m_file.write(m_facts.header);
    writeTable(table);
    if (addsForeignKeys()) m_file.write(m_structure.addForeignKeys(table));
    m_file.write(m_facts.footer);
    finishScript(entry, table);
}

void SQLScriptExport::scriptFailed(const ExportEntry& entry, const char* reasonKey)
{
    m_job.tableFailed(entry.tableName, {reasonKey, {}, m_job.outputCause(entry, m_file.error())});
}

void SQLScriptExport::finishScript(const ExportEntry& entry, const TAdmMDBTable& table)
{
    if (m_job.terminated()) {
        m_file.discard();
        return m_job.tableFailed(table.name(), {exportReason::terminated});
    }
    if (!m_file.close()) return scriptFailed(entry, exportReason::cannotWrite);
    m_job.tableDone(table.name());
    m_job.updateProgress(m_job.report().doneCount());
}

// Also of a table whose script cannot be created: another index must not get its name.
void SQLScriptExport::takeName(const TAdmMDBTable& table)
{
    if (m_facts.sharesIndexNames) m_names.take(table.name());
}

void SQLScriptExport::writeTable(const TAdmMDBTable& table)
{
    if (m_options.exportStructure) writeStructure(table);
    if (m_options.exportData) writeRows(table);
}

void SQLScriptExport::writeStructure(const TAdmMDBTable& table)
{
    if (m_options.includeDropTable) m_file.write(m_structure.dropTable(table));
    m_file.write(m_structure.createTable(table));
    m_file.write("\n");
    if (m_options.includeIndexes) writeIndexesBehindTable(table);
    m_file.write(m_structure.columnComments(table));
    m_file.write("\n");
}

void SQLScriptExport::writeIndexesBehindTable(const TAdmMDBTable& table)
{
    const bool isPlace = m_facts.indexPlace == IndexPlace::BehindTable
        || (m_facts.indexPlace == IndexPlace::BehindAllTables && !m_options.isSingleFile);
    if (!isPlace) return;
    const auto statements = m_structure.createIndexes(table, m_names);
    for (const auto& statement : statements)
        m_file.write('\n' + statement);
    if (!statements.empty()) m_file.write("\n");
}

void SQLScriptExport::writeRows(const TAdmMDBTable& table)
{
    auto writer = rowWriter(table);
    for (std::size_t g = 0; g < table.rows().groups().size(); ++g) {
        const auto& group = table.rows().groups()[g];
        m_job.beginRows(table, table.rows().firstRow(g));
        writer.beginGroup(group);
        for (std::uint32_t row = 0; row < group.rowCount && !m_job.terminated(); ++row)
            writer.writeRow(m_file, row);
        if (m_job.terminated() || m_file.failed()) return;
    }
    m_file.write("\n");
}

SQLRowWriter SQLScriptExport::rowWriter(const TAdmMDBTable& table) const
{
    std::vector<std::string> names;
    std::vector<SQLRowColumn> columns;
    for (const auto& column : table.columns()) {
        names.push_back(column->name());
        columns.push_back({cellForm(column->type()), forbidsZeroLength(*column) ? "''" : "null"});
    }
    auto start = format(
        "INSERT INTO %@ (%@) VALUES (", {m_structure.qualifiedTable(table.name()), quoteIdentifiers(names, m_facts)});
    return {std::move(start), columns, m_facts.insertEnd, m_options.decimalSymbol};
}

SQLCellForm SQLScriptExport::cellForm(ColumnType type) const
{
    const auto& facts = factsOf(type);
    const bool isLiteral =
        m_facts.quotesEveryText || facts.isQuoted || (m_facts.quotesBoolean && type == ColumnType::Boolean);
    if (isLiteral) return literalForm(type);
    if (facts.hasDecimalSymbol) return SQLCellForm::Decimal;
    if (type != ColumnType::ReplicationId || m_facts.guidForm == GuidForm::AsItIs) return SQLCellForm::Bare;
    return m_facts.guidForm == GuidForm::Quoted ? SQLCellForm::GuidLiteral : SQLCellForm::CompactGuidLiteral;
}

SQLCellForm SQLScriptExport::literalForm(ColumnType type) const
{
    const bool isDate = type == ColumnType::DateTime || type == ColumnType::DateTimeExtended;
    if (!isDate || m_facts.dateForm == DateForm::AsItIs) return SQLCellForm::Literal;
    return m_facts.dateForm == DateForm::Iso ? SQLCellForm::IsoDate : SQLCellForm::ToDate;
}

} // namespace

void exportSQLThread(ExportJob& job)
{
    if (job.options().isExact)
        exportExactScript(job);
    else
        SQLScriptExport(job).run();
}

} // namespace vellumo
