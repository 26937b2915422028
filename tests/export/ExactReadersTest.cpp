// SPDX-License-Identifier: MIT
#include "export/RunExport.h"
#include "export/xlsx/SheetXML.h"
#include "support/Command.h"
#include "support/ExportRun.h"
#include "support/ModelBuilder.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

// What the exact style writes, read by other people's programs: the same values come back from every format. Each test
// is skipped where its reader is not installed.
namespace vellumo {
namespace {

using namespace std::string_literals;
using namespace test;

constexpr const char* python = "/usr/bin/python3"; // Debian's, which has Debian's packages

// Three tables: the types, their nulls, and texts of all kinds with their number in front.
const std::vector<ColumnSpec> typeColumns = {{"B", "Boolean"}, {"L", "Long Integer"}, {"C", "Currency"},
    {"S", "Single"}, {"D", "Double"}, {"When", "DateTime"}, {"G", "Replication ID"}, {"X", "Binary"}, {"O", "OLE"}};

std::vector<Row> typeRows()
{
    const auto bytes = makeBlob("\0\xFFpicture"s, "bmp");
    return {
        {"1", "-7", "2.5000", "0.1", "0.30000000000000004", noted("03/05/2014 21:07:00", 250), "{00FF-A}", "00ff",
            bytes},
        {"0", null, null, null, null, null, null, null, nullptr},
        {"1", "2147483647", "922337203685477.5807", "3.4028235e+38", "1.7976931348623157e+308", "12/31/9999 23:59:59",
            "{1}", empty, bytes},
        {"0", "0", "-0.0001", "-1.5", "5e-324", "12/30/1899 12:30:00", "{2}", "7f", bytes},
        {"0", "1", "99999999999.9999", "16777216", "-1e+20", "03/01/1900 00:00:00", "{3}", "80", bytes},
        {"0", "1", "1.0000", "1", "1", "02/28/1900 06:00:00", "{4}", "80", bytes},
    };
}

const std::vector<std::string> texts = {"plain", "=1+1", "00501", "'quoted", " blanks ", "a,b;c\t\"d\"", "line\nbreak",
    "cr\rhere", "<&>]]>", "éÿЖ本😀", "TRUE", "1/2", "-", "{}", "#N/A", "a\\b"};

// All of it in the format, under the folder.
ExportReport write(ExportFileType type, const TempFolder& folder, bool hasTitles = true)
{
    std::vector<Row> rows;
    for (const auto& text : texts)
        rows.push_back({std::to_string(rows.size()), text});
    const auto file = makeFile("/nowhere/Shop.mdb", makeTable("Types", typeColumns, typeRows(), 2),
        makeTable("Some Texts", {{"No", "Long Integer"}, {"Text & more", "Memo/Hyperlink"}}, rows, 5),
        makeTable("Empty \u07CA", {{"ID", "Long Integer"}}));
    auto options = defaultOptions(exportFormat(type), true);
    options.includeColumnHeader = hasTitles;
    options.isSingleFile = exportFormat(type).hasSingleFileMode();
    options.path =
        options.isSingleFile ? folder.path("Shop." + std::string(exportFormat(type).extension)) : folder.path();
    FakeSystemLog log;
    const std::atomic<bool> stop = false;
    std::vector<ExportEntry> entries;
    for (const auto& table : file->tables()) {
        entries.push_back(ExportEntry::exportEntryWithTableName(table->name(), type));
        entries.back().selected = true;
    }
    return runExport(*file, entries, options, stop, {[](std::size_t) {}, log});
}

// The values, written once more for the readers; what each says is turned into such a value by its type alone.
constexpr const char* expectedValues = R"(
import base64, datetime, decimal, math, struct, sys
folder = sys.argv[1]
D, T = decimal.Decimal, datetime.datetime
blob = b'\0\xffpicture'
types = [
    [True, -7, D('2.5'), 0.1, 0.1 + 0.2, T(2014, 3, 5, 21, 7, 0, 250000), '00FF-A', b'\0\xff', blob],
    [False, None, None, None, None, None, None, None, None],
    [True, 2**31 - 1, D('922337203685477.5807'), 3.4028235e38, sys.float_info.max, T(9999, 12, 31, 23, 59, 59), '1', b'', blob],
    [False, 0, D('-0.0001'), -1.5, 5e-324, T(1899, 12, 30, 12, 30), '2', b'\x7f', blob],
    [False, 1, D('99999999999.9999'), 16777216.0, -1e20, T(1900, 3, 1), '3', b'\x80', blob],
    [False, 1, D(1), 1.0, 1.0, T(1900, 2, 28, 6), '4', b'\x80', blob]]
texts = ['plain', '=1+1', '00501', "'quoted", ' blanks ', 'a,b;c\t"d"', 'line\nbreak', 'cr\rhere', '<&>]]>', 'éÿЖ本😀',
    'TRUE', '1/2', '-', '{}', '#N/A', 'a\\b']
def check(read, what):
    for r, (row, wanted) in enumerate(zip(read, types)):
        for c, (a, b) in enumerate(zip(row, wanted)):
            assert type(a) == type(b) and a == b, (what, r, c, a, b)
    assert len(read) == len(types), what
def single(x): return struct.unpack('f', struct.pack('f', x))[0]
)";

constexpr const char* textReaders = R"(
import csv, json
import xml.etree.ElementTree as ET
def unhex(s): return bytes.fromhex(s)
def typed(row, boolean, integer, real, binary, bytes_):
    f = [boolean, integer, D, real, real, T.fromisoformat, str, binary, bytes_]
    return [None if v is None else g(v) for v, g in zip(row, f)]
def path(name, ext): return folder + '/' + name + '.' + ext
with open(path('Types', 'csv'), newline='') as f:
    rows = list(csv.reader(f))
assert rows[0] == list('BLCSD') + ['When', 'G', 'X', 'O']
rows = [[None if v == '' else v for v in row] for row in rows[1:]]
rows[2][7] = ''   # that this is no null, the module does not tell
check([typed(r, {'true': True, 'false': False}.get, int, float, unhex, base64.b64decode) for r in rows], 'csv')
with open(path('Some Texts', 'csv'), newline='') as f:
    assert [r[1] for r in list(csv.reader(f))[1:]] == texts
rows = [json.loads(line) for line in open(path('Types', 'jsonl'))]
check([typed(r.values(), bool, int, float, base64.b64decode, base64.b64decode) for r in rows], 'jsonl')
assert [json.loads(line) for line in open(path('Some Texts', 'jsonl'), newline='\n')] == [
    {'No': i, 'Text & more': t} for i, t in enumerate(texts)]
def value(e):
    if e.get('{http://www.w3.org/2001/XMLSchema-instance}nil') == 'true': return None
    return e.text or ''
rows = [[value(e) for e in record] for record in ET.parse(path('Types', 'xml')).getroot()]
check([typed(r, {'true': True, 'false': False}.get, int, float, base64.b64decode, base64.b64decode) for r in rows], 'xml')
root = ET.parse(path('Some Texts', 'xml')).getroot()
assert [e.find('Text_x0020__x0026__x0020_more').text for e in root] == texts
assert open(path('Empty \u07ca', 'jsonl')).read() == '' and len(ET.parse(path('Empty \u07ca', 'xml')).getroot()) == 0
)";

