// SPDX-License-Identifier: MIT
#include "Program.h"
#include "samples/Damage.h"
#include "samples/DatabaseWriter.h"
#include "support/NewerFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vellumo {
namespace {

using samples::ColumnType;
using test::Program;
using test::TempFolder;
using ::testing::HasSubstr;

TEST_F(Program, ErrorsAreOneLineAndTellBetweenUsageAndFailure)
{
    const struct {
        const char* name;
        std::vector<std::string> arguments;
        int status;
        const char* error;
    } cases[] = {
        {"nothing", {}, 2, "A subcommand is required"},
        {"unknown option", {"info", "FILE", "--jsn"}, 2, "--jsn"},
        {"no file named", {"info"}, 2, "FILE is required"},
        {"missing file", {"info", "/nowhere/a.mdb"}, 1, "File (/nowhere/a.mdb) cannot be opened"},
        {"line break in a name", {"info", "a\nb"}, 1, "File (a b) cannot be opened"},
        {"a folder", {"info", "/"}, 1, "File (/) cannot be opened"},
        {"not a database", {"info", s_folder->path("broken.mdb")}, 1,
            "cannot be opened: it is no Access database, or its first page is damaged"},
        {"escape in a name", {"check", "a\033b"}, 1, "File (a\\u{1B}b) cannot be opened"},
        {"missing table", {"info", "FILE", "items"}, 1, "There is no table \"items\"."},
        {"unknown sort column", {"rows", "FILE", "Items", "--sort", "id:desc"}, 1, "There is no column \"id:desc\"."},
        {"unknown column", {"rows", "FILE", "Items", "--columns", "ID,Nam"}, 1, "There is no column \"Nam\"."},
        {"unknown column to export",
            {"export", "FILE", "--format", "csv", "--to", "x", "--table", "Items", "--columns", "id"}, 1,
            "There is no column \"id\"."},
        {"nothing to find", {"find", "FILE", ""}, 2, "The text to find must not be empty."},
        {"unknown match", {"rows", "FILE", "Items", "--match", "like"}, 2, "--match"},
        {"negative limit", {"rows", "FILE", "Items", "--limit", "-1"}, 2, "-1 is not a whole number"},
        {"row 0", {"blob", "FILE", "Items", "Picture", "0", "--to", "x"}, 2, "0 is not a whole number from 1 on"},
        {"no such row", {"blob", "FILE", "Items", "Picture", "3", "--to", "x"}, 1, "There is no row 3."},
        {"empty cell", {"blob", "FILE", "Items", "Picture", "2", "--to", "x"}, 1, "The cell is empty."},
        {"no such column", {"blob", "FILE", "Items", "Photo", "1", "--to", "x"}, 1, "no column \"Photo\""},
        {"no objects", {"blob", "FILE", "Items", "Name", "1", "--to", "x"}, 1, "does not hold objects"},
        {"blob over the database", {"blob", "FILE", "Items", "Picture", "1", "--to", "FILE"}, 1, "cannot be written"},
        {"format missing", {"export", "FILE", "--to", "x"}, 2, "--format is required"},
        {"unknown format", {"export", "FILE", "--format", "pdf", "--to", "x"}, 2, "pdf"},
        {"unknown salvage", {"rows", "FILE", "Items", "--salvage=all"}, 2, "all is not \"deleted\""},
        {"objects nowhere", {"objects", "FILE", "--to="}, 2, "--to must not be empty."},
        {"objects of a missing table", {"objects", "FILE", "--to", "x", "--table", "items"}, 1, "no table \"items\""},
        {"usage comes before the file", {"export", "/no", "--format", "csv", "--to", "x", "--schema", "s"}, 2,
            "--schema does not apply to csv."},
        {"one value a --table", {"export", "FILE", "--format", "csv", "--to", "x", "--table", "a", "b"}, 2, "b"},
        {"missing table to export", {"export", "FILE", "--format", "csv", "--to", "x", "--table", "[a]"}, 1,
            "There is no table \"[a]\"."},
    };
    for (const auto& c : cases) {
        const auto result = run(c.arguments);
        EXPECT_EQ(result.status, c.status) << c.name;
        EXPECT_THAT(result.err, HasSubstr(c.error)) << c.name;
        EXPECT_EQ(std::ranges::count(result.err, '\n'), 1) << c.name;
        EXPECT_EQ(result.out, "") << c.name;
    }
}

TEST_F(Program, PrintsRows)
{
    const struct {
        const char* name;
        std::vector<std::string> arguments;
        const char* output;
    } cases[] = {
        {"all", {"rows", "FILE", "Items"}, "1\tTea and milk\t2.5\t\n2\tK\u00E4se\t\t\n"},
        {"one", {"rows", "FILE", "Items", "--limit", "1"}, "1\tTea and milk\t2.5\t\n"},
        {"none", {"rows", "FILE", "Items", "--limit=0"}, ""},
        {"found", {"rows", "FILE", "Items", "--search", "k\u00C4SE"}, "2\tK\u00E4se\t\t\n"},
        {"not found in this case", {"rows", "FILE", "Items", "--search", "k\u00C4SE", "--case-sensitive"}, ""},
        {"not at the end", {"rows", "FILE", "Items", "--search", "k\u00E4s", "--match", "ends"}, ""},
        {"equal", {"rows", "FILE", "Items", "--search", "2", "--match", "equals"}, "2\tK\u00E4se\t\t\n"},
        {"sorted", {"rows", "FILE", "Items", "--sort", "Price", "--limit", "1"}, "2\tK\u00E4se\t\t\n"},
        {"some columns", {"rows", "FILE", "Items", "--columns", "Name,ID", "--header", "--limit", "1"},
            "Name\tID\nTea and milk\t1\n"},
        {"the same one after the other", {"rows", "FILE", "Items", "--columns=Price", "--columns=ID", "--sort=ID:desc"},
            "\t2\n2.5\t1\n"},
        {"cells of all tables", {"find", "FILE", "ea"}, "Items\tName\t1\tTea and milk\n"},
        {"cells that begin so", {"find", "FILE", "EA", "--match", "begins"}, ""},
        {"as a CSV file", {"rows", "FILE", "Items", "--format", "csv", "--columns", "ID,Name", "--header", "--limit=1"},
            "ID,Name\r\n1,\"Tea\tand\nmilk\"\r\n"},
        {"as lines of JSON",
            {"rows", "FILE", "Items", "--format", "jsonl", "--columns", "Price,ID", "--sort", "ID:desc"},
            "{\"Price\":null,\"ID\":2}\n{\"Price\":2.5,\"ID\":1}\n"},
        {"as JSON", {"rows", "FILE", "Items", "--format", "json", "--columns", "ID"},
            "[\n{\"ID\":1},\n{\"ID\":2}\n]\n"},
        {"as JSON, none", {"rows", "FILE", "Items", "--format", "json", "--search", "nowhere"}, "[]\n"},
        {"sorted the other way round", {"rows", "FILE", "Items", "--sort", "ID:desc", "--limit", "1"},
            "2\tK\u00E4se\t\t\n"},
    };
    for (const auto& c : cases) {
        const auto result = run(c.arguments);
        EXPECT_EQ(result.out, c.output) << c.name;
        EXPECT_EQ(result.err, "") << c.name;
        EXPECT_EQ(result.status, 0) << c.name;
    }
}

TEST_F(Program, ShowsInformation)
{
    auto result = run({"info", "FILE"});
    EXPECT_THAT(result.out, HasSubstr("Name: Shop.mdb\nWhere: " + s_folder->path() + "\nSize: "));
    EXPECT_THAT(result.out, HasSubstr("\nTables:\n    Items (2 rows)\n    Large (20000 rows)\n"));
    result = run({"info", "FILE", "Items"});
    EXPECT_THAT(
        result.out, HasSubstr("Name: Items\nNumber of rows: 2\nNumber of columns: 4\n\nColumns:\n    Name: ID\n"));
    EXPECT_THAT(result.out, HasSubstr("\n\nIndexes:\n    Name: Key\n"));
    result = run({"info", "FILE", "Large", "--json"});
    EXPECT_EQ(result.out, R"({
  "table": {
    "name": "Large",
    "rows": 20000,
    "description": "Much",
    "properties": {
      "Description": "Much"
    }
  },
  "columns": [
    {
      "name": "T",
      "type": "Text",
      "size": 255,
      "primaryKey": false,
      "required": true,
      "allowZeroLength": null,
      "autoNumber": false,
      "hyperlink": false,
      "calculated": false,
      "precision": null,
      "scale": null,
      "properties": {
        "Required": true,
        "TextAlign": 3
      }
    }
  ],
  "indexes": [],
  "relations": [
    {
      "name": "R",
      "table": "Large",
      "columns": [
        "T"
      ],
      "referencedTable": "Items",
      "referencedColumns": [
        "Name"
      ],
      "enforced": false,
      "cascadeUpdate": false,
      "cascadeDelete": true
    }
  ],
  "damage": []
}
)");
    result = run({"info", "FILE", "Items", "--json"});
    EXPECT_THAT(result.out, HasSubstr(R"(
      "name": "Key",
      "primary": true,
      "unique": true,
      "columns": [
        {
          "name": "ID",
          "ascending": true
        }
      ])"));
    result = run({"info", "FILE", "--json"});
    EXPECT_THAT(result.out, ::testing::ContainsRegex("\"modified\": \"20..-..-..T..:..:..Z\","));
    EXPECT_THAT(result.out, HasSubstr(R"(
    "format": "Jet 4",
    "formatVersion": 1,
    "codePage": 1252,
    "encrypted": false
  },
  "tables": [
    {
      "name": "Items",
      "rows": 2,
      "columns": 4
    },)"));
}

TEST_F(Program, OpensNewerAndEncryptedFilesOnDemand)
{
    const auto newer = s_folder->path("Newer.accdb");
    const auto locked = s_folder->path("Locked.accdb");
    const auto unknown = s_folder->path("Unknown.accdb");
    auto bytes = s_folder->read("Newer.accdb").value();
    bytes[0x14] = 7;
    s_folder->write("Unknown.accdb", bytes);
    s_folder->write("right", "Sesam\r\nnot this");
    s_folder->write("empty", "\nSesam");
    s_folder->write("not a text", "\xFF\xFE");
    s_folder->write("long", std::string(5000, 'x'));
    const auto passwordIn = [](const char* name) { return "--password-file=" + s_folder->path(name); };
    const struct {
        const char* name;
        std::vector<std::string> arguments;
        const char* inEnvironment;
        int status;
        const char* error;
    } cases[] = {
        {"newer", {newer}, nullptr, 1, "Access 2007 or newer. Give --newer-formats to open it all the same."},
        {"newer, asked for", {newer, "--newer-formats"}, nullptr, 0, ""},
        {"newer than known", {unknown, "--newer-formats"}, nullptr, 1, "it is of an unknown newer version. Access can"},
        {"encrypted", {locked, "--newer-formats"}, nullptr, 1, "needs a password. Give it with --password-file, or"},
        {"encrypted, not asked for", {locked, passwordIn("right")}, nullptr, 1, "Access 2007 or newer."},
        {"password in a file", {locked, "--newer-formats", passwordIn("right")}, "wrong", 0, ""},
        {"password in the environment", {locked, "--newer-formats"}, "Sesam", 0, ""},
        {"empty in the environment", {locked, "--newer-formats"}, "", 1, "needs a password"},
        {"wrong password", {locked, "--newer-formats"}, "sesam", 1, "the password is wrong. Capital"},
        {"not UTF-8", {locked, "--newer-formats"}, "\xFF", 1, "The password is not valid UTF-8."},
        {"no password in the file", {locked, "--newer-formats", passwordIn("empty")}, nullptr, 1, "is empty."},
        {"another file", {locked, "--newer-formats", passwordIn("long")}, nullptr, 1, "too long a line"},
        {"no text", {locked, "--newer-formats", passwordIn("not a text")}, nullptr, 1, "not valid UTF-8"},
        {"no such file", {locked, "--newer-formats", passwordIn("none")}, nullptr, 1, "cannot be read: No such file"},
        {"a folder", {locked, "--newer-formats", "--password-file=/"}, nullptr, 1, "cannot be read: Is a directory"},
        {"nothing on standard input", {locked, "--newer-formats", "--password-file=-"}, nullptr, 1, "is empty."},
    };
    for (const auto& c : cases) {
        auto arguments = c.arguments;
        arguments.insert(arguments.begin(), "check");
        const auto result = run(arguments, "", [&] {
            if (c.inEnvironment != nullptr) ::setenv("VELLUMO_PASSWORD", c.inEnvironment, 1);
        });
        EXPECT_EQ(result.status, c.status) << c.name << result.err;
        EXPECT_THAT(result.err, HasSubstr(c.error)) << c.name;
        EXPECT_EQ(result.err.empty(), c.status == 0) << c.name;
        EXPECT_EQ(result.out, c.status == 0 ? "No damage found.\n" : "") << c.name;
    }
}

TEST_F(Program, ShowsEverythingElseInAFile)
{
    auto result = run({"info", s_folder->path("More.mdb")});
    EXPECT_THAT(result.out, HasSubstr("Database password: Set; it protects nothing\n"));
    EXPECT_THAT(result.out, HasSubstr("\nQueries:\n    Q (Select Query)\n        SELECT Who\n        FROM T;\n"));
    EXPECT_THAT(result.out, HasSubstr("\nLinked Tables:\n    L (Text): x.txt, Text;PWD=***\n"));
    EXPECT_THAT(result.out, HasSubstr("\nOther Objects:\n    F (Form) 2023-03-15T12:00:00\n"));
    result = run({"info", s_folder->path("Newer.accdb"), "--newer-formats", "--json"});
    EXPECT_THAT(result.out, HasSubstr("\"format\": \"ACE 12\",\n    \"formatVersion\": 2,"));
    EXPECT_THAT(result.out, HasSubstr(R"(
  "relations": [],
  "queries": [
    {
      "name": "Q",
      "type": "select",
      "sql": "SELECT Who\nFROM T;"
    }
  ],
  "links": [
    {
      "name": "L",
      "kind": "Text",
      "source": "x.txt",
      "connect": "Text;PWD=***",
      "columns": []
    }
  ],
  "objects": [
    {
      "kind": "form",
      "name": "F",
      "created": "2023-03-15T12:00:00",
      "modified": "2023-03-15T12:00:00"
    }
  ],
  "damage": [])"));
    result = run({"info", s_folder->path("More.mdb"), "T"});
    EXPECT_THAT(result.out, HasSubstr("columns: 1\nDescription: People\nValidation rule: >0\n"));
    EXPECT_THAT(result.out, HasSubstr("    Type: Long Integer\n    Caption: Person\n    Row source: 1;Zoe;2;Ann\n"));
}

TEST_F(Program, LookupTextsTakeTheirValuesPlace)
{
    const auto file = s_folder->path("More.mdb");
    EXPECT_EQ(run({"rows", file, "T", "--sort", "Who"}).out, "1\n2\n");
    EXPECT_EQ(run({"rows", file, "T", "--lookup-texts", "--sort", "Who"}).out, "Ann\nZoe\n");
    EXPECT_EQ(run({"rows", file, "T", "--lookup-texts", "--search", "zo"}).out, "Zoe\n");
    const auto exported = run({"export", file, "--format", "csv", "--to", m_out.path(), "--lookup-texts"});
    EXPECT_EQ(exported.status, 0) << exported.err;
    EXPECT_EQ(m_out.read("T.csv"), "\"Who\"\n\"Zoe\"\n\"Ann\"\n");
}

TEST_F(Program, FollowsSymbolicLinksBeforeDots)
{
    std::filesystem::create_directories(m_out.path("real/inner"));
    std::filesystem::create_directory(m_out.path("sub"));
    std::filesystem::create_directory_symlink(m_out.path("real/inner"), m_out.path("sub/link"));
    std::filesystem::copy_file(database(), m_out.path("real/x.mdb"));
    m_out.write("sub/x.mdb", "another file, and no database");
    const auto info = run({"info", m_out.path("sub/link/../x.mdb")});
    EXPECT_THAT(info.out, HasSubstr("Name: x.mdb\nWhere: " + m_out.path("real") + "\nSize: "));
    EXPECT_THAT(info.out, HasSubstr("\n    Items (2 rows)\n"));
}

// Other readers of these files take settings from such variables.
TEST_F(Program, ValuesDoNotDependOnTheEnvironment)
{
    samples::DatabaseDescription description;
    description.version = samples::JetVersion::Jet3;
    auto& table = description.tables.emplace_back();
    table.name = "T";
    table.columns = {{.name = "Gr\u00F6\u00DFe", .properties = {samples::booleanProperty("Required", true)}},
        {.name = "Memo", .type = ColumnType::Memo}, {.name = "Number", .type = ColumnType::Double},
        {.name = "When", .type = ColumnType::DateTime}};
    table.rows = samples::rowsOf(
        {{std::string("K\u00E4se"), std::string("caf\u00E9 ") + std::string(3000, 'm'), 2.5, samples::Date{45000.5}}});
    ASSERT_TRUE(samples::writeDatabase(description, m_out.path("jet3.mdb")).ok());
    const auto setVariables = [] {
        for (const auto& [name, value] : {std::pair{"MDBPATH", "/nowhere"}, {"MDBICONV", "ISO-8859-1"},
                 {"MDB_JET3_CHARSET", "CP1251"}, {"MDBOPTS", "no_memo,debug_row"}, {"LC_ALL", "de_DE.UTF-8"},
                 {"LC_NUMERIC", "de_DE.UTF-8"}, {"LANG", "de_DE.UTF-8"}})
            ::setenv(name, value, 1);
    };
    const auto row = "K\u00E4se\tcaf\u00E9 " + std::string(3000, 'm') + "\t2.5\t";
    const std::vector<std::string> rows = {"rows", m_out.path("jet3.mdb"), "T"};
    const auto without = run(rows);
    EXPECT_TRUE(without.out.starts_with(row)) << without.out;
    const auto with = run(rows, "", setVariables);
    EXPECT_EQ(with.out, without.out);
    EXPECT_EQ(with.err, "");
    const std::vector<std::string> exporting = {
        "export", m_out.path("jet3.mdb"), "--format", "csv", "--to", m_out.path()};
    EXPECT_EQ(run(exporting).status, 0);
    const auto exported = m_out.read("T.csv");
    EXPECT_THAT(exported.value_or(""), HasSubstr("\"K\u00E4se\",\"caf\u00E9 mmm"));
    EXPECT_EQ(run(exporting, "", setVariables).status, 0);
    EXPECT_EQ(m_out.read("T.csv"), exported);

    const auto speakGerman = [] {
        ::setenv("LC_ALL", "C.UTF-8", 1);
        ::setenv("LANGUAGE", "de", 1);
    };
    const std::vector<std::string> info = {"info", m_out.path("jet3.mdb"), "T"};
    EXPECT_THAT(run(info, "", speakGerman).out, HasSubstr("Anzahl der Spalten: 4"));
    const std::vector<std::string> json = {"info", m_out.path("jet3.mdb"), "T", "--json"};
    EXPECT_EQ(run(json, "", speakGerman).out, run(json).out);
    ASSERT_TRUE(samples::cutFile(m_out.path("jet3.mdb"), std::filesystem::file_size(m_out.path("jet3.mdb")) - 100));
    EXPECT_EQ(run(json, "", speakGerman).out, run(json).out);
    EXPECT_THAT(run(json).out, HasSubstr("\"text\": \"The file ends early"));
    std::filesystem::resize_file(m_out.path("jet3.mdb"), 3 << 19);
    EXPECT_THAT(run({info[0], info[1]}, "", speakGerman).out, HasSubstr("1,5 MB"));
    const std::vector<std::string> fileJson = {"info", m_out.path("jet3.mdb"), "--json"};
    EXPECT_EQ(run(fileJson, "", speakGerman).out, run(fileJson).out);
}

TEST_F(Program, ChecksAFile)
{
    auto result = run({"check", "FILE"});
    EXPECT_EQ(result.out, "No damage found.\n");
    EXPECT_EQ(result.status, 0);
    result = run({"check", "FILE", "--json", "--salvage=deleted"});
    EXPECT_THAT(result.out, HasSubstr("\"path\": \"" + database() + '"'));
    EXPECT_THAT(result.out, HasSubstr("\n  \"damage\": []\n}\n"));
    EXPECT_EQ(result.status, 0);
}

TEST_F(Program, LooksForDeletedRowsOnlyWhenAsked)
{
    const auto path = m_out.path("x.mdb");
    const samples::TableDescription table{.name = "T",
        .columns = {{.name = "N", .type = samples::ColumnType::Long}},
        .rows = samples::rowsOf({{.values = {1}}, {.values = {2}, .state = samples::RowState::Deleted}})};
    ASSERT_TRUE(samples::writeDatabase({.tables = {table}}, path).ok());
    EXPECT_EQ(run({"rows", path, "T (deleted)", "--salvage=deleted"}).out, "2\n");
    EXPECT_EQ(run({"rows", path, "T (deleted)", "--salvage"}).status, 1);
}

// What a program leaves of a reader that goes away before it has written anything.
TEST_F(Program, EndsQuietlyWithoutAReader)
{
    const std::vector<std::vector<std::string>> commands = {{"--help"}, {"info", "FILE"}, {"rows", "FILE", "Large"},
        {"blob", "FILE", "Items", "Picture", "1", "--to", "-"}, {"find", "FILE", "x"},
        {"export", "FILE", "--format", "csv", "--table", "Large", "--to", "-"},
        {"export", "FILE", "--format", "xls", "--to", "-"}};
    for (const auto& command : commands) {
        const auto result = run(command, "", [] {
            int ends[2];
            if (::pipe(ends) != 0) ::_exit(126);
            ::close(ends[0]);
            ::dup2(ends[1], STDOUT_FILENO);
        });
        EXPECT_EQ(result.status, 0) << command[0];
        EXPECT_EQ(result.err, "") << command[0];
    }
}

TEST_F(Program, ATerminalGetsNothingToObey)
{
    samples::DatabaseDescription description;
    auto& table = description.tables.emplace_back();
    table.name = "T";
    table.columns = {{.name = "A"}, {.name = "B"}};
    table.rows = samples::rowsOf({{std::string("\033[2J\u202Ecba"), std::string("b")}});
    ASSERT_TRUE(samples::writeDatabase(description, m_out.path("x.mdb")).ok());
    const int window = ::posix_openpt(O_RDWR | O_NOCTTY);
    if (window < 0 || ::grantpt(window) != 0 || ::unlockpt(window) != 0) GTEST_SKIP() << "no terminals here";
    const std::string terminal = ::ptsname(window);
    const std::vector<std::string> rows = {"rows", m_out.path("x.mdb"), "T"};
    EXPECT_EQ(run(rows).out, "\033[2J\u202Ecba\tb\n");
    EXPECT_EQ(run(rows, terminal).status, 0);
    char shown[100];
    const auto count = ::read(window, shown, sizeof shown);
    ::close(window);
    ASSERT_GT(count, 0);
    EXPECT_THAT(std::string(shown, static_cast<std::size_t>(count)), ::testing::StartsWith("\\u{1B}[2J\\u{202E}cba"));
}

} // namespace
} // namespace vellumo
