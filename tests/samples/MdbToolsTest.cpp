// SPDX-License-Identifier: MIT
// What the maker writes, as the programs of the mdbtools package read it. Skipped where they are not installed.

#include "samples/DatabaseWriter.h"
#include "samples/DemoDatabase.h"
#include "samples/SampleDatabases.h"
#include "support/TempFolder.h"

#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <sstream>

using namespace std::string_view_literals;

namespace vellumo::samples {
namespace {

class MdbTools : public testing::Test {
protected:
    void SetUp() override
    {
        if (std::system("command -v mdb-tables > /dev/null") != 0) GTEST_SKIP() << "mdbtools is not installed";
    }

    WriteResult write(const DatabaseDescription& description)
    {
        auto result = writeDatabase(description, m_path);
        EXPECT_EQ(result.error, "");
        return result;
    }

    // The output of a tool on the file; nothing may go to the error output.
    std::string read(const std::string& tool, const std::string& rest = {})
    {
        const auto command = "LC_ALL=C.UTF-8 " + tool + " '" + m_path + "' " + rest + " > '" + m_folder.path("out")
            + "' 2> '" + m_folder.path("errors") + "'";
        EXPECT_EQ(std::system(command.c_str()), 0) << command;
        EXPECT_EQ(m_folder.read("errors"), "") << command;
        return m_folder.read("out").value_or("");
    }

