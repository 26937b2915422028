#include "export/sql/SQLExportFixture.h"
#include "export/sql/SQLiteReader.h"

namespace vellumo::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SQLiteExport : public SQLExportFixture {
protected:
    SQLiteExport() { m_options.path = m_folder / "out.sqlite"; }

    [[nodiscard]] SQLiteReader exported(const TAdmMDBFile& file)
    {
        const auto report = runExport(exportSQLiteThread, file);
        EXPECT_THAT(report.log, IsEmpty());
        EXPECT_EQ(report.successTableCount, static_cast<int>(file.tables().size()));
        SQLiteReader reader(m_options.path);
        EXPECT_THAT(reader.rows("PRAGMA integrity_check"), ElementsAre("ok"));
        return reader;
    }
};

TEST_F(SQLiteExport, ShopArrivesWhole)
{
    std::ofstream(m_options.path) << "an old file gives way";
    const auto shop = makeShop();
    const auto database = exported(*shop);
    EXPECT_THAT(database.rows("SELECT sql FROM sqlite_master WHERE sql IS NOT NULL ORDER BY rowid"),
        ElementsAre("CREATE TABLE \"Customers\" (\n\t\"ID\" INTEGER NOT NULL,\n\t\"Name\" TEXT NOT NULL,\n\t\"Active\" "
                    "INTEGER,\n\t"
                    "\"Since\" TEXT,\n\t\"Balance\" REAL,\n\t\"Key\" TEXT,\n\tPRIMARY KEY (\"ID\")\n)",
            "CREATE TABLE \"Orders\" (\n\t\"ID\" INTEGER NOT NULL,\n\t\"Line\" INTEGER NOT NULL,\n\t\"Customer\" "
            "INTEGER,"
            "\n\t\"Note\" TEXT,\n\t\"Pic\" BLOB,\n\t\"Ratio\" REAL,\n\tPRIMARY KEY (\"ID\", \"Line\"),\n\tCONSTRAINT "
            "\"CustomersOrders\" FOREIGN KEY (\"Customer\") REFERENCES \"Customers\" (\"ID\") ON UPDATE CASCADE ON "
            "DELETE SET NULL\n)",
            "CREATE UNIQUE INDEX \"Name\" ON \"Customers\" (\n\t\"Name\" ASC\n)",
            "CREATE INDEX \"orders_1\" ON \"Customers\" (\n\t\"Since\" DESC,\n\t\"Name\" ASC\n)",
            "CREATE INDEX \"Name_1\" ON \"Orders\" (\n\t\"Note\" ASC\n)"));
    EXPECT_THAT(database.rows("SELECT *, typeof(Balance) FROM Customers"),
        ElementsAre("1|O'Hara\\\\x|1|05/03/2014 21:07:00|1234.5|{12345678-ABCD-EF01-2345-67890ABCDEF0}|real",
            "2||0|NULL|NULL|NULL|null"));
    EXPECT_THAT(database.rows("SELECT ID, Line, Customer, Note, hex(Pic), typeof(Pic), Ratio FROM Orders"),
        ElementsAre("10|1|1|two\nlines|00FF|blob|1.5", "10|2|NULL|NULL||null|NULL"));
    EXPECT_THAT(database.rows("PRAGMA foreign_key_check"), IsEmpty());
    EXPECT_THAT(filesInFolder(), ElementsAre("out.sqlite"));
}

TEST_F(SQLiteExport, OptionsLeaveTheirPartsOut)
{
    const auto shop = makeShop();
    m_options.exportData = false;
    EXPECT_THAT(exported(*shop).rows("SELECT * FROM Customers"), IsEmpty());
    m_options.includeForeignKeys = false;
    m_options.includeIndexes = false;
    m_options.exportStructure = false; // always written here
    const auto database = exported(*shop);
    EXPECT_THAT(database.rows("PRAGMA foreign_key_list(Orders)"), IsEmpty());
    EXPECT_THAT(database.rows("SELECT name FROM sqlite_master WHERE type = 'index' AND sql IS NOT NULL"), IsEmpty());
}

TEST_F(SQLiteExport, ProgressIsReportedAtEachStart)
{
    const auto shop = makeShop();
    EXPECT_THAT(runExport(exportSQLiteThread, *shop).progress, ElementsAre(0, 1));
}

