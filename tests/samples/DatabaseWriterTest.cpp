#include "samples/DatabaseWriter.h"

#include "FileContents.h"
#include "samples/Damage.h"
#include "samples/SampleDatabases.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace vellumo::samples {
namespace {

std::string temporaryPath()
{
    return testing::TempDir() + "vellumo-" + testing::UnitTest::GetInstance()->current_test_info()->name() + ".mdb";
}

std::uint32_t numberAt(const std::string& bytes, std::size_t offset)
{
    std::uint32_t number = 0;
    for (int i = 3; i >= 0; --i)
        number = number << 8 | static_cast<unsigned char>(bytes.at(offset + static_cast<std::size_t>(i)));
    return number;
}

DatabaseDescription twoTables()
{
    DatabaseDescription database;
    database.tables.resize(2);
    database.tables[0] = {.name = "Keys", .columns = {{.name = "ID", .type = ColumnType::Long}, {.name = "Text"}}};
    database.tables[0].indexes = {{.name = "PrimaryKey", .columns = {{"ID"}}, .primary = true}};
    database.tables[1] = {.name = "Uses", .columns = {{.name = "KeyID", .type = ColumnType::Long}}};
    database.relations = {{.name = "KeysUses",
        .table = "Uses",
        .columns = {"KeyID"},
        .referencedTable = "Keys",
        .referencedColumns = {"ID"}}};
    return database;
}

TEST(DatabaseWriter, RefusesWhatCannotBeWritten)
{
    const struct {
        const char* name;
        void (*spoil)(DatabaseDescription&);
        const char* error;
    } cases[] = {
        {"no columns",
            [](auto& database) {
                database.tables[1].columns.clear();
                database.relations.clear();
            },
            "Table <Uses> must have 1 to 255 columns."},
        {"a number twice", [](auto& database) { database.tables[0].columns[1].number = 0; },
            "The number of column <Text> in table <Keys> is taken or out of range."},
        {"number 255", [](auto& database) { database.tables[0].columns[1].number = 255; },
            "The number of column <Text> in table <Keys> is taken or out of range."},
        {"a fixed memo",
            [](auto& database) {
                database.tables[0].columns[1].type = ColumnType::Memo;
                database.tables[0].columns[1].placement = Placement::Fixed;
            },
            "Column <Text> in table <Keys> cannot be stored like that."},
        {"an index on nothing", [](auto& database) { database.tables[0].indexes[0].columns[0].column = "No"; },
            "Index <PrimaryKey> of table <Keys> has no such columns."},
        {"a relation to nowhere", [](auto& database) { database.relations[0].referencedTable = "No"; },
            "Relation <KeysUses> has no such tables or columns."},
        {"columns that do not pair", [](auto& database) { database.relations[0].columns.push_back("KeyID"); },
            "Relation <KeysUses> has no such tables or columns."},
        {"no unique index", [](auto& database) { database.tables[0].indexes.clear(); },
            "Relation <KeysUses> needs a unique index in table <Keys>."},
        {"a value of another type", [](auto& database) { database.tables[1].rows = rowsOf(std::vector<Row>{{{"7"}}}); },
            "A value of column <KeyID> in table <Uses> cannot be stored."},
        {"more columns than there are",
            [](auto& database) {
                database.tables[1].rows = rowsOf(std::vector<Row>{{{7}, RowState::Live, 2}});
            },
            "A row of table <Uses> states an impossible size."},
        {"a row longer than a page",
            [](auto& database) {
                database.tables[0].columns.push_back({.name = "More", .type = ColumnType::Binary});
                database.tables[0].rows = rowsOf(std::vector<Row>{{{1, "", Bytes(4080)}}});
            },
            "A row of table <Keys> is longer than a page."},
        {"a name that Jet 3 cannot hold",
            [](auto& database) {
                database.version = JetVersion::Jet3;
                database.tables[0].columns[1].name = "Ω";
            },
            "A name in table <Keys> cannot be stored."},
    };
    const auto path = temporaryPath();
    for (const auto& test : cases) {
        auto database = twoTables();
        test.spoil(database);
        EXPECT_EQ(writeDatabase(database, path).error, test.error) << test.name;
        EXPECT_FALSE(std::filesystem::exists(path)) << test.name;
    }
    EXPECT_EQ(writeDatabase(twoTables(), "/nowhere/at/all.mdb").error, "Unable to write file </nowhere/at/all.mdb>.");
}

TEST(DatabaseWriter, TakesTheLongestRow)
{
    const auto path = temporaryPath();
    // Jet 4: 2 (count) + value + 2 (end) + 2 (offset) + 2 (number) + 1 (mask) = 4080; Jet 3 adds 7 jumps: 2036.
    for (const auto& [version, size] : {std::pair{JetVersion::Jet4, 4071}, std::pair{JetVersion::Jet3, 2024}}) {
        for (const int more : {0, 1}) {
            DatabaseDescription database{.version = version};
            database.tables.resize(1);
            database.tables[0] = {.name = "T", .columns = {{.name = "B", .type = ColumnType::Binary}}};
            database.tables[0].rows = rowsOf(std::vector<Row>{{{Bytes(static_cast<std::size_t>(size + more))}}});
            EXPECT_EQ(writeDatabase(database, path).ok(), more == 0) << size + more;
        }
    }
    std::filesystem::remove(path);
}

// Both sides of a relation, read from the bytes of the two definitions.
TEST(DatabaseWriter, WritesBothSidesOfARelation)
{
    const auto path = temporaryPath();
    auto database = twoTables();
    database.relations[0].cascadeDeletes = true;
    database.tables[0].indexes[0].number = 3; // a gap before it
    const auto result = writeDatabase(database, path);
    ASSERT_EQ(result.error, "");
    const auto file = contentsOf(path);
    const auto keysPage = result.tables[0].definitionPages[0];
    const auto usesPage = result.tables[1].definitionPages[0];
    const auto logicalAt = [](std::uint32_t page, std::size_t physical, std::size_t columns, std::size_t nameBytes) {
        return page * 4096U + 63 + 12 * physical + 25 * columns + nameBytes + 52 * physical;
    };
    const struct {
        const char* name;
        std::size_t offset;
        std::uint32_t number, physical, side, otherNumber, otherPage, bytes;
    } cases[] = {
        // Sorted by name: ".rB" comes before "PrimaryKey".
        {"referenced side", logicalAt(keysPage, 1, 2, 2 + 4 + 2 + 8), 4, 0, 1, 0, usesPage, 0x020100},
        {"primary key", logicalAt(keysPage, 1, 2, 2 + 4 + 2 + 8) + 28, 3, 0, 0, 0xFFFFFFFF, 0, 0x010404},
        {"referencing side", logicalAt(usesPage, 1, 1, 2 + 10), 0, 0, 2, 4, keysPage, 0x020100},
    };
    for (const auto& test : cases) {
        EXPECT_EQ(numberAt(file, test.offset + 4), test.number) << test.name;
        EXPECT_EQ(numberAt(file, test.offset + 8), test.physical) << test.name;
        EXPECT_EQ(numberAt(file, test.offset + 12) & 0xFF, test.side) << test.name;
        EXPECT_EQ(numberAt(file, test.offset + 13), test.otherNumber) << test.name;
        EXPECT_EQ(numberAt(file, test.offset + 17), test.otherPage) << test.name;
        EXPECT_EQ(numberAt(file, test.offset + 21) & 0xFFFFFF, test.bytes) << test.name << ": cascades and kind";
    }
    std::filesystem::remove(path);
}

TEST(DatabaseWriter, SaysWhereLongValuesLieSoThatTheyCanBeDamaged)
{
    const auto path = temporaryPath();
    for (const auto version : {JetVersion::Jet3, JetVersion::Jet4}) {
        const auto result = writeDatabase(typesDatabase(version), path);
        ASSERT_EQ(result.error, "");
        const auto& values = result.tables[2].longValues;
        const auto chain = std::find_if(
            values.begin(), values.end(), [](const auto& value) { return value.row == 3 && value.column == 2; });
        ASSERT_NE(chain, values.end());
        ASSERT_EQ(chain->pieces.size(), 3U) << "21 bytes in links of 7";
        auto file = contentsOf(path);
        EXPECT_EQ(numberAt(file, chain->headerOffset), 21U);
        EXPECT_EQ(numberAt(file, chain->headerOffset + 4), chain->pieces[0].pointer);
        EXPECT_EQ(numberAt(file, chain->pieces[0].fileOffset), chain->pieces[1].pointer);
        EXPECT_EQ(numberAt(file, chain->pieces[2].fileOffset), 0U);

        EXPECT_TRUE(closeChain(path, *chain));
        EXPECT_TRUE(stateLength(path, *chain, 0xFFFFFFFF));
        file = contentsOf(path);
        EXPECT_EQ(numberAt(file, chain->pieces[2].fileOffset), chain->pieces[0].pointer);
        EXPECT_EQ(numberAt(file, chain->headerOffset), 0x3FFFFFFFU) << "the kind stays";
        EXPECT_FALSE(closeChain(path, values[0])) << "an inline value is no chain";
    }
    std::filesystem::remove(path);
}

TEST(DatabaseWriter, SpreadsADefinitionOverPages)
{
    const auto path = temporaryPath();
    const auto result = writeDatabase(wideDatabase(), path);
    const auto& pages = result.tables[0].definitionPages;
    // 63 + 255 * 25 + names of 5394 bytes + 25 memos of 10 + 2 = 12084 bytes, 4088 to a page after the first 8.
    ASSERT_EQ(pages.size(), 3U);
    const auto file = contentsOf(path);
    for (std::size_t i = 0; i < pages.size(); ++i) {
        EXPECT_EQ(numberAt(file, pages[i] * 4096U) & 0xFFFF, 0x0102U);
        EXPECT_EQ(numberAt(file, pages[i] * 4096U + 4), i + 1 < pages.size() ? pages[i + 1] : 0);
    }
    std::filesystem::remove(path);
}

} // namespace
} // namespace vellumo::samples