// Sheets hold no difference between empty and null, no day before 1900-03-01, and 15 digits.
constexpr const char* sheetReaders = R"(
import openpyxl, xlrd
types[2][7] = None
types[2][2] = '922337203685477.5807'
types[5][5] = '1900-02-28 06:00:00'
types[3][5] = datetime.time(12, 30)
for row in types:
    row[7] = row[7].hex() if row[7] else None
    row[8] = row[8].hex() if row[8] else None
    if isinstance(row[2], D): row[2] = float(row[2])
def same(values):   # readers give whole numbers as integers
    return [float(v) if type(v) is int and c in (2, 3, 4) else v for c, v in enumerate(values)]
book = openpyxl.load_workbook(folder + '/Shop.xlsx')
assert book.sheetnames == ['Types', 'Some Texts', 'Empty \u07ca']
sheet = book['Types']
assert sheet.freeze_panes == 'A2' and sheet.auto_filter.ref == 'A1:I7'
assert [c.value for c in sheet[1]] == list('BLCSD') + ['When', 'G', 'X', 'O']
check([same([c.value for c in row]) for row in sheet.iter_rows(min_row=2)], 'xlsx')
assert sheet['F2'].number_format == r'yyyy\-mm\-dd\ hh:mm:ss.000' and sheet['C2'].number_format == '#,##0.00##'
assert [c.value for c in book['Some Texts']['B'][1:]] == texts
assert all(c.data_type == 's' for c in book['Some Texts']['B'])
types[3][4] = 0.0   # the older format has no subnormal numbers
book = xlrd.open_workbook(folder + '/Shop.xls')
def cell(c, r, k):
    if c.ctype == xlrd.XL_CELL_BOOLEAN: return bool(c.value)
    if c.ctype == xlrd.XL_CELL_DATE:
        d = xlrd.xldate.xldate_as_datetime(c.value, book.datemode)
        return d.time() if c.value < 1 else d
    if c.ctype == xlrd.XL_CELL_NUMBER and k == 1: return int(c.value)
    return None if c.ctype in (xlrd.XL_CELL_EMPTY, xlrd.XL_CELL_BLANK) else c.value
