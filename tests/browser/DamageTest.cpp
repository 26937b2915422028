// SPDX-License-Identifier: MIT
// What a person is told of damaged files, and looking for lost rows.

#include "Scenario.h"

#include "browser/DamageDetails.h"
#include "support/ModelBuilder.h"

#include <filesystem>
#include <gmock/gmock.h>

namespace vellumo {
namespace {

using namespace test;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

DamageReport reportOf(const std::vector<DamageRecord>& records)
{
    DamageReport report;
    for (const auto& record : records)
        report.add(record);
    return report;
}

const DamageRecord lostTable{.kind = DamageKind::Table, .page = 40};
const DamageRecord lostRows{.kind = DamageKind::MissingRows, .table = "Orders", .count = 480};
const DamageRecord lostPage{.kind = DamageKind::Page, .table = "Orders", .page = 203};

TEST(DamageTexts, TheBarTellsOfTheSelectedTableFirst)
{
    const struct {
        const char* name;
        std::vector<DamageRecord> records;
        const char* file;
        const char* orders;
        const char* customers;
    } cases[] = {
        {"sound", {}, "", "", ""},
        {"a table and rows", {lostTable, lostPage, lostRows}, "1 of 3 tables could not be read, 480 rows are missing.",
            "Orders: A page of rows cannot be read. 480 rows are missing. In the whole file: 1 of 3 tables could not "
            "be "
            "read, 480 rows are missing.",
            "1 of 3 tables could not be read, 480 rows are missing."},
        {"one table alone", {lostPage}, "The file is damaged.", "Orders: A page of rows cannot be read.",
            "The file is damaged."},
    };
    for (const auto& c : cases) {
        const auto file = makeFile("/data/Sales.mdb", makeTable("Customers", {{"Name", "Text"}}),
            makeTable("Orders", {{"Name", "Text"}}), makeTable("Orders (recovered)", {{"Name", "Text"}}));
        file->tables()[2]->setOrigin(TableOrigin::Recovered);
        file->setDamage(reportOf(c.records));
        EXPECT_EQ(damageBarText(TreeItem::of(*file)), c.file) << c.name;
        EXPECT_EQ(damageBarText(TreeItem::of(*file->findTable("Orders"))), c.orders) << c.name;
        EXPECT_EQ(damageBarText(TreeItem::of(*file->findTable("Customers"))), c.customers) << c.name;
        file->close();
        EXPECT_EQ(damageBarText(TreeItem::of(*file)), "") << c.name;
    }
}

TEST(DamageTexts, ASearchForLostRowsTellsWhatItFound)
{
    const auto file = makeFile("/data/Sales.mdb", makeTable("Orders", {{"Name", "Text"}}, {{"a"}}),
        makeTable("Orders (deleted)", {{"Name", "Text"}}, {{"b"}}),
        makeTable("Recovered 1", {{"Name", "Text"}}, {{"c"}, {"d"}}));
    EXPECT_EQ(salvageResult(*file, Salvage::LostRows).title, "No lost rows were found.");
    file->tables()[1]->setOrigin(TableOrigin::Deleted);
    file->tables()[2]->setOrigin(TableOrigin::Recovered);
    EXPECT_EQ(salvageResult(*file, Salvage::LostAndDeletedRows),
        (Alert{"Found: 3 rows", "Orders (deleted): 1 row\nRecovered 1: 2 rows", Alert::Style::Sheet, "",
            Alert::Kind::Notice}));
}

TEST_F(Scenario, LookingForLostRowsOpensTheFileAgainAndComesBackToTheTable)
{
    s.start();
    s.app().LookForLostRows(); // nothing is selected
    s.openByPanel({stock, sales});
    s.click("Sales/Orders");
    s.app().OpenTableInNewWindow(*s.item("Sales/Customers").table);
    s.item("Sales").file->setDamage(reportOf({lostRows}));
    EXPECT_EQ(s.app().damageBarText(), "Orders: 480 rows are missing.");
    s.window.events.clear();
    s.app().LookForLostRows();
    EXPECT_THAT(s.window.events, ElementsAre("salvage sheet"));
    s.window.duringOpening = [&] { EXPECT_EQ(s.app().dataView().table(), nullptr); };
    const std::string none = "sheet No lost rows were found.: Lost and deleted rows were looked for.";
    play({
        {"look", [&] { s.app().salvageSheetDidEnd(Salvage::LostAndDeletedRows); },
            {"Sales[Customers Orders*] Stock[Items]", "1 of 2 tables, contains 1 record", " | ", "Sales.mdb Stock.mdb",
                none}},
        {"stopped",
            [&] {
                s.window.duringOpening = [&] { s.app().StopOpening(); };
                s.app().salvageSheetDidEnd(Salvage::LostRows);
            },
            {"Sales* Stock[Items]", "1 of 2 files", " | ", "Sales.mdb Stock.mdb", ""}},
        {"not open", [&] { s.app().salvageSheetDidEnd(Salvage::LostRows); },
            {"Sales* Stock[Items]", "1 of 2 files", " | ", "Sales.mdb Stock.mdb", ""}},
    });
    EXPECT_EQ(s.window.events.at(2), "opening Sales");
    EXPECT_THAT(s.window.events, testing::Contains("expand Sales"));
    EXPECT_THAT(s.window.childEvents, ElementsAre("key Customers @Sales", "closed "));
    EXPECT_EQ(s.app().damageBarText(), ""); // what was put in has gone with the closing
}

TEST_F(Scenario, TheReasonStandsBelowTheAlertThatAFileFailed)
{
    const auto bad = s.makeBrokenFile("Bad.mdb");
    s.start();
    s.openByPanel({bad});
    ASSERT_EQ(s.alerts.shown.size(), 1U);
    EXPECT_EQ(s.alerts.shown[0].detail,
        "Reason: it is no Access database, or its first page is damaged. If it is an archive, unpack it first; if it "
        "was sent to you, ask for it again.");
}

TEST_F(Scenario, TheListOfDamageIsCopiedAndSaved)
{
    s.start();
    s.openByPanel({sales});
    auto& file = *s.item("Sales").file;
    file.setDamage(reportOf({lostTable, lostPage,
        {.kind = DamageKind::Value, .table = "Two\nlines", .column = "<b>Note</b>", .row = 17, .count = 2}}));
    s.app().ShowDamage();
    const auto details = s.window.damageSheet;
    ASSERT_NE(details, nullptr);
    s.app().CloseSelectedFile(VellumoAppDelegate::Sender::Other); // the list outlives it

    std::vector<std::string> cells;
    for (std::size_t column = 0; column < DamageDetails::columnCount; ++column)
        cells.push_back(details->text(2, static_cast<DamageDetails::Column>(column)));
    EXPECT_THAT(cells, ElementsAre("2 values cannot be read.", "Two\\u{A}lines", "<b>Note</b>", "17", "", "2"));

    const std::string lines = "page 40: The table cannot be read: its definition is damaged.\n"
                              "Orders, page 203: A page of rows cannot be read.\n"
                              "Two\\u{A}lines, column <b>Note</b>, row 17: 2 values cannot be read.\n";
    details->copy();
    EXPECT_THAT(s.pasteboard.texts, ElementsAre(lines));

    s.filePanels.file = s.folder.path("damage.txt");
    details->save();
    EXPECT_EQ(s.filePanels.asked.back(), "save txt Damage of Sales");
    EXPECT_EQ(
        s.folder.read("damage.txt"), sales + "\n1 of 3 tables could not be read, 2 values are damaged.\n\n" + lines);
    EXPECT_THAT(s.alerts.shown, IsEmpty());

    const auto before = s.folder.read("Sales.mdb");
    const struct {
        std::string path;
        std::string reason;
    } refusals[] = {{s.folder.path("no/such/folder"), "No such file or directory"}, {s.folder.path(), "Is a directory"},
        {"/dev/full", "No space left on device"}, {sales, "it is the database itself"}};
    for (const auto& [path, reason] : refusals) {
        s.filePanels.file = path;
        details->save();
        EXPECT_THAT(std::exchange(s.alerts.shown, {}),
            ElementsAre(Alert{
                "Error", "File (" + path + ") cannot be written", Alert::Style::Modal, "Reason: " + reason + "."}));
    }
    EXPECT_EQ(s.folder.read("Sales.mdb"), before);
}

} // namespace
} // namespace vellumo
