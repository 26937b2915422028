// SPDX-License-Identifier: MIT
#include "desktop/ports/QtFilePanels.h"
#include "support/QtApplication.h"

#include <QAbstractButton>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QTimer>
#include <functional>
#include <gmock/gmock.h>

namespace vellumo {
namespace {

using namespace test;
using testing::ElementsAre;
using testing::Optional;

// Answers the next panel as soon as it waits: enters `name` and confirms, or cancels where there is none.
void answerNext(const std::optional<std::string>& name, QStringList* filters = nullptr)
{
    QTimer::singleShot(0, [=] {
        auto* panel = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        if (panel == nullptr) return ADD_FAILURE() << "no panel";
        if (filters != nullptr) *filters = panel->nameFilters();
        if (!name) return panel->reject();
        child<QLineEdit>(*panel, "fileNameEdit").setText(QString::fromStdString(*name));
        QMetaObject::invokeMethod(panel, "accept");
    });
}

struct FilePanels : testing::Test {
    void SetUp() override
    {
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        for (const auto* name : {"a.mdb", "b.MDB", "c.txt"})
            folder.write(name, "x");
        std::filesystem::create_directory(folder.path("deep"));
    }
    TempFolder folder;
    QtFilePanels panels;
};

TEST_F(FilePanels, OpensSeveralFiles)
{
    QStringList filters;
    answerNext("\"" + folder.path("a.mdb") + "\" \"" + folder.path("b.MDB") + "\"", &filters);
    EXPECT_THAT(
        panels.openFiles({"accdb", "mdb"}, ""), Optional(ElementsAre(folder.path("a.mdb"), folder.path("b.MDB"))));
    EXPECT_EQ(filters, QStringList{"Access databases (*.accdb *.ACCDB *.mdb *.MDB)"});
    answerNext({});
    EXPECT_EQ(panels.openFiles({"mdb"}, ""), std::nullopt);
}

TEST_F(FilePanels, ChoosesAFolderBeginningAtTheNearestThatExists)
{
    // Left as it opens: the folder that it began with.
    answerNext("");
    EXPECT_EQ(panels.chooseFolder(folder.path("deep/none/file.xls")), folder.path("deep"));
    answerNext({});
    EXPECT_EQ(panels.chooseFolder(folder.path()), std::nullopt);
}

TEST_F(FilePanels, AFileToSaveGetsItsExtension)
{
    answerNext(folder.path("Shop"));
    EXPECT_EQ(panels.saveFile("xls", "Shop"), folder.path("Shop.xls"));
    // The panel remembers the folder.
    const struct {
        const char* extension;
        const char* typed;
        const char* saved;
    } cases[] = {{"xls", "Shop.2020", "Shop.2020.xls"}, {"xls", "Orders.XLS", "Orders.XLS"}, {"", "a.b", "a.b"}};
    for (const auto& [extension, typed, saved] : cases) {
        answerNext(typed);
        EXPECT_EQ(panels.saveFile(extension, "Shop"), folder.path(saved)) << typed;
    }
}

TEST_F(FilePanels, OffersTheSuggestedNameWithItsExtension)
{
    QTimer::singleShot(0, [] {
        auto* panel = QApplication::activeModalWidget();
        EXPECT_EQ(child<QLineEdit>(*panel, "fileNameEdit").text(), "Shop.2020.xls");
        QMetaObject::invokeMethod(panel, "reject");
    });
    EXPECT_EQ(panels.saveFile("xls", "Shop.2020"), std::nullopt);
}

TEST_F(FilePanels, AsksBeforeAnExtensionMakesItAnExistingFile)
{
    folder.write("Shop.2020.xls", "x");
    const auto answerQuestion = [](QMessageBox::StandardButton answer, const std::function<void()>& next) {
        return [=] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box == nullptr) return ADD_FAILURE() << "no question";
            EXPECT_EQ(box->text(), "The file “Shop.2020.xls” exists already. Replace it?");
            if (next) QTimer::singleShot(0, next);
            box->button(answer)->click();
        };
    };
    const auto typed = folder.path("Shop.2020");
    answerNext(typed);
    QTimer::singleShot(0, [&] { QTimer::singleShot(0, answerQuestion(QMessageBox::Yes, {})); });
    EXPECT_EQ(panels.saveFile("xls", "Shop"), folder.path("Shop.2020.xls"));
    // No leads back to the panel.
    answerNext(typed);
    QTimer::singleShot(
        0, [&] { QTimer::singleShot(0, answerQuestion(QMessageBox::No, [&] { answerNext(folder.path("Other")); })); });
    EXPECT_EQ(panels.saveFile("xls", "Shop"), folder.path("Other.xls"));
}

} // namespace
} // namespace vellumo
