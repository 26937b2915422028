// SPDX-License-Identifier: MIT
#include "support/ExportDesktop.h"
#include "support/ModelBuilder.h"
#include "support/TempFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vellumo {
namespace {

using namespace test;
using testing::ElementsAre;

constexpr auto CSV = ExportFileType::CSV;
constexpr auto TXT = ExportFileType::TXT;
constexpr auto XLS = ExportFileType::XLS;
constexpr auto SQL = ExportFileType::SQL;
constexpr auto SQLite = ExportFileType::SQLite;

class RecordingView : public ExportWizardView {
public:
    void reloadTableList() override { events.emplace_back("reload"); }
    void endSheet(int returnCode) override { events.push_back("end " + std::to_string(returnCode)); }
    void progressChanged() override
    {
        labels.push_back(wizard->progress().label);
        if (labels.size() == stopAt) wizard->stop();
    }
    void endProgressSheet() override { events.emplace_back("end progress"); }
    void exportFinished() override { events.emplace_back("finished"); }

    ExportWizard* wizard = nullptr;
    std::size_t stopAt = 0; // the how manieth table begun stops the export
    std::vector<std::string> events;
    std::vector<std::string> labels;
};

std::unique_ptr<TAdmMDBTable> smallTable(std::string name)
{
    return makeTable(std::move(name), {{"T", "Text"}}, {{"x"}});
}

std::unique_ptr<TAdmMDBFile> shop()
{
    return makeFile("/data/Shop.mdb", smallTable("Customers"), smallTable("Orders"), smallTable("Products"));
}

std::vector<std::uint32_t> tags(const Popup& popup)
{
    std::vector<std::uint32_t> result;
    for (const auto& item : popup.items)
        result.push_back(item.tag);
    return result;
}

TEST(ExportWizard, PopupsHoldTheirTags)
{
    ExportDesktop desktop;
    const auto file = shop();
    const ExportWizard txt(*file, nullptr, TXT, desktop.ports);
    EXPECT_THAT(tags(txt.controls().fieldDelimiterPopup), ElementsAre(0, 1, 2, 3));
    EXPECT_THAT(tags(txt.controls().recordDelimiterPopup), ElementsAre(0, 1, 2));
    EXPECT_THAT(tags(txt.controls().sqlFormatPopup), ElementsAre(1, 2, 3, 4, 5));
    const auto& encodings = txt.controls().encodingPopup;
    EXPECT_EQ(encodings.selectedTag, 4U);
    EXPECT_TRUE(std::ranges::is_sorted(encodings.items, {}, &PopupItem::title));
    EXPECT_EQ(std::ranges::count(encodings.items, 4U, &PopupItem::tag), 1);
}

TEST(ExportWizard, TheOkButtonFollowsTablesAndContents)
{
    ExportDesktop desktop;
    desktop.defaults.strings["exportFilePath"] = "/out";
    const auto file = shop();
    ExportWizard wizard(*file, file->findTable("Orders"), SQL, desktop.ports);
    auto& controls = wizard.controls();
    EXPECT_TRUE(controls.isOkButtonEnabled);
    wizard.setObjectValueForTableColumn(false, "selected", 1);
    EXPECT_FALSE(controls.isOkButtonEnabled);
    wizard.setObjectValueForTableColumn(true, "tablename", 1); // not editable
    EXPECT_FALSE(controls.isOkButtonEnabled);
    wizard.setObjectValueForTableColumn(true, "selected", 0);
    EXPECT_TRUE(controls.isOkButtonEnabled);

    controls.exportDataCheckBox.value = false;
    wizard.exportTableData();
    EXPECT_TRUE(controls.isOkButtonEnabled);
    controls.exportStructureCheckBox.value = false;
    wizard.exportTableStructure();
    EXPECT_FALSE(controls.isOkButtonEnabled);
    EXPECT_FALSE(controls.includeDropTableCheckBox.isEnabled || controls.includeForeignKeyCheckBox.isEnabled
        || controls.includeIndexCheckBox.isEnabled);
    // Selecting a table looks at the count alone.
    wizard.setObjectValueForTableColumn(true, "selected", 2);
    EXPECT_TRUE(controls.isOkButtonEnabled);
    controls.exportStructureCheckBox.value = true;
    wizard.exportTableStructure();
    EXPECT_TRUE(controls.includeDropTableCheckBox.isEnabled);
}

TEST(ExportWizard, SingleFileAndPath)
{
    const struct {
        const char* name;
        std::string stored; // the default, "" for none
        bool isWholeFile;
        std::optional<std::string> chosenFile; // answered by the save panel first
        std::vector<bool> singleFile;          // then the box is set to these, one after the other
        std::optional<std::string> folder;     // the answer of the folder panel
        std::string path;
        bool isSingleFile;
        std::vector<std::string> asked;
    } cases[] = {
        {"stored folder, whole file", "/x/out/", true, {}, {}, {}, "/x/out/Shop.xls", true, {}},
        {"stored folder, one table", "/x/out", false, {}, {}, {}, "/x/out", false, {}},
        {"back to the stored folder asks nothing", "/x/out", true, {}, {false}, {}, "/x/out", false, {}},
        {"on and off and on", "/x/out", false, {}, {true, false, true}, {}, "/x/out/Shop.xls", true, {}},
        {"another file needs a folder", "/x/out", true, "/y/My.XLS", {false}, "/z", "/z", false,
            {"save xls Shop", "folder /y/My.XLS"}},
        {"cancelled folder turns the box on again", "/x/out", true, "/y/My.XLS", {false}, {}, "/y/My.XLS", true,
            {"save xls Shop", "folder /y/My.XLS"}},
        {"no path, nothing to ask", "", true, {}, {false, true}, {}, "", true, {}},
    };
    for (const auto& c : cases) {
        ExportDesktop desktop;
        if (!c.stored.empty()) desktop.defaults.strings["exportFilePath"] = c.stored;
        desktop.panels.file = c.chosenFile;
        desktop.panels.folder = c.folder;
        const auto file = shop();
        ExportWizard wizard(*file, c.isWholeFile ? nullptr : file->findTable("Orders"), XLS, desktop.ports);
        if (c.chosenFile) wizard.selectExportPath();
        for (const bool isOn : c.singleFile) {
            wizard.controls().exportSingleFileCheckBox.value = isOn;
            wizard.exportSingleFile();
        }
        const auto& controls = wizard.controls();
        EXPECT_EQ(controls.exportPathTextField.value, c.path) << c.name;
        EXPECT_EQ(controls.exportSingleFileCheckBox.value, c.isSingleFile) << c.name;
        EXPECT_EQ(controls.exportPathLabel, c.isSingleFile ? "Export file:" : "Export path:") << c.name;
        EXPECT_EQ(wizard.tableListColumns()[2].isVisible, !c.isSingleFile) << c.name;
        EXPECT_EQ(controls.isOkButtonEnabled, !c.path.empty()) << c.name;
        EXPECT_EQ(desktop.panels.asked, c.asked) << c.name;
    }
}

TEST(ExportWizard, ADecimalSymbolOutlivesTheDelimiterAndNotTheExactStyle)
{
    ExportDesktop desktop;
    const auto file = shop();
    ExportWizard wizard(*file, nullptr, TXT, desktop.ports);
    wizard.controls().fieldDelimiterPopup.selectedTag = 1;
    wizard.changeFieldDelimiter();
    EXPECT_EQ(wizard.controls().decimalSymbolTextField.value, ".");
    wizard.controls().decimalSymbolTextField.value = ",";
    wizard.controls().exactCheckBox.value = true;
    wizard.changeExact();
    EXPECT_EQ(wizard.controls().decimalSymbolTextField.value, ".") << "exact numbers have a point";
}

TEST(ExportWizard, OkRemembersAFolderButNotAFile)
{
    const struct {
        ExportFileType type;
        bool isStored;
    } cases[] = {{CSV, true}, {SQLite, false}};
    for (const auto& c : cases) {
        ExportDesktop desktop;
        desktop.defaults.canSynchronize = false;
        const auto file = shop();
        ExportWizard wizard(*file, nullptr, c.type, desktop.ports);
        RecordingView view;
        wizard.setView(&view);
        wizard.controls().exportPathTextField.value = "/out";
        wizard.ok();
        wizard.cancel();
        EXPECT_EQ(desktop.defaults.string("exportFilePath").has_value(), c.isStored);
        EXPECT_EQ(desktop.log.lines.size(), 1U);
        EXPECT_THAT(view.events, ElementsAre("end 1", "end 0"));
    }
}

TEST(ExportWizard, ReportsInAnAlertAndStopsWhenAsked)
{
    const TempFolder folder;
    ExportDesktop desktop;
    const auto file = shop();
    ExportWizard wizard(*file, nullptr, CSV, desktop.ports);
    RecordingView view;
    view.wizard = &wizard;
    view.stopAt = 2;
    wizard.setView(&view);
    wizard.controls().exportPathTextField.value = folder.path();
    ASSERT_TRUE(wizard.startExport());
    desktop.mainThread.runUntil([&] { return wizard.report().has_value(); });
    EXPECT_THAT(view.labels, ElementsAre("Exporting Customers... <0 of 3>", "Exporting Orders... <1 of 3>"));
    EXPECT_THAT(view.events, ElementsAre("end progress", "finished"));
    EXPECT_THAT(desktop.alerts.shown,
        ElementsAre(Alert{"Export terminated.", "1 table exported successfully.\n<Orders> Failed: Terminated.",
            Alert::Style::Sheet, "", Alert::Kind::Warning, folder.path()}));
    EXPECT_FALSE(wizard.report()->isDone());
}

TEST(ExportWizard, StartKeepsOnlyTheSelectedTables)
{
    TempFolder folder;
    ExportDesktop desktop;
    const auto file = shop();
    ExportWizard wizard(*file, nullptr, CSV, desktop.ports);
    wizard.controls().exportPathTextField.value = folder.path();
    wizard.setObjectValueForTableColumn(false, "selected", 1);
    wizard.setObjectValueForTableColumn("x.dat", "filename", 2);
    EXPECT_EQ(wizard.objectValueForTableColumn("filename", 3), TableListValue()); // there is no such row
    ASSERT_TRUE(wizard.startExport());
    desktop.mainThread.runUntil([&] { return wizard.report().has_value(); });
    EXPECT_EQ(wizard.progress().label, "Exporting Products... <1 of 2>");
    EXPECT_EQ(wizard.progress().maximum, 2U);
    EXPECT_EQ(wizard.numberOfRowsInTableView(), 0U); // the list is no longer shown
    EXPECT_TRUE(folder.exists("Customers.csv") && folder.exists("x.dat"));
    EXPECT_FALSE(folder.exists("Orders.csv"));
}

TEST(ExportWizard, OptionsOfAFormatAreRemembered)
{
    ExportDesktop desktop;
    const auto file = shop();
    {
        ExportWizard wizard(*file, nullptr, SQL, desktop.ports);
        auto& controls = wizard.controls();
        controls.sqlFormatPopup.selectedTag = 3;
        controls.schemaNameTextField.value = "shop";
        controls.exportStructureCheckBox.value = false;
        controls.exactCheckBox.value = true;
        controls.exportSingleFileCheckBox.value = false; // goes with what is exported, not with the format
        wizard.ok();
    }
    ExportWizard next(*file, nullptr, SQL, desktop.ports);
    const auto& controls = next.controls();
    EXPECT_EQ(controls.sqlFormatPopup.selectedTag, 3U);
    EXPECT_EQ(controls.schemaNameTextField.value, "shop");
    EXPECT_TRUE(controls.schemaNameTextField.isEnabled && controls.exportSingleFileCheckBox.value);
    EXPECT_FALSE(controls.exportStructureCheckBox.value || controls.includeIndexCheckBox.isEnabled);
    EXPECT_EQ(next.options().isExact, controls.exactCheckBox.isVisible);

    {
        ExportWizard csv(*file, nullptr, CSV, desktop.ports);
        auto& boxes = csv.controls();
        boxes.byteOrderMarkCheckBox.value = boxes.guardFormulasCheckBox.value = boxes.exactCheckBox.value = true;
        csv.changeExact();
        desktop.panels.folder = "/pictures";
        csv.selectObjectsFolder();
        EXPECT_EQ(csv.options().objectsFolder, "/pictures");
        csv.ok();
    }
    desktop.defaults.strings["export.csv.encoding"] = "no number";
    desktop.defaults.strings["export.csv.fieldDelimiter"] = "0"; // which a CSV file does not offer
    ExportWizard csv(*file, nullptr, CSV, desktop.ports);
    EXPECT_EQ(csv.options().encoding, 4U);
    EXPECT_EQ(csv.options().fieldDelimiter, FieldDelimiter::Comma);
    EXPECT_TRUE(csv.options().hasByteOrderMark && csv.options().guardsFormulas);
    // The classic style has no files of objects, nor does it guard; going back finds both again.
    csv.controls().exactCheckBox.value = false;
    csv.changeExact();
    EXPECT_FALSE(csv.controls().guardFormulasCheckBox.isEnabled || csv.options().guardsFormulas);
    EXPECT_TRUE(csv.options().hasByteOrderMark);
    EXPECT_EQ(csv.options().objectsFolder, "");
    csv.controls().exactCheckBox.value = true;
    csv.changeExact();
    EXPECT_EQ(csv.options().objectsFolder, "/pictures");
}

TEST(ExportWizard, ExportsWhatTheGridShows)
{
    const struct {
        RowsToExport rows;
        ColumnsToExport columns;
        const char* output;
    } cases[] = {
        {RowsToExport::All, ColumnsToExport::All, "1,\"a\"|2,\"b\"|3,\"c\"|"},
        {RowsToExport::Shown, ColumnsToExport::All, "3,\"c\"|1,\"a\"|"},
        {RowsToExport::Selected, ColumnsToExport::Shown, "\"a\",1|"},
    };
    for (const auto& c : cases) {
        const TempFolder folder;
        ExportDesktop desktop;
        const auto file = makeFile("/data/Shop.mdb", smallTable("Other"),
            makeTable("T", {{"Id", "Long Integer"}, {"Name", "Text"}}, {{"1", "a"}, {"2", "b"}, {"3", "c"}}));
        ExportWizard wizard(*file, file->tables()[1].get(), CSV, desktop.ports);
        EXPECT_FALSE(wizard.controls().rowsPopup.isVisible);
        wizard.offerShownTable({{2, 0}, {0}, {1, 0}});
        wizard.controls().rowsPopup.selectedTag = static_cast<std::uint32_t>(c.rows);
        wizard.controls().columnsPopup.selectedTag = static_cast<std::uint32_t>(c.columns);
        wizard.controls().includeColumnHeaderCheckBox.value = false;
        wizard.controls().exportPathTextField.value = folder.path();
        wizard.changeRows();
        auto preview = wizard.preview().text;
        std::ranges::replace(preview, '\n', '|');
        EXPECT_EQ(preview, c.output);
        ASSERT_TRUE(wizard.startExport());
        desktop.mainThread.runUntil([&] { return wizard.report().has_value(); });
        auto output = folder.read("T.csv").value_or("");
        std::ranges::replace(output, '\n', '|');
        EXPECT_EQ(output, c.output);
    }
}

TEST(ExportWizard, TellsWhatWillBeLostAsTheOptionsChange)
{
    ExportDesktop desktop;
    const auto file = makeFile("/data/Shop.mdb", makeTable("A", {{"O", "OLE"}}, {{makeBlob("x", "txt")}, {null}}),
        makeTable("B", {{"T", "Text"}}, {{"\\"}}));
    ExportWizard wizard(*file, nullptr, SQL, desktop.ports);
    const bool hasRemedy = wizard.controls().exactCheckBox.isVisible;
    const std::size_t all = hasRemedy ? 3 : 2;
    static_cast<void>(wizard.findings());
    wizard.controls().sqlFormatPopup.selectedTag = 2;
    desktop.mainThread.runUntil([&] { return wizard.findings().size() == all; });
    std::vector<std::string> lines = {
        "A.O: 1 object has a form that PostgreSQL does not take.", "B.T: In 1 text every backslash comes twice."};
    if (hasRemedy) lines.emplace_back("“Exact values” avoids this.");
    EXPECT_EQ(wizard.findings(), lines);
    wizard.setObjectValueForTableColumn(false, "selected", 0);
    EXPECT_EQ(wizard.findings().size(), all - 1);
    wizard.controls().sqlFormatPopup.selectedTag = 1;
    EXPECT_TRUE(wizard.findings().empty());
    wizard.setObjectValueForTableColumn(true, "selected", 0);
    wizard.controls().sqlFormatPopup.selectedTag = 3;
    EXPECT_EQ(wizard.findings().size(), all);
    wizard.controls().exactCheckBox.value = true;
    EXPECT_TRUE(wizard.findings().empty());
}

TEST(ExportWizard, OtherRowsHaveOtherFindings)
{
    ExportDesktop desktop;
    const auto file = makeFile("/data/Shop.mdb", makeTable("T", {{"T", "Text"}}, {{"\\"}, {"x"}}));
    ExportWizard wizard(*file, file->tables()[0].get(), SQL, desktop.ports);
    wizard.controls().sqlFormatPopup.selectedTag = 2;
    wizard.offerShownTable({{1}, {0}, {0}});
    static_cast<void>(wizard.findings());
    desktop.mainThread.runUntil([&] { return !wizard.findings().empty(); });
    wizard.controls().rowsPopup.selectedTag = static_cast<std::uint32_t>(RowsToExport::Shown);
    wizard.changeRows();
    EXPECT_THAT(wizard.findings(), testing::IsEmpty()) << "those of all rows are gone";
}

// Two children have a parent, one only in other letters, and one none.
TEST(ExportWizard, TellsOfRowsThatBreakARelation)
{
    ExportDesktop desktop;
    const auto file = makeFile("/data/Shop.mdb", makeTable("P", {{"Id", "Text"}}, {{"x"}, {"y"}}),
        makeTable("C", {{"Of", "Text"}}, {{"x"}, {"x"}, {"Y"}, {"z"}, {null}}));
    setRelations(*file, {{"R", "C", "P", {{"Of", "Id"}}, true, true}});
    ExportWizard wizard(*file, nullptr, SQL, desktop.ports);
    const auto one = testing::Contains("C.R: 1 record refers to one that is not there, so the relation fails.");
    const auto two = testing::Contains("C.R: 2 records refer to ones that are not there, so the relation fails.");
    static_cast<void>(wizard.findings());
    desktop.mainThread.runUntil([&] { return testing::Matches(one)(wizard.findings()); }); // MySQL
    wizard.controls().sqlFormatPopup.selectedTag = 2;                                      // PostgreSQL
    EXPECT_THAT(wizard.findings(), two);
    wizard.controls().exactCheckBox.value = true;
    EXPECT_THAT(
        wizard.findings(), ElementsAre("C: 2 rows break the relation R, which the server does not check or have."));
    wizard.controls().includeForeignKeyCheckBox.value = false;
    EXPECT_THAT(wizard.findings(), testing::IsEmpty());
    wizard.controls().includeForeignKeyCheckBox.value = true;
    wizard.setObjectValueForTableColumn(false, "selected", 0);
    EXPECT_THAT(wizard.findings(), testing::IsEmpty());
}

TEST(ExportWizard, AnUnknownTypeStartsNothing)
{
    ExportDesktop desktop;
    const auto file = shop();
    ExportWizard wizard(*file, nullptr, static_cast<ExportFileType>(-1), desktop.ports);
    wizard.controls().exportPathTextField.value = "/nowhere";
    EXPECT_FALSE(wizard.startExport());
    EXPECT_FALSE(wizard.report());
}

} // namespace
} // namespace vellumo
