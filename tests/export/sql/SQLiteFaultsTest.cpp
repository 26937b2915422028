// SPDX-License-Identifier: MIT
#include "export/sql/SQLExportFixture.h"
#include "export/sql/SQLiteReader.h"

#include <dlfcn.h>

namespace vellumo::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// What the hook of the library does at the statement with number `at` of those that begin with `statement`: it sets
// the stop flag, calls the action, and refuses the statement.
struct Trap {
    std::string_view statement;
    int at = 0;
    bool isRefused = false;
    std::atomic<bool>* stop = nullptr;
    void (*action)() = nullptr;
    bool isForAll = false; // at those that follow as well
};
Trap theTrap;

int trapStatement(const char* statement)
{
    if (!std::string_view(statement).starts_with(theTrap.statement)) return 0;
    const int number = theTrap.at--;
    if (number != 0 && !(theTrap.isForAll && number < 0)) return 0;
    if (theTrap.stop != nullptr) *theTrap.stop = true;
    if (theTrap.action != nullptr) theTrap.action();
    return theTrap.isRefused ? 1 : 0;
}

void replaceByFolder()
{
    const auto file = fs::directory_iterator(".")->path();
    fs::remove(file);
    fs::create_directory(file);
}

class SQLiteFaults : public SQLExportFixture {
public:
    ~SQLiteFaults() override { unsetenv("VELLUMO_SQLITE_LIBRARY"); }

protected:
    SQLiteFaults() { m_options.path = m_folder / "out.sqlite"; }

    ExportOutcome runWith(const Trap& trap)
    {
        theTrap = trap;
        setenv("VELLUMO_SQLITE_LIBRARY", HOOKED_LIBRARY, 1);
        m_hooked = dlopen(HOOKED_LIBRARY, RTLD_NOW);
        reinterpret_cast<void (*)(int (*)(const char*))>(dlsym(m_hooked, "setStatementHook"))(trapStatement);
        auto report = runExport(exportSQLiteThread, *m_shop);
        dlclose(m_hooked);
        return report;
    }

    void* m_hooked = nullptr;
    std::unique_ptr<TAdmMDBFile> m_shop = makeShop();
};

constexpr bool refused = true;

TEST_F(SQLiteFaults, FailuresBeforeTheFirstTableLeaveNoFile)
{
    const struct {
        const char* name;
        Trap trap;
        const char* log;
    } cases[] = {
        {"cannot be written", {"VACUUM", 0, refused}, "Unable to create file for export. "},
        {"cannot be opened again", {"VACUUM", 0, false, nullptr, replaceByFolder},
            "Unable to establish SQLite connection unable to open database file"},
        {"cannot be configured", {"PRAGMA foreign_keys = false;", 0, refused},
            "Have error when executing query: PRAGMA foreign_keys = false; near \"REFUSED\": syntax error"},
    };
    fs::current_path(m_folder);
    for (const auto& test : cases) {
        const auto report = runWith(test.trap);
        EXPECT_THAT(report.log, ElementsAre(testing::StartsWith(test.log))) << test.name;
        EXPECT_EQ(report.successTableCount, 0) << test.name;
        EXPECT_FALSE(fs::exists(m_options.path)) << test.name;
        for (const auto& left : filesInFolder())
            fs::remove(left);
    }
    fs::current_path("/");
}

// What a program that was killed left beside the older database would be played back into the new one.
TEST_F(SQLiteFaults, TakesAwayTheLogsOfTheOlderDatabase)
{
    for (const auto* suffix : {"", "-journal", "-wal", "-shm"})
        m_tempFolder.write("out.sqlite" + std::string(suffix), "of the older one");
    EXPECT_THAT(runExport(exportSQLiteThread, *m_shop).log, IsEmpty());
    EXPECT_THAT(filesInFolder(), ElementsAre("out.sqlite"));
    EXPECT_THAT(SQLiteReader(m_options.path).rows("PRAGMA integrity_check"), ElementsAre("ok"));
}

// It has no column metadata and cannot even read rows, which no export does.
TEST_F(SQLiteFaults, SmallBuildOfTheLibraryIsEnough)
{
    setenv("VELLUMO_SQLITE_LIBRARY", SMALL_LIBRARY, 1);
    const auto report = runExport(exportSQLiteThread, *m_shop);
    EXPECT_THAT(report.log, IsEmpty());
    EXPECT_EQ(report.successTableCount, 2);
    EXPECT_THAT(SQLiteReader(m_options.path).rows("SELECT name FROM sqlite_master WHERE sql IS NOT NULL ORDER BY name"),
        ElementsAre("Customers", "Name", "Name_1", "Orders", "orders_1"));
}

