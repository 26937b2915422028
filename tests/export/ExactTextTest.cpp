// SPDX-License-Identifier: MIT
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

constexpr auto CSV = ExportFileType::CSV;
constexpr auto XML = ExportFileType::XML;
constexpr auto JSONLines = ExportFileType::JSONLines;

const std::vector<ColumnSpec> allTypes = {{"Yes", "Boolean"}, {"L", "Long Integer"}, {"C", "Currency"}, {"S", "Single"},
    {"D", "Double"}, {"When", "DateTime"}, {"Bin", "Binary"}, {"T", "Text"}, {"O", "OLE"}, {"G", "Replication ID"},
    {"N", "Numeric"}};
const Row allValues = {
    "1", "-2", "2.5000", "0.1", "1e+20", "03/05/2014 21:07:00", "00ff", "a", makeBlob("pi", "bmp"), "{A-B}", "1.25"};
const Row allNull = {"0", null, null, null, null, null, null, null, null, null, null};

struct Case {
    const char* name;
    ExportFileType type;
    std::vector<ColumnSpec> columns;
    std::vector<Row> rows;
    std::string expected;
    std::vector<std::string> findings = {};
    void (*change)(ExportOptions&) = [](ExportOptions&) {}; // from the defaults
};

std::vector<Case> delimitedCases()
{
    const std::vector<ColumnSpec> text = {{"T", "Text"}};
    return {
        {"every type, and null", CSV, allTypes, {allValues, allNull},
            "Yes,L,C,S,D,When,Bin,T,O,G,N\r\ntrue,-2,2.5000,0.1,1e+20,2014-03-05 21:07:00,00ff,a,cGk=,A-B,1.25\r\n"
            "false,,,,,,,,,,\r\n"},
        {"null and empty", CSV, {{"A,B", "Text"}, {"Bin", "Binary"}}, {{null, null}, {empty, empty}},
            "\"A,B\",Bin\r\n,\r\n\"\",\"\"\r\n"},
        {"quotes where they are needed", CSV, text,
            {{"plain 'x'"}, {"a,b"}, {"a\"b"}, {"a\r\nb"}, {" a"}, {"a "}, {"\\."}, {"=1"}},
            "T\r\nplain 'x'\r\n\"a,b\"\r\n\"a\"\"b\"\r\n\"a\r\nb\"\r\n\" a\"\r\n\"a \"\r\n\"\\.\"\r\n=1\r\n"},
        {"zeros and fractions of a second", CSV, {{"T", "Text"}, {"When", "DateTime"}},
            {{noted("a", -2), noted("03/05/2014 21:07:00", 5)}}, "T,When\r\na\0,2014-03-05 21:07:00.005\r\n"s},
        {"what cannot be read", CSV, {{"D", "Double"}}, {{"\uFFFD"}, {"1"}}, "D\r\n\r\n1\r\n",
            {"Orders.D: 1 unreadable value was written as null."}},
        {"guarded formulas", CSV, text, {{"=1+1"}, {"-x"}, {"a=1"}, {"@,"}}, "T\r\n'=1+1\r\n'-x\r\na=1\r\n\"'@,\"\r\n",
            {"Orders.T: 3 texts that look like formulas got an apostrophe in front."},
            [](ExportOptions& options) { options.guardsFormulas = true; }},
        {"blanks between fields", ExportFileType::TXT, {{"When", "DateTime"}, {"T", "Text"}},
            {{"03/05/2014 21:07:00", "a b"}}, "\"2014-03-05 21:07:00\" \"a b\"\n", {},
            [](ExportOptions& options) {
                options.fieldDelimiter = FieldDelimiter::Space;
                options.recordDelimiter = RecordDelimiter::LF;
                options.includeColumnHeader = false;
            }},
        {"UTF-8 with a mark", CSV, text, {{"\u00E4"}}, "\uFEFFT\r\n\u00E4\r\n", {},
            [](ExportOptions& options) { options.hasByteOrderMark = true; }},
        {"UTF-16 has one mark and whole texts", CSV, text, {{"\u3042x"}}, "\xFF\xFET\0\r\0\n\0\x42\x30x\0\r\0\n\0"s, {},
            [](ExportOptions& options) { options.encoding = encodingUTF16; }},
        {"Latin 1", CSV, text, {{"\u00E4"}}, "T\r\n\xE4\r\n", {},
            [](ExportOptions& options) { options.encoding = encodingISOLatin1; }},
    };
}

