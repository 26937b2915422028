// SPDX-License-Identifier: MIT
#include "export/sql/SQLExportFixture.h"

#include <sys/stat.h>
#include <thread>

namespace vellumo::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SQLScriptFaults : public SQLExportFixture {
protected:
    ExportOutcome runPerTable(const TAdmMDBFile& file)
    {
        m_options.isSingleFile = false;
        m_options.path = m_folder;
        return runExport(exportSQLThread, file);
    }
};

// A script, and a database of SQLite.
TEST_F(SQLScriptFaults, FileThatCannotBeCreated)
{
    const auto shop = makeShop();
    const struct {
        const char* name;
        ExportWriter writer;
        fs::path path;
    } cases[] = {
        {"script, no folder", exportSQLThread, m_folder / "none" / "out.sql"},
        {"script, a folder", exportSQLThread, m_folder},
        {"script, nothing", exportSQLThread, ""},
        {"database, no folder", exportSQLiteThread, m_folder / "none" / "out.sqlite"},
        {"database, a folder", exportSQLiteThread, m_folder},
        {"database, a device", exportSQLiteThread, "/dev/full"},
        {"database, nothing", exportSQLiteThread, ""},
    };
    for (const auto& test : cases) {
        m_options.path = test.path;
        const auto report = runExport(test.writer, *shop);
        EXPECT_THAT(report.log, ElementsAre(testing::StartsWith("Unable to create file for export."))) << test.name;
        EXPECT_EQ(report.successTableCount, 0) << test.name;
        EXPECT_THAT(report.progress, IsEmpty()) << test.name;
    }
    EXPECT_TRUE(fs::is_character_file("/dev/full"));
    EXPECT_TRUE(fs::is_directory(m_folder));
}

TEST_F(SQLScriptFaults, TableWhoseScriptCannotBeCreatedDoesNotStopTheOthers)
{
    const auto file = makeFile("/nowhere/x.mdb", makeTable("a/b", {{"a", "Byte"}}), makeTable("c.d'é", {{"a", "Byte"}}),
        makeTable("e", {{"a", "Byte"}}));
    fs::create_directory(m_folder / "e.sql");
    const auto report = runPerTable(*file);
    EXPECT_THAT(report.log,
        ElementsAre("<a/b> Failed: Unable to create file for export. a/b.sql: it cannot be the name of a file",
            "<e> Failed: Unable to create file for export. %/e.sql: Is a directory"));
    EXPECT_EQ(report.successTableCount, 1);
    EXPECT_THAT(filesInFolder(), ElementsAre("c.d'é.sql", "e.sql"));
}

TEST_F(SQLScriptFaults, FullDiskLeavesNothing)
{
    const auto shop = makeShop();
    {
        const FileSizeLimit full(1200); // more than the first table's script, less than both
        const auto report = runExport(exportSQLThread, *shop);
        EXPECT_THAT(report.log, ElementsAre("Unable to write file. %: File too large"));
        EXPECT_EQ(report.successTableCount, 0);
        EXPECT_THAT(filesInFolder(), IsEmpty());
    }
    const auto file = makeFile("/nowhere/x.mdb", makeTable("a", {{"t", "Text"}}, {{"x"}}),
        makeTable("b", {{"t", "Text"}}, {{std::string(1200, 'x')}}), makeTable("c", {{"t", "Text"}}, {{"x"}}));
    const FileSizeLimit full(1200);
    const auto report = runPerTable(*file);
    EXPECT_THAT(report.log, ElementsAre("<b> Failed: Unable to write file. %/b.sql: File too large"));
    EXPECT_THAT(filesInFolder(), ElementsAre("a.sql", "c.sql"));
}

TEST_F(SQLScriptFaults, StopInOneScript)
{
    const struct {
        const char* name;
        int stopAt; // number of the progress report
        SQLDialect dialect;
        std::vector<std::string> log;
    } cases[] = {
        {"inside the first table", 0, SQLDialect::MySQL, {"<Customers> Failed: Terminated."}},
        {"behind the first table", 1, SQLDialect::MySQL, {"Failed: Terminated."}},
        {"inside the second table", 2, SQLDialect::MySQL, {"<Orders> Failed: Terminated."}},
        {"in the foreign key pass", 3, SQLDialect::MySQL, {"Failed: Terminated."}},
        {"in the index pass", 3, SQLDialect::SQLite, {"Failed: Terminated."}},
    };
    const auto shop = makeShop();
    for (const auto& test : cases) {
        m_stopAt = test.stopAt;
        m_terminate = false;
        m_options.sqlDialect = test.dialect;
        const auto report = runExport(exportSQLThread, *shop);
        EXPECT_EQ(report.log, test.log) << test.name;
        EXPECT_EQ(report.successTableCount, 0) << test.name << ": none is on the disk";
        EXPECT_THAT(filesInFolder(), IsEmpty()) << test.name;
    }
}

// Reads a pipe to its end. The flag is set as soon as a text has arrived.
void setWhenRead(const fs::path& pipe, std::string_view text, std::atomic<bool>& flag)
{
    std::ifstream stream(pipe);
    std::string all;
    for (char byte = 0; stream.get(byte);) {
        all += byte;
        if (all.ends_with(text)) flag = true;
    }
}

TEST_F(SQLScriptFaults, StopWithinTheLastStatementsOfTheFinalPass)
{
    auto table = makeTable("T", {{"a", "Byte"}}, {{"1"}});
    // Far more than a pipe holds, so that the export is still at it when the beginning is read.
    setIndices(*table, {{std::string(4 << 20, 'i'), {"a"}}});
    const auto file = makeFile("/nowhere/x.mdb", std::move(table));
    ASSERT_EQ(::mkfifo(m_options.path.c_str(), 0600), 0);
    m_options.sqlDialect = SQLDialect::SQLite;
    std::thread reader(setWhenRead, m_options.path, "CREATE INDEX", std::ref(m_terminate));
    const auto report = runExport(exportSQLThread, *file);
    reader.join();
    EXPECT_THAT(report.log, ElementsAre("Failed: Terminated."));
    EXPECT_EQ(report.successTableCount, 0);
}

TEST_F(SQLScriptFaults, StopBeforeTheFirstTable)
{
    const auto shop = makeShop();
    m_terminate = true;
    m_options.includeForeignKeys = false;
    auto report = runExport(exportSQLThread, *shop);
    EXPECT_THAT(report.log, IsEmpty());
    EXPECT_EQ(report.successTableCount, 0);
    EXPECT_THAT(report.progress, IsEmpty());
    EXPECT_THAT(runPerTable(*shop).log, IsEmpty());
    EXPECT_THAT(filesInFolder(), IsEmpty());
}

TEST_F(SQLScriptFaults, StopInScriptsPerTableKeepsThoseThatAreDone)
{
    const auto shop = makeShop();
    m_stopAt = 2; // the start of the second table
    const auto report = runPerTable(*shop);
    EXPECT_THAT(report.log, ElementsAre("<Orders> Failed: Terminated."));
    EXPECT_EQ(report.successTableCount, 1);
    EXPECT_THAT(filesInFolder(), ElementsAre("Customers.sql"));
}

} // namespace
} // namespace vellumo::test
