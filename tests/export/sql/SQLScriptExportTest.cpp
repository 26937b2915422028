// SPDX-License-Identifier: MIT
#include "export/sql/SQLExportFixture.h"

namespace vellumo::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class SQLScript : public SQLExportFixture {
protected:
    [[nodiscard]] std::string scriptOf(const TAdmMDBFile& file)
    {
        const auto report = runExport(exportSQLThread, file);
        EXPECT_THAT(report.log, IsEmpty());
        EXPECT_EQ(report.successTableCount, static_cast<int>(file.tables().size()));
        return contentOf(m_options.path);
    }
    [[nodiscard]] std::string scriptOf(const TAdmMDBFile& file, SQLDialect dialect)
    {
        m_options.sqlDialect = dialect;
        return scriptOf(file);
    }
};

TEST_F(SQLScript, WholeScriptOfEveryDialect)
{
    const auto shop = makeShop();
    m_options.schemaName = "sales"; // which two of them have no place for
    for (const auto& [name, dialect] : {std::pair("mysql", SQLDialect::MySQL), {"postgresql", SQLDialect::PostgreSQL},
             {"oracle", SQLDialect::Oracle}, {"sqlite", SQLDialect::SQLite}, {"sqlserver", SQLDialect::SQLServer}})
        EXPECT_EQ(scriptOf(*shop, dialect),
            contentOf(fs::path(VELLUMO_SOURCE_DIR "/tests/export/sql/expected") / name += ".sql"))
            << name;
}

TEST_F(SQLScript, ScriptPerTableIsCompleteInItself)
{
    const auto shop = makeShop();
    m_options.isSingleFile = false;
    m_options.path = m_folder;
    m_options.exportData = false;
    m_options.includeDropTable = false;
    m_options.sqlDialect = SQLDialect::SQLite;
    const auto report = runExport(exportSQLThread, *shop);
    EXPECT_EQ(report.successTableCount, 2);
    EXPECT_THAT(report.progress, ElementsAre(0, 1, 1, 2)) << "each start, and the tables done behind each";
    EXPECT_THAT(filesInFolder(), ElementsAre("Customers.sql", "Orders.sql"));
    EXPECT_EQ(contentOf(m_folder / "Customers.sql"), R"(PRAGMA foreign_keys = false;

CREATE TABLE "Customers" (
	"ID" INTEGER NOT NULL,
	"Name" TEXT NOT NULL,
	"Active" INTEGER,
	"Since" TEXT,
	"Balance" REAL,
	"Key" TEXT,
	PRIMARY KEY ("ID")
);

CREATE UNIQUE INDEX "Name" ON "Customers" ("Name" ASC);
CREATE INDEX "orders" ON "Customers" ("Since" DESC, "Name" ASC);

PRAGMA foreign_keys = true;
)") << "the table Orders is not known yet";

    m_options.sqlDialect = SQLDialect::MySQL;
    m_options.includeIndexes = false;
    runExport(exportSQLThread, *shop);
    EXPECT_THAT(contentOf(m_folder / "Orders.sql"),
        testing::AllOf(
            testing::StartsWith("SET NAMES 'UTF8';\nSET FOREIGN_KEY_CHECKS = 0;\n\nCREATE TABLE `Orders` (\n"),
            testing::EndsWith(
                "\n);\n\nALTER TABLE `Orders` ADD CONSTRAINT `CustomersOrders` FOREIGN KEY (`Customer`) REFERENCES "
                "`Customers` (`ID`) ON UPDATE CASCADE ON DELETE SET NULL;\nSET FOREIGN_KEY_CHECKS = 1;\n")));
}

TEST_F(SQLScript, OptionsLeaveTheirStatementsOut)
{
    const struct {
        const char* name;
        void (*change)(ExportOptions&);
        std::vector<std::string> gone;
        std::vector<std::string> there;
    } cases[] = {
        {"no structure", [](ExportOptions& o) { o.exportStructure = false; },
            {"DROP TABLE", "CREATE TABLE", "INDEX", "COMMENT", "ALTER TABLE"}, {"INSERT INTO"}},
        {"no drop", [](ExportOptions& o) { o.includeDropTable = false; }, {"DROP TABLE"}, {"CREATE TABLE"}},
        {"no foreign keys", [](ExportOptions& o) { o.includeForeignKeys = false; }, {"ALTER TABLE", "FOREIGN KEY ("},
            {"CREATE TABLE", "INDEX"}},
        {"no indexes", [](ExportOptions& o) { o.includeIndexes = false; }, {"INDEX"}, {"CREATE TABLE"}},
        {"no data", [](ExportOptions& o) { o.exportData = false; }, {"INSERT"}, {"FOREIGN KEY (", "INDEX", "DROP"}},
    };
    const auto shop = makeShop();
    const auto defaults = m_options;
    for (const auto& test : cases)
        for (const auto dialect : {SQLDialect::MySQL, SQLDialect::PostgreSQL, SQLDialect::Oracle, SQLDialect::SQLite}) {
            m_options = defaults;
            test.change(m_options);
            const auto script = scriptOf(*shop, dialect);
            for (const auto& text : test.gone)
                EXPECT_THAT(script, Not(HasSubstr(text))) << test.name;
            for (const auto& text : test.there)
                EXPECT_THAT(script, HasSubstr(text)) << test.name;
        }
}