TEST_F(SQLiteExport, EveryTypeAndOddNames)
{
    const auto file = makeFile("/nowhere/types.mdb",
        makeTable("T\"é' .",
            {{"b\"1", "Boolean"}, {"b2", "Byte"}, {"n", "Numeric"}, {"bin", "Binary", false, "NO"},
                {"x", "No Such Type"}, {"c", "Complex Value auto number", false, "NO"}, {"m", "Memo/Hyperlink"}},
            {{"1", "255", "12.50", "'\\", "7", null, "😀"}, {null, null, null, null, null, "1", null}}),
        makeTable("no rows", {{"a", "Single"}}));
    const auto database = exported(*file);
    EXPECT_THAT(database.rows("SELECT * FROM \"T\"\"é' .\""),
        ElementsAre("1|255|12.5|'\\\\|7||😀", "NULL|NULL|NULL||NULL|1|NULL"));
    EXPECT_THAT(database.rows("SELECT name || ' ' || type || ' ' || \"notnull\" FROM pragma_table_info('T\"é'' .')"),
        ElementsAre("b\"1 INTEGER 0", "b2 INTEGER 0", "n INTEGER 0", "bin BLOB 1", "x No Such Type 0", "c INTEGER 1",
            "m TEXT 0"));
    EXPECT_THAT(database.rows("SELECT count(*) FROM \"no rows\""), ElementsAre("0"));
}

TEST_F(SQLiteExport, ManyGroupsKeepTheirOrder)
{
    std::vector<Row> rows;
    for (int i = 0; i < 5000; ++i)
        rows.push_back({std::to_string(i), i % 3 == 0 ? std::string() : "text " + std::to_string(i)});
    const auto file = makeFile("/nowhere/many.mdb", makeTable("t", {{"i", "Long Integer"}, {"s", "Text"}}, rows, 700));
    const auto database = exported(*file);
    EXPECT_THAT(database.rows("SELECT count(*), sum(i = rowid - 1), sum(s IS NULL), sum(s = 'text ' || i) FROM t"),
        ElementsAre("5000|5000|1667|3333"));
}

// Of each column only what differs between two rows; numbers are left to SQLite to compare.
std::string rowCondition(const TAdmMDBTable& table, std::size_t row)
{
    std::string condition;
    for (std::size_t c = 0; c < table.columns().size(); ++c) {
        const auto value = table.rows().value(row, c);
        const auto* text = std::get_if<std::string_view>(&value);
        if (text == nullptr) continue;
        if (!condition.empty()) condition += " AND ";
        condition += '"' + table.columns()[c]->name() + "\" = '";
        for (const char character : *text)
            condition += character == '\'' ? "''" : character == '\\' ? "\\\\" : std::string(1, character);
        condition += '\'';
    }
    return condition;
}

TEST_F(SQLiteExport, RealDatabaseArrivesWhole)
{
    TAdmMDBFile file;
    file.setFullPath(VELLUMO_SOURCE_DIR "/../shared/corpus/nwind-jet3.mdb");
    if (!file.open()) GTEST_SKIP() << "no corpus here";
    const auto database = exported(file);
    std::size_t indexCount = 0;
    for (const auto& table : file.tables()) {
        const auto quoted = '"' + table->name() + '"';
        const auto rowCount = table->rows().rowCount();
        EXPECT_THAT(database.rows("SELECT count(*) FROM " + quoted), ElementsAre(std::to_string(rowCount)));
        for (std::size_t row = 0; row < rowCount; row += 37)
            EXPECT_THAT(
                database.rows("SELECT 1 FROM " + quoted + " WHERE " + rowCondition(*table, row)), ElementsAre("1"))
                << table->name() << " row " << row;
        EXPECT_EQ(database.rows("SELECT DISTINCT id FROM pragma_foreign_key_list('" + table->name() + "')").size(),
            table->foreignKeys().size())
            << table->name();
        for (const auto& index : table->indices())
            if (!index->isPrimaryKey()) ++indexCount;
    }
    EXPECT_GT(indexCount, 0U);
    EXPECT_THAT(database.rows("SELECT count(*) FROM sqlite_master WHERE type = 'index' AND sql IS NOT NULL"),
        ElementsAre(std::to_string(indexCount)));
}

} // namespace
} // namespace vellumo::test
