// SPDX-License-Identifier: MIT
#include "export/ExportPreview.h"
#include "export/ExportFormat.h"
#include "support/ModelBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vellumo {
namespace {

using namespace test;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

ExportPreview previewOf(const TAdmMDBFile& file, ExportFileType type, bool isExact)
{
    const auto name = file.tables()[0]->name();
    return exportPreview(
        file, ExportEntry::exportEntryWithTableName(name, type), defaultOptions(exportFormat(type), isExact));
}

std::vector<std::string> linesOf(const ExportPreview& preview)
{
    std::string line;
    for (const auto& column : preview.columns)
        line += "|" + column.name + ":" + column.kind;
    std::vector<std::string> lines = {line};
    for (const auto& row : preview.rows) {
        line.clear();
        for (const auto& value : row)
            line += "|" + value.value_or("NULL");
        lines.push_back(line);
    }
    return lines;
}

// What each target makes of a value of its own kind, and of nothing.
TEST(ExportPreview, SheetsAndDatabasesShowWhatStandsInThem)
{
    const auto file = makeFile("/data/Shop.mdb",
        makeTable("T",
            {{"Id", "Long Integer"}, {"When", "DateTime"}, {"At", "DateTime"}, {"Price", "Currency"}, {"Ok", "Boolean"},
                {"Note", "Memo/Hyperlink"}, {"G", "Replication ID"}, {"O", "OLE"}},
            {{"1", "05/03/2014 21:07:00", "12/30/1899 06:30:00", "2.5000", "1", "it's",
                 "{01234567-89AB-CDEF-0123-456789ABCDEF}", makeBlob("\x01\x02", "bin")},
                {"2", null, null, "12345678901234.5678", "0", empty, null, null}}));
    const auto exactSheet =
        ElementsAre("|Id:number|When:date|At:time|Price:decimal number, text|Ok:truth value|Note:text|G:text|O:text",
            "|1|2014-05-03 21:07:00|06:30:00|2.5|TRUE|it's|01234567-89AB-CDEF-0123-456789ABCDEF|0102",
            "|2|||12345678901234.5678|FALSE|||");
    EXPECT_THAT(linesOf(previewOf(*file, ExportFileType::XLS, true)), exactSheet);
    const auto xlsx = previewOf(*file, ExportFileType::XLSX, true);
    EXPECT_THAT(linesOf(xlsx), exactSheet);
    EXPECT_THAT(xlsx.remarks,
        ElementsAre("Of the rows in the preview:", HasSubstr("T.Price: 1 number"), HasSubstr("T.Note: 1 empty text")));
    EXPECT_THAT(linesOf(previewOf(*file, ExportFileType::XLS, false)),
        ElementsAre("|Id:number|When:text|At:text|Price:number|Ok:text|Note:text|G:text|O:",
            "|1|05/03/2014 21:07:00|12/30/1899 06:30:00|2.5|1|it's|{01234567-89AB-CDEF-0123-456789ABCDEF}|",
            "|2|||12345678901234.568|0|||"));
    EXPECT_THAT(linesOf(previewOf(*file, ExportFileType::SQLite, true)),
        ElementsAre("|Id:INTEGER|When:DATETIME|At:DATETIME|Price:DECIMALTEXT|Ok:BOOLEAN|Note:TEXT|G:CHAR(36)|O:BLOB",
            "|1|2014-05-03 21:07:00|1899-12-30 06:30:00|2.5000|1|it's|01234567-89AB-CDEF-0123-456789ABCDEF|X'0102'",
            "|2|NULL|NULL|12345678901234.5678|0||NULL|NULL"));
    EXPECT_THAT(linesOf(previewOf(*file, ExportFileType::SQLite, false)),
        ElementsAre("|Id:INTEGER|When:TEXT|At:TEXT|Price:REAL|Ok:INTEGER|Note:TEXT|G:TEXT|O:BLOB",
            "|1|05/03/2014 21:07:00|12/30/1899 06:30:00|2.5|1|it's|{01234567-89AB-CDEF-0123-456789ABCDEF}|X'0102'",
            "|2|NULL|NULL|12345678901234.568|0|NULL|NULL|NULL"));
}

// Only the first rows are written, and of a long value only its beginning is shown; what does not fit is told.
TEST(ExportPreview, LongTablesAndTextsAreShownByTheirBeginning)
{
    std::vector<Row> rows;
    for (int i = 0; i < 1000; ++i)
        rows.push_back({std::to_string(i), std::string(40'000, 'x')});
    const auto file =
        makeFile("/data/Shop.mdb", makeTable("T", {{"Id", "Long Integer"}, {"M", "Memo/Hyperlink"}}, rows));
    const auto shown = std::string(200, 'x') + "…";
    for (const auto type : {ExportFileType::XLSX, ExportFileType::SQLite}) {
        const auto preview = previewOf(*file, type, true);
        ASSERT_EQ(preview.rows.size(), 10U);
        EXPECT_THAT(preview.rows[9], ElementsAre("9", shown));
    }
    EXPECT_THAT(previewOf(*file, ExportFileType::XLSX, true).remarks,
        ElementsAre("Of the rows in the preview:", "T.M: 10 texts were cut after 32767 characters."));
    EXPECT_THAT(previewOf(*file, ExportFileType::SQLite, true).remarks,
        ElementsAre("Types and rules are those of these rows; the export looks at all of them."));
    const std::pair<ExportFileType, const char*> beginnings[] = {
        {ExportFileType::CSV, "\"Id\",\"M\"\n0,\"xxx"}, {ExportFileType::SQL, "SET NAMES 'UTF8';\n"}};
    for (const auto& [type, beginning] : beginnings) {
        const auto preview = previewOf(*file, type, false);
        EXPECT_TRUE(preview.text.starts_with(beginning)) << preview.text.substr(0, 100);
        EXPECT_LT(preview.text.size(), 10'000U);
        EXPECT_THAT(preview.remarks, IsEmpty());
    }
}

// What keeps the export from being made is shown in the place of what it would make.
TEST(ExportPreview, TellsWhyThereIsNone)
{
    const auto file =
        makeFile("/data/Shop.mdb", makeTable("T", {{"M", "Memo/Hyperlink"}}, {{std::string(40'000, 'x')}}));
    const auto tooLong = previewOf(*file, ExportFileType::XLS, false);
    EXPECT_THAT(tooLong.columns, IsEmpty());
    EXPECT_THAT(tooLong.remarks, ElementsAre("<T> Failed: Field M exceeded length limit. Row 1"));
    setenv("VELLUMO_SQLITE_LIBRARY", "/nonexistent.so", 1);
    const auto noLibrary = previewOf(*file, ExportFileType::SQLite, true);
    unsetenv("VELLUMO_SQLITE_LIBRARY");
    EXPECT_THAT(noLibrary.columns, IsEmpty());
    EXPECT_THAT(noLibrary.remarks, ElementsAre(HasSubstr("SQLite dynamic library not found!")));
    EXPECT_THAT(exportPreview(*file, {true, "None", ""}, {}).remarks, IsEmpty());
}

// A sheet without titles has the letters of its columns.
TEST(ExportPreview, FollowsTheOptions)
{
    const auto file = makeFile("/data/Shop.mdb",
        makeTable("T", {{"A", "Text"}, {"B", "Long Integer"}, {"O", "OLE"}},
            {{"a", "1", makeBlob("x", "bin")}, {null, null, null}, {"c", "3", null}}));
    auto options = defaultOptions(exportFormat(ExportFileType::XLSX), true);
    options.includeColumnHeader = false;
    options.objectsFolder = "/nowhere/Objects";
    const ExportEntry entry{true, "T", "", {std::vector<std::size_t>{2, 0}, std::vector<std::uint32_t>{1, 0}}};
    EXPECT_THAT(linesOf(exportPreview(*file, entry, options)), ElementsAre("|A:text|B:text", "||", "|T/O/1.bin|a"));
}

} // namespace
} // namespace vellumo
