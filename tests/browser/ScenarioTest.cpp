#include "Session.h"

#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vellumo {
namespace {

using namespace test;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Sender = VellumoAppDelegate::Sender;
using Field = VellumoAppDelegate::SearchField;

struct Step {
    const char* name;
    std::function<void()> act;
    Sight expected;
};

class Scenario : public ::testing::Test {
protected:
    Session s;

    void play(const std::vector<Step>& steps)
    {
        for (const auto& step : steps) {
            step.act();
            EXPECT_EQ(s.sight(), step.expected) << step.name;
        }
    }
    // "Sales" with Customers (2 rows) and Orders (1 row); "Stock" with Items (0 rows).
    const std::string sales = s.makeDatabase("Sales.mdb", {{"Customers", 2}, {"Orders", 1}});
    const std::string stock = s.makeDatabase("Stock.mdb", {{"Items", 0}});
};

TEST_F(Scenario, BringingInTheSameFileTwiceMakesANewEntryThatIsOpened)
{
    s.start();
    play({
        {"start", [] {}, {"", "0 files", " | ", "", ""}},
        {"open", [&] { s.openByPanel({sales}); },
            {"Sales*[Customers Orders]", "1 of 1 file, contains 2 tables", " | ", "Sales.mdb", ""}},
        {"visit", [&] { s.click("Sales/Orders"); },
            {"Sales[Customers Orders*]", "1 of 2 tables, contains 1 record", "Orders | ", "Sales.mdb", ""}},
        {"window", [&] { s.app().OpenTableInNewWindow(*s.item("Sales/Orders").table); },
            {"Sales[Customers Orders*]", "1 of 2 tables, contains 1 record", "Orders | ", "Sales.mdb", ""}},
        {"drop it again", [&] { s.app().acceptDrop({s.folder.path("./Sales.mdb")}); },
            {"Sales*[Customers Orders]", "1 of 1 file, contains 2 tables", " | ", "Sales.mdb", ""}},
    });
    EXPECT_THAT(s.app().childWinManager()->childWins(), IsEmpty());
    EXPECT_EQ(s.app().dataView().table(), nullptr);
}

TEST_F(Scenario, AFileThatFailsToOpenStaysInTheListWhateverTheRoute)
{
    const auto bad = s.makeBrokenFile("Bad.mdb");
    const std::string message = "Error: File (Bad.mdb) cannot be opened";
    const struct {
        const char* name;
        std::vector<std::string> recent;
        std::function<void()> act;
        Sight expected;
    } routes[] = {
        {"panel", {}, [&] { s.openByPanel({bad}); }, {"Bad", "1 file", " | ", "", "modal " + message}},
        {"panel, one good before", {},
            [&] {
                s.openByPanel({sales, bad});
            },
            {"Bad Sales[Customers Orders]", "2 files", " | ", "Sales.mdb", "modal " + message}},
        {"panel, one good behind", {},
            [&] {
                s.openByPanel({bad, sales});
            },
            {"Bad Sales*[Customers Orders]", "1 of 2 files, contains 2 tables", " | ", "Sales.mdb",
                "modal " + message}},
        {"panel, no such file", {}, [&] { s.openByPanel({s.folder.path("Gone.mdb")}); },
            {"Gone", "1 file", " | ", "", "modal Error: File (Gone.mdb) cannot be opened"}},
        {"drop", {}, [&] { s.app().acceptDrop({bad}); }, {"Bad", "1 file", " | ", "", "modal " + message}},
        {"association", {}, [&] { s.app().applicationOpenFiles({bad}); },
            {"Bad", "1 file", " | ", "", "modal " + message}},
        {"menu", {bad}, [&] { s.clickMenu("Bad", &VellumoAppDelegate::OpenSelectedFile); },
            {"Bad", "1 file", " | ", "Bad.mdb", "sheet " + message}},
        {"double click", {bad},
            [&] {
                s.click("Bad");
                s.app().OnDoubleClickFileTree();
            },
            {"Bad*", "1 of 1 file", " | ", "Bad.mdb", "sheet " + message}},
        {"export", {bad},
            [&] {
                s.click("Bad");
                s.app().Export(1);
            },
            {"Bad*", "1 of 1 file", " | ", "Bad.mdb", "sheet " + message}},
    };
    for (const auto& route : routes) {
        s.recent.listed = route.recent;
        s.start();
        route.act();
        EXPECT_EQ(s.sight(), route.expected) << route.name;
        s.app().refreshRecentFiles();
        EXPECT_EQ(s.sight().tree, route.expected.tree) << route.name << ", refreshed";
        EXPECT_FALSE(s.app().isPlaceholderShown()) << route.name;
    }
}

TEST_F(Scenario, StoppingToOpenIsNoFailure)
{
    s.start();
    s.window.stopsOpening = true;
    play({
        {"panel", [&] { s.openByPanel({sales}); }, {"Sales", "1 file", " | ", "", ""}},
        {"menu", [&] { s.clickMenu("Sales", &VellumoAppDelegate::OpenSelectedFile); },
            {"Sales", "1 file", " | ", "", ""}},
        {"export", [&] { s.click("Sales"), s.app().Export(1); }, {"Sales*", "1 of 1 file", " | ", "", ""}},
    });
    s.window.stopsOpening = false;
    play({{"not stopped", [&] { s.clickMenu("Sales", &VellumoAppDelegate::OpenSelectedFile); },
        {"Sales*[Customers Orders]", "1 of 1 file, contains 2 tables", " | ", "Sales.mdb", ""}}});
    EXPECT_THAT(s.window.events, ::testing::Not(::testing::Contains("export sheet")));
}

TEST_F(Scenario, ClosingAFileTakesItsTablesOutOfHistoryAndWindows)
{
    s.start();
    s.openByPanel({sales, stock});
    play({
        {"visits",
            [&] {
                s.click("Sales/Customers");
                s.click("Stock/Items");
                s.click("Sales/Orders");
            },
            {"Sales[Customers Orders*] Stock[Items]", "1 of 2 tables, contains 1 record", "Customers Items Orders |  <",
                "Stock.mdb Sales.mdb", ""}},
        {"windows, then the other file",
            [&] {
                for (const auto* name : {"Sales/Customers", "Stock/Items", "Sales/Customers"}) {
                    s.app().setClickedTreeItem(s.item(name));
                    s.app().OpenSelectedTableInNewWindow();
                }
                s.app().setClickedTreeItem({});
                s.click("Stock");
            },
            {"Sales[Customers Orders] Stock*[Items]", "1 of 2 files, contains 1 table", "Customers Items Orders |  <",
                "Stock.mdb Sales.mdb", ""}},
        {"close the file that is not selected", [&] { s.clickMenu("Sales", &VellumoAppDelegate::CloseSelectedFile); },
            {"Sales Stock*[Items]", "1 of 2 files, contains 1 table", "Items |  <", "Stock.mdb Sales.mdb", ""}},
        {"close the selected one", [&] { s.app().CloseSelectedFile(Sender::Other); },
            {"Sales Stock", "1 of 2 files", " | ", "Stock.mdb Sales.mdb", ""}},
        {"open again", [&] { s.clickMenu("Sales", &VellumoAppDelegate::OpenSelectedFile); },
            {"Sales*[Customers Orders] Stock", "1 of 2 files, contains 2 tables", " | ", "Sales.mdb Stock.mdb", ""}},
    });
    EXPECT_THAT(s.window.childEvents,
        ElementsAre("key Customers @Sales", "key Items @Stock", "key Customers @Sales", "closed Customers @Sales",
            "closed Customers @Sales", "closed Items @Stock"));
}

TEST_F(Scenario, ClosingTheFileOfTheTableShownEmptiesEveryPane)
{
    s.start();
    s.openByPanel({sales});
    s.click("Sales/Customers");
    s.app().dataView().setEditedColumn(0, 1);
    EXPECT_EQ(s.app().dataView().detail().text, "r2");
    s.app().CloseSelectedFile(Sender::Other);
    EXPECT_EQ(s.app().dataView().table(), nullptr);
    EXPECT_EQ(s.app().dataView().detail().text, "No fields selected");
    EXPECT_TRUE(s.app().information().entries(InformationType::File).empty());
    EXPECT_EQ(s.app().information().selectedType(), InformationType::File);
    EXPECT_EQ(s.app().selectedFile(), nullptr);
    EXPECT_EQ(s.app().jumpBar().selectedItem(), TreeItem());
    EXPECT_EQ(s.app().jumpBar().items().size(), 1U) << "the file is listed all the same";
}

TEST_F(Scenario, AFilterThatHidesTheSelectionLeavesWhatIsShown)
{
    s.start();
    s.openByPanel({sales, stock});
    const auto type = [&](const char* text) { s.app().controlTextDidChange(Field::File, text); };
    const std::string recent = "Stock.mdb Sales.mdb";
    play({
        {"another file matches", [&] { type("SAL"); }, {"Sales[]", "1 of 1 file, contains 1 table", " | ", recent, ""}},
        {"none matches", [&] { type("zz"); }, {"", "1 of 0 files, contains 1 table", " | ", recent, ""}},
        {"a table of it matches", [&] { type("tem"); },
            {"Stock*[Items]", "1 of 1 file, contains 1 table", " | ", recent, ""}},
        {"its table", [&] { s.click("Stock/Items"); },
            {"Stock[Items*]", "1 of 1 table, contains 0 records", "Items | ", recent, ""}},
        {"hidden table", [&] { type("cust"); },
            {"Sales[Customers]", "1 of 0 tables, contains 0 records", "Items | ", recent, ""}},
        {"cleared", [&] { type(""); },
            {"Sales[Customers Orders] Stock[Items*]", "1 of 1 table, contains 0 records", "Items | ", recent, ""}},
        {"nothing selected", [&] { s.app().outlineViewSelectionDidChange({}); },
            {"Sales[Customers Orders] Stock[Items]", "2 files", "Items | ", recent, ""}},
        {"nothing selected, none matches", [&] { type("zz"); }, {"", "0 files", "Items | ", recent, ""}},
    });
}

TEST_F(Scenario, TypingIntoTheFileSearchExpandsOpenFiles)
{
    s.recent.listed = {stock};
    s.start();
    s.openByPanel({sales});
    s.window.events.clear();
    s.app().controlTextDidChange(Field::File, "s");
    s.app().controlTextDidChange(Field::File, "");
    EXPECT_THAT(s.window.events, ElementsAre("expand Sales"));
}

TEST_F(Scenario, ASearchKeepsTheSelectedRecordWhileItIsFound)
{
    const auto big = s.makeDatabase("Big.mdb", {{"Rows", 12}});
    s.start();
    s.openByPanel({big});
    s.click("Big/Rows");
    const auto status = [&](const char* step, const char* expected, std::size_t rows) {
        EXPECT_EQ(s.app().statusText(), expected) << step;
        EXPECT_EQ(s.app().dataView().numberOfRows(), rows) << step;
    };
    const auto type = [&](const char* text) { s.app().controlTextDidChange(Field::Data, text); };
    s.app().dataView().tableViewSelectionDidChange(RowSelection({{9, 10}}));
    status("r10 and r11 selected", "2 of 12 records", 12);
    type("R1");
    status("found at the second place", "Record 2 of 4", 4);
    EXPECT_EQ(s.app().dataView().selectedRows(), RowSelection::ofRow(1));
    type("R");
    status("all found again", "Record 10 of 12", 12);
    type("R2");
    status("not found", "1 record", 1);
    type("");
    status("not remembered any longer", "12 records", 12);
    type("R1");
    s.app().SetSearchOption(2);
    EXPECT_EQ(s.app().dataView().numberOfRows(), 1U) << "equals, case ignored";
    s.app().SetCaseForSearch();
    EXPECT_EQ(s.app().dataView().numberOfRows(), 0U) << "equals, case honoured";
    s.app().SetSearchOption(SearchMenuItem::optionsTag);
    EXPECT_EQ(s.app().search().searchOption, SearchOption::Equals) << "the heading is no option";
}

TEST_F(Scenario, ADocumentThatVanishedLeavesTheListWithAllThatIsShownOfIt)
{
    s.recent.listed = {stock, sales};
    s.start();
    play({
        {"start", [] {}, {"Sales Stock", "2 files", " | ", "Stock.mdb Sales.mdb", ""}},
        {"open", [&] { s.clickMenu("Sales", &VellumoAppDelegate::OpenSelectedFile); },
            {"Sales*[Customers Orders] Stock", "1 of 2 files, contains 2 tables", " | ", "Sales.mdb Stock.mdb", ""}},
        {"use",
            [&] {
                s.click("Sales/Orders");
                s.app().OnDoubleClickFileTree();
            },
            {"Sales[Customers Orders*] Stock", "1 of 2 tables, contains 1 record", "Orders | ", "Sales.mdb Stock.mdb",
                ""}},
        {"vanished",
            [&] {
                std::erase(s.recent.listed, sales);
                s.window.events.clear();
                s.app().refreshRecentFiles();
            },
            {"Stock", "1 file", " | ", "Stock.mdb", ""}},
    });
    EXPECT_EQ(s.window.events.front(), "collapse Sales");
    EXPECT_EQ(s.window.childEvents.back(), "closed Orders @Sales");
    EXPECT_EQ(s.app().dataView().table(), nullptr);
    EXPECT_FALSE(s.app().isPlaceholderShown());
    s.recent.listed.clear();
    s.app().refreshRecentFiles();
    EXPECT_TRUE(s.app().isPlaceholderShown());
}

TEST_F(Scenario, AnOpenedFileStaysThoughTheDesktopKeepsNoDocuments)
{
    s.recent.keepsDocuments = false;
    s.start();
    play({{"open", [&] { s.openByPanel({sales}); },
        {"Sales*[Customers Orders]", "1 of 1 file, contains 2 tables", " | ", "", ""}}});
}

TEST_F(Scenario, QuittingAndStartingAgainRestoresFilesAndViews)
{
    s.start();
    s.openByPanel({sales, stock});
    s.click("Sales/Orders");
    s.app().ToggleTreeView();
    s.app().ToggleTextView();
    s.app().ToggleNumRows();
    EXPECT_EQ(s.app().objectValueByItem(s.item("Sales/Orders")), (TreeItemText{"Orders", ""}));
    s.quit();
    EXPECT_EQ(s.defaults.booleans,
        (std::map<std::string, bool, std::less<>>{{"fileTreeShown", false}, {"informationViewShown", true},
            {"jumpBarShown", false}, {"numRowsShown", false}, {"textViewShown", true}}));
    s.start();
    play({{"closed, nothing selected", [] {}, {"Sales Stock", "2 files", " | ", "Stock.mdb Sales.mdb", ""}}});
    EXPECT_TRUE(s.window.data.isTextViewShown);
    EXPECT_EQ(s.app().toggles().menuTitle(ViewToggle::FileTree), "Show File List");
    EXPECT_EQ(s.app().toggles().menuTitle(ViewToggle::TextView), "Hide Text View");
    EXPECT_EQ(s.app().toggles().menuTitle(ViewToggle::NumRows), "Show Row Count in File List");
    s.app().ToggleNumRows();
    s.clickMenu("Sales", &VellumoAppDelegate::OpenSelectedFile);
    EXPECT_EQ(s.app().objectValueByItem(s.item("Sales/Orders")), (TreeItemText{"Orders", "  (1)"}));
}

TEST_F(Scenario, BackAndNextWalkThroughTheVisits)
{
    const auto letters = s.makeDatabase("L.mdb", {{"A", 1}, {"B", 1}, {"C", 1}, {"D", 1}});
    s.start();
    s.openByPanel({letters});
    const auto back = [&] { s.app().PreviousSelectedTable(); };
    const auto next = [&] { s.app().NextSelectedTable(); };
    const auto pickInJumpBar = [&](const char* name) { s.app().jumpBarDidSelectItem(s.item(name)); };
    const struct {
        const char* name;
        std::function<void()> act;
        const char* history;
        const char* shown;
    } steps[] = {
        {"visit A", [&] { s.click("L/A"); }, "A | ", "A"},
        {"Back leads nowhere yet", back, "A | ", "A"},
        {"visit A again", [&] { s.click("L/A"); }, "A | ", "A"},
        {"visit B in the jump bar", [&] { pickInJumpBar("L/B"); }, "A B |  <", "B"},
        {"visit C", [&] { s.click("L/C"); }, "A B C |  <", "C"},
        {"back", back, "A B | C < >", "B"},
        {"back to the first", back, "A | C B >", "A"},
        {"next", next, "A B | C < >", "B"},
        {"back again", back, "A | C B >", "A"},
        {"a new visit ends the way forward", [&] { s.click("L/D"); }, "A D |  <", "D"},
        {"the file itself is no visit", [&] { s.click("L"); }, "A D |  <", ""},
        {"the arrow keys of the tree visit nothing", [&] { s.app().outlineViewSelectionDidChange(s.item("L/C")); },
            "A D |  <", "C"},
        {"back from there", back, "A | D >", "A"},
    };
    for (const auto& step : steps) {
        step.act();
        EXPECT_EQ(s.sight().history, step.history) << step.name;
        const auto* table = s.app().dataView().table();
        EXPECT_EQ(table == nullptr ? "" : table->name(), step.shown) << step.name;
        EXPECT_EQ(s.app().treeSelection(), s.app().jumpBar().selectedItem()) << step.name;
    }
}

TEST_F(Scenario, RemovingKeepsTheOrderOfTheOtherDocuments)
{
    const auto bills = s.makeDatabase("Bills.mdb", {});
    s.recent.listed = {sales, bills, stock};
    s.start();
    play({
        {"select", [&] { s.click("Stock"); },
            {"Bills Sales Stock*", "1 of 3 files", " | ", "Sales.mdb Bills.mdb Stock.mdb", ""}},
        {"remove another one", [&] { s.clickMenu("Bills", &VellumoAppDelegate::RemoveSelectedFile); },
            {"Sales Stock*", "2 files", " | ", "Sales.mdb Stock.mdb", ""}},
        {"remove the selected one", [&] { s.app().RemoveSelectedFile(Sender::Other); },
            {"Sales", "1 file", " | ", "Sales.mdb", ""}},
        {"nothing is selected", [&] { s.app().RemoveSelectedFile(Sender::Other); },
            {"Sales", "1 file", " | ", "Sales.mdb", ""}},
        {"remove the last one", [&] { s.clickMenu("Sales", &VellumoAppDelegate::RemoveSelectedFile); },
            {"", "0 files", " | ", "", ""}},
    });
    EXPECT_TRUE(s.app().isPlaceholderShown());
}

// The document noted has no extension, so the list is rebuilt around a file of that name.
TEST_F(Scenario, RemovingTheOthersNotesTheFileWithoutItsExtension)
{
    s.start();
    s.openByPanel({sales, stock});
    s.click("Sales/Orders");
    play({{"remove others", [&] { s.clickMenu("Stock", &VellumoAppDelegate::RemoveOtherFiles); },
        {"Stock.", "1 of 1 file", " | ", "Stock.", ""}}});
    EXPECT_EQ(s.recent.listed.front(), s.folder.path("Stock."));
    s.app().refreshRecentFiles();
    EXPECT_EQ(s.sight().tree, "Stock.");
}

TEST_F(Scenario, ClearingTheDocumentsEmptiesTheWindow)
{
    s.start();
    s.openByPanel({sales, stock});
    s.click("Sales/Orders");
    s.click("Stock/Items");
    play({{"clear", [&] { s.app().clearRecentDocuments(); }, {"", "1 of 0 files", " | ", "", ""}}});
    EXPECT_TRUE(s.app().isPlaceholderShown());
    EXPECT_EQ(s.app().dataView().table(), nullptr);
    EXPECT_THAT(s.app().jumpBar().items(), IsEmpty());
}

TEST_F(Scenario, DropsTakeDatabasesOnly)
{
    s.start();
    const auto upper = s.makeDatabase("UP.MDB", {{"T", 1}});
    s.folder.write("notes.txt", "");
    const auto notes = s.folder.path("notes.txt");
    EXPECT_FALSE(s.app().validateDrop({notes, "/data/mdb", "/data/.mdb"}));
    EXPECT_TRUE(s.app().validateDrop({notes, upper}));
    EXPECT_TRUE(s.app().validateDrop({"/data/x.AccDB"}));
    play({{"mixed drop",
        [&] {
            s.app().acceptDrop({notes, upper, notes, sales});
        },
        {"Sales*[Customers Orders] UP[T]", "1 of 2 files, contains 2 tables", " | ", "Sales.mdb UP.MDB", ""}}});
}

TEST_F(Scenario, ShowsFilesInTheFileManager)
{
    s.recent.listed = {sales, stock};
    s.start();
    s.app().ShowInFinder(Sender::Other);
    s.click("Sales");
    s.app().ShowInFinder(Sender::Other);
    s.clickMenu("Stock", &VellumoAppDelegate::ShowInFinder);
    EXPECT_THAT(s.workspace.revealed, ElementsAre(sales, stock));
}

TEST_F(Scenario, TheInformationBarFollowsTheSelection)
{
    s.start();
    s.openByPanel({sales});
    const auto& info = s.app().information();
    EXPECT_EQ(info.properties(InformationType::File).front(), (PropertyRow{"Name", "Sales.mdb"}));
    s.app().InformationTypeChange(InformationType::Column);
    EXPECT_EQ(info.selectedType(), InformationType::File) << "hidden while a file is selected";
    s.click("Sales/Orders");
    EXPECT_EQ(info.selectedType(), InformationType::Table);
    EXPECT_THAT(info.properties(InformationType::Table),
        ElementsAre(
            PropertyRow{"Name", "Orders"}, PropertyRow{"Number of rows", "1"}, PropertyRow{"Number of columns", "1"}));
    s.app().InformationTypeChange(InformationType::Column);
    s.click("Sales/Customers");
    EXPECT_EQ(info.selectedType(), InformationType::Column) << "kept from table to table";
    EXPECT_EQ(info.entries(InformationType::Column).at(0).name, "Name");
    EXPECT_TRUE(info.entries(InformationType::Relation).empty());
    EXPECT_EQ(describe(InformationType::Relation).emptyText, "No forigen keys");
    s.click("Sales");
    EXPECT_EQ(info.selectedType(), InformationType::File);
}

TEST_F(Scenario, TableWindowsShareTheSortOrderOfTheirTable)
{
    s.start();
    s.openByPanel({sales});
    auto& table = *s.item("Sales/Customers").table;
    s.window.isFull = true;
    s.app().OpenTableInNewWindow(table);
    s.app().OpenTableInNewWindow(table);
    const auto& windows = s.app().childWinManager()->childWins();
    ASSERT_EQ(windows.size(), 2U);
    EXPECT_EQ(static_cast<FakeChildWindow&>(windows[0]->port()).level, WindowLevel::ModalPanel);
    const auto firstValue = [](ChildWindow& window) {
        return cellDisplayText(window.dataView().getValueForTableColumn(0, 0));
    };
    windows[0]->dataView().didClickTableColumn(0);
    windows[0]->dataView().didClickTableColumn(0);
    EXPECT_EQ(firstValue(*windows[0]), "r2") << "descending";
    EXPECT_EQ(firstValue(*windows[1]), "r1") << "until it asks for its rows";
    EXPECT_EQ(windows[1]->dataView().numberOfRows(), 2U);
    EXPECT_EQ(firstValue(*windows[1]), "r2");
    s.app().controlTextDidChange(Field::Data, "zzz");
    EXPECT_EQ(windows[1]->dataView().numberOfRows(), 2U) << "no search in table windows";

    windows[0]->jumpBarDidSelectItem(s.item("Sales/Orders"));
    EXPECT_EQ(windows[0]->title(), "Orders @Sales");
    windows[0]->jumpBarDidSelectItem(s.item("Sales"));
    EXPECT_EQ(windows[0]->title(), "");
    windows[0]->windowWillClose();
    ASSERT_EQ(windows.size(), 1U);
    s.app().CloseSelectedFile(Sender::Other);
    EXPECT_THAT(windows, IsEmpty());
}

TEST_F(Scenario, AnExportKeepsTheFilesAsTheyAreUntilItHasReported)
{
    s.start();
    s.app().Export(2);
    EXPECT_EQ(s.sight().alerts, "sheet No MDB File selected.: Please select a file from the file list first.");
    s.openByPanel({sales});
    s.click("Sales/Orders");
    s.window.events.clear();
    s.app().Export(1);
    EXPECT_TRUE(s.app().isExporting());
    s.app().exportSheetDidEnd(0);
    EXPECT_FALSE(s.app().isExporting()) << "cancelled";
    s.app().Export(1);
    ASSERT_NE(s.app().exportWizard(), nullptr);
    auto& wizard = *s.app().exportWizard();
    wizard.controls().exportPathTextField.value = s.folder.path();
    s.app().exportSheetDidEnd(1);
    s.app().CloseSelectedFile(Sender::Other);
    s.app().clearRecentDocuments();
    EXPECT_EQ(s.sight().tree, "Sales[Customers Orders*]");
    s.mainThread.runUntil([&] { return wizard.report().has_value(); });
    s.app().exportDidFinish();
    EXPECT_EQ(s.folder.read("Orders.csv"), "\"Name\"\n\"r1\"\n");
    EXPECT_FALSE(s.folder.exists("Customers.csv"));
    EXPECT_THAT(s.window.events,
        ElementsAre("export sheet", "toolbar", "toolbar", "export sheet", "toolbar", "progress sheet", "toolbar"));
    s.app().CloseSelectedFile(Sender::Other);
    EXPECT_EQ(s.sight().tree, "Sales");
}

} // namespace
} // namespace vellumo