TEST_F(SQLiteFaults, StatementsThatFailCostTheirTableOrIndex)
{
    const std::string why = " near \"REFUSED\": syntax error";
    const struct {
        const char* name;
        Trap trap;
        std::vector<std::string> log;
        int successes;
        std::vector<std::string> objects;
    } cases[] = {
        {"create", {"CREATE TABLE", 0, refused},
            {"<Customers> Failed: Create table failed." + why,
                "Failed: Create index Name for table Customers failed. no such table: main.Customers",
                "Failed: Create index orders for table Customers failed. no such table: main.Customers"},
            1, {"Name_1", "Orders"}},
        {"commit", {"COMMIT", 1, refused},
            {"<Orders> Failed: Insert record failed." + why,
                "Failed: Create index Name for table Orders failed. no such table: main.Orders"},
            1, {"Customers", "Name", "orders_1"}},
        {"index", {"CREATE UNIQUE INDEX", 0, refused}, {"Failed: Create index Name for table Customers failed." + why},
            2, {"Customers", "Name_1", "Orders", "orders_1"}},
        {"last pragma", {"PRAGMA foreign_keys = false;", 1, refused},
            {"Have error when executing query: PRAGMA foreign_keys = false;" + why}, 2,
            {"Customers", "Name", "Name_1", "Orders", "orders_1"}},
    };
    for (const auto& test : cases) {
        const auto report = runWith(test.trap);
        EXPECT_EQ(report.log, test.log) << test.name;
        EXPECT_EQ(report.successTableCount, test.successes) << test.name;
        const SQLiteReader reader(m_options.path);
        EXPECT_EQ(reader.rows("SELECT name FROM sqlite_master WHERE sql IS NOT NULL ORDER BY name"), test.objects)
            << test.name;
        EXPECT_THAT(reader.rows("PRAGMA integrity_check"), ElementsAre("ok")) << test.name;
    }
}

TEST_F(SQLiteFaults, TableThatCannotBeTakenBackTakesTheFileWithIt)
{
    m_shop = makeFile("/nowhere/twice.mdb", makeTable("t", {{"ID", "Long Integer", true}}, {{"1"}, {"2"}, {"1"}}));
    EXPECT_THAT(runWith({"ROLLBACK", 0, refused}).log,
        ElementsAre("<t> Failed: Insert record failed. Row 3: UNIQUE constraint failed: t.ID",
            "Unable to write file. %: near \"REFUSED\": syntax error"));
    EXPECT_THAT(filesInFolder(), IsEmpty());
}

// Rows are bound to a prepared statement, and mean what they would mean as literals: these are SQLite's rules for them.
TEST_F(SQLiteFaults, RowsMeanWhatTheirLiteralsMean)
{
    const auto number = [](std::string_view name) { return "no such column: " + std::string(name); };
    const struct {
        const char* type;
        std::string cell;
        std::string stored; // its type and literal
        std::string refusal = {};
    } cases[] = {
        {"Long Integer", "-0", "integer 0"},
        {"Long Integer", "9223372036854775808", "real 9.22337203685478e+18"},
        {"Integer", "\xEF\xBF\xBD", "", number("\xEF\xBF\xBD")}, // what a damaged value is shown as
        {"Numeric", "12.00", "integer 12"},
        {"Numeric", "12.50", "real 12.5"},
        {"Numeric", "79228162514264337593543950335", "real 7.92281625142643e+28"},
        {"Currency", "2.0000", "real 2.0"},
        {"Double", "1e-05", "real 1.0e-05"},
        {"Double", "nan", "", number("nan")},
        {"Double", "-inf", "", number("inf")},
        {"", "0a1b", "", "unrecognized token: \"0a1b\""}, // of a type that nobody knows
        {"", "12", "integer 12"},
        {"Binary", "3132", "text 3132"},
        {"Text", "00501\\", "text 00501\\\\"},
        {"Text", std::string("a\0b", 3), "", "unrecognized token: \"'a\""},
        {"Memo/Hyperlink", "it's", "text it's"},
        {"DateTime", "05/03/2014 21:07:00", "text 05/03/2014 21:07:00"},
    };
    for (const auto& test : cases) {
        const auto file = makeFile("/nowhere/one.mdb", makeTable("t", {{"x", test.type}}, {{null}, {test.cell}}),
            makeTable("u", {{"y", "Text"}}, {}));
        const auto name = std::string(test.type) + ' ' + test.cell;
        const auto log = runExport(exportSQLiteThread, *file).log;
        const SQLiteReader reader(m_options.path);
        if (test.refusal.empty()) {
            EXPECT_THAT(log, IsEmpty()) << name;
            EXPECT_THAT(reader.rows("SELECT typeof(x) || ' ' || x FROM t WHERE rowid = 2"), ElementsAre(test.stored))
                << name;
        } else {
            EXPECT_THAT(log, ElementsAre("<t> Failed: Insert record failed. Row 2: " + test.refusal)) << name;
            EXPECT_THAT(reader.rows("SELECT name FROM sqlite_master"), ElementsAre("u")) << name;
        }
    }
}

