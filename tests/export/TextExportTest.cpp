// SPDX-License-Identifier: MIT
#include "export/ExportFormat.h"
#include "export/RunExport.h"
#include "support/ExportRun.h"
#include "support/ModelBuilder.h"
#include "support/TempFolder.h"
#include "text/TextEncoding.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vellumo {
namespace {

using namespace std::string_literals;
using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto CSV = ExportFileType::CSV;
constexpr auto XML = ExportFileType::XML;

ExportOptions optionsFor(ExportFileType type)
{
    ExportOptions options;
    options.fileType = type;
    return options;
}

const std::vector<ColumnSpec> allTypes = {{"Yes", "Boolean"}, {"B", "Byte"}, {"I", "Integer"}, {"L", "Long Integer"},
    {"C", "Currency"}, {"S", "Single"}, {"D", "Double"}, {"When", "DateTime"}, {"Bin", "Binary"}, {"T", "Text"},
    {"O", "OLE"}, {"M", "Memo/Hyperlink"}, {"G", "Replication ID"}, {"N", "Numeric"},
    {"X", "Complex Value auto number"}};
const Row allValues = {"1", "7", "-2", "12", "2.5000", "3.5", "1e+20", "05/03/2014 21:07:00", "ff00", "a\"b",
    makeBlob("picture", "bmp"), "long", "{A-B}", "1.25", "9"};

struct Case {
    const char* name;
    ExportFileType type;
    std::vector<ColumnSpec> columns;
    std::vector<Row> rows;
    std::string expected;
    void (*change)(ExportOptions&) = [](ExportOptions&) {}; // from the defaults
};

std::vector<Case> cases()
{
    const std::vector<ColumnSpec> idAndName = {{"ID", "Long Integer"}, {"Name", "Text"}};
    const std::vector<ColumnSpec> price = {{"Unit Price", "Currency"}, {"Size \"XL\"", "Double"}};
    const auto noHeader = [](ExportOptions& options) { options.includeColumnHeader = false; };
    return {
        {"every type", CSV, allTypes, {allValues},
            "\"Yes\",\"B\",\"I\",\"L\",\"C\",\"S\",\"D\",\"When\",\"Bin\",\"T\",\"O\",\"M\",\"G\",\"N\",\"X\"\n"
            "1,7,-2,12,2.5000,3.5,1e+20,\"05/03/2014 21:07:00\",\"ff00\",\"a\"\"b\",,\"long\",{A-B},1.25,9\n"},
        {"nulls are empty and never quoted", CSV, idAndName, {{null, null}, {"1", null}, {null, "Ann"}},
            "\"ID\",\"Name\"\n,\n1,\n,\"Ann\"\n"},
        {"no rows", CSV, idAndName, {}, "\"ID\",\"Name\"\n"},
        {"no rows, no header", CSV, idAndName, {}, "", noHeader},
        {"no columns", CSV, {}, {{}, {}}, "\n\n", noHeader},
        {"other types stay bare whatever they hold", CSV, {{"G", "Replication ID"}}, {{"a,\"b\"\nc"}}, "a,\"b\"\nc\n",
            noHeader},
        {"line breaks inside quotes stay", CSV, {{"T", "Text"}}, {{"a\r\nb,c"}}, "\"a\r\nb,c\"\n", noHeader},
        {"semicolon, comma as decimal symbol", CSV, price, {{"2.50", "3.5"}, {"7", "-1.5e-3"}},
            "\"Unit Price\";\"Size \"\"XL\"\"\"\n2,50;3,5\n7;-1,5e-3\n",
            [](ExportOptions& options) {
                options.fieldDelimiter = FieldDelimiter::Semicolon;
                options.decimalSymbol = ",";
            }},
        {"no decimal symbol, tab, CR LF", ExportFileType::TXT, price, {{"2.50", "3.5"}, {null, "1"}},
            "\"Unit Price\"\t\"Size \"\"XL\"\"\"\r\n250\t35\r\n\t1\r\n",
            [](ExportOptions& options) {
                options.fieldDelimiter = FieldDelimiter::Tab;
                options.recordDelimiter = RecordDelimiter::CRLF;
                options.decimalSymbol = "";
            }},
        {"long decimal symbol, space, CR", ExportFileType::TXT, idAndName, {{"1.5", "1.5"}}, "1.5 \"1.5\"\r",
            [](ExportOptions& options) {
                options.includeColumnHeader = false;
                options.fieldDelimiter = FieldDelimiter::Space;
                options.recordDelimiter = RecordDelimiter::CR;
                options.decimalSymbol = "\u00B7\u00B7";
            }},
        {"unknown tags", ExportFileType::TXT, idAndName, {{"1", "x"}}, "1,\"x\"\n",
            [](ExportOptions& options) {
                options.includeColumnHeader = false;
                options.fieldDelimiter = static_cast<FieldDelimiter>(9);
                options.recordDelimiter = static_cast<RecordDelimiter>(9);
            }},
        {"a piece ends at its first zero byte", CSV, idAndName, {{"1", "a\0b"s}, {"2", "c"}}, "1,\"a\n2,\"c\"\n",
            noHeader},
        {"Latin 1", CSV, {{"Gr\u00F6\u00DFe", "Text"}}, {{"\u00E4\"\u00F6"}, {"abc"}},
            "\"Gr\xF6\xDF"
            "e\"\n\"\xE4\"\"\xF6\"\n\"abc\"\n",
            [](ExportOptions& options) { options.encoding = encodingISOLatin1; }},
        // Little-endian: each ASCII character is its byte and a zero, which ends the piece.
        {"UTF-16 is cut", CSV, idAndName, {{"12", "Ann"}, {"3", "\u3042x"}}, "\",\"\n1,\"\n3,\"\n",
            [](ExportOptions& options) { options.encoding = encodingUTF16; }},
        {"shift states end with each piece", CSV, {{"T", "Text"}, {"G", "Replication ID"}}, {{"\u3042", "\u3042"}},
            "\"\x1B$B\x24\x22\x1B(B\",\x1B$B\x24\x22\x1B(B\n",
            [](ExportOptions& options) {
                options.includeColumnHeader = false;
                options.encoding = 21; // ISO-2022-JP
            }},
        {"XML", XML, idAndName, {{"1", "Ann"}},
            "<?xml version=\"1.0\"?>\n<RECORDS>\n<RECORD>\n\t<ID>1</ID>\n\t<Name>Ann</Name>\n</RECORD>\n</RECORDS>\n"},
        {"XML without rows", XML, idAndName, {}, "<?xml version=\"1.0\"?>\n<RECORDS>\n</RECORDS>\n"},
        {"XML without columns", XML, {}, {{}}, "<?xml version=\"1.0\"?>\n<RECORDS>\n<RECORD>\n</RECORD>\n</RECORDS>\n"},
        {"XML escapes nothing", XML, {{"Unit Price", "Currency"}, {"a<b", "Text"}, {"O", "OLE"}, {"When", "DateTime"}},
            {{"2.50", "<&\"'", makeBlob("x", "bin"), null}},
            "<?xml version=\"1.0\"?>\r\n<RECORDS>\r\n<RECORD>\r\n\t<Unit Price>2,50</Unit Price>\r\n"
            "\t<a<b><&\"'</a<b>\r\n\t<O></O>\r\n\t<When></When>\r\n</RECORD>\r\n</RECORDS>\r\n",
            [](ExportOptions& options) {
                options.recordDelimiter = RecordDelimiter::CRLF;
                options.decimalSymbol = ",";
            }},
    };
}

TEST(TextExport, WritesTheseBytes)
{
    for (const auto& c : cases()) {
        // Rows in one group, and in groups of their own.
        for (const std::size_t rowsPerGroup : {1000, 1}) {
            TempFolder folder;
            const auto file = makeFile("/nowhere/Shop.mdb", makeTable("T", c.columns, c.rows, rowsPerGroup));
            auto options = optionsFor(c.type);
            c.change(options);
            options.path = folder.path();
            const auto outcome = runWriter(exportTextFileThread, *file, options, -1, {"x.dat"});
            EXPECT_EQ(folder.read("x.dat"), c.expected) << c.name;
            EXPECT_EQ(outcome.successTableCount, 1) << c.name;
            EXPECT_THAT(outcome.log, IsEmpty()) << c.name;
        }
    }
}

std::unique_ptr<TAdmMDBTable> textTable(std::string name, const std::vector<Row>& rows)
{
    return makeTable(std::move(name), {{"T", "Text"}}, rows);
}

TEST(TextExport, WhatCannotBeRepresentedFailsItsTableAlone)
{
    TempFolder folder;
    const auto file = makeFile("/nowhere/Shop.mdb", textTable("A", {{"plain"}}), textTable("B", {{"x"}, {"\u20AC"}}),
        makeTable("C", {{"\u0416", "Text"}}, {}), textTable("D", {{"\u00E9"}}));
    auto options = optionsFor(CSV);
    options.path = folder.path();
    options.encoding = encodingISOLatin1;
    const auto outcome = runWriter(exportTextFileThread, *file, options);
    EXPECT_THAT(outcome.log,
        ElementsAre("<B> Failed: Text cannot be represented in the selected encoding. Row 2, column T",
            "<C> Failed: Text cannot be represented in the selected encoding. Column \u0416"));
    EXPECT_EQ(outcome.successTableCount, 2);
    EXPECT_EQ(folder.read("A.csv"), "\"T\"\n\"plain\"\n");
    EXPECT_EQ(folder.read("D.csv"), "\"T\"\n\"\xE9\"\n");
    EXPECT_FALSE(folder.exists("B.csv"));
    EXPECT_FALSE(folder.exists("C.csv"));

    // Text that is never written does no harm.
    options.fileType = XML;
    EXPECT_EQ(runWriter(exportTextFileThread, *file, options).successTableCount, 3);
    EXPECT_EQ(folder.read("C.xml"), "<?xml version=\"1.0\"?>\n<RECORDS>\n</RECORDS>\n");
}

TEST(TextExport, FilesThatCannotBeCreated)
{
    TempFolder folder;
    std::filesystem::create_directory(folder.path("folder.csv"));
    folder.write("Shop.mdb", "the database");
    const auto file = makeFile(folder.path("Shop.mdb"), textTable("folder", {}), textTable("../up", {}),
        textTable("a/b", {}), textTable("database", {}), textTable("good", {{"x"}}));
    auto options = optionsFor(CSV);
    options.path = folder.path();
    const auto outcome = runWriter(
        exportTextFileThread, *file, options, -1, {"folder.csv", "../up.csv", "a/b.csv", "Shop.mdb", "good.csv"});
    EXPECT_THAT(outcome.log,
        ElementsAre("<folder> Failed: Unable to create file for export. %/folder.csv: Is a directory",
            "<../up> Failed: Unable to create file for export. ../up.csv: it cannot be the name of a file",
            "<a/b> Failed: Unable to create file for export. a/b.csv: it cannot be the name of a file",
            "<database> Failed: Unable to create file for export. %/Shop.mdb: it is the database itself"));
    EXPECT_EQ(outcome.successTableCount, 1);
    EXPECT_EQ(folder.read("Shop.mdb"), "the database");
    EXPECT_FALSE(std::filesystem::exists(folder.path("../up.csv")));

    options.path = folder.path("quite/missing");
    EXPECT_EQ(runWriter(exportTextFileThread, *file, options).log.size(), 5U);
    EXPECT_FALSE(folder.exists("quite"));
}

TEST(TextExport, FullDiskFailsTheTableAndLeavesTheDevice)
{
    if (!std::filesystem::exists("/dev/full")) GTEST_SKIP();
    const std::string large(3 << 20, 'x');
    const auto file = makeFile("/nowhere/Shop.mdb", textTable("small", {{"x"}}), textTable("large", {{large}, {"x"}}));
    auto options = optionsFor(CSV);
    options.path = "/dev";
    const auto outcome = runWriter(exportTextFileThread, *file, options, -1, {"full", "full"});
    EXPECT_THAT(outcome.log,
        ElementsAre("<small> Failed: Unable to write file. %/full: No space left on device",
            "<large> Failed: Unable to write file. %/full: No space left on device"));
    EXPECT_EQ(outcome.successTableCount, 0);
    EXPECT_TRUE(std::filesystem::exists("/dev/full"));
}

TEST(TextExport, StopLeavesNothingOfTheTableBegun)
{
    TempFolder folder;
    const auto file =
        makeFile("/nowhere/Shop.mdb", textTable("A", {{"x"}}), textTable("B", {{"x"}}), textTable("C", {{"x"}}));
    folder.write("B.csv", "from an earlier export");
    auto options = optionsFor(CSV);
    options.path = folder.path();
    const auto outcome = runWriter(exportTextFileThread, *file, options, 1);
    EXPECT_THAT(outcome.log, ElementsAre("<B> Failed: Terminated."));
    EXPECT_THAT(outcome.progress, ElementsAre(0, 1));
    EXPECT_EQ(outcome.successTableCount, 1);
    EXPECT_EQ(folder.read("B.csv"), "from an earlier export");
    EXPECT_THAT(folder.names(), ElementsAre("A.csv", "B.csv"));
}

TEST(TextExport, TablesThatTheFileDoesNotHaveArePassedOver)
{
    TempFolder folder;
    const auto file = makeFile("/nowhere/Shop.mdb", textTable("A", {{"x"}}));
    std::atomic<bool> terminate = false;
    FakeSystemLog systemLog;
    auto options = optionsFor(CSV);
    options.path = folder.path();
    const std::vector<ExportEntry> tables = {{true, "a", "1.csv"}, {true, "A", "2.csv"}, {false, "A", "3.csv"}};
    const auto report = runExport(*file, tables, options, terminate, {[](std::size_t) {}, systemLog});
    EXPECT_THAT(report.failures, IsEmpty());
    EXPECT_EQ(report.tables.size(), 2U);
    EXPECT_EQ(report.doneCount(), 1U);
    EXPECT_FALSE(folder.exists("3.csv"));
    EXPECT_FALSE(folder.exists("1.csv"));
    EXPECT_TRUE(folder.exists("2.csv"));
}

} // namespace
} // namespace vellumo
