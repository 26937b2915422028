// SPDX-License-Identifier: MIT
#include "export/sql/SQLExportFixture.h"
#include "export/sql/SQLiteReader.h"
#include "support/DemoFile.h"

#include <algorithm>
#include <map>
#include <span>

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
            {{"b\"1", "Boolean"}, {"b2", "Byte"}, {"n", "Numeric"}, {"bin", "Binary", false, false}, {"x", ""},
                {"c", "Complex Value auto number", false, false}, {"m", "Memo/Hyperlink"}},
            {{"1", "255", "12.50", "'\\", "7", null, "😀"}, {null, null, null, null, null, "1", null}}),
        makeTable("no rows", {{"a", "Single"}}));
    const auto database = exported(*file);
    EXPECT_THAT(database.rows("SELECT * FROM \"T\"\"é' .\""),
        ElementsAre("1|255|12.5|'\\\\|7||😀", "NULL|NULL|NULL||NULL|1|NULL"));
    EXPECT_THAT(database.rows("SELECT name || ' ' || type || ' ' || \"notnull\" FROM pragma_table_info('T\"é'' .')"),
        ElementsAre("b\"1 INTEGER 0", "b2 INTEGER 0", "n INTEGER 0", "bin BLOB 1", "x  0", "c INTEGER 1", "m TEXT 0"));
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

std::string literal(std::string_view text)
{
    std::string literal = "'";
    for (const char character : text)
        literal += character == '\'' ? "''" : character == '\\' ? "\\\\" : std::string(1, character);
    return literal + '\'';
}

std::string hex(std::span<const std::byte> bytes)
{
    std::string digits;
    for (const auto byte : bytes)
        for (const auto half : {std::to_integer<unsigned>(byte) >> 4, std::to_integer<unsigned>(byte) & 15})
            digits += "0123456789ABCDEF"[half];
    return digits;
}

std::string cellCondition(const TAdmMDBColumn& column, const CellValue& value)
{
    const auto name = '"' + column.name() + '"';
    if (const auto* text = std::get_if<std::string_view>(&value)) return name + " = " + literal(*text);
    if (const auto* blob = std::get_if<std::shared_ptr<TAdmBlobData>>(&value))
        return "hex(" + name + ") = '" + hex((*blob)->data()) + '\'';
    return name + (column.allowZeroLength() == false ? " = ''" : " IS NULL");
}

// What holds for all columns of a row. SQLite compares, so a number may be written in any form.
std::string rowCondition(const TAdmMDBTable& table, std::size_t row)
{
    std::string condition;
    for (std::size_t c = 0; c < table.columns().size(); ++c)
        condition += (c > 0 ? " AND " : "") + cellCondition(*table.columns()[c], table.rows().value(row, c));
    return condition;
}

void expectSameRows(const SQLiteReader& database, const TAdmMDBTable& table)
{
    const auto count = "SELECT count(*) FROM \"" + table.name() + '"';
    std::map<std::string, int> conditions; // equal rows have the same
    for (std::size_t row = 0; row < table.rows().rowCount(); ++row)
        ++conditions[rowCondition(table, row)];
    EXPECT_THAT(database.rows(count), ElementsAre(std::to_string(table.rows().rowCount()))) << table.name();
    for (const auto& [condition, rows] : conditions)
        EXPECT_THAT(database.rows(count + " WHERE " + condition), ElementsAre(std::to_string(rows))) << table.name();
}

// Indexes are numbered where their name is taken already.
std::string withoutNumber(const std::string& name, const std::string& wanted)
{
    const auto rest = name.starts_with(wanted) ? std::string_view(name).substr(wanted.size()) : std::string_view();
    const bool isNumbered = rest.size() > 1 && rest[0] == '_' && rest.find_first_not_of("0123456789", 1) == rest.npos;
    return isNumbered ? wanted : name;
}

// Returns how many there are.
std::size_t expectSameIndexes(const SQLiteReader& database, const TAdmMDBTable& table)
{
    std::vector<const TAdmMDBIndex*> indexes;
    for (const auto& index : table.indices())
        if (!index->isPrimaryKey()) indexes.push_back(index.get());
    const auto names = database.rows("SELECT name FROM sqlite_master WHERE type = 'index' AND sql IS NOT NULL AND "
                                     "tbl_name = "
        + literal(table.name()) + " ORDER BY rowid");
    EXPECT_EQ(names.size(), indexes.size()) << table.name();
    for (std::size_t i = 0; i < std::min(names.size(), indexes.size()); ++i) {
        const auto& index = *indexes[i];
        EXPECT_EQ(withoutNumber(names[i], index.name()), index.name());
        std::vector<std::string> keys;
        for (const auto& key : index.keys())
            keys.push_back(key.name + (key.isAscending ? "|0" : "|1"));
        EXPECT_EQ(database.rows("SELECT name, \"desc\" FROM pragma_index_xinfo(" + literal(names[i])
                      + ") WHERE \"key\" ORDER BY seqno"),
            keys)
            << names[i];
        EXPECT_THAT(database.rows("SELECT \"unique\" FROM pragma_index_list(" + literal(table.name())
                        + ") WHERE name = " + literal(names[i])),
            ElementsAre(index.isUnique() ? "1" : "0"))
            << names[i];
    }
    return names.size();
}

// Returns how many there are.
std::size_t expectSameForeignKeys(const SQLiteReader& database, const TAdmMDBFile& file, const TAdmMDBTable& table)
{
    const auto sql = database.rows("SELECT sql FROM sqlite_master WHERE name = " + literal(table.name())).at(0);
    const auto action = [](bool cascades) { return cascades ? "|CASCADE" : "|SET NULL"; };
    std::vector<std::string> expected;
    for (const auto& relation : file.allForeignKeys()) {
        if (relation->referencingTable() != table.name()) continue;
        EXPECT_THAT(sql, testing::HasSubstr("CONSTRAINT \"" + relation->name() + "\" FOREIGN KEY"));
        for (std::size_t i = 0; i < relation->referencingColumns().size(); ++i)
            expected.push_back(std::to_string(i) + '|' + relation->referencedTable() + '|'
                + relation->referencingColumns()[i] + '|' + relation->referencedColumns()[i]
                + action(relation->onUpdateCascade()) + action(relation->onDeleteCascade()));
    }
    EXPECT_THAT(database.rows("SELECT seq, \"table\", \"from\", \"to\", on_update, on_delete FROM "
                              "pragma_foreign_key_list("
                    + literal(table.name()) + ')'),
        testing::UnorderedElementsAreArray(expected))
        << table.name();
    return expected.size();
}

void expectSame(const SQLiteReader& database, const TAdmMDBFile& file)
{
    std::size_t indexCount = 0;
    std::size_t foreignKeyCount = 0;
    for (const auto& table : file.tables()) {
        expectSameRows(database, *table);
        indexCount += expectSameIndexes(database, *table);
        foreignKeyCount += expectSameForeignKeys(database, file, *table);
    }
    EXPECT_GT(indexCount, 0U);
    EXPECT_GT(foreignKeyCount, 0U);
}

TEST_F(SQLiteExport, SampleDatabaseArrivesWhole)
{
    const DemoFile demo;
    expectSame(exported(demo.file()), demo.file());
}

TEST_F(SQLiteExport, RealDatabaseArrivesWhole)
{
    TAdmMDBFile file;
    file.setFullPath(VELLUMO_SOURCE_DIR "/../shared/corpus/nwind-jet3.mdb");
    if (!file.open()) GTEST_SKIP() << "no corpus here";
    expectSame(exported(file), file);
}

} // namespace
} // namespace vellumo::test