std::vector<Case> otherCases()
{
    const std::string head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                             "<RECORDS xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\">\n";
    const std::vector<ColumnSpec> text = {{"T", "Text"}};
    return {
        {"JSON of every type, and null", JSONLines, allTypes, {allValues, allNull},
            "{\"Yes\":true,\"L\":-2,\"C\":\"2.5000\",\"S\":0.1,\"D\":1e+20,\"When\":\"2014-03-05T21:07:00\","
            "\"Bin\":\"AP8=\",\"T\":\"a\",\"O\":\"cGk=\",\"G\":\"A-B\",\"N\":\"1.25\"}\n"
            "{\"Yes\":false,\"L\":null,\"C\":null,\"S\":null,\"D\":null,\"When\":null,\"Bin\":null,\"T\":null,"
            "\"O\":null,\"G\":null,\"N\":null}\n"},
        {"JSON escapes", JSONLines, {{"a\"b", "Text"}, {"D", "Double"}},
            {{noted("\\\"\n\x1F/\u00E4", -2), "-0"}, {empty, "nan"}},
            "{\"a\\\"b\":\"\\\\\\\"\\n\\u001f/\u00E4\\u0000\",\"D\":-0.0}\n{\"a\\\"b\":\"\",\"D\":null}\n",
            {"Orders.D: 1 infinite value or not-a-number was written as null."}},
        {"XML of every type, and null", XML,
            {{"Yes", "Boolean"}, {"D", "Double"}, {"When", "DateTime"}, {"Bin", "Binary"}},
            {{"1", "-inf", "03/05/2014 21:07:00", "00ff"}, {"0", "2.5", null, empty}},
            head
                + "<RECORD>\n\t<Yes>true</Yes>\n\t<D>-INF</D>\n\t<When>2014-03-05T21:07:00</When>\n\t<Bin>AP8=</Bin>\n"
                  "</RECORD>\n<RECORD>\n\t<Yes>false</Yes>\n\t<D>2.5</D>\n\t<When xsi:nil=\"true\"/>\n\t<Bin></Bin>\n"
                  "</RECORD>\n</RECORDS>\n"},
        {"XML numbers that are none", XML, {{"D", "Double"}}, {{"nan"}, {"inf"}},
            head + "<RECORD>\n\t<D>NaN</D>\n</RECORD>\n<RECORD>\n\t<D>INF</D>\n</RECORD>\n</RECORDS>\n"},
        {"XML names", XML,
            {{"Unit Price", "Text"}, {"1st", "Text"}, {"a_x0041_", "Text"}, {"Gr\u00F6\u00DFe\u2019", "Text"}},
            {{"1", "2", "3", "4"}},
            head
                + "<RECORD>\n\t<Unit_x0020_Price>1</Unit_x0020_Price>\n\t<_x0031_st>2</_x0031_st>\n"
                  "\t<a_x005F_x0041_>3</a_x005F_x0041_>\n\t<Gr\u00F6\u00DFe_x2019_>4</Gr\u00F6\u00DFe_x2019_>\n"
                  "</RECORD>\n</RECORDS>\n"},
        {"XML texts", XML, text, {{"a<b&c>\r\n\t"}, {"x\x01"}, {noted("y", -2)}, {"\uFFFE"}},
            head
                + "<RECORD>\n\t<T>a&lt;b&amp;c&gt;&#13;\n\t</T>\n</RECORD>\n"
                  "<RECORD>\n\t<T encoding=\"base64\">eAE=</T>\n</RECORD>\n"
                  "<RECORD>\n\t<T encoding=\"base64\">eQA=</T>\n</RECORD>\n"
                  "<RECORD>\n\t<T encoding=\"base64\">77++</T>\n</RECORD>\n</RECORDS>\n",
            {"Orders.T: 3 texts with characters that XML does not take were written as base64."}},
        {"XML in an encoding of few letters", XML, {{"\u00C4\u0416", "Text"}}, {{"\u00E4\u0416\U0001F600"}},
            "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n"
            "<RECORDS xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\">\n"
            "<RECORD>\n\t<\xC4_x0416_>\xE4&#1046;&#128512;</\xC4_x0416_>\n</RECORD>\n</RECORDS>\n",
            {}, [](ExportOptions& options) { options.encoding = encodingISOLatin1; }},
    };
}

struct Outcome {
    ExportReport report;
    std::vector<std::string> findings;
};

Outcome run(const TAdmMDBFile& file, const ExportOptions& options)
{
    FakeSystemLog log;
    const std::atomic<bool> stop = false;
    std::vector<ExportEntry> entries;
    for (const auto& table : file.tables()) {
        entries.push_back(ExportEntry::exportEntryWithTableName(table->name(), options.fileType));
        entries.back().selected = true;
    }
    auto report = runExport(file, entries, options, stop, {[](std::size_t) {}, log});
    auto lines = findingLines(report.findings.all());
    return {std::move(report), std::move(lines)};
}

