// SPDX-License-Identifier: MIT
#include "Scenario.h"

#include <gmock/gmock.h>

namespace vellumo {
namespace {

using namespace test;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Sender = VellumoAppDelegate::Sender;

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
        s.finishOpening();
        EXPECT_EQ(s.sight(), route.expected) << route.name;
        s.app().refreshRecentFiles();
        EXPECT_EQ(s.sight().tree, route.expected.tree) << route.name << ", refreshed";
        EXPECT_FALSE(s.app().isPlaceholderShown()) << route.name;
    }
}

TEST_F(Scenario, NothingIsSelectedBehindTheAlertThatAFileFailed)
{
    const auto bad = s.makeBrokenFile("Bad.mdb");
    s.start();
    s.openByPanel({sales});
    s.click("Sales/Orders");
    Sight behind;
    s.alerts.whileShown = [&] { behind = s.sight(); };
    s.openByPanel({bad});
    const Sight expected{"Bad Sales[Customers Orders]", "2 files", "Orders | ", "Sales.mdb",
        "modal Error: File (Bad.mdb) cannot be opened"};
    EXPECT_EQ(behind, expected);
    EXPECT_EQ(s.app().jumpBar().selectedItem(), TreeItem());
}

TEST_F(Scenario, StoppingToOpenIsNoFailure)
{
    s.start();
    s.window.duringOpening = [&] { s.app().StopOpening(); };
    play({
        {"panel", [&] { s.openByPanel({sales}); }, {"Sales", "1 file", " | ", "", ""}},
        {"menu", [&] { s.clickMenu("Sales", &VellumoAppDelegate::OpenSelectedFile); },
            {"Sales", "1 file", " | ", "", ""}},
        {"export", [&] { s.click("Sales"), s.app().Export(1); }, {"Sales*", "1 of 1 file", " | ", "", ""}},
    });
    s.window.duringOpening = {};
    play({{"not stopped", [&] { s.clickMenu("Sales", &VellumoAppDelegate::OpenSelectedFile); },
        {"Sales*[Customers Orders]", "1 of 1 file, contains 2 tables", " | ", "Sales.mdb", ""}}});
    EXPECT_THAT(s.window.events, ::testing::Not(::testing::Contains("export sheet")));
}

TEST_F(Scenario, AProgramThatIsToEndOpensNoMoreFiles)
{
    s.start();
    s.window.duringOpening = [&] { s.app().applicationShouldTerminate(); };
    s.window.events.clear();
    s.app().applicationOpenFiles({sales, stock});
    s.finishOpening();
    EXPECT_THAT(s.window.events, ::testing::ElementsAre("opening Sales", "opening ended"));
    EXPECT_EQ(s.sight().recent, "");
    EXPECT_EQ(s.sight().alerts, "");
}

TEST_F(Scenario, OtherFilesAreLookedAtWhileOneIsOpened)
{
    using Command = VellumoAppDelegate::FileCommand;
    s.start();
    s.openByPanel({sales});
    const auto usable = [&] {
        std::string names;
        const std::pair<Command, char> commands[] = {{Command::Open, 'O'}, {Command::Close, 'C'},
            {Command::Remove, 'R'}, {Command::RemoveOthers, 'T'}, {Command::LookForLostRows, 'L'}};
        for (const auto& [command, letter] : commands)
            if (s.app().canUse(command, Sender::Other)) names += letter;
        return names + (s.app().canExport() ? 'E' : '-') + (s.app().canClearRecentDocuments() ? 'A' : '-');
    };
    const auto later = s.makeDatabase("Later.mdb", {{"T", 1}});
    s.app().acceptDrop({stock, later}); // nothing of it arrives yet
    const Sight meanwhile{
        "Sales[Customers Orders*] Stock", "1 of 2 tables, contains 1 record", "Orders | ", "Sales.mdb", ""};
    s.click("Sales/Orders");
    s.app().refreshRecentFiles();
    EXPECT_EQ(s.sight(), meanwhile);
    EXPECT_EQ(usable(), "CRLE-") << "another file";
    s.click("Stock");
    EXPECT_EQ(usable(), "--") << "the one that is opened";
    s.app().OnDoubleClickFileTree();
    s.app().RemoveSelectedFile(Sender::Other);
    s.app().clearRecentDocuments();
    s.click("Sales/Orders");
    s.app().CloseSelectedFile(Sender::Other);
    EXPECT_EQ(s.sight().tree, "Sales Stock");
    s.app().StopOpening();
    play({{"the next one comes all the same", [] {},
        {"Later*[T] Sales Stock", "1 of 3 files, contains 1 table", " | ", "Later.mdb Sales.mdb", ""}}});
    s.click("Stock");
    EXPECT_EQ(usable(), "ORTEA");
}

TEST_F(Scenario, AFileThatLeavesTheListBeforeItsTurnIsNotOpened)
{
    s.recent.listed = {sales, stock};
    s.start();
    s.click("Stock");
    s.app().acceptDrop({sales});
    s.app().OnDoubleClickFileTree();
    s.app().Export(1);
    EXPECT_FALSE(s.app().canExport()) << "one export at a time";
    s.app().RemoveSelectedFile(Sender::Other);
    play({{"removed", [] {}, {"Sales*[Customers Orders]", "1 of 1 file, contains 2 tables", " | ", "Sales.mdb", ""}}});
    EXPECT_FALSE(s.app().isExporting());
    EXPECT_TRUE(s.app().canExport());
}

TEST_F(Scenario, TheProgramEndsWhileAFileIsOpened)
{
    s.start();
    s.app().applicationOpenFiles({sales, stock});
    s.quit();
    s.start();
    EXPECT_EQ(s.sight().tree, "");
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
        (std::map<std::string, bool, std::less<>>{{"captionsShown", false}, {"fileTreeShown", false},
            {"informationViewShown", true}, {"jumpBarShown", false}, {"lookupTextsShown", false},
            {"numRowsShown", false}, {"openNewerFiles", false}, {"textViewShown", true}}));
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
    EXPECT_THAT(s.window.events, ElementsAre("will close Bills", "will close Stock", "will close Sales"));
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

} // namespace
} // namespace vellumo
