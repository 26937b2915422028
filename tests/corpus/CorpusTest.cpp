// SPDX-License-Identifier: MIT
#include "embedded/TAdmBlobData.h"
#include "model/LookupTexts.h"
#include "model/TAdmMDBFile.h"
#include "samples/DatabaseWriter.h"
#include "samples/DemoDatabase.h"
#include "samples/SampleDatabases.h"
#include "support/Command.h"
#include "support/DemoFile.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <set>

namespace vellumo {
namespace {

const std::filesystem::path corpus = VELLUMO_SOURCE_DIR "/../shared/corpus";

constexpr const char* fieldEnd = "\x1F";
constexpr const char* rowEnd = "\x1E";

std::vector<std::string> split(std::string_view text, std::string_view end)
{
    std::vector<std::string> pieces;
    while (!text.empty()) {
        const auto found = text.find(end);
        pieces.emplace_back(text.substr(0, found));
        if (found == std::string_view::npos) break;
        text.remove_prefix(found + end.size());
    }
    return pieces;
}

// A field that ends the row is kept when it is empty.
std::vector<std::string> fields(std::string_view row)
{
    auto pieces = split(row, fieldEnd);
    if (row.empty() || row.ends_with(fieldEnd)) pieces.emplace_back();
    return pieces;
}

// The tool may write a floating-point number with other digits than the fewest that give the value back.
bool isSameNumber(const std::string& ours, const std::string& theirs, double tolerance)
{
    double a = 0;
    double b = 1;
    std::from_chars(ours.data(), ours.data() + ours.size(), a);
    std::from_chars(theirs.data(), theirs.data() + theirs.size(), b);
    return std::abs(a - b) <= tolerance * std::max(std::abs(a), std::abs(b));
}

// The tool writes two question marks for a character beyond the basic plane, which has four bytes.
std::string asTheToolWrites(std::string_view text)
{
    std::string written;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isBeyond = static_cast<unsigned char>(text[i]) >= 0xF0;
        written += isBeyond ? "??" : std::string_view(&text[i], 1);
        if (isBeyond) i += 3;
    }
    return written;
}

// Asked to leave out objects, the tool leaves these out as well.
bool isLeftOut(const TAdmMDBColumn& column)
{
    return column.isOLE() || column.dataType() == "Binary" || column.dataType() == "Replication ID";
}

bool isSame(const TAdmMDBColumn& column, const std::string& ours, const std::string& theirs)
{
    if (asTheToolWrites(ours) == theirs || (theirs.empty() && isLeftOut(column))) return true;
    if (column.dataType() == "Single") return isSameNumber(ours, theirs, 1e-7);
    if (column.dataType() == "Double") return isSameNumber(ours, theirs, 1e-15);
    return false;
}

// The tool gives the number of a group of values, and of new types and calculated columns nothing or something else.
bool isBeyondTheTool(const TAdmMDBColumn& column)
{
    const auto type = column.type();
    return column.isOLE() || column.isCalculatedType() || type == ColumnType::MultipleValues
        || type == ColumnType::BigInt || type == ColumnType::DateTimeExtended;
}

// A file of the corpus, or one that is made.
struct Source {
    const char* name;
    samples::DatabaseDescription (*make)() = nullptr;
    std::optional<std::size_t> cells{}; // that the tool gives and that are not beyond it
};
const OpenOptions anyFormat{.newerFormats = true, .password = "Test123"};

class CorpusTest : public testing::TestWithParam<Source> {
protected:
    void SetUp() override
    {
        path = (corpus / GetParam().name).string();
        if (GetParam().make != nullptr) write(GetParam().make());
        if (!std::filesystem::exists(path)) GTEST_SKIP() << "the corpus is not here";
        if (!test::isInstalled("mdb-export")) GTEST_SKIP() << "mdbtools is not installed";
        ::setenv("LC_ALL", "C.UTF-8", 1); // the tools take table names in the locale's encoding
        file.setFullPath(path);
    }
    void write(const samples::DatabaseDescription& database)
    {
        path = folder.path("made.mdb");
        ASSERT_EQ(samples::writeDatabase(database, path).error, "");
    }

