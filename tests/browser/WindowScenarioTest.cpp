// SPDX-License-Identifier: MIT
#include "Scenario.h"

#include <cstdlib>
#include <gmock/gmock.h>

namespace vellumo {
namespace {

using namespace test;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Sender = VellumoAppDelegate::Sender;
using Field = VellumoAppDelegate::SearchField;

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

TEST_F(Scenario, AFileOpenedBehindAFilterIsSelectedWithoutARow)
{
    const auto bad = s.makeBrokenFile("Bad.mdb");
    s.start();
    s.openByPanel({sales});
    s.click("Sales/Orders");
    const auto type = [&](const char* text) { s.app().controlTextDidChange(Field::File, text); };
    const std::string recent = "Stock.mdb Sales.mdb";
    play({
        {"the selected table is found", [&] { type("orders"); },
            {"Sales[Orders*]", "1 of 1 table, contains 1 record", "Orders | ", "Sales.mdb", ""}},
        {"another file, after one that fails",
            [&] {
                s.openByPanel({bad, stock});
            },
            {"Sales[Orders]", "1 of 1 file, contains 1 table", "Orders | ", recent,
                "modal Error: File (Bad.mdb) cannot be opened"}},
    });
    EXPECT_EQ(s.app().selectedFile(), s.item("Stock").file);
    EXPECT_EQ(s.app().selectedTable(), nullptr);
    EXPECT_EQ(s.app().dataView().table(), nullptr);
    play({{"cleared", [&] { type(""); },
        {"Bad Sales[Customers Orders] Stock*[Items]", "1 of 3 files, contains 1 table", "Orders | ", recent, ""}}});
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
    s.app().dataView().tableViewSelectionDidChange(RowSelection::ofRow(0));
    s.app().SetCaseForSearch();
    status("equals, case honoured", "0 records", 0);
    s.app().SetSearchOption(SearchMenuItem::optionsTag);
    EXPECT_EQ(s.app().search().searchOption, SearchOption::Equals) << "the heading is no option";
}

TEST_F(Scenario, AFileThatHasChangedIsReadAgainUnderItsWindows)
{
    s.makeDatabase("Sales.mdb", {{"Items", 2}, {"Orders", 1}});
    s.fileFacts.byPath[sales] = {100, {}, {}, {}};
    s.start();
    s.openByPanel({sales});
    s.click("Sales/Items");
    s.app().OpenTableInNewWindow(*s.item("Sales/Items").table);
    s.app().OpenTableInNewWindow(*s.item("Sales/Orders").table);
    EXPECT_EQ(s.app().changeBarText(), "");

    s.makeDatabase("Sales.mdb", {{"Items", 3}});
    s.fileFacts.byPath[sales] = {200, {}, {}, {}};
    s.app().lookAtDisk();
    s.mainThread.runUntil([&] { return !s.app().changeBarText().empty(); });
    EXPECT_EQ(s.app().changeBarText(), "“Sales.mdb” has changed on disk since it was read.");
    s.app().ReadAgain();
    s.finishOpening();
    EXPECT_EQ(s.app().changeBarText(), "");
    EXPECT_EQ(s.app().selectedFile()->size(), 200U);
    EXPECT_EQ(s.sight().tree, "Sales[Items*]");
    const auto& windows = s.app().childWinManager()->childWins();
    ASSERT_EQ(windows.size(), 1U) << "Orders has gone";
    EXPECT_EQ(windows[0]->title(), "Items @Sales");
    EXPECT_EQ(windows[0]->dataView().numberOfRows(), 3U);

    s.fileFacts.byPath.clear();
    s.app().lookAtDisk();
    s.mainThread.runUntil([&] { return !s.app().changeBarText().empty(); });
    std::filesystem::remove(sales);
    s.app().ReadAgain();
    s.finishOpening();
    EXPECT_TRUE(windows.empty());
    s.click("Sales"); // closed and gone: of its size and dates nothing is known
    std::string rows;
    for (const auto& [label, value] : s.app().information().entries(InformationType::File)[0].properties)
        rows += label + "; ";
    EXPECT_EQ(rows, "Name; Where; State; ");
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
    for (const auto& window : windows) {
        EXPECT_EQ(firstValue(*window), "r2") << "descending";
        EXPECT_EQ(window->dataView().columns()[0].headerTag, -1);
    }
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

TEST_F(Scenario, AnExportWithoutItsLibraryTellsSoInAWindow)
{
    s.start();
    s.openByPanel({sales});
    s.app().Export(6);
    ASSERT_NE(s.app().exportWizard(), nullptr);
    auto& wizard = *s.app().exportWizard();
    wizard.controls().exportPathTextField.value = s.folder.path("Sales.sqlite");
    setenv("VELLUMO_SQLITE_LIBRARY", "/nonexistent.so", 1);
    s.app().exportSheetDidEnd(1);
    s.mainThread.runUntil([&] { return wizard.report().has_value(); });
    s.app().exportDidFinish();
    unsetenv("VELLUMO_SQLITE_LIBRARY");
    ASSERT_EQ(s.loadErrorWindow.shown.size(), 1U);
    EXPECT_EQ(s.loadErrorWindow.shown[0].label, "sqlitelibraryerror: '/nonexistent.so'");
    EXPECT_THAT(s.sight().alerts,
        testing::StartsWith(
            "sheet Export finished.: Unable to create file for export. " + s.folder.path("Sales.sqlite")));
    EXPECT_FALSE(s.folder.exists("Sales.sqlite"));
}

} // namespace
} // namespace vellumo
