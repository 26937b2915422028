#include "export/ExportWizard.h"
#include "platform/MainThreadQueue.h"
#include "support/ExportFakes.h"
#include "support/ModelBuilder.h"
#include "support/TempFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vellumo {
namespace {

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto CSV = ExportFileType::CSV;
constexpr auto TXT = ExportFileType::TXT;
constexpr auto XML = ExportFileType::XML;
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

struct Desktop {
    MainThreadQueue mainThread;
    FakeDefaults defaults;
    FakeFilePanels panels;
    FakeAlerts alerts;
    FakeSystemLog log;
    ExportPorts ports{mainThread, defaults, panels, alerts, log};
};

std::unique_ptr<TAdmMDBTable> smallTable(std::string name)
{
    return makeTable(std::move(name), {{"T", "Text"}}, {{"x"}});
}

std::unique_ptr<TAdmMDBFile> shop()
{
    return makeFile("/data/Shop.mdb", smallTable("Customers"), smallTable("Orders"), smallTable("Products"));
}

// The controls that a dialog shows, and which of the check boxes are on.
std::string visibleControls(const ExportControls& controls)
{
    std::string names;
    const auto add = [&](bool isVisible, std::string_view name) {
        if (isVisible) names.append(names.empty() ? "" : " ").append(name);
    };
    const auto box = [&](const CheckBox& checkBox, const std::string& name) {
        add(checkBox.isVisible, checkBox.value ? "+" + name : "-" + name);
    };
    box(controls.exportSingleFileCheckBox, "single");
    box(controls.includeColumnHeaderCheckBox, "header");
    add(controls.fieldDelimiterPopup.isVisible, "field");
    add(controls.recordDelimiterPopup.isVisible, "record");
    add(controls.decimalSymbolTextField.isVisible, "decimal");
    add(controls.encodingPopup.isVisible, "encoding");
    add(controls.sqlFormatPopup.isVisible, "dialect");
    add(controls.schemaNameTextField.isVisible, "schema");
    box(controls.exportStructureCheckBox, "structure");
    box(controls.includeDropTableCheckBox, "drop");
    box(controls.includeForeignKeyCheckBox, "keys");
    box(controls.includeIndexCheckBox, "indexes");
    box(controls.exportDataCheckBox, "data");
    return names;
}

TEST(ExportWizard, ShowsTheControlsOfTheType)
{
    const struct {
        ExportFileType type;
        bool isWholeFile;
        const char* visible;
    } cases[] = {
        {CSV, true, "+header field record decimal encoding"},
        {TXT, true, "+header field record decimal encoding"},
        {XML, true, "decimal encoding"},
        {XLS, true, "+single +header"},
        {XLS, false, "-single +header"},
        {SQL, true, "+single decimal dialect schema +structure +drop +keys +indexes +data"},
        {SQL, false, "-single decimal dialect schema +structure +drop +keys +indexes +data"},
        {SQLite, false, "+keys +indexes +data"},
    };
    for (const auto& c : cases) {
        Desktop desktop;
        const auto file = shop();
        const ExportWizard wizard(*file, c.isWholeFile ? nullptr : file->findTable("Orders"), c.type, desktop.ports);
        EXPECT_EQ(visibleControls(wizard.controls()), c.visible);
        EXPECT_EQ(wizard.controls().exportSingleFileCheckBox.value,
            c.type == SQLite || (c.isWholeFile && (c.type == XLS || c.type == SQL)));
        EXPECT_TRUE(wizard.controls().exportStructureCheckBox.value && wizard.controls().exportDataCheckBox.value);
        EXPECT_FALSE(wizard.controls().includeColumnHeaderCheckBox.value && (c.type == XML || c.type == SQLite));
    }
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
    Desktop desktop;
    const auto file = shop();
    const ExportWizard csv(*file, nullptr, CSV, desktop.ports);
    EXPECT_THAT(tags(csv.controls().fieldDelimiterPopup), ElementsAre(1, 2));
    EXPECT_EQ(csv.controls().fieldDelimiterPopup.selectedTag, 2U);
    const ExportWizard txt(*file, nullptr, TXT, desktop.ports);
    EXPECT_THAT(tags(txt.controls().fieldDelimiterPopup), ElementsAre(0, 1, 2, 3));
    EXPECT_THAT(tags(txt.controls().recordDelimiterPopup), ElementsAre(0, 1, 2));
    EXPECT_THAT(tags(txt.controls().sqlFormatPopup), ElementsAre(1, 2, 3, 4, 5));
    const auto& encodings = txt.controls().encodingPopup;
    EXPECT_EQ(encodings.selectedTag, 4U);
    EXPECT_TRUE(std::ranges::is_sorted(encodings.items, {}, &PopupItem::title));
    EXPECT_EQ(std::ranges::count(encodings.items, 4U, &PopupItem::tag), 1);
}

TEST(ExportWizard, SelectsTheTableAskedForAndNamesItsFile)
{
    const struct {
        const char* name;
        ExportFileType type;
        const char* table; // null: all
        std::vector<bool> selected;
        const char* fileName;
    } cases[] = {
        {"one", CSV, "Orders", {false, true, false}, "Orders.csv"},
        {"all", TXT, nullptr, {true, true, true}, "Orders.txt"},
        {"no suffix", SQLite, nullptr, {true, true, true}, "Orders"},
    };
    for (const auto& c : cases) {
        Desktop desktop;
        const auto file = shop();
        const auto* table = c.table == nullptr ? nullptr : file->findTable(c.table);
        const ExportWizard wizard(*file, table, c.type, desktop.ports);
        ASSERT_EQ(wizard.numberOfRowsInTableView(), 3U) << c.name;
        for (std::size_t row = 0; row < 3; ++row)
            EXPECT_EQ(wizard.objectValueForTableColumn("selected", row), TableListValue(c.selected[row])) << c.name;
        EXPECT_EQ(wizard.objectValueForTableColumn("tablename", 1), TableListValue("Orders")) << c.name;
        EXPECT_EQ(wizard.objectValueForTableColumn("filename", 1), TableListValue(c.fileName)) << c.name;
        EXPECT_EQ(wizard.objectValueForTableColumn("filename", 3), TableListValue()) << c.name;
    }
}

TEST(ExportWizard, TheOkButtonFollowsPathTablesAndContents)
{
    Desktop desktop;
    const auto file = shop();
    ExportWizard wizard(*file, file->findTable("Orders"), SQL, desktop.ports);
    auto& controls = wizard.controls();
    RecordingView view;
    wizard.setView(&view);
    EXPECT_FALSE(controls.isOkButtonEnabled); // no path yet

    desktop.panels.folder = "/out";
    wizard.selectExportPath();
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
    wizard.deselectAll();
    EXPECT_FALSE(controls.isOkButtonEnabled);
    wizard.selectAll();
    EXPECT_TRUE(controls.isOkButtonEnabled);
    for (std::size_t row = 0; row < 3; ++row)
        wizard.setObjectValueForTableColumn(false, "selected", row);
    EXPECT_FALSE(controls.isOkButtonEnabled);
    EXPECT_THAT(view.events, ElementsAre("reload", "reload"));
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
        Desktop desktop;
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

TEST(ExportWizard, DelimiterAndDialectMoveOtherControls)
{
    Desktop desktop;
    const auto file = shop();
    ExportWizard csv(*file, nullptr, CSV, desktop.ports);
    for (const auto& [tag, symbol] : {std::pair(1U, ","), {2U, "."}}) {
        csv.controls().fieldDelimiterPopup.selectedTag = tag;
        csv.changeFieldDelimiter();
        EXPECT_EQ(csv.controls().decimalSymbolTextField.value, symbol);
    }
    ExportWizard txt(*file, nullptr, TXT, desktop.ports);
    txt.controls().fieldDelimiterPopup.selectedTag = 1;
    txt.changeFieldDelimiter();
    EXPECT_EQ(txt.controls().decimalSymbolTextField.value, ".");

    ExportWizard sql(*file, nullptr, SQL, desktop.ports);
    EXPECT_FALSE(sql.controls().schemaNameTextField.isEnabled);
    for (const auto& [tag, isEnabled] : {std::pair(2U, true), {1U, false}, {3U, true}, {4U, false}, {5U, true}}) {
        sql.controls().sqlFormatPopup.selectedTag = tag;
        sql.changeSQLFormat();
        EXPECT_EQ(sql.controls().schemaNameTextField.isEnabled, isEnabled) << tag;
    }
}

TEST(ExportWizard, OkRemembersAFolderButNotAFile)
{
    const struct {
        ExportFileType type;
        bool isStored;
    } cases[] = {{CSV, true}, {SQLite, false}};
    for (const auto& c : cases) {
        Desktop desktop;
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

struct Run {
    std::vector<std::string> labels;
    std::vector<Alert> alerts;
    bool succeeded = false;
    std::vector<std::string> events;
};

// Exports the whole file to `path` as CSV. `stopAt`: the how manieth table begun stops it; `isStopped`: from the start.
Run exportTables(TAdmMDBFile& file, const std::string& path, std::size_t stopAt = 0, bool isStopped = false)
{
    Desktop desktop;
    ExportWizard wizard(file, nullptr, CSV, desktop.ports);
    RecordingView view;
    view.wizard = &wizard;
    view.stopAt = stopAt;
    wizard.setView(&view);
    wizard.controls().exportPathTextField.value = path;
    if (isStopped) wizard.stop();
    EXPECT_TRUE(wizard.startExport());
    desktop.mainThread.runUntil([&] { return wizard.report().has_value(); });
    return {view.labels, desktop.alerts.shown, wizard.succeeded(), view.events};
}

TEST(ExportWizard, ExportsAndReports)
{
    TempFolder folder;
    const auto three = shop();
    auto run = exportTables(*three, folder.path());
    EXPECT_THAT(run.labels,
        ElementsAre(
            "Exporting Customers... <0 of 3>", "Exporting Orders... <1 of 3>", "Exporting Products... <2 of 3>"));
    EXPECT_THAT(run.alerts, ElementsAre(Alert{"Export finished.", "3 tables exported successfully."}));
    EXPECT_THAT(run.events, ElementsAre("end progress", "finished"));
    EXPECT_TRUE(run.succeeded);
    EXPECT_EQ(folder.read("Orders.csv"), "\"T\"\n\"x\"\n");

    const auto one = makeFile("/data/Shop.mdb", smallTable("A"));
    EXPECT_THAT(exportTables(*one, folder.path()).alerts,
        ElementsAre(Alert{"Export finished.", "1 table exported successfully."}));

    run = exportTables(*three, folder.path(), 2);
    EXPECT_THAT(run.alerts,
        ElementsAre(Alert{"Export terminated.", "1 table exported successfully.\n<Orders> Failed: Terminated."}));
    EXPECT_FALSE(run.succeeded);

    run = exportTables(*three, folder.path(), 0, true);
    EXPECT_THAT(run.labels, IsEmpty());
    EXPECT_THAT(run.alerts, ElementsAre(Alert{"Export terminated.", ""}));
    EXPECT_FALSE(run.succeeded);
}

TEST(ExportWizard, ReportShowsTenLinesOfTheLog)
{
    const std::string reason = " Failed: Unable to create file for export.";
    for (const int count : {10, 11, 12}) {
        TAdmMDBFile file;
        TAdmMDBFile::Tables tables;
        std::string body;
        for (int i = 0; i < count; ++i) {
            tables.push_back(smallTable("T" + std::to_string(i)));
            if (i < 10) body += (i == 0 ? "<T" : "\n<T") + std::to_string(i) + ">" + reason;
        }
        if (count > 10) body += "\n\u2026and " + std::to_string(count - 10) + " more.";
        file.setTables(std::move(tables));
        file.setActive(true);
        const auto run = exportTables(file, "/nowhere/at/all");
        EXPECT_THAT(run.alerts, ElementsAre(Alert{"Export finished.", body}));
        EXPECT_FALSE(run.succeeded);
    }
}

TEST(ExportWizard, StartKeepsOnlyTheSelectedTables)
{
    TempFolder folder;
    Desktop desktop;
    const auto file = shop();
    ExportWizard wizard(*file, nullptr, CSV, desktop.ports);
    wizard.controls().exportPathTextField.value = folder.path();
    wizard.setObjectValueForTableColumn(false, "selected", 1);
    wizard.setObjectValueForTableColumn("x.dat", "filename", 2);
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
    Desktop desktop;
    const auto file = shop();
    ExportWizard wizard(*file, nullptr, static_cast<ExportFileType>(-1), desktop.ports);
    wizard.controls().exportPathTextField.value = "/nowhere";
    EXPECT_FALSE(wizard.startExport());
    EXPECT_FALSE(wizard.report());
}

} // namespace
} // namespace vellumo