    test::TempFolder folder;
    std::string path;
    TAdmMDBFile file;
};

TEST_P(CorpusTest, ListsTheSameTablesRowsColumnsAndValues)
{
    ASSERT_TRUE(file.open(anyFormat));
    EXPECT_TRUE(file.damage().empty());
    std::set<std::string> ours;
    for (const auto& table : file.tables())
        ours.insert(table->name());
    const auto listed = split(test::run({"mdb-tables", "-1", path}).out, "\n");
    EXPECT_EQ(ours, std::set<std::string>(listed.begin(), listed.end()));

    std::size_t compared = 0;
    for (const auto& table : file.tables()) {
        SCOPED_TRACE(table->name());
        const auto exported = test::run({"mdb-export", "-Q", "-b", "strip", "-d", fieldEnd, "-R", rowEnd, "-D",
            "%m/%d/%Y %H:%M:%S", "-T", "%m/%d/%Y %H:%M:%S", path, table->name()});
        const auto theirRows = split(exported.out, rowEnd);
        ASSERT_FALSE(theirRows.empty());
        const auto names = fields(theirRows[0]);
        const auto isHidden = [](const std::string& name) { return name.starts_with("VersionHistory_"); };
        ASSERT_EQ(std::ranges::count_if(names, std::not_fn(isHidden)), std::ssize(table->columns()));
        ASSERT_EQ(theirRows.size() - 1, table->rows().rowCount());
        for (std::size_t row = 0; row + 1 < theirRows.size(); ++row) {
            const auto theirs = fields(theirRows[row + 1]);
            ASSERT_EQ(theirs.size(), names.size()) << "row " << row;
            for (std::size_t i = 0; i < names.size(); ++i) {
                if (isHidden(names[i])) continue;
                const auto* column = table->findColumn(names[i]);
                ASSERT_NE(column, nullptr) << names[i];
                if (isBeyondTheTool(*column)) continue;
                ++compared;
                const auto position = *table->rows().columnIndex(names[i]);
                const std::string value(table->rows().text(row, position));
                EXPECT_TRUE(isSame(*column, value, theirs[i]))
                    << "row " << row << " " << names[i] << ": " << value << " / " << theirs[i];
            }
        }
    }
    EXPECT_EQ(compared, GetParam().cells.value_or(compared));
}

// Access has one over the numbers of groups of each column of several values.
std::size_t hiddenIndexes(const TAdmMDBTable& table)
{
    std::size_t count = 0;
    for (std::size_t i = 0; i < table.columns().size(); ++i)
        if (jet::isComplex(table.columns()[i]->type()) || table.keepsHistory(i)) ++count;
    return count;
}

// Per table, how often the tool's schema makes an index. It says so when it cannot follow a file's index numbers; such
// a table is passed over.
TEST_P(CorpusTest, HasTheSameIndexes)
{
    ASSERT_TRUE(file.open(anyFormat));
    bool isAnyCompared = false;
    for (const auto& table : file.tables()) {
        SCOPED_TRACE(table->name());
        const auto schema =
            test::run({"mdb-schema", "--indexes", "--no-relations", "-T", table->name(), path, "postgres"});
        if (!schema.err.empty()) continue;
        isAnyCompared = true;
        std::size_t count = 0;
        std::size_t primary = 0;
        for (const auto& line : split(schema.out, "\n")) {
            const bool isPrimary = line.find("PRIMARY KEY (") != std::string::npos;
            if (isPrimary) ++primary;
            if (isPrimary || line.starts_with("CREATE INDEX \"") || line.starts_with("CREATE UNIQUE INDEX \"")) ++count;
        }
        EXPECT_EQ(table->indices().size() + hiddenIndexes(*table), count);
        EXPECT_EQ(static_cast<std::size_t>(std::count_if(table->indices().begin(), table->indices().end(),
                      [](const auto& index) { return index->isPrimaryKey(); })),
            primary);
    }
    if (!isAnyCompared) GTEST_SKIP() << "the tool can follow the indexes of no table here";
}

samples::DatabaseDescription rowsDatabase() { return samples::millionDatabase(3000); }

INSTANTIATE_TEST_SUITE_P(Files, CorpusTest,
    testing::Values(Source{"nwind-jet3.mdb", nullptr, 36328 - 8 - 9}, Source{"types-jet3.mdb", nullptr, 18},
        Source{"compound-index-jet4.mdb", nullptr, 1536}, Source{"indexes-jet4.mdb", nullptr, 34},
        Source{"deleted-columns-jet4.mdb", nullptr, 8}, Source{"queries-jet4.mdb", nullptr, 0},
        Source{"password-jet4.mdb", nullptr, 6}, Source{"adox-jet4.mdb", nullptr, 0},
        Source{"empty-jet4.mdb", nullptr, 0}, Source{"asample-ace12.accdb", nullptr, 845},
        Source{"attachments-ace12.accdb", nullptr, 6}, Source{"complex-ace14.accdb", nullptr, 12},
        Source{"linked-ace12.accdb", nullptr, 2}, Source{"types-ace14.accdb", nullptr, 18},
        Source{"made_demo", samples::demoDatabase}, Source{"made_rows", rowsDatabase}),
    [](const auto& test) {
        std::string name = test.param.name;
        std::replace_if(
            name.begin(), name.end(), [](char c) { return std::isalnum(static_cast<unsigned char>(c)) == 0; }, '_');
        return name;
    });

using Keys = std::map<std::string, std::vector<IndexKey>>;

Keys keysOf(const TAdmMDBTable& table)
{
    Keys keys;
    for (const auto& index : table.indices())
        keys[index->name()] = index->keys();
    return keys;
}

TEST(Corpus, IndexesOfAFileWithGapsInTheirNumbers)
{
    TAdmMDBFile file;
    file.setFullPath((corpus / "deleted-columns-jet4.mdb").string());
    if (!file.open()) GTEST_SKIP() << "the corpus is not here";
    EXPECT_EQ(keysOf(*file.findTable("Table1")), (Keys{{"id", {{"id", true}}}, {"id2", {{"id2", true}}}}));
}

TEST(MadeFile, IndexesWithGapsInTheirNumbers)
{
    using namespace samples;
    using samples::ColumnType;
    const test::TempFolder folder;
    for (const auto version : {JetVersion::Jet3, JetVersion::Jet4}) {
        DatabaseDescription database{.version = version};
        TableDescription table{.name = "T"};
        table.columns = {{.name = "a", .type = ColumnType::Long}, {.name = "b", .type = ColumnType::Long}};
        table.indexes = {{.name = "later", .columns = {{"b", false}}, .number = 7},
            {.name = "first", .columns = {{"a"}}, .number = 2}};
        database.tables.push_back(table);
        ASSERT_EQ(writeDatabase(database, folder.path("gaps.mdb")).error, "");
        TAdmMDBFile file;
        file.setFullPath(folder.path("gaps.mdb"));
        ASSERT_TRUE(file.open());
        EXPECT_EQ(keysOf(*file.findTable("T")), (Keys{{"first", {{"a", true}}}, {"later", {{"b", false}}}}));
    }
}

TEST(Corpus, NewerFormatsAreRefused)
{
    for (const char* name : {"asample-ace12.accdb", "attachments-ace12.accdb", "types-ace14.accdb"}) {
        if (!std::filesystem::exists(corpus / name)) GTEST_SKIP() << "the corpus is not here";
        TAdmMDBFile file;
        file.setFullPath((corpus / name).string());
        EXPECT_FALSE(file.open()) << name;
        EXPECT_FALSE(file.active()) << name;
    }
}

// As their own program shows them.
TEST(Corpus, QueriesHaveTheirText)
{
    TAdmMDBFile file;
    file.setFullPath((corpus / "queries-jet4.mdb").string());
    if (!file.open()) GTEST_SKIP() << "the corpus is not here";
    std::map<std::string, std::string> queries;
    for (const auto& query : file.contents().queries)
        queries[query.name] = query.sql;
    EXPECT_EQ(queries.size(), 9U);
    EXPECT_EQ(queries["DataDefinitionQuery"], "CREATE TABLE Table5 (col1 CHAR, col2 CHAR);");
    EXPECT_EQ(queries["DeleteQuery"],
        "DELETE Table1.col1, Table1.col2, Table1.col3\nFROM Table1\nWHERE (((Table1.col1)>\"blah\"));");
    EXPECT_EQ(queries["UpdateQuery"],
        "PARAMETERS [User Name] Text;\nUPDATE Table1\nSET Table1.col1 = \"foo\", Table1.col2 = [Table2].[col3], "
        "[Table2].[col1] = [User Name]\nWHERE ((([Table2].[col1]) Is Not Null));");
}

// Another reader of this file has looked up as many.
TEST(Corpus, LookupsHaveTheirTexts)
{
    TAdmMDBFile file;
    file.setFullPath((corpus / "nwind-jet3.mdb").string());
    if (!file.open()) GTEST_SKIP() << "the corpus is not here";
    const auto copy = fileWithLookupTexts(file);
    std::size_t columns = 0;
    std::size_t values = 0;
    for (const auto& table : file.tables()) {
        const auto& shown = copy.file->findTable(table->name())->rows();
        for (std::size_t column = 0; column < table->columns().size(); ++column) {
            if (lookupState(*table->columns()[column]) != LookupState::Resolved) continue;
            ++columns;
            for (std::size_t row = 0; row < shown.rowCount(); ++row)
                if (shown.text(row, column) != table->rows().text(row, column)) ++values;
        }
    }
    EXPECT_EQ(columns, 10U);
    EXPECT_EQ(values, 7297U);
}

std::string contentOf(const TAdmBlobData& object)
{
    return {reinterpret_cast<const char*>(object.data().data()), object.data().size()};
}

// "name: content" of each file of a cell.
std::vector<std::string> filesIn(const CellValue& value)
{
    std::vector<std::string> files;
    const auto* const object = std::get_if<std::shared_ptr<TAdmBlobData>>(&value);
    if (object == nullptr) return files;
    files.push_back((*object)->storedName() + ": " + contentOf(**object));
    for (const auto& file : (*object)->furtherFiles())
        files.push_back(file->storedName() + ": " + contentOf(*file));
    return files;
}

// Unpacked by hand from the rows of the tables of values.
TEST(Corpus, ColumnsOfSeveralValues)
{
    using Files = std::vector<std::string>;
    TAdmMDBFile file;
    file.setFullPath((corpus / "complex-ace14.accdb").string());
    if (!file.open(anyFormat)) GTEST_SKIP() << "the corpus is not here";
    const auto& table = *file.findTable("Table1");
    const Files both = {"test_data.txt: this is some test data for attachment.",
        "test_data2.txt: this is some more test data for attachment."};
    const std::map<std::string_view, std::pair<std::string, Files>> expected = {{"row1", {"", {}}},
        {"row2", {"value1; value4", both}}, {"row3", {"value1; value2; value3; value4", {}}},
        {"row4", {"", {both[1]}}}};
    ASSERT_EQ(table.rows().rowCount(), expected.size());
    const auto memo = *table.rows().columnIndex("append-memo-data");
    for (std::size_t row = 0; row < expected.size(); ++row) {
        const auto& cells = expected.at(table.rows().text(row, *table.rows().columnIndex("id")));
        EXPECT_EQ(table.rows().text(row, *table.rows().columnIndex("multi-value-data")), cells.first);
        EXPECT_EQ(filesIn(table.rows().record(row).value("attach-data")), cells.second);
    }
    const auto versions = table.versionsOf(2, memo);
    ASSERT_EQ(versions.size(), 3U);
    const std::pair<const char*, const char*> history[] = {{"09/12/2011 21:21:19", "row3-memo"},
        {"09/12/2011 21:22:33", "row3-memo-revised"}, {"09/12/2011 21:22:45", "row3-memo-again"}};
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(versions[i].modified, history[i].first);
        EXPECT_EQ(versions[i].text, history[i].second);
    }
    EXPECT_TRUE(table.versionsOf(0, memo).empty());
    ASSERT_EQ(table.indices().size(), 1U); // without those that Access has over the numbers of groups
}

