// SPDX-License-Identifier: MIT
#include "Program.h"

#include "desktop/QtText.h"
#include "support/NewerFile.h"

#include <QAction>
#include <QDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <gmock/gmock.h>

namespace vellumo::test {
namespace {

// The sheet that is shown; null for none.
QDialog* passwordSheet(Program& program)
{
    for (auto* sheet : program.window().findChildren<QDialog*>("passwordSheet"))
        if (sheet->isVisible()) return sheet;
    return nullptr;
}

TEST(OpeningTest, asksForAPasswordUntilItIsRight)
{
    Program program;
    program.start();
    program.window().app().SetOpensNewerFiles(true);
    const auto plain = program.makeDatabase("Plain.mdb", {.tables = {{.name = "T", .columns = {{.name = "a"}}}}});
    program.folder.write("Locked.accdb", encryptedFile(program.folder.read("Plain.mdb").value(), "Sesam"));
    program.openFiles({program.folder.path("Locked.accdb")});
    for (const auto* password : {"wrong", "Sesam"}) {
        ASSERT_TRUE(QTest::qWaitFor([&] { return passwordSheet(program) != nullptr; }));
        auto* sheet = passwordSheet(program);
        auto& field = child<QLineEdit>(*sheet, "password");
        EXPECT_EQ(field.echoMode(), QLineEdit::Password);
        QTest::keyClick(&field, Qt::Key_Return);
        EXPECT_TRUE(sheet->isVisible()) << "an empty password is none";
        QTest::keyClicks(&field, password);
        QTest::keyClick(&field, Qt::Key_Return);
        EXPECT_FALSE(sheet->isVisible());
    }
    ASSERT_TRUE(QTest::qWaitFor([&] { return program.window().app().recentFiles()[0]->active(); }));
    EXPECT_EQ(passwordSheet(program), nullptr);
}

TEST(OpeningTest, showsTheContentsOfAFileAndHowFilesAreOpened)
{
    Program program;
    program.start();
    const auto path = program.makeDatabase("Old.mdb",
        {.version = samples::JetVersion::Jet3,
            .tables = {{.name = "T", .columns = {{.name = "a"}}}},
            .otherEntries = {
                {.name = "<b>Q</b>", .query = {{.attribute = 5, .name1 = "T"}, {.attribute = 6, .expression = "a"}}},
                {.name = "F", .type = -32768}}});
    program.openFiles({path});
    program.clickButton("InfoView_Contents_Button");
    auto& page = program.find<QWidget>("InfoView_Contents");
    auto* names = page.findChild<QListWidget*>();
    ASSERT_EQ(names->count(), 2);
    EXPECT_EQ(fromQString(names->item(0)->text()), "<b>Q</b> (Select Query)");
    auto& text = child<QPlainTextEdit>(page, "contentsText");
    EXPECT_EQ(fromQString(text.toPlainText()), "SELECT a\nFROM T;");
    program.clickButton("copyContentsText");
    EXPECT_THAT(program.pasteboard.texts, testing::ElementsAre("SELECT a\nFROM T;"));
    names->setCurrentRow(1);
    EXPECT_FALSE(text.isVisible());

    auto* newer = program.menuItem("Always Open Newer Files");
    newer->trigger();
    EXPECT_TRUE(program.window().app().opensNewerFiles());
    EXPECT_TRUE(newer->isChecked());
    auto* encodings = program.menuItem("Text Encoding")->menu();
    EXPECT_TRUE(encodings->isEnabled());
    for (auto* action : encodings->actions())
        if (action->text() == "Cyrillic (1251)") action->trigger();
    program.finishOpening();
    EXPECT_EQ(program.window().app().textEncoding(), 1251);
    EXPECT_TRUE(program.window().app().recentFiles()[0]->active());
}

} // namespace
} // namespace vellumo::test