TEST(ExactText, WritesTheseBytes)
{
    auto cases = delimitedCases();
    for (auto& c : otherCases())
        cases.push_back(std::move(c));
    for (const auto& c : cases) {
        TempFolder folder;
        const auto& format = exportFormat(c.type);
        auto options = defaultOptions(format, true);
        c.change(options);
        options.path = folder.path();
        const auto outcome = run(*makeFile("/nowhere/Shop.mdb", makeTable("Orders", c.columns, c.rows, 2)), options);
        EXPECT_TRUE(outcome.report.isDone()) << c.name;
        EXPECT_EQ(folder.read("Orders." + std::string(format.extension)), c.expected) << c.name;
        EXPECT_EQ(outcome.findings, c.findings) << c.name;
    }
}

TEST(ExactText, ATextThatTheEncodingDoesNotHaveFailsItsTable)
{
    TempFolder folder;
    auto options = defaultOptions(exportFormat(CSV), true);
    options.path = folder.path();
    options.encoding = encodingISOLatin1;
    const auto outcome =
        run(*makeFile("/nowhere/Shop.mdb", makeTable("Orders", {{"T", "Text"}}, {{"a"}, {"\u0416"}, {"b"}})), options);
    ASSERT_EQ(outcome.report.failures.size(), 1U);
    EXPECT_EQ(failureText(outcome.report.failures[0]),
        "<Orders> Failed: Text cannot be represented in the selected encoding. Row 2, column T");
    EXPECT_FALSE(folder.read("Orders.csv"));
}

TEST(ExactText, ObjectsBecomeFilesBeside)
{
    TempFolder folder;
    const auto damaged = makeBlob("x", "png", {.state = ObjectState::Damaged});
    const auto file = makeFile("/nowhere/Shop.mdb",
        makeTable("A,B", {{"ID", "Long Integer"}, {"Pic", "OLE"}},
            {{"1", makeBlob("one", "bmp")}, {"2", nullptr}, {"3", makeBlob("", "")}, {"4", damaged},
                {"5", makeBlob("five", "")}},
            2));
    for (const auto type : {CSV, JSONLines, ExportFileType::SQL}) {
        auto options = defaultOptions(exportFormat(type), true);
        options.path = folder.path();
        options.objectsFolder = folder.path("objects");
        const auto report = run(*file, options).report;
        EXPECT_TRUE(report.isDone());
        EXPECT_THAT(exportReportTexts(report).body,
            testing::HasSubstr("\n2 object files written to " + options.objectsFolder + '.'));
    }
    EXPECT_EQ(folder.read("A,B.csv"), "ID,Pic\r\n1,\"A,B/Pic/1.bmp\"\r\n2,\r\n3,\"\"\r\n4,\r\n5,\"A,B/Pic/5\"\r\n");
    EXPECT_EQ(folder.read("A,B.jsonl"),
        "{\"ID\":1,\"Pic\":\"A,B/Pic/1.bmp\"}\n{\"ID\":2,\"Pic\":null}\n{\"ID\":3,\"Pic\":\"\"}\n"
        "{\"ID\":4,\"Pic\":null}\n{\"ID\":5,\"Pic\":\"A,B/Pic/5\"}\n");
    EXPECT_THAT(folder.read("A,B.sql").value_or(""), testing::HasSubstr("'A,B/Pic/1.bmp'"));
    EXPECT_EQ(folder.read("objects/A,B/Pic/1.bmp"), "one");
    const auto manifest = folder.read("objects/manifest.csv").value_or("");
    EXPECT_THAT(manifest, testing::HasSubstr("\r\n\"A,B\",Pic,5,\"A,B/Pic/5\",,,4,"));
}

TEST(ExactText, WithoutTheFolderForObjectsThereIsNoExport)
{
    TempFolder folder;
    folder.write("objects", "a file");
    auto options = defaultOptions(exportFormat(CSV), true);
    options.path = folder.path();
    options.objectsFolder = folder.path("objects");
    const auto outcome =
        run(*makeFile("/nowhere/Shop.mdb", makeTable("T", {{"ID", "Long Integer"}}, {{"1"}})), options);
    EXPECT_EQ(outcome.report.failures.size(), 1U);
    EXPECT_FALSE(folder.read("T.csv"));
}

} // namespace
} // namespace vellumo
