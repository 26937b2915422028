// SPDX-License-Identifier: MIT
#include "browser/Navigation.h"

#include "support/DesktopFakes.h"
#include "support/ModelBuilder.h"

#include <gtest/gtest.h>

namespace vellumo {
namespace {

using namespace test;

TEST(Navigation, LeadsToNoTableThatHasGone)
{
    FakeFileFacts facts;
    FileList files(facts);
    auto& file = files.createNewMDBFile("/data/Sales.mdb", false);
    const auto read = [&file](
                          auto... tables) { file.takeContentOf(*makeFile("/data/Sales.mdb", std::move(tables)...)); };
    read(makeTable("A", {}), makeTable("B", {}), makeTable("C", {}));
    Navigation navigation(files);
    std::string shown;
    const auto show = [&shown](const TreeItem& item) { shown += item.table->name(); };
    for (const auto& table : file.tables())
        navigation.visit(TreeItem::of(*table));
    navigation.jumpBar().rebuild();
    navigation.goBack(show);
    EXPECT_EQ(shown, "B");
    read(makeTable("A", {}), makeTable("C", {})); // again, behind its back
    navigation.goBack(show);
    navigation.goForth(show);
    EXPECT_EQ(shown, "BA") << "the way forth leads over B";
    navigation.fileWillClose(file);
    navigation.goBack(show);
    EXPECT_EQ(shown, "BA");
    EXPECT_FALSE(navigation.history().isBackEnabled());
    EXPECT_TRUE(navigation.jumpBar().items().empty());
}

} // namespace
} // namespace vellumo
