#include "browser/DroppedPath.h"
#include "browser/SearchMenu.h"
#include "browser/StatusTexts.h"
#include "browser/ToolbarDescription.h"

#include <gtest/gtest.h>

namespace vellumo {
namespace {

TEST(StatusTexts, TellOneFromMany)
{
    const std::pair<std::string, const char*> cases[] = {
        {statusForNoSelection(0), "0 files"},
        {statusForNoSelection(1), "1 file"},
        {statusForFile(1, {}), "1 of 1 file"},
        {statusForFile(0, {}), "1 of 0 files"},
        {statusForFile(3, 1), "1 of 3 files, contains 1 table"},
        {statusForFile(1, 0), "1 of 1 file, contains 0 tables"},
        {statusForTable(1, 1), "1 of 1 table, contains 1 record"},
        {statusForTable(0, 0), "1 of 0 tables, contains 0 records"},
        {statusForRecords(1, 0, 0), "1 record"},
        {statusForRecords(0, 0, 0), "0 records"},
        {statusForRecords(5, 1, 4), "Record 5 of 5"},
        {statusForRecords(5, 3, 0), "3 of 5 records"},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(text, expected);
}

TEST(DroppedPath, LeadsOutOfAContainerHome)
{
    const struct {
        const char* path;
        const char* home;
        const char* expected;
    } cases[] = {
        {"/Users/a/Library/Containers/v/Data/x.mdb", "/Users/a/Library/Containers/v/Data", "/Users/a/x.mdb"},
        {"/Volumes/b/x.mdb", "/Users/a/Library/Containers/v/Data", "/Volumes/b/x.mdb"},
        {"/home/a/x.mdb", "/home/a", "/home/a/x.mdb"},
        {"/home/a/Library/Containers/x.mdb", "/home/a", "/home/a/Library/Containers/x.mdb"},
        {"/x.mdb", "", "/x.mdb"},
    };
    for (const auto& test : cases)
        EXPECT_EQ(pathOutsideContainer(test.path, test.home), test.expected) << test.path;
}

TEST(Toolbar, ItemsStandInTheirOrder)
{
    std::string line;
    for (const auto& item : toolbarItems())
        line += std::string(item.identifier) + "/" + item.label() + "/" + item.toolTip() + "/"
            + std::string(item.iconName) + "/" + std::to_string(exportTypeByTag(item.exportTag))
            + (item.isSelectable ? "s\n" : "\n");
    EXPECT_EQ(line,
        "navigationBack/Back/Show the previous table/back_32x32/-1\n"
        "navigationNext/Next/Show the next table/forward_32x32/-1\n"
        "open/Open/Open MDB files/open_folder_32x32/-1s\n"
        "exportCsv/Export CSV/Export CSV/CSV_32x32/0s\n"
        "exportTxt/Export TXT/Export TXT/TXT_32x32/1s\n"
        "exportXml/Export XML/Export XML/XML_32x32/2s\n"
        "exportXls/Export XLS/Export XLS/XLS_32x32/3s\n"
        "exportSql/Export SQL/Export SQL/SQL_32x32/4s\n"
        "exportSqlite/Export SQLite/Export SQLite/SQLite_32x32/5s\n"
        "search/Search///-1\n");
    EXPECT_EQ(exportTypeByTag(7), -1);
    EXPECT_EQ(toolbarItem("none"), nullptr);
    EXPECT_EQ(applicationMenuTitles("Vellumo").quit, "Quit Vellumo");
}

TEST(SearchMenu, ChecksTheOptionAndTheCaseInForce)
{
    const auto checked = [](const SearchSettings& settings) {
        std::string tags;
        for (const auto& item : searchMenu(settings))
            tags += std::to_string(item.tag) + (item.isChecked ? "x " : " ");
        return tags;
    };
    EXPECT_EQ(checked({}), "100x 101 0x 1 2 3 ");
    EXPECT_EQ(checked({"", SearchOption::EndsWith, false}), "100 101 0 1 2 3x ");
}

} // namespace
} // namespace vellumo
