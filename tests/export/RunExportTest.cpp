// SPDX-License-Identifier: MIT
#include "export/RunExport.h"

#include "export/ExportFormat.h"
#include "support/ExportFakes.h"
#include "support/ModelBuilder.h"
#include "support/TempFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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
        "Export finished.|2 tables exported successfully.\nA.One: 1 damaged object was left out.\n"
        "A.Two: 2 damaged objects were left out.\nDamage:\nB: 2 rows are missing.");
    EXPECT_TRUE(report.isDone() && !report.isSourceWhole());
    file->setDamage({});
    EXPECT_TRUE(exportTables(*file, folder.path(), "B").isSourceWhole());
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