TEST(Corpus, AttachmentsAreTheirFiles)
{
    TAdmMDBFile file;
    file.setFullPath((corpus / "attachments-ace12.accdb").string());
    if (!file.open(anyFormat)) GTEST_SKIP() << "the corpus is not here";
    const auto& rows = file.findTable("Table1")->rows();
    const std::vector<std::string> expected[] = {{}, {"attachment1.txt: Attachment 1"},
        {"attachment1.txt: Attachment 1", "attachment2.txt: Attachment 2", "attachment3.txt: Attachment 3"}};
    ASSERT_EQ(rows.rowCount(), std::size(expected));
    for (std::size_t row = 0; row < rows.rowCount(); ++row)
        EXPECT_EQ(filesIn(rows.record(row).value("Attachments")), expected[row]) << row;
}

TEST(Corpus, EncryptedFilesNeedTheirPassword)
{
    for (const char* name : {"encrypted-agile-ace12.accdb", "encrypted-rc4-ace12.accdb"}) {
        if (!std::filesystem::exists(corpus / name)) GTEST_SKIP() << "the corpus is not here";
        TAdmMDBFile file;
        file.setFullPath((corpus / name).string());
        EXPECT_FALSE(file.open({.newerFormats = true}));
        EXPECT_EQ(file.openFailure(), OpenFailure::NeedsPassword) << name;
        EXPECT_FALSE(file.open({.newerFormats = true, .password = "Test124"}));
        EXPECT_EQ(file.openFailure(), OpenFailure::WrongPassword) << name;
        ASSERT_TRUE(file.open(anyFormat)) << name;
        EXPECT_TRUE(file.damage().empty());
        // As another program has decrypted it.
        ASSERT_EQ(file.tables().size(), 1U);
        const auto& rows = file.tables()[0]->rows();
        ASSERT_EQ(rows.rowCount(), 1U);
        EXPECT_EQ(rows.text(0, 0), "1");
        EXPECT_EQ(rows.text(0, 1), "foo");
    }
}