sheet = book.sheet_by_name('Types')
check([[cell(c, r, k) for k, c in enumerate(sheet.row(r))] for r in range(1, sheet.nrows)], 'xls')
assert book.sheet_by_name('Some Texts').col_values(1)[1:] == texts
assert book.sheet_by_name('Empty \u07ca').col_values(0) == ['ID']
)";

void readWithPython(const TempFolder& folder, const char* script)
{
    const auto result = run({python, "-X", "utf8", "-c", std::string(expectedValues) + script, folder.path()});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out + result.err, "");
}

TEST(ExactReaders, PythonReadsTheTextFormats)
{
    if (run({python, "-c", ""}).status != 0) GTEST_SKIP() << "Python is not installed";
    TempFolder folder;
    for (const auto type : {ExportFileType::CSV, ExportFileType::XML, ExportFileType::JSONLines})
        EXPECT_TRUE(write(type, folder).isDone());
    readWithPython(folder, textReaders);
}

TEST(ExactReaders, OpenpyxlAndXlrdReadTheWorkbooks)
{
    if (run({python, "-c", "import openpyxl, xlrd"}).status != 0) GTEST_SKIP() << "openpyxl or xlrd is not installed";
    TempFolder folder;
    for (const auto type : {ExportFileType::XLS, ExportFileType::XLSX}) {
        const auto report = write(type, folder);
        EXPECT_TRUE(report.isDone());
        EXPECT_EQ(findingLines(report.findings.all()),
            (std::vector<std::string>{"Types.C: 1 number has too many digits and was written as a text.",
                "Types.X: 1 empty text cannot be told from null.",
                "Types.When: 1 date that a sheet has no number for was written as a text."}));
    }
    readWithPython(folder, sheetReaders);
}

TEST(ExactReaders, ASheetWithoutTitlesHasNoFilter)
{
    if (run({python, "-c", ""}).status != 0) GTEST_SKIP() << "Python is not installed";
    TempFolder folder;
    EXPECT_TRUE(write(ExportFileType::XLSX, folder, false).isDone());
    readWithPython(folder, R"(
import zipfile
with zipfile.ZipFile(folder + '/Shop.xlsx') as book:
    assert not any(b'ilter' in book.read(name) for name in book.namelist())
)");
}

// Without the mark readers may drop them.
TEST(SheetXML, MarksTextsWithBlanksAtAnEnd)
{
    const xlsx::ColumnLayout column{"T", 8};
    for (const auto& [text, isMarked] : {std::pair{" a", true}, {"a ", true}, {"a\n", true}, {"a b", false}}) {
        xlsx::SheetXML sheet;
        sheet.begin({&column, 1}, false);
        sheet.addText(0, text);
        const std::string mark = isMarked ? " xml:space=\"preserve\"" : "";
        EXPECT_TRUE(sheet.text().ends_with("<is><t" + mark + ">" + text + "</t></is></c>")) << text;
    }
}

TEST(ExactReaders, GnumericAndLibreOfficeReadTheTexts)
{
    if (!isInstalled("ssconvert") || !isInstalled("soffice"))
        GTEST_SKIP() << "Gnumeric or LibreOffice is not installed";
    TempFolder folder;
    EXPECT_TRUE(write(ExportFileType::XLSX, folder).isDone());
    const auto gnumeric = run({"ssconvert", "-S", "--export-type=Gnumeric_stf:stf_assistant", "-O",
        "separator=, quoting-mode=always eol=unix format=raw", folder.path("Shop.xlsx"), folder.path("read.%n.csv")});
    EXPECT_EQ(gnumeric.status, 0);
    EXPECT_EQ(gnumeric.err, "");
    const auto office = run({"soffice", "-env:UserInstallation=file://" + folder.path("profile"), "--headless",
        "--convert-to", "csv:Text - txt - csv (StarCalc):44,34,76,1,,0,true,true,false,false,false,-1", "--outdir",
        folder.path(), folder.path("Shop.xlsx")});
    EXPECT_EQ(office.status, 0) << office.err;
    constexpr const char* script = R"(
import csv
for name in 'read.1.csv', 'Shop-Some Texts.csv':
    with open(folder + '/' + name, newline='') as f:
        assert [r[1] for r in list(csv.reader(f))[1:]] == texts, name
with open(folder + '/Shop-Types.csv', newline='') as f:
    rows = list(csv.reader(f))
assert rows[1][:6] == ['TRUE', '-7', '2.5', '0.1', '0.3', '2014-03-05 21:07:00.250'], rows[1]
assert rows[4][5].startswith('12:30:00') and rows[5][5] == '1900-03-01 00:00:00' and rows[6][5] == '1900-02-28 06:00:00', rows
)";
    readWithPython(folder, script);
}

