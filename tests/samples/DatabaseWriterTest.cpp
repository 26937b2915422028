// SPDX-License-Identifier: MIT
#include "samples/DatabaseWriter.h"

#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace vellumo::samples {
namespace {

class DatabaseWriter : public testing::Test {
protected:
    std::string contents() const { return m_folder.read("test.mdb").value_or(""); }

    test::TempFolder m_folder;
    std::string m_path = m_folder.path("test.mdb");
};

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

// A fixture that silently wrote something else would make the tests that use it prove nothing.
TEST_F(DatabaseWriter, LeavesNoFileOfWhatTheFormatCannotHold)
{
    const struct {
        const char* name;
        JetVersion version;
        ColumnType type;
        Value value;
    } cases[] = {
        {"a value of another type", JetVersion::Jet4, ColumnType::Long, "7"},
        {"a number too large", JetVersion::Jet4, ColumnType::Byte, 256},
        {"not in the code page", JetVersion::Jet3, ColumnType::Text, "α"},
        {"a control of Latin 1", JetVersion::Jet3, ColumnType::Text, "\xC2\x81"},
        {"cut off", JetVersion::Jet4, ColumnType::Text, "a\xE2\x82"},
        {"overlong", JetVersion::Jet4, ColumnType::Text, "\xE0\x80\x80"},
        {"a surrogate", JetVersion::Jet4, ColumnType::Text, "\xED\xA0\x80"},
    };
    for (const auto& test : cases) {
        DatabaseDescription database{.version = test.version};
        database.tables = {{.name = "T",
            .columns = {{.name = "C", .type = test.type}},
            .rows = rowsOf(std::vector<Row>{{{test.value}}})}};
        EXPECT_EQ(writeDatabase(database, m_path).error, "A value of column <C> in table <T> cannot be stored.")
            << test.name;
        EXPECT_FALSE(std::filesystem::exists(m_path)) << test.name;
    }
}

TEST_F(DatabaseWriter, TakesTheLongestRow)
{
    // Jet 4: 2 (count) + value + 2 (end) + 2 (offset) + 2 (number) + 1 (mask) = 4080; Jet 3 adds 7 jumps: 2036.
    for (const auto& [version, size] : {std::pair{JetVersion::Jet4, 4071}, std::pair{JetVersion::Jet3, 2024}}) {
        for (const int more : {0, 1}) {
            DatabaseDescription database{.version = version};
            database.tables.resize(1);
            database.tables[0] = {.name = "T", .columns = {{.name = "B", .type = ColumnType::Binary}}};
            database.tables[0].rows = rowsOf(std::vector<Row>{{{Bytes(static_cast<std::size_t>(size + more))}}});
            EXPECT_EQ(writeDatabase(database, m_path).ok(), more == 0) << size + more;
        }
    }
}

// Both sides of a relation, read from the bytes of the two definitions.
TEST_F(DatabaseWriter, WritesBothSidesOfARelation)
{
    auto database = twoTables();
    database.relations[0].cascadeDeletes = true;
    database.tables[0].indexes[0].number = 3; // a gap before it
    const auto result = writeDatabase(database, m_path);
    ASSERT_EQ(result.error, "");
    const auto file = contents();
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
}

} // namespace
} // namespace vellumo::samples