// A picture that is not null must be one; how many there are is given back.
std::size_t expectPictures(const TAdmMDBFile& file, const char* tableName, const char* columnName)
{
    const auto& rows = file.findTable(tableName)->rows();
    const auto column = *rows.columnIndex(columnName);
    std::size_t count = 0;
    for (std::size_t row = 0; row < rows.rowCount(); ++row) {
        const auto value = rows.value(row, column);
        const auto* blob = std::get_if<std::shared_ptr<TAdmBlobData>>(&value);
        if (blob == nullptr) continue;
        ++count;
        EXPECT_EQ((*blob)->fileExtension(), "bmp");
        const auto found = test::run({"identify", "-format", "%m %w", "bmp:" + (*blob)->createTempFile()});
        // It grumbles over 8 bytes behind the picture, which real cells hold, and reads it all the same.
        EXPECT_TRUE(found.out.starts_with("BMP")) << tableName << " " << row << ": " << found.out << found.err;
    }
    return count;
}

TEST(Corpus, PicturesAreImagesThatOthersOpen)
{
    TAdmMDBFile file;
    file.setFullPath((corpus / "nwind-jet3.mdb").string());
    if (!file.open()) GTEST_SKIP() << "the corpus is not here";
    if (!test::isInstalled("identify")) GTEST_SKIP() << "ImageMagick is not installed";
    for (const auto& [table, column] : {std::pair{"Categories", "Picture"}, std::pair{"Employees", "Photo"}})
        EXPECT_EQ(expectPictures(file, table, column), file.findTable(table)->rows().rowCount());
}

TEST(MadeFile, PicturesAreImagesThatOthersOpen)
{
    if (!test::isInstalled("identify")) GTEST_SKIP() << "ImageMagick is not installed";
    const test::DemoFile demo;
    EXPECT_EQ(expectPictures(demo.file(), "Categories", "Picture"), 8U);
    EXPECT_EQ(expectPictures(demo.file(), "Employees", "Photo"), 8U);
}

} // namespace
} // namespace vellumo