TEST(ExactSheets, EscapeWhatXmlDoesNotTake)
{
    const struct {
        std::string text;
        std::string xml;
        bool hasEscapes;
    } cases[] = {
        {"a<b>&\"c\"", "a&lt;b&gt;&amp;&quot;c&quot;", false},
        {"tab\tline\ncr\r", "tab\tline\ncr&#13;", false},
        {"\x01\x1F", "_x0001__x001F_", true},
        {"_x0041_ _x41_ _xZZZZ_ __x0041_", "_x005F_x0041_ _x41_ _xZZZZ_ __x005F_x0041_", false},
        {"\uFFFE\uFFFF\uFFFD\uFB01", "_xFFFE__xFFFF_\uFFFD\uFB01", true},
    };
    for (const auto& test : cases) {
        std::string xml;
        EXPECT_EQ(xlsx::appendCellText(test.text, xml), test.hasEscapes) << test.text;
        EXPECT_EQ(xml, test.xml);
    }
    EXPECT_EQ(xlsx::columnLetters(25) + xlsx::columnLetters(26) + xlsx::columnLetters(701) + xlsx::columnLetters(702),
        "ZAAZZAAA");
}

TEST(ExactSheets, LongTextsAreCutAndLongTablesGoOn)
{
    if (run({python, "-c", "import openpyxl, xlrd"}).status != 0) GTEST_SKIP() << "openpyxl or xlrd is not installed";
    TempFolder folder;
    std::string longText = "x"; // so that the cut would fall into a pair
    for (int i = 0; i < 20'000; ++i)
        longText += "\U0001F600";
    std::vector<Row> rows(65'540, Row{"1", null});
    rows[0] = {"1", longText};
    rows[1] = {"1", "a\r\nb\r\nc"};
    rows[2] = {"1", noted("z", -2)};
    const auto file =
        makeFile("/nowhere/Shop.mdb", makeTable("T", {{"N", "Long Integer"}, {"M", "Memo/Hyperlink"}}, rows));
    auto options = defaultOptions(exportFormat(ExportFileType::XLS), true);
    options.path = folder.path();
    for (const auto type : {ExportFileType::XLS, ExportFileType::XLSX}) {
        options.fileType = type;
        FakeSystemLog log;
        const std::atomic<bool> stop = false;
        std::vector<ExportEntry> entries = {ExportEntry::exportEntryWithTableName("T", type)};
        entries[0].selected = true;
        const auto report = runExport(*file, entries, options, stop, {[](std::size_t) {}, log});
        EXPECT_TRUE(report.isDone());
        EXPECT_EQ(findingLines(report.findings.all()),
            (std::vector<std::string>{"T.M: 1 text was cut after 32767 characters.",
                "T.M: In 1 text, line breaks CR LF became LF.",
                "T.M: In 1 text, characters that the target does not take became U+FFFD."}));
    }
    readWithPython(folder, R"(
import openpyxl, xlrd
book = xlrd.open_workbook(folder + '/T.xls')
assert book.sheet_names() == ['T', 'T (2)'] and [s.nrows for s in book.sheets()] == [65536, 6]
assert book.sheets()[1].row_values(0)[0] == 'N' and book.sheets()[1].row_values(5)[0] == 1
for texts in book.sheets()[0].col_values(1)[1:4], [c.value for c in openpyxl.load_workbook(folder + '/T.xlsx').active['B'][1:4]]:
    assert texts == ['x' + '\U0001F600' * 16383, 'a\nb\nc', 'z\ufffd'], texts[1:]
)");
}

} // namespace
} // namespace vellumo
