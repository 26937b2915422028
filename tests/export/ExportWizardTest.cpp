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

TEST(ExportWizard, TheDelimiterOfATextFileLeavesTheDecimalSymbol)
{
    ExportDesktop desktop;
    const auto file = shop();
    ExportWizard wizard(*file, nullptr, TXT, desktop.ports);
    wizard.controls().fieldDelimiterPopup.selectedTag = 1;
    wizard.changeFieldDelimiter();
    EXPECT_EQ(wizard.controls().decimalSymbolTextField.value, ".");
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
        EXPECT_EQ(desktop.log.lines.size(), c.isStored ? 1U : 0U);
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
        ElementsAre(Alert{"Export terminated.", "1 table exported successfully.\n<Orders> Failed: Terminated."}));
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
