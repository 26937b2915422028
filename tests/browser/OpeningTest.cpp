// SPDX-License-Identifier: MIT
#include "Scenario.h"

#include "samples/DatabaseWriter.h"
#include "support/NewerFile.h"

#include <gmock/gmock.h>

namespace vellumo {
namespace {

using namespace test;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Opening : public Scenario {
protected:
    std::string put(const std::string& name, const std::string& bytes)
    {
        s.folder.write(name, bytes);
        return s.folder.path(name);
    }
    [[nodiscard]] bool isOpen(const std::string& name) const { return s.item(name).file->active(); }
    void answer(const char* password)
    {
        s.app().passwordSheetDidEnd(password == nullptr ? std::nullopt : std::optional<std::string>(password));
        s.finishOpening();
    }
    std::string cell(std::size_t column, std::size_t row)
    {
        s.app().dataView().reloadData();
        return cellDisplayText(s.app().dataView().getValueForTableColumn(column, row));
    }

    const std::string plain = s.folder.read("Sales.mdb").value();
    const std::string newer = put("Newer.accdb", newerFile(plain));
    const std::string other = put("Other.accdb", newerFile(plain));
    const std::string locked = put("Locked.accdb", encryptedFile(plain, "Sesam"));
};

TEST_F(Opening, NewerFilesAreOpenedWhenTheUserSaysSo)
{
    s.start();
    s.openByPanel({newer});
    EXPECT_FALSE(isOpen("Newer"));
    EXPECT_THAT(s.alerts.asked, ElementsAre("Open This File", "Always Open Newer Files"));
    ASSERT_EQ(s.alerts.shown.size(), 1U);
    EXPECT_EQ(s.alerts.shown[0].message, "File (Newer.accdb) cannot be opened");
    s.alerts.answer = 0;
    s.openByPanel({newer});
    EXPECT_TRUE(isOpen("Newer"));
    EXPECT_FALSE(s.app().opensNewerFiles());
    s.openByPanel({newer});
    EXPECT_TRUE(isOpen("Newer")) << "asked about once";
    EXPECT_EQ(s.alerts.shown.size(), 2U);
    s.alerts.answer = 1;
    s.openByPanel({other});
    EXPECT_TRUE(isOpen("Other"));
    EXPECT_TRUE(s.app().opensNewerFiles());
    s.quit();
    s.start();
    s.click("Newer");
    s.app().OpenSelectedFile(VellumoAppDelegate::Sender::Other);
    s.finishOpening();
    EXPECT_TRUE(isOpen("Newer"));
    EXPECT_EQ(s.alerts.shown.size(), 3U) << "never again";
}

TEST_F(Opening, APasswordIsAskedForThreeTimesAndForgotten)
{
    s.start();
    s.app().SetOpensNewerFiles(true);
    s.openByPanel({locked, newer});
    EXPECT_TRUE(isOpen("Newer")) << "nobody waits for the answer";
    for (const auto* wrong : {"sesam", "", "Sesam "})
        answer(wrong);
    EXPECT_THAT(s.window.passwordSheets,
        ElementsAre("Its password is used to read it, and not kept.",
            "The password is wrong. You can try 2 times more.", "The password is wrong. You can try once more."));
    ASSERT_EQ(s.alerts.shown.size(), 1U);
    EXPECT_THAT(s.alerts.shown[0].detail, ::testing::HasSubstr("the password is wrong"));
    answer("Sesam");
    EXPECT_FALSE(isOpen("Locked")) << "nothing was asked";

    s.openByPanel({locked});
    answer("Sesam");
    EXPECT_TRUE(isOpen("Locked"));
    s.click("Locked/Customers");
    EXPECT_EQ(cell(0, 1), "r2");
    s.app().LookForLostRows();
    s.app().salvageSheetDidEnd(Salvage::LostRows);
    s.finishOpening();
    EXPECT_FALSE(isOpen("Locked")) << "asked again";
    answer(nullptr);
    EXPECT_FALSE(isOpen("Locked"));
    EXPECT_EQ(s.window.passwordSheets.size(), 5U);
    EXPECT_EQ(s.alerts.shown.size(), 1U) << "whoever does not answer knows why";
    s.quit();
    for (const auto& [key, value] : s.defaults.strings)
        EXPECT_EQ(value.find("Sesam"), std::string::npos) << key;
}

TEST_F(Opening, SheetsOfSeveralFilesComeOneAfterTheOther)
{
    const auto second = put("Second.accdb", encryptedFile(plain, "Zwei"));
    s.start();
    s.app().SetOpensNewerFiles(true);
    s.openByPanel({locked, second});
    EXPECT_EQ(s.window.passwordSheets.size(), 1U);
    answer("Sesam");
    EXPECT_EQ(s.window.passwordSheets.size(), 2U);
    s.clickMenu("Second", &VellumoAppDelegate::RemoveSelectedFile);
    answer("Zwei");
    EXPECT_TRUE(isOpen("Locked"));
    EXPECT_EQ(s.app().recentFiles().size(), 1U) << "what has left the list stays away";
}

TEST_F(Opening, TextsOfOldFilesAreReadInAnotherEncoding)
{
    const auto path = s.folder.path("Old.mdb");
    ASSERT_TRUE(samples::writeDatabase(
        {.version = samples::JetVersion::Jet3,
            .tables = {{.name = "T",
                .columns = {{.name = "a"}},
                .rows = samples::rowsOf(std::vector<std::vector<samples::Value>>{{samples::Bytes{0xC4, 0xE0}}})}}},
        path)
                    .ok());
    s.start();
    s.openByPanel({sales, path});
    s.click("Sales");
    EXPECT_FALSE(s.app().canSetTextEncoding());
    s.click("Old/T");
    ASSERT_TRUE(s.app().canSetTextEncoding());
    EXPECT_EQ(cell(0, 0), "Äà");
    s.app().SetTextEncoding(1251);
    s.finishOpening();
    EXPECT_EQ(cell(0, 0), "Да") << "the same table is shown again";
    s.quit();
    s.start();
    s.click("Old");
    s.app().OpenSelectedFile(VellumoAppDelegate::Sender::Other);
    s.finishOpening();
    s.click("Old/T");
    EXPECT_EQ(cell(0, 0), "Да");
    EXPECT_EQ(s.app().textEncoding(), 1251);
    s.app().SetTextEncoding(std::nullopt);
    s.finishOpening();
    EXPECT_EQ(cell(0, 0), "Äà");
    EXPECT_THAT(s.alerts.shown, IsEmpty());
}

TEST_F(Opening, LookupTextsCaptionsAndContentsAreShown)
{
    const auto path = s.folder.path("More.mdb");
    samples::TableDescription table{.name = "T",
        .columns = {{.name = "Who",
            .type = samples::ColumnType::Long,
            .properties = {{"DisplayControl", samples::PropertyType::Integer, 111},
                {"ColumnCount", samples::PropertyType::Integer, 2}, samples::textProperty("ColumnWidths", "0;1"),
                samples::textProperty("Caption", "Person"), samples::textProperty("RowSourceType", "Value List"),
                samples::memoProperty("RowSource", "1;Zoe;2;Ann")}}},
        .rows = samples::rowsOf(std::vector<std::vector<samples::Value>>{{std::int64_t{1}}, {std::int64_t{2}}})};
    ASSERT_TRUE(samples::writeDatabase(
        {.tables = {table},
            .otherEntries = {{.name = "Q",
                                 .query = {{.attribute = 5, .name1 = "T"}, {.attribute = 6, .expression = "Who"}}},
                {.name = "F", .type = -32768}}},
        path)
                    .ok());
    s.start();
    s.openByPanel({sales, path});
    auto& app = s.app();
    s.click("Sales");
    EXPECT_FALSE(app.information().isTypeShown(InformationType::Contents));
    s.click("More");
    EXPECT_TRUE(app.information().isTypeShown(InformationType::Contents));
    EXPECT_EQ(app.information().entries(InformationType::Contents).size(), 2U);
    app.InformationTypeChange(InformationType::Contents);
    app.CopyContentsText();
    EXPECT_THAT(s.pasteboard.texts, ElementsAre("SELECT Who\nFROM T;"));
    app.informationEntryDidChange(InformationType::Contents, 1);
    app.CopyContentsText();
    EXPECT_EQ(s.pasteboard.texts.size(), 1U) << "a form has no text";

    s.click("More/T");
    EXPECT_FALSE(app.information().isTypeShown(InformationType::Contents));
    EXPECT_EQ(app.information().selectedType(), InformationType::Table);
    app.OpenTableInNewWindow(*app.selectedTable());
    auto& child = app.childWinManager()->childWins()[0]->dataView();
    app.dataView().selectRows(RowSelection::ofRow(1));
    app.ToggleLookupTexts();
    app.ToggleCaptions();
    EXPECT_EQ(app.dataView().columns()[0].title, "Person");
    EXPECT_EQ(app.dataView().columns()[0].identifier, "Who");
    EXPECT_EQ(cell(0, 0) + cell(0, 1), "ZoeAnn");
    EXPECT_EQ(child.columns()[0].title, "Person");
    EXPECT_EQ(app.dataView().selectedRows().first(), 1U);
    app.dataView().didClickTableColumn(0);
    EXPECT_EQ(cell(0, 0) + cell(0, 1), "AnnZoe");
    app.controlTextDidChange(VellumoAppDelegate::SearchField::Data, "zo");
    EXPECT_EQ(app.dataView().numberOfRows(), 1U);
    app.ToggleLookupTexts();
    EXPECT_EQ(app.dataView().numberOfRows(), 0U) << "nothing stored says so";
    app.controlTextDidChange(VellumoAppDelegate::SearchField::Data, "");
    EXPECT_EQ(cell(0, 0) + cell(0, 1), "12");
    app.ToggleLookupTexts();
    s.clickMenu("More", &VellumoAppDelegate::CloseSelectedFile);
    EXPECT_EQ(app.dataView().table(), nullptr);
    EXPECT_TRUE(app.childWinManager()->childWins().empty());
}

// A table of many rows is shown as it is stored until its texts are there, or for good when that is given up.
TEST_F(Opening, LookupTextsOfLargeTablesComeWhenTheyAreFound)
{
    const auto path = s.folder.path("More.mdb");
    const samples::TableDescription table{.name = "T",
        .columns = {{.name = "Who",
            .type = samples::ColumnType::Long,
            .properties = {{"DisplayControl", samples::PropertyType::Integer, 111},
                {"ColumnCount", samples::PropertyType::Integer, 2}, samples::textProperty("ColumnWidths", "0;1"),
                samples::textProperty("RowSourceType", "Value List"),
                samples::memoProperty("RowSource", "1;Zoe;2;Ann")}}},
        .rows = [](std::size_t index, samples::Row& row) {
            row.values = {static_cast<std::int64_t>(index % 2 + 1)};
            return index < 50'000;
        }};
    auto second = table;
    second.name = "U";
    ASSERT_TRUE(samples::writeDatabase({.tables = {table, second}}, path).ok());
    s.start();
    s.openByPanel({sales, path});
    auto& app = s.app();
    s.click("More/T");
    app.OpenTableInNewWindow(*app.selectedTable());
    auto& child = app.childWinManager()->childWins()[0]->dataView();
    const auto finish = [&] { s.mainThread.runUntil([&] { return !app.isLookingUp(); }); };

    app.ToggleLookupTexts();
    EXPECT_TRUE(app.isLookingUp());
    EXPECT_EQ(cell(0, 0), "1");
    s.click("More/U"); // waits for the first
    EXPECT_EQ(cell(0, 0), "1");
    finish();
    EXPECT_EQ(cell(0, 0), "Zoe");
    s.click("More/T");
    EXPECT_EQ(cell(0, 0), "Zoe");
    EXPECT_EQ(child.getValueForTableColumn(0, 1), app.dataView().getValueForTableColumn(0, 1));
    EXPECT_EQ(cell(0, 49'999), "Ann");
    app.ToggleLookupTexts();

    app.ToggleLookupTexts();
    app.StopLookingUp();
    EXPECT_FALSE(app.isLookingUp() || app.toggles().isShown(ViewToggle::LookupTexts));
    s.window.events.clear();
    app.ToggleLookupTexts();
    s.clickMenu("More", &VellumoAppDelegate::CloseSelectedFile);
    EXPECT_FALSE(app.isLookingUp());
    EXPECT_THAT(s.window.events, testing::IsSupersetOf({"looking up T", "looking up ended"}));
    s.openByPanel({path});
    s.click("More/T");
    EXPECT_EQ(cell(0, 0), "1");
    s.quit(); // meanwhile
}

} // namespace
} // namespace vellumo
