// SPDX-License-Identifier: MIT
#include "export/RunExport.h"

#include "export/ChosenTable.h"
#include "export/ExportFormat.h"
#include "support/ExportFakes.h"
#include "support/ModelBuilder.h"
#include "support/TempFolder.h"
#include "text/TextEncoding.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

namespace vellumo {
namespace {

using namespace test;
using testing::IsEmpty;

std::unique_ptr<TAdmMDBTable> smallTable(std::string name)
{
    return makeTable(std::move(name), {{"T", "Text"}}, {{"x"}});
}

// Exports the tables, all unless some are named, as CSV. `isStopped`: from the start.
ExportReport exportTables(
    const TAdmMDBFile& file, const std::string& path, std::string_view only = "", bool isStopped = false)
{
    std::vector<ExportEntry> tables;
    for (const auto& table : file.tables()) {
        tables.push_back(ExportEntry::exportEntryWithTableName(table->name(), ExportFileType::CSV));
        tables.back().selected = only.empty() || only == table->name();
    }
    ExportOptions options;
    options.path = path;
    FakeSystemLog log;
    const std::atomic<bool> stop = isStopped;
    return runExport(file, tables, options, stop, {[](std::size_t) {}, log});
}

std::string texts(const ExportReport& report)
{
    const auto [title, body] = exportReportTexts(report);
    return title + '|' + body;
}

TEST(RunExport, ReportsWhatBecameOfEachTable)
{
    const TempFolder folder;
    const auto one = makeFile("/data/Shop.mdb", smallTable("A"));
    auto report = exportTables(*one, folder.path());
    EXPECT_EQ(texts(report), "Export finished.|1 table exported successfully.");
    EXPECT_TRUE(report.isDone() && report.isSourceWhole());

    const auto two = makeFile("/data/Shop.mdb", smallTable("A/B"), smallTable("C\nD"), smallTable("E"));
    report = exportTables(*two, folder.path());
    EXPECT_EQ(texts(report),
        "Export finished.|2 tables exported successfully.\n<A/B> Failed: Unable to create file for export. "
        "A/B.csv: it cannot be the name of a file");
    EXPECT_TRUE(!report.isDone() && !report.tables[0].isDone && report.tables[1].isDone);

    report = exportTables(*two, folder.path(), "", true);
    EXPECT_EQ(texts(report), "Export terminated.|");
    EXPECT_THAT(report.failures, IsEmpty());
    EXPECT_FALSE(report.isDone());
}

TEST(RunExport, ReportTellsWhatTheFileHasLost)
{
    const TempFolder folder;
    const auto damaged = makeBlob("x", "jpg", {ObjectState::Damaged, "", ""});
    const auto file = makeFile("/data/Shop.mdb",
        makeTable("A", {{"One", "OLE"}, {"Two", "OLE"}, {"None", "OLE"}},
            {{damaged, damaged, makeBlob("x", "jpg")}, {null, damaged, null}}),
        smallTable("B"));
    DamageReport damage;
    damage.add({.kind = DamageKind::MissingRows, .table = "B", .count = 2});
    file->setDamage(damage);
    const auto report = exportTables(*file, folder.path());
    EXPECT_EQ(texts(report),
        "Export finished.|2 tables exported successfully.\nA.None: 1 object is left out.\n"
        "A.One: 1 damaged object was left out.\n"
        "A.Two: 2 damaged objects were left out.\nDamage:\nB: 2 rows are missing.");
    EXPECT_TRUE(report.isDone() && !report.isSourceWhole());
    file->setDamage({});
    EXPECT_TRUE(exportTables(*file, folder.path(), "B").isSourceWhole());
}

// Rows and columns in the order wanted; keys only where they are whole.
TEST(RunExport, WritesWhatIsChosen)
{
    auto table = makeTable("T", {{"A", "Long Integer", true}, {"B", "Text", true}, {"O", "OLE"}, {"N", "Text"}},
        {{"1", "one", makeBlob("\x01", "bin"), "\u0416"}, {"2", "two", null, null}, {"3", "three", null, "n"}}, 2);
    setIndices(*table, {{"Key", {"A", "B"}, true, true}, {"ByN", {"-N"}}, {"ByBoth", {"B", "N"}}});
    const auto file = makeFile("/data/Shop.mdb", std::move(table));
    using Numbers = std::vector<std::size_t>;
    using Rows = std::vector<std::uint32_t>;
    const struct {
        const char* name;
        TableChoice choice;
        std::string structure;
        std::string rows;
    } cases[] = {
        {"columns", {Numbers{3, 1}, {}}, "N,B;ByN,ByBoth", "'\u0416', 'one'|null, 'two'|'n', 'three'|"},
        {"rows", {{}, Rows{2, 0}}, "A,B,O,N;Key,ByN,ByBoth", "3, 'three', null, 'n'|1, 'one', x'01', '\u0416'|"},
        {"both", {Numbers{1, 0}, Rows{1}}, "B,A;Key", "'two', 2|"},
        {"no row", {Numbers{0}, Rows{}}, "A;", ""},
    };
    for (const auto& c : cases) {
        const auto chosen = chosenTable(*file->tables()[0], c.choice);
        std::string structure;
        for (const auto& column : chosen->columns())
            structure += (structure.empty() ? "" : ",") + column->name();
        structure += ';';
        for (const auto& index : chosen->indices())
            structure += (structure.ends_with(';') ? "" : ",") + index->name();
        EXPECT_EQ(structure, c.structure) << c.name;
        const bool hasKey = structure.find("Key") != std::string::npos;
        for (const auto& column : chosen->columns())
            EXPECT_EQ(column->isPrimaryKey(), hasKey && column->name() < "C") << c.name;

        const TempFolder folder;
        auto entry = ExportEntry::exportEntryWithTableName("T", ExportFileType::SQL);
        entry.selected = true;
        entry.choice = c.choice;
        auto options = defaultOptions(exportFormat(ExportFileType::SQL));
        options.path = folder.path();
        options.exportStructure = false;
        FakeSystemLog log;
        EXPECT_TRUE(runExport(*file, {&entry, 1}, options, false, {[](std::size_t) {}, log}).isDone());
        std::string rows;
        std::istringstream script(folder.read("T.sql").value_or(""));
        for (std::string line; std::getline(script, line);)
            if (const auto at = line.find("VALUES ("); at != std::string::npos)
                rows += line.substr(at + 8, line.size() - at - 10) + '|';
        EXPECT_EQ(rows, c.rows) << c.name;
    }
}

// A row is told by its place in the table, whichever row of the output it is.
TEST(RunExport, NamesTheRowOfTheTable)
{
    const TempFolder folder;
    const auto file = makeFile("/data/Shop.mdb", makeTable("T", {{"T", "Text"}}, {{"a"}, {"\u0416"}, {"c"}}));
    const std::vector<ExportEntry> tables = {{true, "T", "T.csv", {{}, std::vector<std::uint32_t>{2, 1}}}};
    ExportOptions options;
    options.path = folder.path();
    options.encoding = encodingASCII;
    FakeSystemLog log;
    const auto report = runExport(*file, tables, options, false, {[](std::size_t) {}, log});
    ASSERT_EQ(report.failures.size(), 1U);
    EXPECT_EQ(report.failures[0].reason.cause.row, 2U);
}

// Two groups of rows, of two and of one; with a second table nobody is told of rows.
TEST(RunExport, TellsTheRowsOfAnOnlyTable)
{
    auto table = smallTable("T");
    auto store = table->emptyRows();
    RowGroupBuilder group(store.kinds());
    for (const bool isLast : {false, true, true}) {
        group.addText(0, "x");
        group.endRow();
        if (isLast) store.append(group.take());
    }
    table->setRows(std::move(store));
    const auto file = makeFile("/data/Shop.mdb", std::move(table), smallTable("U"));
    for (const auto& format : exportFormats())
        for (const bool isExact : {false, true})
            for (const bool isOnly : {true, false}) {
                const TempFolder folder;
                auto options = defaultOptions(format, isExact || format.isAlwaysExact);
                options.path = format.output == ExportOutput::File ? folder.path("file") : folder.path();
                std::vector<ExportEntry> tables;
                for (const auto* name : {"T", "U"})
                    tables.push_back(ExportEntry::exportEntryWithTableName(name, format.type));
                tables[0].selected = true;
                tables[1].selected = !isOnly;
                FakeSystemLog log;
                std::vector<std::pair<std::size_t, std::size_t>> told;
                const auto tell = [&](std::size_t done, std::size_t total) { told.emplace_back(done, total); };
                EXPECT_TRUE(
                    runExport(*file, tables, options, false, {[](std::size_t) {}, log, nullptr, tell}).isDone());
                const std::vector<std::pair<std::size_t, std::size_t>> rows = {{0, 3}, {2, 3}};
                EXPECT_EQ(told, isOnly ? rows : decltype(rows)()) << format.name << isExact;
            }
}

TEST(RunExport, MakesOneFolderAndLeavesNoEmptyOne)
{
    const TempFolder folder;
    const auto good = makeFile("/data/Shop.mdb", smallTable("A"));
    EXPECT_TRUE(exportTables(*good, folder.path("new")).isDone());
    EXPECT_TRUE(folder.exists("new/A.csv"));
    EXPECT_FALSE(exportTables(*good, folder.path("more/new")).isDone());
    EXPECT_FALSE(folder.exists("more"));
    const auto bad = makeFile("/data/Shop.mdb", smallTable("A/B"));
    EXPECT_FALSE(exportTables(*bad, folder.path("none")).isDone());
    EXPECT_FALSE(folder.exists("none"));
}

TEST(ExportReport, ShowsTenFailures)
{
    for (const int count : {10, 11, 12}) {
        ExportReport report;
        std::string body = "Export finished.|";
        for (int i = 0; i < count; ++i) {
            report.failures.push_back(
                {ExportFailure::Kind::Table, "T" + std::to_string(i), {exportReason::cannotWrite}});
            if (i < 10) body += (i == 0 ? "<T" : "\n<T") + std::to_string(i) + "> Failed: Unable to write file.";
        }
        if (count > 10) body += "\n\u2026and " + std::to_string(count - 10) + " more.";
        EXPECT_EQ(texts(report), body);
    }
}

} // namespace
} // namespace vellumo