    test::TempFolder m_folder;
    std::string m_path = m_folder.path("test.mdb");
};

// Whole lines that must be there, in this order.
void expectLines(const std::string& text, const std::vector<std::string>& lines)
{
    std::size_t from = 0;
    const auto padded = "\n" + text + "\n";
    for (const auto& line : lines) {
        const auto found = padded.find("\n" + line + "\n", from);
        ASSERT_NE(found, std::string::npos) << "missing: " << line << "\nin: " << text;
        from = found + 1 + line.size();
    }
}

TEST_F(MdbTools, ReadEveryTypeInBothVersions)
{
    for (const auto version : {JetVersion::Jet3, JetVersion::Jet4}) {
        SCOPED_TRACE(version == JetVersion::Jet3 ? "Jet 3" : "Jet 4");
        write(typesDatabase(version));
        EXPECT_EQ(read("mdb-ver"), version == JetVersion::Jet3 ? "JET3\n" : "JET4\n");
        EXPECT_EQ(read("mdb-tables -1"), "Types\nRows\nMemos\n");
        EXPECT_EQ(read("mdb-count", "Types"), "6\n");
        const auto rows = read("mdb-export -Q -b strip", "Types");
        expectLines(rows,
            {"ID,Boolean,Byte,Integer,Long,Currency,Single,Double,DateTime,Binary,Text,Memo,OLE,GUID,Numeric,Hyperlink,"
             "FixedText",
                "3,0,0,0,0,0.0000,0,0,12/30/99 00:00:00,,,,,,0.0000,,        ", "lines,,,12345.6789,a#b#c,é       ",
                "6,0,,,,,,,,,,,,,,,"});
        for (const std::string_view part : {"1,1,255,32767,2147483647,922337203685477.5807,3.4028235e+38,",
                 ",Grüße,memo,", ",-999999999999999999999999.9999,Home#http://home.example/#,fixed   \n",
                 "2,0,0,-32768,-2147483648,-922337203685477.5808,", "4,1,1,-1,-1,-0.0001,0.1,0.1,",
                 ",€ ‘quoted’,two\r\n"})
            EXPECT_NE(rows.find(part), std::string::npos) << part;
        // The tool writes the characters of a GUID in hexadecimal: {00010203-0405-0607-08090A0B0C0D0E0F}.
        EXPECT_NE(read("mdb-export -b hex", "Types")
                      .find("7B30303031303230332D303430352D303630372D303830393041304230433044304530467D"),
            std::string::npos);
        EXPECT_EQ(read("mdb-prop", "Types | LC_ALL=C sort | grep .") /* the tool's own order is arbitrary */,
            "\tAllowZeroLength: yes\n\tDecimalPlaces: 255\n\tDefaultValue: \"none\"\n\tDescription: Every type\n"
            "\tDescription: Up to 100 characters\n\tRequired: no\nname: (none)\nname: Currency\nname: Text\n");
    }
}

TEST_F(MdbTools, ReadMovedShortAndDeletedRows)
{
    for (const auto version : {JetVersion::Jet3, JetVersion::Jet4}) {
        write(typesDatabase(version));
        EXPECT_EQ(read("mdb-export", "Rows"),
            "ID,Name,Flag,Added later\n"
            "1,\"name 1\",1,\n"
            "4,\"name 4\",0,\n"
            "6,\"name 6\",0,\"new 6\"\n"
            "7,\"name 7\",1,\"new 7\"\n"
            "3,\"name 3\",1,\"new 3\"\n");
        EXPECT_EQ(read("mdb-count", "Rows"), "5\n");
    }
}

TEST_F(MdbTools, ReadLongValuesOfEveryStorage)
{
    const int counts[] = {3, 30, 2000, 8};
    std::string expected;
    for (int i = 0; i < 4; ++i) {
        expected += std::to_string(i + 1) + ",";
        for (int line = 0; line < counts[i]; ++line)
            expected += "line " + std::to_string(line) + "\n";
        expected += ",\n";
    }
    for (const auto version : {JetVersion::Jet3, JetVersion::Jet4}) {
        write(typesDatabase(version));
        EXPECT_EQ(read("mdb-export -Q -H -b strip", "Memos"), expected + "5,,\n6,,\n");
        const auto objects = read("mdb-export -Q -H -b hex", "Memos | tr '\\n' ' ' | sed 's/line [0-9]* //g'");
        EXPECT_NE(objects.find("4,,00070E151C232A31383F464D545B626970777E858C 5,"), std::string::npos)
            << "a chain with links of 7 bytes";
        EXPECT_EQ(std::count(objects.begin(), objects.end(), ' '), 6);
        std::istringstream rows(objects);
        const std::size_t sizes[] = {40, 900, 70000, 21, 0, 0};
        for (std::size_t i = 0; i < 6; ++i) {
            std::string row;
            rows >> row;
            EXPECT_EQ(row.size(), 3 + 2 * sizes[i]) << row.substr(0, 40);
        }
    }
}

TEST_F(MdbTools, ReadTheDemo)
{
    write(demoDatabase());
    EXPECT_EQ(read("mdb-tables -1"),
        "Customers\nOrders\nOrder Details\nProducts\nCategories\nSuppliers\nEmployees\nDocuments\n");
    EXPECT_EQ(read("mdb-count", "Orders"), "420\n");
    const auto schema = read("mdb-schema", "postgres");
    expectLines(schema,
        {"COMMENT ON COLUMN \"customers\".\"customerid\" IS 'Αριθμός · Номер · 番号 · رقم';",
            "CREATE INDEX \"customers_place_idx\" ON \"customers\" (\"country\", \"city\");",
            "ALTER TABLE \"order details\" ADD CONSTRAINT \"order details_pkey\" PRIMARY KEY (\"orderid\", "
            "\"productid\");",
            "CREATE INDEX \"products_stock_idx\" ON \"products\" (\"unitsinstock\" DESC, \"productname\");",
            "CREATE UNIQUE INDEX \"categories_categoryname_idx\" ON \"categories\" (\"categoryname\");",
            "ALTER TABLE \"Order Details\" ADD CONSTRAINT \"order details_orderid_fk\" FOREIGN KEY (\"orderid\") "
            "REFERENCES "
            "\"Orders\"(\"orderid\") ON UPDATE CASCADE ON DELETE CASCADE DEFERRABLE INITIALLY IMMEDIATE;",
            "ALTER TABLE \"Orders\" ADD CONSTRAINT \"orders_customerid_fk\" FOREIGN KEY (\"customerid\") REFERENCES "
            "\"Customers\"(\"customerid\") ON UPDATE CASCADE DEFERRABLE INITIALLY IMMEDIATE;",
            "ALTER TABLE \"Products\" ADD CONSTRAINT \"products_supplierid_fk\" FOREIGN KEY (\"supplierid\") "
            "REFERENCES "
            "\"Suppliers\"(\"supplierid\") DEFERRABLE INITIALLY IMMEDIATE;"});
    EXPECT_EQ(schema.find("employees_reportsto_fk"), std::string::npos) << "that relation is not enforced";
    for (const auto* const table : {"Customers", "'Order Details'", "Products", "Categories", "Suppliers", "Employees",
             "Documents", "MSysObjects", "MSysACEs", "MSysQueries", "MSysRelationships"})
        EXPECT_NE(read("mdb-export", table), "") << table;
}

// Rows of a single column, so many that the table needs the large form of the usage map.
TEST_F(MdbTools, ReadATableOfManyPages)
{
    const struct {
        JetVersion version;
        std::size_t pages;
    } cases[] = {{JetVersion::Jet3, 1100}, {JetVersion::Jet4, 600}};
    for (const auto& test : cases) {
        DatabaseDescription database{.version = test.version};
        TableDescription table{.name = "Large"};
        table.columns = {{.name = "Text", .type = ColumnType::Text}};
        table.rows = [&](std::size_t index, Row& row) {
            row.values = {Bytes(pageSize(test.version) - 100, 'a')};
            return index < test.pages;
        };
        database.tables.push_back(table);
        const auto result = write(database);
        ASSERT_EQ(result.tables[0].dataPages.size(), test.pages);
        EXPECT_EQ(m_folder.read("test.mdb").value().at(result.tables[0].dataMapOffset), 1) << "a large map";
        EXPECT_EQ(read("mdb-export -H", "Large | wc -l"), std::to_string(test.pages) + "\n");
    }
}

// A bitmap page names 16352 pages in Jet 3. Every page holds a large deleted row and a small one, so that little is
// read.
TEST_F(MdbTools, ReadAMapOfTwoBitmapPages)
{
    DatabaseDescription database{.version = JetVersion::Jet3};
    TableDescription table{.name = "Rows"};
    table.columns = {{.name = "Number", .type = ColumnType::Long}, {.name = "Text", .type = ColumnType::Text}};
    table.rows = [](std::size_t index, Row& row) {
        const bool isLarge = index % 2 == 0;
        row.values = {static_cast<std::int64_t>(index / 2), Bytes(isLarge ? 1960 : 2, 'x')};
        row.state = isLarge ? RowState::Deleted : RowState::Live;
        return index < 2 * std::size_t{16'400};
    };
    database.tables.push_back(table);
    const auto result = write(database);
    ASSERT_EQ(result.tables[0].dataPages.size(), 16400U);
    EXPECT_EQ(read("mdb-export -H", "Rows | sed -n '1p;16352,16353p;$p'"),
        "0,\"xx\"\n16351,\"xx\"\n16352,\"xx\"\n16399,\"xx\"\n");
}

TEST_F(MdbTools, ReadAnEncodedFile)
{
    auto database = typesDatabase(JetVersion::Jet4);
    database.databaseKey = 0x6AA23F11;
    write(database);
    EXPECT_EQ(m_folder.read("test.mdb").value().find("F\0i\0x\0e\0d"sv), std::string::npos)
        << "no readable name on disk";
    EXPECT_EQ(read("mdb-count", "Types"), "6\n");
}

TEST_F(MdbTools, ReadManyTablesAndManyColumns)
{
    write(manyTablesDatabase(300));
    EXPECT_EQ(read("mdb-tables -1", "| wc -l"), "300\n");
    EXPECT_EQ(read("mdb-export -H", "'Table 300'"), "1,\"first of Table 300\",0.0300\n2,\"second\",\n3,,0.0000\n");
    write(wideDatabase());
    EXPECT_EQ(read("mdb-export -H", "Wide | wc -l"), "200\n");
    EXPECT_EQ(read("mdb-export -H -b strip", "Objects | head -2 | tail -1"), "2,\"PBrush\",\"\"\n");
}

} // namespace
} // namespace vellumo::samples
