// SPDX-License-Identifier: MIT
#include "support/Command.h"
#include "support/ExportRun.h"
#include "support/ModelBuilder.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <charconv>
#include <functional>
#include <vector>

// Other people's programs read what we write, cell for cell. Each test is skipped where its reader is not installed.
namespace vellumo {
namespace {

using namespace test;

using Grid = std::vector<std::vector<std::string>>; // rows of cells; a number in any form

struct ExpectedSheet {
    std::string name;
    Grid rows;
};

std::string repeated(std::string_view piece, int count)
{
    std::string text;
    for (int i = 0; i < count; ++i)
        text += piece;
    return text;
}

// Texts of every kind, and enough around them that each kind meets the end of a record.
std::vector<std::string> difficultTexts()
{
    std::vector<std::string> texts = {"plain", "line\nbreak", "tab\tand \"quotes\", commas", "=1+1", "'quoted", "007",
        " spaces ", "éÿ", "ЖИ", "本", "😀", "�", repeated("x", 254), repeated("x", 255), repeated("Ж", 256),
        repeated("😀", 16'370), repeated("xy", 16'370), repeated("éЖ", 16'370)};
    for (int length = 8150; length < 8230; ++length) {
        texts.push_back(std::to_string(length) + repeated("f", length - 4));
        texts.push_back(std::to_string(length) + "😀Ж😀");
        texts.push_back("é" + std::to_string(length));
        texts.push_back(repeated("😁", length - 8140) + std::to_string(length));
    }
    return texts;
}

std::vector<ExpectedSheet> expectedSheets()
{
    ExpectedSheet first{"Long", {}};
    ExpectedSheet second{"Long(2)", {}};
    for (int i = 0; i < 66'000; ++i)
        (i < 65'536 ? first : second).rows.push_back({std::to_string(i), "row " + std::to_string(i % 5000)});
    ExpectedSheet texts{"Texts", {}};
    for (auto& text : difficultTexts())
        texts.rows.push_back({std::to_string(texts.rows.size()), std::move(text)});
    ExpectedSheet wide{"Wide", Grid(2)};
    for (int i = 0; i < 255; ++i) {
        wide.rows[0].push_back(std::to_string(i * 3));
        wide.rows[1].push_back(i % 3 == 0 ? "" : std::to_string(-i) + ".5");
    }
    wide.rows[0][1] = "text";
    wide.rows[1][1] = "text";
    return {std::move(first), std::move(second), std::move(texts), std::move(wide), {"WIDE_2", {{"1", "a"}}},
        {"a_b_c__d", {{"2", "b"}}}};
}

// A table of numbers, but for its second column, with the rows of the sheets.
std::unique_ptr<TAdmMDBTable> tableOf(std::string name, const std::vector<const ExpectedSheet*>& sheets)
{
    std::vector<ColumnSpec> columns;
    for (std::size_t c = 0; c < sheets[0]->rows[0].size(); ++c)
        columns.push_back({std::to_string(c), c == 1 ? "Text" : "Double"});
    std::vector<Row> rows;
    for (const auto* sheet : sheets)
        for (const auto& row : sheet->rows)
            rows.emplace_back(row.begin(), row.end());
    return makeTable(std::move(name), columns, rows);
}

// Writes the workbook "Shop.xls" that holds the sheets.
void writeWorkbook(const std::vector<ExpectedSheet>& sheets, const TempFolder& folder)
{
    const auto file =
        makeFile("/nowhere/Shop.mdb", tableOf("Long", {&sheets[0], &sheets[1]}), tableOf("Texts", {&sheets[2]}),
            tableOf("Wide", {&sheets[3]}), tableOf("WIDE", {&sheets[4]}), tableOf("a:b[c]/d", {&sheets[5]}));
    ExportOptions options;
    options.fileType = ExportFileType::XLS;
    options.isSingleFile = true;
    options.path = folder.path("Shop.xls");
    options.includeColumnHeader = false;
    EXPECT_EQ(runWriter(exportXLSThread, *file, options).successTableCount, 5);
}

// Comma-separated text with quotes where needed.
Grid gridOf(std::string_view csv)
{
    Grid grid;
    bool isQuoted = false;
    bool isRowOpen = false;
    for (std::size_t i = 0; i < csv.size(); ++i) {
        if (!isRowOpen) grid.push_back({""});
        isRowOpen = true;
        auto& field = grid.back().back();
        if (isQuoted && csv[i] == '"' && i + 1 < csv.size() && csv[i + 1] == '"') {
            field += csv[++i];
        } else if (csv[i] == '"') {
            isQuoted = !isQuoted;
        } else if (isQuoted || (csv[i] != ',' && csv[i] != '\n')) {
            field += csv[i];
        } else if (csv[i] == ',') {
            grid.back().emplace_back();
        } else {
            isRowOpen = false;
        }
    }
    return grid;
}

// Whether two cells hold the same: the same text, or the same number in another form.
bool isSame(const std::string& left, const std::string& right)
{
    if (left == right) return true;
    double a = 0;
    double b = 0;
    const auto parsed = [](const std::string& text, double& value) {
        const auto* end = text.data() + text.size();
        return !text.empty() && std::from_chars(text.data(), end, value).ptr == end;
    };
    return parsed(left, a) && parsed(right, b) && a == b;
}

void compare(const ExpectedSheet& sheet, const Grid& read)
{
    ASSERT_EQ(read.size(), sheet.rows.size()) << sheet.name;
    for (std::size_t r = 0; r < sheet.rows.size(); ++r) {
        ASSERT_EQ(read[r].size(), sheet.rows[r].size()) << sheet.name << " row " << r;
        for (std::size_t c = 0; c < sheet.rows[r].size(); ++c)
            ASSERT_PRED2(isSame, read[r][c], sheet.rows[r][c]) << sheet.name << " row " << r;
    }
}

// The reader has written each sheet to a file.
void compareFiles(const std::vector<ExpectedSheet>& sheets, const TempFolder& folder,
    const std::function<std::string(std::size_t)>& fileName)
{
    for (std::size_t i = 0; i < sheets.size(); ++i) {
        const auto csv = folder.read(fileName(i));
        ASSERT_TRUE(csv) << sheets[i].name;
        compare(sheets[i], gridOf(*csv));
    }
}

// Debian's interpreter, which has Debian's packages.
constexpr const char* python = "/usr/bin/python3";

TEST(SpreadsheetReaders, Xlrd)
{
    if (run({python, "-c", "import xlrd"}).status != 0) GTEST_SKIP() << "xlrd is not installed";
    constexpr const char* script = R"(
import csv, sys, xlrd
book = xlrd.open_workbook(sys.argv[1])
for sheet in book.sheets():
    with open(sys.argv[2] + '/' + sheet.name + '.csv', 'w', newline='') as out:
        writer = csv.writer(out, lineterminator='\n')
        for row in range(sheet.nrows):
            cells = sheet.row(row)
            for cell, wanted in zip(cells, (xlrd.XL_CELL_NUMBER, xlrd.XL_CELL_TEXT)):
                assert cell.ctype in (wanted, xlrd.XL_CELL_EMPTY), (sheet.name, row)
            writer.writerow([repr(c.value) if c.ctype == xlrd.XL_CELL_NUMBER else c.value for c in cells])
)";
    const auto sheets = expectedSheets();
    TempFolder folder;
    writeWorkbook(sheets, folder);
    const auto result = run({python, "-X", "utf8", "-c", script, folder.path("Shop.xls"), folder.path()});
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out + result.err, "");
    compareFiles(sheets, folder, [&](std::size_t i) { return sheets[i].name + ".csv"; });
}

TEST(SpreadsheetReaders, Gnumeric)
{
    if (!isInstalled("ssconvert")) GTEST_SKIP() << "ssconvert is not installed";
    const auto sheets = expectedSheets();
    TempFolder folder;
    writeWorkbook(sheets, folder);
    const auto result = run(
        {"ssconvert", "-S", "--export-type=Gnumeric_stf:stf_csv", folder.path("Shop.xls"), folder.path("read.%n.csv")});
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, "");
    compareFiles(sheets, folder, [](std::size_t i) { return "read." + std::to_string(i) + ".csv"; });
}

TEST(SpreadsheetReaders, LibreOffice)
{
    if (!isInstalled("soffice")) GTEST_SKIP() << "LibreOffice is not installed";
    const auto sheets = expectedSheets();
    TempFolder folder;
    writeWorkbook(sheets, folder);
    // A profile of its own: nothing of the user's is read or changed. UTF-8, cells as they are, all sheets.
    const auto result = run({"soffice", "-env:UserInstallation=file://" + folder.path("profile"), "--headless",
        "--convert-to", "csv:Text - txt - csv (StarCalc):44,34,76,1,,0,false,false,false,false,false,-1", "--outdir",
        folder.path(), folder.path("Shop.xls")});
    ASSERT_EQ(result.status, 0) << result.err;
    compareFiles(sheets, folder, [&](std::size_t i) { return "Shop-" + sheets[i].name + ".csv"; });
}

} // namespace
} // namespace vellumo
