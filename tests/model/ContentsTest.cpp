// SPDX-License-Identifier: MIT
#include "model/Contents.h"

#include "model/ConnectionText.h"
#include "model/QueryText.h"
#include "model/TAdmMDBFile.h"
#include "samples/DatabaseWriter.h"
#include "support/TempFolder.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace vellumo {
namespace {

using namespace std::string_literals;

// Parts that stand in order.
std::vector<QueryPart> inOrder(std::vector<QueryPart> parts)
{
    char order = 'a';
    for (auto& part : parts)
        part.order = order++;
    return parts;
}

QueryPart table(std::string name, std::string alias = "") { return {5, "", std::move(name), std::move(alias)}; }
QueryPart column(std::string expression, std::string name1 = "", std::string name2 = "", std::optional<int> flag = {})
{
    return {6, "", std::move(name1), std::move(name2), std::move(expression), flag};
}
QueryPart join(std::string left, std::string right, std::string on, int flag)
{
    return {7, "", std::move(left), std::move(right), std::move(on), flag};
}

TEST(QueryText, IsPutTogetherOfItsParts)
{
    const struct {
        const char* name;
        std::vector<QueryPart> parts;
        std::uint32_t flags;
        QueryKind kind;
        std::string sql;
        bool isWhole = true;
    } cases[] = {
        {"select",
            {table("Order Details", "D"), column("D.ID"), column("[a]+1", "Sum of it"), {8, "", "", "", "D.ID>1"},
                {11, "", "D", "", "D.ID"}, {11, "", "", "", "b"}, {3, "", "10", "", "", 2 | 4 | 0x10 | 0x20}},
            0, QueryKind::Select,
            "SELECT DISTINCT TOP 10 PERCENT D.ID, [a]+1 AS [Sum of it]\nFROM [Order Details] AS D\nWHERE D.ID>1\n"
            "ORDER BY D.ID DESC, b\nWITH OWNERACCESS OPTION;"},
        {"all columns, and a table in another file",
            {table("T"), {3, "", "", "", "", 1}, {4, "", "c:\\x.mdb", "", ";PWD=secret"}}, 0, QueryKind::Select,
            "SELECT *\nFROM T\nIN 'c:\\x.mdb' [;PWD=***];"},
        {"joins: one inside another, one more condition, a table without a part, one that is not joined",
            {table("A"), table("B"), table("E"), column("A.x"), join("A", "B", "A.x = B.x", 1),
                join("b", "C d", "B.y = [C d].y", 2), join("a", "b", "A.z = B.z", 1)},
            0, QueryKind::Select,
            "SELECT A.x\nFROM E, (A INNER JOIN B ON (A.z = B.z) AND (A.x = B.x)) LEFT JOIN [C d] ON B.y = [C d].y;"},
        {"make table", {{1, "", "New one", "", "", 2}, table("T"), column("x")}, 0x50, QueryKind::MakeTable,
            "SELECT x\nINTO [New one]\nFROM T;"},
        {"append", {{1, "", "To", "", "", 3}, table("T"), column("x", "", "a b"), column("y", "", "c")}, 0x40,
            QueryKind::Append, "INSERT INTO To ( [a b], c )\nSELECT x, y\nFROM T;"},
        {"append values", {{1, "", "To", "", "", 3}, column("1", "", "a", 0x8000 - 0x10000)}, 0x40, QueryKind::Append,
            "INSERT INTO To ( a )\nVALUES (1);"},
        {"update with parameters",
            {{1, "", "", "", "", 4}, {2, "", "User Name", "", "", 10, 20}, {2, "", "Forms!A B!C", "", "", 8},
                table("Table1"), column("\"foo\"", "", "Table1.col 1"), {8, "", "", "", "a=[User Name]"}},
            0x30, QueryKind::Update,
            "PARAMETERS [User Name] Text ( 20 ), Forms![A B]!C DateTime;\nUPDATE Table1\nSET Table1.[col 1] = "
            "\"foo\"\nWHERE a=[User Name];"},
        {"delete", {{1, "", "", "", "", 5}, table("T"), column("T.*")}, 0x20, QueryKind::Delete, "DELETE T.*\nFROM T;"},
        {"crosstab",
            {{1, "", "", "", "", 6}, table("T"), column("Sum(x)", "S", "", 0), column("a", "", "", 2),
                column("b", "", "", 1), {9, "", "", "", "a", 2}, {9, "", "", "", "b", 1}},
            0x10, QueryKind::Crosstab, "TRANSFORM Sum(x) AS S\nSELECT a\nFROM T\nGROUP BY a\nPIVOT b;"},
        {"definition", {{1, "", "", "", "DROP TABLE a\0"s, 7}}, 0x60, QueryKind::DataDefinition, "DROP TABLE a"},
        {"pass-through", {{1, "", "ODBC;PWD=secret", "", "exec 'x'", 8}}, 0x70, QueryKind::PassThrough, "exec 'x'"},
        {"union",
            {{1, "", "", "", "", 9}, {3, "", "", "", "", 2}, {5, "", "", "X7YZ_____1", "SELECT a FROM b;"},
                {5, "", "", "X7YZ_____2", "SELECT c FROM d"}},
            0x80, QueryKind::Union, "SELECT a FROM b\nUNION\nSELECT c FROM d;"},
        {"union of everything", {{1, "", "", "", "", 9}, {5, "", "", "1", "SELECT 1"}, {5, "", "", "2", "SELECT 2"}},
            0x80, QueryKind::Union, "SELECT 1\nUNION ALL\nSELECT 2;"},
        {"union with an empty half", {{1, "", "", "", "", 9}, {5, "", "", "1", "SELECT 1"}, {5, "", "", "2", ";"}},
            0x80, QueryKind::Union, "SELECT 1\nUNION ALL\n;", false},
        {"derived table, and groups",
            {table("", "Q"), column("a"), {9, "", "", "", "a"}, {10, "", "", "", "Count(*)>1"}}, 0, QueryKind::Select,
            "SELECT a\nFROM  AS Q\nGROUP BY a\nHAVING Count(*)>1;", false},
        {"nothing", {}, 0, QueryKind::Select, "", false},
        {"the kind is lost", {table("T")}, 0x20, QueryKind::Delete, "DELETE\nFROM T;", false},
        {"a kind that there is not", {{1, "", "", "", "", 10}, table("T"), column("a")}, 0, QueryKind::Select,
            "SELECT a\nFROM T;", false},
        {"a join to nothing", {table("T"), column("a"), join("T", "", "x", 1), join("T", "T", "y", 1)}, 0,
            QueryKind::Select, "SELECT a\nFROM T;", false},
    };
    for (const auto& c : cases) {
        auto parts = inOrder(c.parts);
        std::ranges::reverse(parts);
        const auto text = queryText(std::move(parts), c.flags);
        EXPECT_EQ(text.kind, c.kind) << c.name;
        EXPECT_EQ(text.sql, c.sql) << c.name;
        EXPECT_EQ(text.isWhole, c.isWhole) << c.name;
    }
    std::vector<QueryPart> many{table("T0"), column("x")};
    for (int i = 1; i < 20'000; ++i)
        many.push_back(join("T0", "T" + std::to_string(i), "c", 1));
    EXPECT_FALSE(queryText(std::move(many), 0).isWhole);
}

TEST(ConnectionText, ShowsNoPassword)
{
    const struct {
        const char* text;
        const char* connection;
        const char* sql;
    } cases[] = {
        {"ODBC;DSN=a;UID=b;PWD=c;DATABASE=d", "ODBC;DSN=a;UID=b;PWD=***;DATABASE=d",
            "ODBC;DSN=a;UID=b;PWD=***;DATABASE=d"},
        {"pwd = x y ;a=b", "pwd =***;a=b", "pwd = x y ;a=b"},
        {";Password={a;b};c=d", ";Password=***;c=d", ";Password=***;c=d"},
        {"a;PWD=\"x;y\"", "a;PWD=***", "a;PWD=\"x;y\""},
        {"a;Jet OLEDB:Database Password=x", "a;Jet OLEDB:Database Password=***", "a;Jet OLEDB:Database Password=***"},
        {"a;PWD=;b=c;PWD", "a;PWD=;b=c;PWD", "a;PWD=;b=c;PWD"},
        {"a;PWD={open", "a;PWD=***", "a;PWD=***"},
        {"SELECT * FROM t IN '' [;PWD=x;DATABASE=y] WHERE PWD='z' AND [PWD]=\"q\"",
            "SELECT * FROM t IN '' [;PWD=***;DATABASE=y] WHERE PWD='z' AND [PWD]=\"q\"",
            "SELECT * FROM t IN '' [;PWD=***;DATABASE=y] WHERE PWD='z' AND [PWD]=\"q\""},
        {"a IN 'MS Access;PWD=x' b", "a IN 'MS Access;PWD=***", "a IN 'MS Access;PWD=***' b"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(maskedConnection(c.text), c.connection);
        EXPECT_EQ(withoutPasswords(c.text), c.sql);
    }
}

std::string listed(const FileContents& contents)
{
    std::string text;
    for (const auto& query : contents.queries)
        text += query.name + '=' + std::string(queryKindName(query.kind)) + ": " + query.sql + '\n';
    for (const auto& link : contents.links) {
        text += link.name + '=' + link.kind + ": " + link.source + " in " + link.connect;
        for (const auto& column : link.columns)
            text.append(" ")
                .append(column.name)
                .append(column.isPrimaryKey ? "*" : "")
                .append("=")
                .append(factsOf(column.type).accessName);
        text += '\n';
    }
    for (const auto& object : contents.objects)
        text += object.name + '=' + std::string(objectKindName(object.kind)) + ' ' + object.created + '\n';
    return text;
}

TEST(Contents, AreReadFromTheSystemTables)
{
    const test::TempFolder folder;
    for (const auto version : {samples::JetVersion::Jet3, samples::JetVersion::Jet4}) {
        const std::vector<samples::QueryRow> query = {{.attribute = 6, .expression = "b"},
            {.attribute = 6, .expression = "a"}, {.attribute = 5, .name1 = "T x"}, {.attribute = 0}};
        ASSERT_EQ(samples::writeDatabase(
                      {.version = version,
                          .tables = {{.name = "T x", .columns = {{.name = "a"}}},
                              {.name = "Server",
                                  .columns = {{.name = "ID", .type = samples::ColumnType::Long}, {.name = "Name"}},
                                  .indexes = {{.name = "Key", .columns = {{"ID"}}, .primary = true}},
                                  .link = {.type = 4, .connect = "DSN=x;PWD=geheim", .foreignName = "dbo.S"}}},
                          .otherEntries = {{.name = "q2", .query = query}, {.name = "Q1", .flags = 8, .query = query},
                              {.name = "~sq_f", .query = query}, {.name = "Report", .type = -32764},
                              {.name = "Form B", .type = -32768}, {.name = "form a", .type = -32768},
                              {.name = "Module", .type = -32761}, {.name = "Macro", .type = -32766},
                              {.name = "File", .type = 6, .database = "c:\\x.mdb", .foreignName = "T"},
                              {.name = "Locked",
                                  .type = 6,
                                  .database = "c:\\y.mdb",
                                  .connect = "PWD=geheim",
                                  .foreignName = "T"},
                              {.name = "Sheet",
                                  .type = 6,
                                  .database = "c:\\x.xls",
                                  .connect = "Excel 12.0;HDR=YES;PWD=geheim",
                                  .foreignName = "Sheet1$"}},
                          .password = "idle"},
                      folder.path("a.mdb"))
                      .error,
            "");
        TAdmMDBFile file;
        file.setFullPath(folder.path("a.mdb"));
        ASSERT_TRUE(file.open());
        EXPECT_TRUE(file.damage().empty());
        EXPECT_EQ(file.format().hasIdlePassword, version == samples::JetVersion::Jet4);
        EXPECT_EQ(file.tables().size(), 1U);
        EXPECT_EQ(listed(file.contents()),
            "Q1=select: SELECT b, a\nFROM [T x];\nq2=select: SELECT b, a\nFROM [T x];\nFile=Access: T in c:\\x.mdb\n"
            "Locked=Access: T in PWD=***;DATABASE=c:\\y.mdb\n"
            "Server=ODBC: dbo.S in DSN=x;PWD=*** ID*=Long Integer Name=Text\n"
            "Sheet=Excel 12.0: Sheet1$ in Excel 12.0;HDR=YES;PWD=***;DATABASE=c:\\x.xls\n"
            "form a=form 2023-03-15T12:00:00\nForm B=form 2023-03-15T12:00:00\n"
            "Report=report 2023-03-15T12:00:00\nMacro=macro 2023-03-15T12:00:00\nModule=module 2023-03-15T12:00:00\n");
        file.close();
        EXPECT_TRUE(file.contents().empty());
    }
}

TEST(Contents, QueriesThatCannotBeReadAreListedAllTheSame)
{
    const test::TempFolder folder;
    ASSERT_TRUE(
        samples::writeDatabase({.otherEntries = {{.name = "Empty"},
                                    {.name = "Lost kind", .flags = 0x20, .query = {{.attribute = 5, .name1 = "T"}}}}},
            folder.path("a.mdb"))
            .ok());
    TAdmMDBFile file;
    file.setFullPath(folder.path("a.mdb"));
    ASSERT_TRUE(file.open());
    EXPECT_EQ(listed(file.contents()), "Empty=select: \nLost kind=delete: DELETE\nFROM T;\n");
    EXPECT_EQ(file.damage().total(DamageKind::Queries), 2U);
}

// An older password has 20 bytes from 0x42 on; none encrypts anything.
TEST(Contents, TheBytesOfAnOlderPasswordAreItsOwn)
{
    const test::TempFolder folder;
    const auto path = folder.path("a.mdb");
    ASSERT_EQ(samples::writeDatabase({.version = samples::JetVersion::Jet3}, path).error, "");
    auto bytes = folder.read("a.mdb").value();
    for (const std::size_t last : {0x42 + 20, 0x42 + 19}) {
        bytes[last] = static_cast<char>(bytes[last] ^ 1);
        folder.write("a.mdb", bytes);
        TAdmMDBFile file;
        file.setFullPath(path);
        ASSERT_TRUE(file.open());
        EXPECT_EQ(file.format().hasIdlePassword, last < 0x42 + 20);
    }
}

} // namespace
} // namespace vellumo
