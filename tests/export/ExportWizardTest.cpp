#include "support/ExportDesktop.h"
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

struct Run {
    std::vector<std::string> labels;
    std::vector<Alert> alerts;
    bool succeeded = false;
};

// Exports the whole file to `path` as CSV. `stopAt`: the how manieth table begun stops it; `isStopped`: from the start.
Run exportTables(TAdmMDBFile& file, const std::string& path, std::size_t stopAt = 0, bool isStopped = false)
{
    ExportDesktop desktop;
    ExportWizard wizard(file, nullptr, CSV, desktop.ports);
    RecordingView view;
    view.wizard = &wizard;
    view.stopAt = stopAt;
    wizard.setView(&view);
    wizard.controls().exportPathTextField.value = path;
    if (isStopped) wizard.stop();
    EXPECT_TRUE(wizard.startExport());
    desktop.mainThread.runUntil([&] { return wizard.report().has_value(); });
    return {view.labels, desktop.alerts.shown, wizard.succeeded()};
}

TEST(ExportWizard, ExportsAndReports)
{
    TempFolder folder;
    const auto one = makeFile("/data/Shop.mdb", smallTable("A"));
    auto run = exportTables(*one, folder.path());
    EXPECT_THAT(run.alerts, ElementsAre(Alert{"Export finished.", "1 table exported successfully."}));
    EXPECT_TRUE(run.succeeded);

    const auto three = shop();
    run = exportTables(*three, folder.path(), 2);
    EXPECT_THAT(run.alerts,
        ElementsAre(Alert{"Export terminated.", "1 table exported successfully.\n<Orders> Failed: Terminated."}));
    EXPECT_FALSE(run.succeeded);

    run = exportTables(*three, folder.path(), 0, true);
    EXPECT_THAT(run.labels, IsEmpty());
    EXPECT_THAT(run.alerts, ElementsAre(Alert{"Export terminated.", ""}));
    EXPECT_FALSE(run.succeeded);
}

TEST(ExportWizard, ReportTellsWhatTheFileHasLost)
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
    EXPECT_THAT(exportTables(*file, folder.path()).alerts,
        ElementsAre(Alert{"Export finished.",
            "2 tables exported successfully.\nA.One: 1 damaged object was left out.\n"
            "A.Two: 2 damaged objects were left out.\nDamage:\nB: 2 rows are missing."}));

    ExportDesktop desktop;
    ExportWizard wizard(*file, nullptr, CSV, desktop.ports);
    wizard.setObjectValueForTableColumn(false, "selected", 0);
    wizard.controls().exportPathTextField.value = folder.path();
    file->setDamage({});
    ASSERT_TRUE(wizard.startExport());
    desktop.mainThread.runUntil([&] { return wizard.report().has_value(); });
    EXPECT_TRUE(wizard.succeeded() && wizard.report()->isSourceWhole);
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
