// SPDX-License-Identifier: MIT
#include "export/ExcelExport.h"
#include "export/ExportFormat.h"
#include "export/biff8/BiffReader.h"
#include "support/ExportRun.h"
#include "support/FileSizeLimit.h"
#include "support/ModelBuilder.h"
#include "support/TempFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>
#include <unistd.h>

namespace vellumo {
namespace {

using namespace std::string_literals;
using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;
using Cells = std::map<std::pair<unsigned, unsigned>, std::string>;

ExportOptions singleFile(const std::string& path)
{
    ExportOptions options;
    options.fileType = ExportFileType::XLS;
    options.isSingleFile = true;
    options.path = path;
    return options;
}

ExportOptions filePerTable(const std::string& folder)
{
    auto options = singleFile(folder);
    options.isSingleFile = false;
    return options;
}

// A table "ID, Text" with a row for each text.
std::unique_ptr<TAdmMDBTable> textTable(const std::string& name, const std::vector<std::string>& texts)
{
    std::vector<Row> rows;
    for (std::size_t i = 0; i < texts.size(); ++i)
        rows.push_back({std::to_string(i), texts[i]});
    return makeTable(name, {{"ID", "Long Integer"}, {"Text", "Text"}}, rows);
}

std::vector<ReadSheet> sheetsIn(const TempFolder& folder, std::string_view name)
{
    return sheetsOf(workbookStreamOf(folder.path(name)));
}

std::vector<std::string> namesOf(const std::vector<ReadSheet>& sheets)
{
    std::vector<std::string> names;
    for (const auto& sheet : sheets)
        names.push_back(sheet.name);
    return names;
}

TEST(SpreadsheetExport, ValuesBecomeCellsByType)
{
    const std::vector<ColumnSpec> columns = {{"Yes", "Boolean"}, {"B", "Byte"}, {"I", "Integer"}, {"L", "Long Integer"},
        {"C", "Currency"}, {"S", "Single"}, {"D", "Double"}, {"N", "Numeric"}, {"When", "DateTime"}, {"T", "Text"},
        {"O", "OLE"}, {"X", "Complex Value auto number"}};
    const auto file = makeFile("/nowhere/Shop.mdb",
        makeTable("All", columns,
            {{"1", "7", "7", "-2", "2.5000", "3.5", "1e+300", "-0.25", "05/03/2014", "12", makeBlob("x", "bmp"), "9"},
                {null, null, null, null, null, null, null, null, null, null, null, null},
                {"0", "255", "no number", "2147483647", "-922337203685477.5808", "-1e-40", "inf", "12abc", "-", "=1+1",
                    null, "0"}}));
    TempFolder folder;
    const auto outcome = runWriter(exportXLSThread, *file, filePerTable(folder.path()));
    EXPECT_EQ(outcome.successTableCount, 1);
    const auto sheets = sheetsIn(folder, "All.xls");
    ASSERT_EQ(sheets.size(), 1U);
    Cells expected;
    const auto addRow = [&](unsigned row, const std::vector<std::string>& values) {
        for (unsigned column = 0; column < values.size(); ++column)
            expected[{row, column}] = values[column];
    };
    addRow(0, {"'Yes'", "'B'", "'I'", "'L'", "'C'", "'S'", "'D'", "'N'", "'When'", "'T'", "'O'", "'X'"});
    addRow(1,
        {"'1'", "'7'", "7", "-2", "2.5", "3.5", "1.0000000000000001e+300", "-0.25", "'05/03/2014'", "'12'", "blank",
            "'9'"});
    addRow(2, std::vector<std::string>(12, "blank"));
    addRow(3,
        {"'0'", "'255'", "0", "2147483647", "-922337203685477.62", "-9.9999999999999993e-41", "#NUM!", "12", "'-'",
            "'=1+1'", "blank", "'0'"});
    EXPECT_EQ(sheets[0].cells, expected);
}

TEST(SpreadsheetExport, LongTablesGoOnOnFurtherSheets)
{
    const struct {
        const char* name;
        std::size_t records;
        bool hasHeader;
        std::vector<std::size_t> rowsOnSheets;
        const char* lastValue;
    } cases[] = {
        {"header and 70,000 records", 70'000, true, {65'536, 4'465}, "69999"},
        {"a full sheet", 65'536, false, {65'536}, "65535"},
        {"one record more", 65'537, false, {65'536, 1}, "65536"},
        {"header and one record too many", 65'536, true, {65'536, 1}, "65535"},
        {"three sheets", 131'073, false, {65'536, 65'536, 1}, "131072"},
    };
    for (const auto& test : cases) {
        std::vector<Row> rows;
        for (std::size_t i = 0; i < test.records; ++i)
            rows.push_back({std::to_string(i)});
        const auto file = makeFile("/nowhere/Shop.mdb", makeTable("T", {{"ID", "Long Integer"}}, rows));
        TempFolder folder;
        auto options = singleFile(folder.path("Shop.xls"));
        options.includeColumnHeader = test.hasHeader;
        EXPECT_EQ(runWriter(exportXLSThread, *file, options).successTableCount, 1) << test.name;
        const auto sheets = sheetsIn(folder, "Shop.xls");
        ASSERT_EQ(sheets.size(), test.rowsOnSheets.size()) << test.name;
        for (std::size_t i = 0; i < sheets.size(); ++i) {
            EXPECT_EQ(sheets[i].name, i == 0 ? "T" : i == 1 ? "T(2)" : "T(3)");
            EXPECT_EQ(sheets[i].cells.size(), test.rowsOnSheets[i]) << test.name;
            EXPECT_EQ(sheets[i].cells.begin()->second == "'ID'", test.hasHeader && i == 0) << test.name;
        }
        EXPECT_EQ(sheets.back().cells.rbegin()->second, test.lastValue) << test.name;
    }
}

// The file without sheets, a sheet, its rows of one number each, and the 2048 blocks of 32 rows.
constexpr std::uint64_t sizeOfFullSheet = 4096 + 16 + 512 + 65'536 * (22 + 14) + 2048 * 12;

TEST(SpreadsheetExport, TableThatNoMoreFitsFailsAndIsEmptied)
{
    const struct {
        const char* name;
        std::size_t records;
        std::uint64_t limit;
        std::vector<std::string> log;
        std::vector<std::string> sheets;
    } cases[] = {
        {"a cell too many", 65'536, sizeOfFullSheet - 1, {"<Large> Failed: Workbook exceeded size limit."},
            {"Large", "Small"}},
        {"fits", 65'536, sizeOfFullSheet, {"<Small> Failed: Unable to create spreadsheet Small."}, {"Large"}},
        {"no room for the second sheet", 65'537, sizeOfFullSheet, {"<Large> Failed: Workbook exceeded size limit."},
            {"Large", "Small"}},
        {"no room for the second sheet's row", 65'537, sizeOfFullSheet + 512,
            {"<Large> Failed: Workbook exceeded size limit."}, {"Large", "Small"}},
    };
    for (const auto& test : cases) {
        const std::vector<Row> rows(test.records, {"1"});
        const auto file = makeFile("/nowhere/Shop.mdb", makeTable("Large", {{"ID", "Long Integer"}}, rows),
            makeTable("Small", {{"ID", "Long Integer"}}, {{"1"}}));
        TempFolder folder;
        auto options = singleFile(folder.path("Shop.xls"));
        options.includeColumnHeader = false;
        const auto outcome = runWriter([&](ExportJob& job) { exportSpreadsheets(job, test.limit); }, *file, options);
        EXPECT_EQ(outcome.log, test.log) << test.name;
        EXPECT_EQ(outcome.successTableCount, 1) << test.name;
        const auto sheets = sheetsIn(folder, "Shop.xls");
        EXPECT_EQ(namesOf(sheets), test.sheets) << test.name;
        EXPECT_EQ(sheets.at(0).cells.empty(), sheets.size() == 2) << test.name;
    }
}

TEST(SpreadsheetExport, TextsPastTheLimitFailTheirTable)
{
    std::string pairs; // 32,740 units in 65,480 bytes
    std::string latin; // the same units, of one byte each in the file
    for (int i = 0; i < 16'370; ++i) {
        pairs += "😀";
        latin += "é\n";
    }
    const std::string tooLong(32'741, 'x');
    const auto file = makeFile("/nowhere/Shop.mdb", textTable("A", {"a", latin, pairs}), textTable("B", {"b", tooLong}),
        makeTable("C", {{"First", "Memo/Hyperlink"}, {"Second", "Text"}}, {{"c", tooLong}, {tooLong, "c"}}),
        textTable("D", {"d"}));
    const auto lines = ElementsAre(
        "<B> Failed: Field Text exceeded length limit. Row 2", "<C> Failed: Field Second exceeded length limit. Row 1");

    TempFolder folder;
    auto outcome = runWriter(exportXLSThread, *file, singleFile(folder.path("Shop.xls")));
    EXPECT_EQ(outcome.successTableCount, 2);
    EXPECT_THAT(outcome.log, lines);
    const auto sheets = sheetsIn(folder, "Shop.xls");
    EXPECT_THAT(namesOf(sheets), ElementsAre("A", "B", "C", "D"));
    EXPECT_EQ(sheets.at(0).cells.at({2, 1}), "'" + latin + "'");
    EXPECT_EQ(sheets.at(0).cells.at({3, 1}), "'" + pairs + "'");
    EXPECT_THAT(sheets.at(1).cells, IsEmpty());
    EXPECT_THAT(sheets.at(2).cells, IsEmpty());
    EXPECT_EQ(sheets.at(3).cells.size(), 4U);

    // The empty sheets are found in the next workbook.
    outcome = runWriter(exportXLSThread, *file, filePerTable(folder.path()));
    EXPECT_THAT(outcome.log, lines);
    EXPECT_THAT(namesOf(sheetsIn(folder, "A.xls")), ElementsAre("A"));
    EXPECT_FALSE(folder.exists("B.xls"));
    EXPECT_THAT(namesOf(sheetsIn(folder, "D.xls")), ElementsAre("B", "C", "D"));
}

TEST(SpreadsheetExport, TablesThatCannotBeWrittenAreToldAndTheRestGoesOn)
{
    TempFolder folder;
    std::filesystem::create_directory(folder.path("C.xls"));
    const auto file = makeFile("/nowhere/Shop.mdb", textTable("A/B", {"x"}), textTable("C", {"x"}),
        textTable("\xFF", {"x"}), textTable("O'Hara. Ä", {"x"}));
    const auto outcome =
        runWriter(exportXLSThread, *file, filePerTable(folder.path()), -1, {"A/B.xls", "C.xls", "D.xls", "E.xls"});
    EXPECT_THAT(outcome.log,
        ElementsAre("<A/B> Failed: Unable to create file for export. A/B.xls: it cannot be the name of a file",
            "<C> Failed: Unable to create file for export. %/C.xls: Is a directory",
            "<\xFF> Failed: Unable to create spreadsheet \xFF."));
    EXPECT_EQ(outcome.successTableCount, 1);
    EXPECT_THAT(outcome.progress, ElementsAre(0, 1, 2, 3));
    EXPECT_FALSE(folder.exists("D.xls"));
    EXPECT_THAT(namesOf(sheetsIn(folder, "E.xls")), ElementsAre("O'Hara. Ä"));

    const auto missing = runWriter(exportXLSThread, *file, singleFile(folder.path("missing/Shop.xls")));
    EXPECT_THAT(missing.log, ElementsAre("Unable to create file for export. %: No such file or directory"));
    EXPECT_EQ(missing.successTableCount, 0);
}

// The test runs on as somebody without special rights, for as long as the object lives.
class PlainUser {
public:
    PlainUser() { m_isPlain = ::geteuid() != 0 || ::seteuid(65534) == 0; }
    ~PlainUser() { EXPECT_EQ(::seteuid(m_before), 0); }
    PlainUser(const PlainUser&) = delete;
    PlainUser& operator=(const PlainUser&) = delete;
    [[nodiscard]] bool isPlain() const { return m_isPlain; }

private:
    uid_t m_before = ::geteuid();
    bool m_isPlain = false;
};

TEST(SpreadsheetExport, FolderThatTakesNoFileKeepsItsWorkbook)
{
    const auto file = makeFile("/nowhere/Shop.mdb", textTable("A", {"x"}));
    namespace fs = std::filesystem;
    const struct {
        const char* name;
        bool isSingleFile;
        bool isLink;
        std::vector<std::string> log;
    } cases[] = {
        {"single file", true, false, {"Unable to create file for export. %: Permission denied"}},
        {"single file behind a link", true, true, {"Unable to create file for export. %: Permission denied"}},
        {"file a table", false, false, {"<A> Failed: Unable to create file for export. %/A.xls: Permission denied"}},
    };
    for (const auto& test : cases) {
        TempFolder folder;
        folder.write("A.xls", "old");
        TempFolder links;
        fs::create_symlink(folder.path("A.xls"), links.path("A.xls"));
        fs::permissions(folder.path("A.xls"), fs::perms(0666));
        fs::permissions(folder.path(), fs::perms(0555));
        fs::permissions(links.path(), fs::perms(0777));
        const auto path = (test.isLink ? links : folder).path(test.isSingleFile ? "A.xls" : "");
        ExportOutcome outcome;
        {
            const PlainUser user;
            if (!user.isPlain()) GTEST_SKIP() << "no user without special rights here";
            outcome = runWriter(exportXLSThread, *file, test.isSingleFile ? singleFile(path) : filePerTable(path));
        }
        EXPECT_EQ(outcome.log, test.log) << test.name;
        EXPECT_EQ(folder.read("A.xls"), "old") << test.name;
        fs::permissions(folder.path(), fs::perms(0755));
    }
}

TEST(SpreadsheetExport, WithoutATableThereIsNoFile)
{
    TempFolder folder;
    folder.write("Shop.xls", "old");
    const auto file =
        makeFile("/nowhere/Shop.mdb", textTable("\xFF", {"x"}), textTable("B", {std::string(32'741, 'x')}));
    const auto outcome = runWriter(exportXLSThread, *file, singleFile(folder.path("Shop.xls")));
    EXPECT_THAT(outcome.log,
        ElementsAre("<\xFF> Failed: Unable to create spreadsheet \xFF.",
            "<B> Failed: Field Text exceeded length limit. Row 1"));
    EXPECT_EQ(folder.read("Shop.xls"), "old");
}

TEST(SpreadsheetExport, StoppedRunLeavesOnlyWholeFiles)
{
    const auto file =
        makeFile("/nowhere/Shop.mdb", textTable("A", {"x"}), textTable("B", {"x"}), textTable("C", {"x"}));
    const struct {
        const char* name;
        bool isSingleFile;
        int stopAt;
        std::vector<std::string> log;
        int successTableCount;
        std::vector<std::string> files;
    } cases[] = {
        {"single file, first table", true, 0, {"<A> Failed: Terminated."}, 0, {}},
        {"single file, last table", true, 2, {"<C> Failed: Terminated."}, 0, {}},
        {"file a table, first", false, 0, {"<A> Failed: Terminated."}, 0, {}},
        {"file a table, second", false, 1, {"<B> Failed: Terminated."}, 1, {"A.xls"}},
    };
    for (const auto& test : cases) {
        TempFolder folder;
        const auto options = test.isSingleFile ? singleFile(folder.path("Shop.xls")) : filePerTable(folder.path());
        const auto outcome = runWriter(exportXLSThread, *file, options, test.stopAt);
        EXPECT_EQ(outcome.log, test.log) << test.name;
        EXPECT_EQ(outcome.successTableCount, test.successTableCount) << test.name;
        EXPECT_EQ(folder.names(), test.files) << test.name;
    }
}

TEST(SpreadsheetExport, FullDiskIsTold)
{
    std::vector<std::string> texts;
    for (int i = 0; i < 1000; ++i)
        texts.push_back(std::to_string(i) + std::string(200, 'x'));
    const auto file = makeFile("/nowhere/Shop.mdb", textTable("Large", texts), textTable("Small", {"x"}));
    TempFolder folder;
    ExportOutcome single;
    ExportOutcome perTable;
    {
        const FileSizeLimit limit(60'000);
        single = runWriter(exportXLSThread, *file, singleFile(folder.path("Shop.xls")));
        perTable = runWriter(exportXLSThread, *file, filePerTable(folder.path()));
    }
    EXPECT_THAT(single.log, ElementsAre("Unable to write file. %: File too large"));
    EXPECT_EQ(single.successTableCount, 0);
    EXPECT_THAT(perTable.log, ElementsAre("<Large> Failed: Unable to write file. %/Large.xls: File too large"));
    EXPECT_EQ(perTable.successTableCount, 1);
    EXPECT_THAT(folder.names(), ElementsAre("Small.xls"));

    // Texts that deflate leaves long: the table fails as soon as the disk does, and each table is told.
    std::minstd_rand random;
    for (auto& text : texts)
        std::ranges::generate(text, [&] { return static_cast<char>('a' + random() % 26); });
    const auto mixed = makeFile("/nowhere/Mixed.mdb", textTable("Large", texts), textTable("Small", {"x"}));
    auto options = singleFile(folder.path("Mixed.xlsx"));
    options.fileType = ExportFileType::XLSX;
    {
        const FileSizeLimit limit(60'000);
        single = runWriter(exportExactSheets, *mixed, options);
    }
    EXPECT_THAT(single.log,
        ElementsAre("<Large> Failed: Unable to write file. %: File too large",
            "<Small> Failed: Unable to write file. %: File too large"));
    EXPECT_FALSE(folder.exists("Mixed.xlsx"));

    const auto device = runWriter(exportXLSThread, *file, singleFile("/dev/full"));
    EXPECT_THAT(device.log, ElementsAre("Unable to write file. %: Invalid argument"));
    EXPECT_EQ(std::filesystem::status("/dev/full").type(), std::filesystem::file_type::character);
}

TEST(ExcelExport, SaysInTheSystemLogWhatIsMissing)
{
    FakeSystemLog log;
    ExcelExport excel(log);
    excel.writeString("x", 0, 0);
    excel.writeString("", 0, 0);
    excel.writeNumber(1, 0, 0);
    EXPECT_FALSE(excel.dumpToFile("/nowhere/x.xls"));
    EXPECT_FALSE(excel.addSheet(""));
    excel.setBlankForRow(0, 0);
    EXPECT_FALSE(excel.addSheet("\xFF"));
    excel.setBlankForRow(0, 0);
    EXPECT_EQ(excel.indexOfLastSheet(), -1);
    EXPECT_TRUE(excel.addSheet("S"));
    excel.writeString("\xFF", 0, 0);
    excel.setBlankForRow(0, 256);
    excel.deleteWorkBook();
    excel.writeNumber(1, 0, 0);
    EXPECT_THAT(log.lines,
        ElementsAre("Error when writing string: No workbook available",
            "Error when writing number: No workbook available", "Error when dump file: No workbook available",
            "Error when writing null: No workbook available", "Error when writing null: No worksheet available",
            "Error when writing string: Not a text that a cell can hold",
            "Error when writing null: Not behind the last cell", "Error when writing number: No workbook available"));
}

} // namespace
} // namespace vellumo
