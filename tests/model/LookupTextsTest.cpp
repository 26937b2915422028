// SPDX-License-Identifier: MIT
#include "model/LookupTexts.h"

#include "samples/DatabaseWriter.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace vellumo {
namespace {

using namespace std::string_literals;
using samples::ColumnType;
using samples::Property;
using samples::PropertyType;
using samples::Value;

Property number(std::string name, std::int32_t value) { return {std::move(name), PropertyType::Integer, value}; }

// The properties of a lookup whose first of two columns is stored and hidden.
std::vector<Property> lookup(std::string type, std::string source, std::string widths = "0;1440", int bound = 1)
{
    return {number("DisplayControl", 111), samples::textProperty("RowSourceType", std::move(type)),
        samples::memoProperty("RowSource", std::move(source)), number("BoundColumn", bound), number("ColumnCount", 2),
        samples::textProperty("ColumnWidths", std::move(widths))};
}

std::unique_ptr<TAdmMDBTable> copyOf(const TAdmMDBTable& table)
{
    return tableWithLookupTexts(table, lookUp(table).value());
}

class LookupTextsTest : public testing::Test {
protected:
    // People 1 "Ann", "Lee" and 2 "Bo", without a last name; in "Uses" a column of this type with the properties, in
    // four rows 1, null, 2 and 3; and a query.
    void open(std::vector<Property> properties)
    {
        const std::int64_t stored[] = {1, 2, 3};
        samples::DatabaseDescription database;
        database.tables = {
            {.name = "People",
                .columns = {{.name = "ID", .type = ColumnType::Long}, {.name = "First"}, {.name = "Last Name"},
                    {.name = "Picture", .type = ColumnType::Ole}},
                .indexes = {{.name = "Key", .columns = {{"ID"}}, .primary = true}},
                .rows = samples::rowsOf(std::vector<std::vector<Value>>{
                    {stored[0], std::string("Ann"), std::string("Lee")}, {stored[1], std::string("Bo")}})},
            {.name = "Uses",
                .columns = {{.name = "Who", .type = ColumnType::Long, .properties = std::move(properties)},
                    {.name = "N"}},
                .indexes = {{.name = "ByWho", .columns = {{"N"}, {"Who"}}}, {.name = "ByN", .columns = {{"N"}}}},
                .rows = samples::rowsOf(std::vector<std::vector<Value>>{{stored[0], std::string("a")},
                    {Value(), std::string("b")}, {stored[1], std::string("c")}, {stored[2], std::string("d")}})},
            {.name = "Twice",
                .columns = {{.name = "K", .type = ColumnType::Long}, {.name = "T"}},
                .rows = samples::rowsOf(std::vector<std::vector<Value>>{{stored[0], std::string("a")},
                    {stored[0], std::string("b")}, {stored[1], std::string("c")}, {stored[1], std::string("c")}})}};
        database.relations = {{.name = "R",
            .table = "Uses",
            .columns = {"Who"},
            .referencedTable = "People",
            .referencedColumns = {"ID"},
            .enforced = false}};
        database.relations.push_back({.name = "S",
            .table = "People",
            .columns = {"ID"},
            .referencedTable = "Uses",
            .referencedColumns = {"Who"},
            .enforced = false});
        database.otherEntries = {
            {.name = "Names",
                .query = {{.attribute = 5, .name1 = "People"}, {.attribute = 6, .expression = "People.ID"},
                    {.attribute = 6, .name1 = "Full", .expression = "[Last Name] & \", \" & First"},
                    {.attribute = 11, .expression = "First"}}},
            {.name = "Some",
                .query = {{.attribute = 5, .name1 = "Names", .name2 = "n"},
                    {.attribute = 6, .name1 = "Key", .expression = "n.ID"}, {.attribute = 6, .expression = "n.Full"},
                    {.attribute = 8, .expression = "n.ID > 1"}}},
            {.name = "Loop",
                .query = {{.attribute = 5, .name1 = "Loop"}, {.attribute = 6, .expression = "ID"},
                    {.attribute = 6, .expression = "First"}}}};
        ASSERT_EQ(samples::writeDatabase(database, folder.path("a.mdb")).error, "");
        file.close();
        file.setFullPath(folder.path("a.mdb"));
        ASSERT_TRUE(file.open());
    }
    // The four cells as they are shown; "-" for null, nothing when nothing is looked up.
    std::string shown()
    {
        const auto copy = copyOf(*file.findTable("Uses"));
        std::string text;
        for (std::size_t row = 0; copy && row < 4; ++row) {
            const auto cell = copy->rows().text(row, 0);
            text += (row == 0 ? "" : "|") + (cell.empty() ? std::string("-") : std::string(cell));
        }
        return text;
    }

