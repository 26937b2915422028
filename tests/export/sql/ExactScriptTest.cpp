// SPDX-License-Identifier: MIT
#include "export/sql/ExactDialects.h"
#include "export/sql/ExactNames.h"
#include "export/sql/ExactSchema.h"
#include "export/sql/SQLDialectFacts.h"
#include "export/sql/SQLExportFixture.h"

namespace vellumo::test {
namespace {

using testing::HasSubstr;
using testing::Not;

// In the order of sqlDialects.
constexpr ServerType servers[] = {
    ServerType::MySQL, ServerType::PostgreSQL, ServerType::Oracle, ServerType::SQLite, ServerType::SQLServer};

TEST(ExactLiterals, TextsGetThroughEachTool)
{
    const struct {
        std::string text;
        const char* literals[std::size(servers)];
    } cases[] = {
        {"", {"''", "''", "''", "''", "N''"}},
        {"O'Hara\\x", {R"('O''Hara\\x')", R"('O''Hara\x')", R"('O''Hara\x')", R"('O''Hara\x')", R"(N'O''Hara\x')"}},
        {"a\r\nGO",
            {R"('a\r\nGO')", R"(E'a\r\nGO')", "'a'||\nCHR(13)||CHR(10)||'GO'", "'a'||char(13,10)||'GO'",
                "CAST(N'' AS nvarchar(max))+N'a'+NCHAR(13)+NCHAR(10)+N'GO'"}},
        {std::string("\0\\'", 3),
            {R"('\0\\''')", "E'\xEF\xBF\xBD\\\\'''", "CHR(0)||'\\'''", "char(0)||'\\'''",
                R"(CAST(N'' AS nvarchar(max))+NCHAR(0)+N'\''')"}},
        {"$(x)", {"'$(x)'", "'$(x)'", "'$(x)'", "'$(x)'", "CAST(N'' AS nvarchar(max))+N'$'+N'(x)'"}},
    };
    for (const auto& test : cases)
        for (std::size_t i = 0; i < std::size(servers); ++i) {
            TextBuffer literal;
            exactDialectFacts(servers[i]).literals.text(literal, test.text);
            EXPECT_EQ(literal.view(), test.literals[i]) << i;
        }
}

// Beyond what an expression may have in pieces, and a line in characters.
TEST(ExactLiterals, LongTexts)
{
    std::string breaks;
    for (int i = 0; i < 101; ++i)
        breaks += "é\r";
    const auto literalOf = [](ServerType server, std::string_view text) {
        TextBuffer literal;
        exactDialectFacts(server).literals.text(literal, text);
        return std::string(literal.view());
    };
    EXPECT_THAT(literalOf(ServerType::SQLite, breaks), testing::StartsWith("CAST(x'c3a90dc3a90d"));
    EXPECT_THAT(literalOf(ServerType::SQLServer, breaks), testing::StartsWith("CAST(0xe9000d00e9000d00"));
    EXPECT_EQ(literalOf(ServerType::Oracle, std::string(1001, 'x')),
        "TO_CLOB('" + std::string(1000, 'x') + "')||\nTO_CLOB('x')");
}

TEST(ExactNames, AreCutAndToldApart)
{
    const auto named = [](ServerType server, std::initializer_list<std::string_view> names, NameUse use) {
        TakenNames taken;
        std::vector<std::string> given;
        for (const auto name : names)
            given.push_back(exactName(name, use, exactDialectFacts(server), taken));
        return given;
    };
    const std::string longName(64, 'n');
    EXPECT_THAT(named(ServerType::MySQL, {longName, longName + "1", longName + "2"}, NameUse::Column),
        testing::ElementsAre(longName,
            testing::AllOf(testing::StartsWith(std::string(55, 'n') + '_'), testing::SizeIs(64)), testing::SizeIs(64)));
    const auto umlauts =
        named(ServerType::PostgreSQL, {std::string(31, 'u') + "ü" + std::string(31, 'u')}, NameUse::Table);
    EXPECT_THAT(umlauts[0], testing::SizeIs(testing::Le(63U))) << "bytes count there";
    EXPECT_THAT(named(ServerType::SQLite, {"Case", "CASE", "sqlite_x"}, NameUse::Table),
        testing::ElementsAre("Case", "CASE_2", "_sqlite_x"));
    EXPECT_THAT(named(ServerType::PostgreSQL, {"Xmin"}, NameUse::Column)[0], testing::StartsWith("Xmin_"));
    EXPECT_THAT(named(ServerType::MySQL, {"😀 x "}, NameUse::Column)[0], testing::StartsWith("_ x _"));
}

class ExactScript : public SQLExportFixture {
protected:
    ExactScript() { m_options.isExact = true; }