TEST_F(SQLScript, NamesAreQuotedForTheirDialect)
{
    const struct {
        SQLDialect dialect;
        std::string_view table;
        std::string_view column;
    } cases[] = {
        {SQLDialect::MySQL, "`A\"b`` é.]`", "`C\"'``]`"},
        {SQLDialect::PostgreSQL, "\"s\"\"`]'\".\"A\"\"b` é.]\"", "\"C\"\"'`]\""},
        {SQLDialect::Oracle, "\"s\"\"`]'\".\"A\"\"b` é.]\"", "\"C\"\"'`]\""},
        {SQLDialect::SQLite, "\"A\"\"b` é.]\"", "\"C\"\"'`]\""},
        {SQLDialect::SQLServer, "[s\"`]]'].[A\"b` é.]]]", "[C\"'`]]]"},
        {SQLDialect(9), "\"A\"\"b` é.]\"", "\"C\"\"'`]\""},
    };
    const auto file = makeFile(
        "/nowhere/names.mdb", makeTable("A\"b` é.]", {{"C\"'`]", "Text", true, false, 3, "%@ is no format"}}, {{"x"}}));
    m_options.schemaName = "s\"`]'";
    for (const auto& test : cases) {
        const auto script = scriptOf(*file, test.dialect);
        const std::string table(test.table);
        const std::string column(test.column);
        EXPECT_THAT(script, HasSubstr("CREATE TABLE " + table + " (\n\t" + column + " "));
        EXPECT_THAT(script, HasSubstr("INSERT INTO " + table + " (" + column + ") VALUES ('x');\n"));
    }
    EXPECT_THAT(scriptOf(*file, SQLDialect::PostgreSQL),
        HasSubstr("CONSTRAINT \"A\"\"b` é.]_pkey\" PRIMARY KEY (\"C\"\"'`]\")"));
    EXPECT_THAT(scriptOf(*file, SQLDialect::SQLServer),
        HasSubstr("CONSTRAINT [A\"b` é.]]_pkey] PRIMARY KEY CLUSTERED ([C\"'`]]])"));
    EXPECT_THAT(scriptOf(*file, SQLDialect::SQLServer),
        HasSubstr("'%@ is no format', 'SCHEMA', 's\"`]''', 'TABLE', 'A\"b` é.]', 'COLUMN', 'C\"''`]'\n"));
}

TEST_F(SQLScript, MissingSchemaLeavesAPlaceholderInComments)
{
    const auto shop = makeShop();
    const auto script = scriptOf(*shop, SQLDialect::SQLServer);
    EXPECT_THAT(script, HasSubstr("'MS_Description', 'It''s \\ it', 'SCHEMA', '<SCHEMA>', 'TABLE', 'Customers'"));
    EXPECT_THAT(script, HasSubstr("CREATE TABLE [Orders] ("));
    EXPECT_THAT(script, HasSubstr("CREATE INDEX [orders] ON [Customers]"));
    EXPECT_THAT(script, HasSubstr(" REFERENCES [Customers] ([ID])"));
    EXPECT_THAT(scriptOf(*shop, SQLDialect::Oracle), HasSubstr("COMMENT ON COLUMN \"Customers\".\"Name\" IS "));
}

TEST_F(SQLScript, IndexNamesAreMadeUnique)
{
    auto first = makeTable("Über", {{"a", "Byte"}});
    setIndices(*first, {{"X", {"a"}}, {"x", {"a"}}, {"ÜBER", {"a"}}});
    auto second = makeTable("x", {{"a", "Byte"}});
    setIndices(*second, {{"X", {"a"}}, {"PK", {"a"}, true, true}, {"über", {"-a"}}});
    const auto file = makeFile("/nowhere/names.mdb", std::move(first), std::move(second));
    m_options.exportData = false;
    const auto sqlite = scriptOf(*file, SQLDialect::SQLite);
    EXPECT_THAT(sqlite,
        HasSubstr("CREATE INDEX \"X_1\" ON \"Über\" (\"a\" ASC);\nCREATE INDEX \"x_2\" ON \"Über\" (\"a\" ASC);\n"
                  "CREATE INDEX \"ÜBER_1\" ON \"Über\" (\"a\" ASC);\nCREATE INDEX \"X_3\" ON \"x\" (\"a\" ASC);\n"
                  "CREATE INDEX \"über_2\" ON \"x\" (\"a\" DESC);\nPRAGMA"));
    const auto postgres = scriptOf(*file, SQLDialect::PostgreSQL);
    EXPECT_THAT(postgres,
        HasSubstr(");\n\nCREATE INDEX \"X\" ON \"Über\" (\"a\");\nCREATE INDEX \"x\" ON \"Über\" (\"a\");\n"
                  "CREATE INDEX \"ÜBER\" ON \"Über\" (\"a\");\n\n"));
    EXPECT_THAT(
        postgres, HasSubstr("\nCREATE INDEX \"X_1\" ON \"x\" (\"a\");\nCREATE INDEX \"über\" ON \"x\" (\"a\");\n"));
}

TEST_F(SQLScript, TableWithoutKeyRowsOrIndexes)
{
    const auto file = makeFile("/nowhere/plain.mdb", makeTable("t", {{"a", "Text", false, {}, 7}}));
    EXPECT_EQ(scriptOf(*file, SQLDialect::Oracle),
        "DROP TABLE \"t\" CASCADE CONSTRAINTS;\nCREATE TABLE \"t\" (\n\t\"a\" VARCHAR2(7)\n);\n\n\n");
    m_options.exportStructure = false;
    EXPECT_EQ(scriptOf(*file, SQLDialect::Oracle), "\n");
}

} // namespace
} // namespace vellumo::test