TEST_F(SQLiteFaults, FullDiskLeavesTheOlderFile)
{
    std::vector<Row> rows(2000, Row{std::string(100, 'x')});
    const auto file = makeFile("/nowhere/big.mdb", makeTable("a", {{"t", "Text"}}, {{"x"}}),
        makeTable("b", {{"t", "Text"}}, rows), makeTable("c", {{"t", "Text"}}, {{"x"}}));
    std::ofstream(m_options.path) << "an older export";
    const FileSizeLimit full(64 << 10);
    const auto report = runExport(exportSQLiteThread, *file);
    EXPECT_THAT(report.log,
        ElementsAre(testing::StartsWith("<b> Failed: Insert record failed. "),
            testing::StartsWith("Unable to write file. %: ")));
    EXPECT_EQ(report.successTableCount, 0);
    EXPECT_THAT(filesInFolder(), ElementsAre("out.sqlite"));
    EXPECT_EQ(contentOf(m_options.path), "an older export");
}

TEST_F(SQLiteFaults, FileWithoutATableIsNoExport)
{
    std::ofstream(m_options.path) << "an older export";
    EXPECT_THAT(
        runExport(exportSQLiteThread, *makeFile("/nowhere/empty.mdb")).log, ElementsAre("No table was exported."));
    const auto file = makeFile("/nowhere/one.mdb", makeTable("t", {{"x", "Double"}}, {{"nan"}}));
    EXPECT_THAT(runExport(exportSQLiteThread, *file).log,
        ElementsAre("<t> Failed: Insert record failed. Row 1: no such column: nan"));
    EXPECT_EQ(contentOf(m_options.path), "an older export");
}

TEST_F(SQLiteFaults, StopDeletesTheDatabase)
{
    const struct {
        const char* name;
        Trap trap;
        std::vector<std::string> log;
    } cases[] = {
        {"inside the first table", {"INSERT", 0}, {"<Customers> Failed: Terminated."}},
        {"at the last row", {"INSERT", 3}, {"<Orders> Failed: Terminated."}},
        {"while a table is made", {"CREATE TABLE", 1}, {"<Orders> Failed: Terminated."}},
        {"in the first index", {"CREATE UNIQUE INDEX", 0}, {"<Customers> Failed: Terminated."}},
        {"in the last index", {"CREATE INDEX", 1}, {"<Orders> Failed: Terminated."}},
        {"behind all", {"PRAGMA foreign_keys = false;", 1}, {}},
    };
    for (const auto& test : cases) {
        auto trap = test.trap;
        trap.stop = &m_terminate;
        m_terminate = false;
        const auto report = runWith(trap);
        EXPECT_EQ(report.log, test.log) << test.name;
        EXPECT_EQ(report.successTableCount, 0) << test.name << ": none is on the disk";
        EXPECT_THAT(filesInFolder(), IsEmpty()) << test.name;
    }
    std::ofstream(m_options.path) << "an older export";
    m_terminate = true;
    const auto report = runWith({"nothing"});
    EXPECT_THAT(report.log, IsEmpty());
    EXPECT_THAT(filesInFolder(), ElementsAre("out.sqlite")) << "stopped before the first table";
    EXPECT_EQ(contentOf(m_options.path), "an older export");
}

} // namespace
} // namespace vellumo::test
