// SPDX-License-Identifier: MIT
#include "export/sql/SQLDialectFacts.h"
#include "export/sql/SQLExportFixture.h"
#include "export/sql/SQLText.h"

namespace vellumo::test {
namespace {

class SQLValues : public SQLExportFixture {
protected:
    // What stands between the brackets of VALUES for one cell.
    [[nodiscard]] std::string valueOf(SQLDialect dialect, const ColumnSpec& column, const Cell& cell)
    {
        m_options.sqlDialect = dialect;
        m_options.exportStructure = false;
        const auto file = makeFile("/nowhere/value.mdb", makeTable("t", {column}, {{cell}}));
        EXPECT_EQ(runExport(exportSQLThread, *file).successTableCount, 1);
        const auto script = contentOf(m_options.path);
        const auto start = script.find("VALUES (") + 8;
        return script.substr(start, script.find(");\n", start) - start);
    }
    // The same for all dialects in the order of their numbers.
    [[nodiscard]] std::vector<std::string> valuesOf(const ColumnSpec& column, const Cell& cell)
    {
        std::vector<std::string> values;
        for (int dialect = 1; dialect <= 5; ++dialect)
            values.push_back(valueOf(SQLDialect(dialect), column, cell));
        return values;
    }
};

TEST_F(SQLValues, EachTypeInEachDialect)
{
    using Values = std::vector<std::string>;
    const struct {
        const char* type;
        const char* cell;
        Values values; // MySQL, PostgreSQL, Oracle, SQLite, SQL Server
    } cases[] = {
        {"Boolean", "1", {"1", "'1'", "'1'", "1", "1"}},
        {"Byte", "7", {"7", "7", "'7'", "7", "7"}},
        {"Currency", "1.5000", {"1,5000", "1,5000", "'1.5000'", "1,5000", "1,5000"}},
        {"Single", "1.5", {"1,5", "1,5", "'1.5'", "1,5", "1,5"}},
        {"Double", "-2", {"-2", "-2", "'-2'", "-2", "-2"}},
        {"Numeric", "1.5", {"1.5", "1.5", "'1.5'", "1.5", "1.5"}},
        {"Text", "O'Hara\\x",
            {"'O''Hara\\\\x'", "'O''Hara\\\\x'", "'O''Hara\\\\x'", "'O''Hara\\\\x'", "'O''Hara\\\\x'"}},
        {"Memo/Hyperlink", "'", {"''''", "''''", "''''", "''''", "''''"}},
        {"Binary", "\\", {"'\\\\'", "'\\\\'", "'\\\\'", "'\\\\'", "'\\\\'"}},
        {"DateTime", "12/31/1999 23:59:59",
            {"'1999-12-31 23:59:59'", "'1999-12-31 23:59:59'",
                "TO_DATE('12/31/1999 23:59:59', 'MM/DD/YYYY HH24:MI:SS')", "'12/31/1999 23:59:59'",
                "'1999-12-31 23:59:59'"}},
        {"DateTime", "it's", {"'it''s'", "'it''s'", "TO_DATE('it''s', 'MM/DD/YYYY HH24:MI:SS')", "'it''s'", "'it''s'"}},
        {"Replication ID", "{A-B}", {"'AB'", "'A-B'", "'{A-B}'", "{A-B}", "{A-B}"}},
        {"Replication ID", "A-B", {"A-B", "A-B", "'A-B'", "A-B", "A-B"}},
        {"Replication ID", "{", {"{", "{", "'{'", "{", "{"}},
        {"Complex Value auto number", "3", {"3", "3", "'3'", "3", "3"}},
        {"BigInt", "-5", {"-5", "-5", "'-5'", "-5", "-5"}},
        {"Date/Time Extended", "06/14/2021 22:45:12.3456789",
            {"'2021-06-14 22:45:12.3456789'", "'2021-06-14 22:45:12.3456789'",
                "TO_TIMESTAMP('06/14/2021 22:45:12.3456789', 'MM/DD/YYYY HH24:MI:SS.FF7')",
                "'06/14/2021 22:45:12.3456789'", "'2021-06-14 22:45:12.3456789'"}},
        {"Multiple Values", "a; b", {"'a; b'", "'a; b'", "'a; b'", "'a; b'", "'a; b'"}},
        {"No Such Type", "1.5", {"1.5", "1.5", "'1.5'", "1.5", "1.5"}},
    };
    m_options.decimalSymbol = ",";
    for (const auto& test : cases)
        EXPECT_EQ(valuesOf({"c", test.type}, test.cell), test.values) << test.type << ' ' << test.cell;
}

TEST_F(SQLValues, DecimalSymbolMayBeAnyText)
{
    const struct {
        const char* symbol;
        const char* value;
    } cases[] = {{".", "1.50"}, {"", "150"}, {"::", "1::50"}};
    for (const auto& test : cases) {
        m_options.decimalSymbol = test.symbol;
        EXPECT_EQ(valueOf(SQLDialect::MySQL, {"c", "Double"}, "1.50"), test.value);
    }
}

TEST_F(SQLValues, NullsFollowTheZeroLengthRule)
{
    for (const char* type : {"Text", "Long Integer", "DateTime", "OLE", "Replication ID"}) {
        EXPECT_EQ(valuesOf({"c", type, false, false}, null), std::vector<std::string>(5, "''")) << type;
        EXPECT_EQ(valuesOf({"c", type, false, true}, null), std::vector<std::string>(5, "null")) << type;
        EXPECT_EQ(valuesOf({"c", type, true, {}}, null), std::vector<std::string>(5, "null")) << type;
    }
}

TEST_F(SQLValues, BlobsAreHexadecimal)
{
    EXPECT_EQ(valuesOf({"c", "OLE"}, makeBlob("\x01\xAB'\\", "bin")), std::vector<std::string>(5, "x'01ab275c'"));
    EXPECT_EQ(valuesOf({"c", "OLE"}, makeBlob("", "bin")), std::vector<std::string>(5, "x''"));
    EXPECT_EQ(encodeSqlBlobValue({}), "x''");
    const auto what = [](ObjectState state) { return makeBlob("\x01", "bin", {state, "", ""}); };
    EXPECT_EQ(valuesOf({"c", "OLE"}, what(ObjectState::Damaged)), std::vector<std::string>(5, "null"));
    EXPECT_EQ(valuesOf({"c", "OLE"}, what(ObjectState::Linked)), std::vector<std::string>(5, "x'01'"));
    const std::string large(1 << 20, '\x0F');
    const auto value = valueOf(SQLDialect::SQLite, {"c", "OLE"}, makeBlob(large, "bin"));
    EXPECT_EQ(value.size(), 2 * large.size() + 3) << "larger than any buffer";
    EXPECT_EQ(value.find_first_not_of("0f", 2), value.size() - 1);
}

TEST_F(SQLValues, EscapingDoesNotLeakBetweenGroups)
{
    m_options.exportStructure = false;
    const auto file =
        makeFile("/nowhere/groups.mdb", makeTable("t", {{"a", "Text"}}, {{"x"}, {"'"}, {"y"}, {"\\'z"}, {"'\\"}}, 1));
    runExport(exportSQLThread, *file);
    EXPECT_THAT(contentOf(m_options.path),
        testing::HasSubstr("INSERT INTO `t` (`a`) VALUES ('x');\nINSERT INTO `t` (`a`) VALUES ('''');\n"
                           "INSERT INTO `t` (`a`) VALUES ('y');\nINSERT INTO `t` (`a`) VALUES ('\\\\''z');\n"
                           "INSERT INTO `t` (`a`) VALUES ('''\\\\');\n\n"));
}

TEST(SQLDateText, OnlyRealDatesAreRewritten)
{
    const std::pair<const char*, std::string_view> dates[] = {
        {"01/02/0100 03:04:05", "0100-01-02 03:04:05"},
        {"12/31/9999 23:59:59", "9999-12-31 23:59:59"},
        {"02/29/2000 00:00:00", "2000-02-29 00:00:00"},
    };
    for (const auto& [cell, text] : dates) {
        const auto written = sqlDateText(cell);
        ASSERT_TRUE(written) << cell;
        EXPECT_EQ(std::string_view(written->data(), written->size()), text);
    }
    for (const auto* cell : {"02/29/1900 00:00:00", "00/10/2000 00:00:00", "13/10/2000 00:00:00", "04/31/2000 00:00:00",
             "04/30/0000 00:00:00", "04/30/2000 24:00:00", "04/30/2000 00:60:00", "04/30/2000 00:00:60",
             "4/30/2000 00:00:00", "04/30/2000 00:00:00 ", "04-30-2000 00:00:00", "04/30/2000T00:00:00",
             "04/3 /2000 00:00:00", "04/30/2000", ""})
        EXPECT_FALSE(sqlDateText(cell)) << cell;
}

TEST(SQLTypes, AreThoseOfTheDialectElseOfAccess)
{
    EXPECT_EQ(convertMDBTypeToDBSPType(ColumnType::Integer, ServerType::PostgreSQL), "INTEGER");
    EXPECT_EQ(convertMDBTypeToDBSPType(ColumnType::Unknown, ServerType::MySQL), "");
    EXPECT_EQ(convertMDBTypeToDBSPType(ColumnType::Integer, ServerType(6)), "Integer");
    // The types that the shop's scripts do not have.
    const struct {
        ServerType dialect;
        const char* types;
    } cases[] = {
        {ServerType::MySQL, "int|float|varchar|numeric|int|bigint|datetime(6)|"},
        {ServerType::PostgreSQL, "SMALLINT|REAL|BYTEA|NUMERIC(15,2)|INTEGER|BIGINT|TIMESTAMP WITHOUT TIME ZONE|"},
        {ServerType::Oracle, "NUMBER(3)|FLOAT|BINARY|NUMBER|NUMBER(11)|NUMBER(19)|TIMESTAMP(7)|"},
        {ServerType::SQLite, "INTEGER|REAL|BLOB|INTEGER|INTEGER|INTEGER|TEXT|"},
        {ServerType::SQLServer, "char|real|text|numeric|int|bigint|datetime2(7)|"},
    };
    for (const auto& test : cases) {
        std::string types;
        for (const auto type : {ColumnType::Byte, ColumnType::Single, ColumnType::Binary, ColumnType::Numeric,
                 ColumnType::ComplexAutoNumber, ColumnType::BigInt, ColumnType::DateTimeExtended})
            types += convertMDBTypeToDBSPType(type, test.dialect) + '|';
        EXPECT_EQ(types, test.types);
    }
}

} // namespace
} // namespace vellumo::test