    // The script, or what became of it.
    std::string scriptOf(const TAdmMDBFile& file, ServerType server)
    {
        m_options.sqlDialect = server;
        EXPECT_THAT(runExport(exportSQLThread, file).log, testing::IsEmpty());
        auto script = contentOf(m_options.path);
        if (server != ServerType::SQLServer) return script;
        EXPECT_TRUE(script.starts_with("\xFF\xFE")) << "UTF-16 with a mark";
        std::string ascii;
        for (std::size_t i = 2; i < script.size(); i += 2)
            ascii += script[i];
        return ascii;
    }
};

std::unique_ptr<TAdmMDBFile> makeFamily()
{
    auto parents = makeTable("Parents",
        {{"ID", "Long Integer", true}, {"Name", "Text", false, false, 50, "It's\r\nit"}, {"Pic", "OLE"},
            {"When", "DateTime"}},
        {{"1", "a", makeBlob(std::string(1001, '\xAB'), "bin"), noted("05/03/2014 21:07:00", 250)},
            {"2", null, makeBlob("\xCD", "bin"), null}});
    parents->columns()[0]->setIsAutoNumber(true);
    parents->setLastAutoNumber(7);
    parents->columns()[1]->setProperties({{"Required", true}, {"DefaultValue", std::string("\"x\"")},
        {"Description", std::string("It's\r\nit")}, {"AllowZeroLength", false}});
    setIndices(*parents, {{"Name", {"-Name"}, true}, {"PrimaryKey", {"ID"}, true, true}});
    auto children = makeTable("Children", {{"Nr", "Long Integer", true}, {"Of", "Long Integer"}, {"Share", "Numeric"}},
        {{"1", "1", "0.3333"}, {"2", "3", "12.5"}, {"2", null, null}}); // a share is calculated
    setIndices(*children, {{"PrimaryKey", {"Nr"}, true, true}});
    auto file = makeFile("/nowhere/family.mdb", std::move(children), std::move(parents));
    setRelations(*file,
        {{"Broken", "Children", "Parents", {{"Of", "ID"}}, true, true},
            {"Whole", "Parents", "Parents", {{"ID", "ID"}}, true, false}});
    return file;
}

TEST_F(ExactScript, RulesHoldForTheRowsOrAreLeftOut)
{
    const auto file = makeFamily();
    const struct {
        ServerType server;
        std::vector<std::string> parts;
        std::vector<std::string> absent;
    } cases[] = {
        {ServerType::MySQL,
            {"`ID` int AUTO_INCREMENT NOT NULL",
                "`Name` varchar(50) DEFAULT ('x') COMMENT 'It''s\\r\\nit' CHECK (octet_length(`Name`) > 0)",
                "`When` datetime(3)", "`Share` decimal(28,4)", "ALTER TABLE `Parents` AUTO_INCREMENT = 8;",
                "'2014-05-03 21:07:00.250'", "CREATE UNIQUE INDEX `Name` ON `Parents` (`Name` DESC);",
                "CREATE INDEX `PrimaryKey` ON `Children` (`Nr`);", // repeats a number
                "-- left out: relation Broken", "REFERENCES `Parents` (`ID`) ON UPDATE CASCADE;"},
            {"PRIMARY KEY (`Nr`)", "`Broken`"}},
        {ServerType::PostgreSQL,
            {"\"ID\" integer GENERATED BY DEFAULT AS IDENTITY NOT NULL", "RESTART WITH 8;", "IS E'It''s\\r\\nit';",
                "ON UPDATE CASCADE ON DELETE CASCADE NOT VALID;"},
            {}},
        {ServerType::SQLite,
            {"\"ID\" INTEGER PRIMARY KEY AUTOINCREMENT,", "VALUES ('Parents', 7);", "\"When\" DATETIME"},
            {"Broken\" FOREIGN"}},
        {ServerType::SQLServer,
            {"[ID] int IDENTITY(1,1) NOT NULL", "SET IDENTITY_INSERT [Parents] ON;\nGO\n",
                "CREATE UNIQUE INDEX [Name] ON [Parents] ([Name] DESC) WHERE [Name] IS NOT NULL;",
                "DBCC CHECKIDENT (N'[Parents]', RESEED, 7);"},
            {"CASCADE"}},
        {ServerType::Oracle,
            {"DECLARE\n  v0 BLOB;\nBEGIN\nINSERT INTO \"Parents\"", "EMPTY_BLOB()",
                "RETURNING \"Pic\" INTO v0;\nDBMS_LOB.WRITEAPPEND(v0, 1000, HEXTORAW('abab",
                "DBMS_LOB.WRITEAPPEND(v0, 1, HEXTORAW('ab'));\nEND;\n/\n", "HEXTORAW('cd')",
                "TIMESTAMP '2014-05-03 21:07:00.250'"},
            {"CHECK", "ON UPDATE"}},
    };
    for (const auto& test : cases) {
        const auto script = scriptOf(*file, test.server);
        for (const auto& part : test.parts)
            EXPECT_THAT(script, HasSubstr(part)) << static_cast<int>(test.server);
        for (const auto& part : test.absent)
            EXPECT_THAT(script, Not(HasSubstr(part))) << static_cast<int>(test.server);
    }
}

TEST_F(ExactScript, DatesDifferInTheirMilliseconds)
{
    auto table = makeTable("T", {{"W", "DateTime"}}, {{"05/03/2014 21:07:00"}, {noted("05/03/2014 21:07:00", 250)}});
    setIndices(*table, {{"I", {"W"}, true}});
    EXPECT_THAT(scriptOf(*makeFile("/nowhere/a.mdb", std::move(table)), ServerType::MySQL),
        HasSubstr("CREATE UNIQUE INDEX `I`"));
}

// A statement of many bytes ends in front of the row with which it would have more than 2^20.
TEST_F(ExactScript, LongStatementsAreSplitBetweenRows)
{
    const std::string a(900'000, 'a');
    const std::string b(300'000, 'b');
    const auto file = makeFile("/nowhere/a.mdb", makeTable("T", {{"x", "Memo/Hyperlink"}}, {{a}, {b}, {"c"}}));
    const std::string start = "INSERT INTO `T` (`x`) VALUES\n";
    const auto rows = start + "('" + a + "');\n" + start + "('" + b + "'),\n('c');\n";
    EXPECT_NE(scriptOf(*file, ServerType::MySQL).find(rows), std::string::npos);
}

// Each of a calculation's results has its point somewhere else: together they need more digits than a type may state.
TEST_F(ExactScript, NumbersOfFarApartPointsKeepTheirDigits)
{
    const std::string large(29, '9');
    const auto small = "0." + std::string(27, '0') + '1';
    const auto fileOf = [&](const std::string& most) {
        return makeFile("/nowhere/a.mdb", makeTable("T", {{"N", "Numeric"}}, {{most}, {"-" + small}, {null}}));
    };
    const struct {
        ServerType server;
        std::string type;
        std::string value; // format
        std::size_t texts;
    } cases[] = {
        {ServerType::MySQL, "`N` decimal(57,28)\n", "(%)", 0},
        {ServerType::PostgreSQL, "\"N\" numeric(57,28)\n", "(%)", 0},
        {ServerType::Oracle, "\"N\" NUMBER\n", "(%)", 0},
        {ServerType::SQLServer, "[N] varchar(80)\n", "('%')", 2},
    };
    const auto file = fileOf(large);
    for (const auto& test : cases) {
        const auto script = scriptOf(*file, test.server);
        EXPECT_THAT(script, HasSubstr(test.type)) << static_cast<int>(test.server);
        for (const auto& number : {large, "-" + small})
            EXPECT_THAT(script, HasSubstr(std::string(test.value).replace(test.value.find('%'), 1, number)));
        const ExactSchema schema(exactDialectFacts(test.server), *file, {file->tables()[0].get()}, {});
        ASSERT_EQ(schema.notes().size(), test.texts == 0 ? 0U : 1U) << static_cast<int>(test.server);
        if (test.texts == 0) continue;
        EXPECT_EQ(schema.notes()[0].loss, ExactLoss::DigitsAsText);
        EXPECT_EQ(schema.notes()[0].count, test.texts);
    }
    EXPECT_THAT(scriptOf(*fileOf(std::string(10, '9')), ServerType::SQLServer), HasSubstr("[N] decimal(38,28)"));
    EXPECT_THAT(scriptOf(*fileOf(std::string(11, '9')), ServerType::SQLServer), HasSubstr("[N] varchar(80)"));
}

} // namespace
} // namespace vellumo::test