    test::TempFolder folder;
    TAdmMDBFile file;
};

TEST_F(LookupTextsTest, AreFoundInListsTablesAndQueriesOfOneTable)
{
    using enum LookupState;
    const char* both = "Lee, Ann|-|, Bo|3";
    const struct {
        const char* name;
        std::vector<Property> properties;
        LookupState state;
        const char* shown;
    } cases[] = {
        {"no lookup", {number("DisplayControl", 109), samples::memoProperty("RowSource", "x")}, None, ""},
        {"list", lookup("Value List", "1;One;\"2\";\"Two; \"\"2\"\"\";3"), Resolved, "One|-|Two; \"2\"|3"},
        {"list, bound to its second column", lookup("Value List", "One;1;Two; 2 ;'It''s';3", "1440;0", 2), Resolved,
            "One|-|Two|It's"},
        {"shows what it stores", lookup("Value List", "1;2", ""), None, ""},
        {"hides everything", lookup("Value List", "1;2", "0;0cm"), Unresolved, ""},
        {"table", lookup("Table/Query", "[people]"), Resolved, "Ann|-|Bo|3"},
        {"query", lookup("Table/Query", "Names"), Resolved, both},
        {"all of a table", lookup("Table/Query", "select P.* from People as P order by x;"), Resolved, "Ann|-|Bo|3"},
        {"terms",
            lookup("Table/Query", "SELECT DISTINCTROW ID, [Last Name] & ', ' & [People].[First] AS Name FROM People"),
            Resolved, both},
        {"nothing to show stays as it is", lookup("Table/Query", "SELECT ID, [Last Name] FROM People;"), Resolved,
            "Lee|-|2|3"},
        {"too few columns", lookup("Table/Query", "SELECT ID FROM People;"), Unresolved, ""},
        {"a condition",
            lookup("Table/Query",
                "SELECT DISTINCT ID, First FROM People WHERE First = 'x' OR ID IN (SELECT a FROM b UNION SELECT c FROM "
                "d);"),
            Resolved, "Ann|-|Bo|3"},
        {"parameters",
            lookup("Table/Query", "PARAMETERS [Which?] Long; SELECT ID, First FROM People WHERE ID > [Which?];"),
            Resolved, "Ann|-|Bo|3"},
        {"query over a query", lookup("Table/Query", "Some"), Resolved, both},
        {"statement over it", lookup("Table/Query", "SELECT TOP 5 PERCENT Key, Full & '!' FROM Some ORDER BY Full"),
            Resolved, "Lee, Ann!|-|, Bo!|3"},
        {"query over itself", lookup("Table/Query", "Loop"), Unresolved, ""},
        {"a key with two texts", lookup("Table/Query", "SELECT K, T FROM Twice"), Resolved, "a|-|c|3"},
        {"a key with two texts, one of which may not be meant",
            lookup("Table/Query", "SELECT K, T FROM Twice WHERE T > 'a'"), Resolved, "1|-|c|3"},
        {"joins",
            lookup("Table/Query",
                "SELECT p.ID, p.First, u.N FROM (People AS p INNER JOIN Uses u ON (p.ID = u.Who)) LEFT JOIN Uses AS v "
                "ON p.ID = v.Who WHERE u.N > 'a'"),
            Resolved, "Ann|-|Bo|3"},
        {"columns of two tables",
            lookup("Table/Query", "SELECT Who, First FROM People INNER JOIN Uses ON People.ID = Uses.Who"), Unresolved,
            ""},
        {"a table joined with itself",
            lookup("Table/Query", "SELECT a.ID, b.First FROM People a INNER JOIN People b ON a.ID > b.ID"), Unresolved,
            ""},
        {"of which of two", lookup("Table/Query", "SELECT ID, First FROM People AS a, People AS b"), Unresolved, ""},
        {"other columns are all the same",
            lookup("Table/Query",
                "SELECT ID, First, Len(First) AS n, (SELECT Max(N) FROM Uses WHERE Who = 1) AS m FROM People"),
            Resolved, "Ann|-|Bo|3"},
        {"a union",
            lookup("Table/Query", "SELECT ID, First FROM People WHERE ID = 1 UNION SELECT ID, First FROM People"),
            Unresolved, ""},
        {"a statement inside", lookup("Table/Query", "SELECT ID, First FROM (SELECT * FROM People) AS x"), Unresolved,
            ""},
        {"a function", lookup("Table/Query", "SELECT ID, UCase(First) FROM People;"), Unresolved, ""},
        {"two tables", lookup("Table/Query", "SELECT ID, First FROM People, Uses;"), Resolved, "Ann|-|Bo|3"},
        {"another file", lookup("Table/Query", "SELECT ID, First FROM People IN 'x.mdb';"), Unresolved, ""},
        {"an object", lookup("Table/Query", "SELECT ID, Picture FROM People;"), Unresolved, ""},
        {"no such column", lookup("Table/Query", "SELECT ID, [First FROM People"), Unresolved, ""},
        {"no such table", lookup("Table/Query", "Nobody"), Unresolved, ""},
        {"names of fields", lookup("Field List", "People"), Unresolved, ""},
    };
    for (const auto& c : cases) {
        open(c.properties);
        EXPECT_EQ(lookupState(*file.findTable("Uses")->columns()[0]), c.state) << c.name;
        EXPECT_EQ(shown(), c.shown) << c.name;
    }
}

// A table "Codes" of keys and texts, and "Uses" with columns of several numbers and of several texts, by row the values
// and what is shown.
TEST_F(LookupTextsTest, EachOfSeveralValuesIsLookedUp)
{
    const auto source = lookup("Table/Query", "Codes");
    const std::vector<std::vector<Value>> rows = {
        {samples::NumberValues{2, 1, 3}, samples::TextValues{"1", "2"}},
        {samples::NumberValues{}, samples::TextValues{"1; 2"}},
        {samples::NumberValues{1}, samples::TextValues{"2", "4"}},
    };
    const char* shown[][2] = {{"Two; One; 3", "1; 2"}, {"", "1; 2"}, {"One", "Two; 4"}}; // two cells look like "1; 2"
    samples::DatabaseDescription database{.newerVersion = 3};
    database.tables = {
        {.name = "Codes",
            .columns = {{.name = "Code"}, {.name = "Text"}},
            .rows = samples::rowsOf(std::vector<std::vector<Value>>{{std::string("1"), std::string("One")},
                {std::string("2"), std::string("Two")}, {std::string("1; 2"), std::string("Both")}})},
        {.name = "Uses",
            .columns = {{.name = "Numbers", .properties = source, .complex = samples::Complex::Numbers},
                {.name = "Texts", .properties = source, .complex = samples::Complex::Texts}},
            .rows = samples::rowsOf(rows)}};
    ASSERT_EQ(samples::writeDatabase(database, folder.path("a.accdb")).error, "");
    file.setFullPath(folder.path("a.accdb"));
    ASSERT_TRUE(file.open({.newerFormats = true}));
    const auto& uses = *file.findTable("Uses");
    EXPECT_EQ(uses.rows().text(0, 0), "2; 1; 3");
    const auto copy = copyOf(uses);
    ASSERT_NE(copy, nullptr);
    for (std::size_t row = 0; row < std::size(shown); ++row)
        for (std::size_t column = 0; column < 2; ++column)
            EXPECT_EQ(copy->rows().text(row, column), shown[row][column]) << row << " " << column;
}

// What the texts of a store do not tell of their values is not lost by the way.
TEST_F(LookupTextsTest, ACopyKeepsWhatTextsDoNotTell)
{
    constexpr double millisecond = 1.0 / 86'400'000;
    const samples::DatabaseDescription database{
        .tables = {{.name = "Uses",
            .columns = {{.name = "ID", .type = ColumnType::Long, .autonumber = true},
                {.name = "Code", .properties = lookup("Value List", "a;Apple")}, {.name = "Text"},
                {.name = "Date", .type = ColumnType::DateTime}},
            .rows = samples::rowsOf(std::vector<std::vector<Value>>{
                {std::int64_t{7}, std::string("a"), std::string(), samples::Date{45000 + 250 * millisecond}},
                {std::int64_t{9}, std::string(), std::string("b"), samples::Date{45000}},
                {std::int64_t{8}, Value(), Value(), Value()}, {std::int64_t{6}, "b\0c"s, Value(), Value()},
                {std::int64_t{5}, "d\0e"s, Value(), Value()}})}}};
    ASSERT_EQ(samples::writeDatabase(database, folder.path("a.mdb")).error, "");
    file.setFullPath(folder.path("a.mdb"));
    ASSERT_TRUE(file.open());
    const auto copy = copyOf(*file.findTable("Uses"));
    EXPECT_EQ(copy->rows().text(0, 1), "Apple");
    EXPECT_EQ(copy->lastAutoNumber(), 9);
    const auto noteOf = [&](std::size_t column, std::uint32_t row) -> std::optional<RowNotes::Number> {
        const auto* notes = copy->rows().groups()[0].texts[column].notes();
        return notes == nullptr ? std::nullopt : notes->at(row);
    };
    EXPECT_EQ(noteOf(1, 0), std::nullopt);
    EXPECT_EQ(noteOf(1, 1), -1) << "an empty text, and no null";
    EXPECT_EQ(noteOf(1, 2), std::nullopt);
    for (const std::uint32_t row : {3U, 4U})
        EXPECT_EQ(
            copy->rows().groups()[0].texts[1].notes()->wholeText(noteOf(1, row).value()), row == 3 ? "b\0c"s : "d\0e"s);
    EXPECT_EQ(noteOf(2, 0), -1);
    EXPECT_EQ(noteOf(2, 2), std::nullopt);
    EXPECT_EQ(noteOf(3, 0), 250);
    EXPECT_EQ(noteOf(3, 1), std::nullopt);
}

TEST_F(LookupTextsTest, ACopyOfAFileIsOneOfTextsWithoutTheirKeys)
{
    open(lookup("Table/Query", "Names"));
    auto [copy, notes] = fileWithLookupTexts(file);
    file.close();
    std::string told;
    for (const auto& note : notes)
        told += lookupNoteText(note) + '\n';
    EXPECT_EQ(told,
        "Uses: the index ByWho is left out, because of its lookup texts.\n"
        "Uses: the relation R is left out, because of its lookup texts.\n"
        "People: the relation S is left out, because of its lookup texts.\n");
    const auto* uses = copy->findTable("Uses");
    EXPECT_EQ(uses->file(), copy.get());
    EXPECT_EQ(uses->columns()[0]->type(), vellumo::ColumnType::Text);
    EXPECT_EQ(uses->rows().text(0, 0), "Lee, Ann");
    EXPECT_EQ(uses->rows().text(3, 1), "d");
    ASSERT_EQ(uses->indices().size(), 1U);
    EXPECT_TRUE(copy->allForeignKeys().empty());
    EXPECT_TRUE(copy->findTable("People")->columns()[0]->isPrimaryKey());
}

} // namespace
} // namespace vellumo
