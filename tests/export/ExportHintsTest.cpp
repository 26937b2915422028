// SPDX-License-Identifier: MIT
#include "export/ExportHints.h"

#include "export/ExportFormat.h"
#include "support/ModelBuilder.h"
#include "support/TempFolder.h"

#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vellumo {
namespace {

using namespace test;
using enum ExportFileType;
using testing::ElementsAreArray;

// An export as its options stand before it begins.
struct Plan {
    std::vector<ExportEntry> tables;
    ExportOptions options;
};

std::vector<std::string> texts(const TAdmMDBFile& file, const Plan& plan)
{
    std::vector<std::string> result;
    for (const auto& hint : exportHints(file, plan.tables, plan.options))
        result.push_back((hint.kind == ExportHint::Kind::Missing       ? "missing: "
                                 : hint.kind == ExportHint::Kind::Note ? "note: "
                                                                       : "warning: ")
            + hint.text);
    return result;
}

// In every text, % stands for the folder of the test.
TEST(ExportHints, SaysWhatIsMissingAndWhatWillSurprise)
{
    using Change = std::function<void(Plan&)>;
    const auto path = [](const char* value) { return [value](Plan& plan) { plan.options.path = value; }; };
    const auto fileName = [](std::size_t row, const char* name) {
        return [=](Plan& plan) { plan.tables[row].exportFileName = name; };
    };
    const struct {
        const char* name;
        ExportFileType type;
        Change change;
        std::vector<std::string> hints;
    } cases[] = {
        {"all is well", CSV, [](Plan&) {}, {}},
        {"no folder", CSV, path(""), {"missing: Choose the folder to export to."}},
        {"no file", SQLite, path(""), {"missing: Choose the file to export to."}},
        {"no table", TXT, [](Plan& plan) { plan.tables[0].selected = plan.tables[1].selected = false; },
            {"missing: Select at least one table."}},
        {"nothing of it", SQL, [](Plan& plan) { plan.options.exportData = plan.options.exportStructure = false; },
            {"missing: Select the structure, the rows or both."}},
        {"no such folder yet", CSV, path("%/none"), {"note: The folder “%/none” will be made."}},
        {"no such folder", CSV, path("%/none/more"), {"warning: There is no folder “%/none/more”."}},
        {"no such folder of objects", CSV, [](Plan& plan) { plan.options.objectsFolder = "%/none/more"; },
            {"warning: There is no folder “%/none/more”."}},
        {"a new folder of objects", SQL, [](Plan& plan) { plan.options.objectsFolder = "%/new"; },
            {"note: The folder “%/new” will be made."}},
        {"no such folder of a file", XLS, path("%/none/x.xls"), {"warning: There is no folder “%/none”."}},
        {"a file that exists", XLS, path("%/old.xls"), {"warning: The file “old.xls” exists and will be replaced."}},
        {"a file among those of the tables", CSV, fileName(0, "old.xls"),
            {"warning: The file “old.xls” exists and will be replaced."}},
        {"several such files", CSV,
            [&](Plan& plan) {
                fileName(0, "old.xls")(plan);
                fileName(1, "old.csv")(plan);
            },
            {"warning: 2 files exist in this folder and will be replaced."}},
        {"a folder instead of a file", SQL, path("%"), {"warning: “@” is a folder."}},
        {"the database itself", SQL, path("%/Shop.mdb"),
            {"warning: The database itself is never written to; choose another file."}},
        {"two tables in one file", CSV, fileName(1, "Customers.csv"),
            {"warning: Several tables go to the file “Customers.csv”; only the last one will be left in it."}},
        {"a name that leads elsewhere", CSV, fileName(0, "../x"), {"warning: “../x” cannot be the name of a file."}},
        {"no name", CSV, fileName(0, ""), {"warning: “” cannot be the name of a file."}},
    };
    for (const auto& c : cases) {
        TempFolder folder;
        for (const auto* name : {"old.xls", "old.csv", "Shop.mdb"})
            folder.write(name, "x");
        const auto file = makeFile(
            folder.path("Shop.mdb"), makeTable("Customers", {{"T", "Text"}}), makeTable("Orders", {{"T", "Text"}}));
        Plan plan;
        for (const auto& table : file->tables())
            plan.tables.push_back(ExportEntry::exportEntryWithTableName(table->name(), c.type));
        plan.tables[0].selected = plan.tables[1].selected = true;
        const auto& format = exportFormat(c.type);
        plan.options = defaultOptions(format);
        plan.options.isSingleFile = format.hasSingleFileMode();
        plan.options.path = plan.options.isSingleFile ? "%/Shop.new" : "%";
        const auto inFolder = [&](std::string text) {
            if (const auto at = text.find('%'); at != std::string::npos) text.replace(at, 1, folder.path());
            if (const auto at = text.find('@'); at != std::string::npos)
                text.replace(at, 1, folder.path().substr(folder.path().rfind('/') + 1));
            return text;
        };
        c.change(plan);
        plan.options.path = inFolder(plan.options.path);
        plan.options.objectsFolder = inFolder(plan.options.objectsFolder);
        std::vector<std::string> expected;
        for (const auto& hint : c.hints)
            expected.push_back(inFolder(hint));
        EXPECT_THAT(texts(*file, plan), ElementsAreArray(expected)) << c.name;
    }
}

TEST(ExportHints, AFileWithoutTablesHasNothingToExport)
{
    TempFolder folder;
    const auto file = makeFile(folder.path("Empty.mdb"));
    Plan plan;
    plan.options.path = folder.path();
    EXPECT_EQ(texts(*file, plan), std::vector<std::string>{"missing: The file has no tables to export."});
}

} // namespace
} // namespace vellumo
