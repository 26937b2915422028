#include "desktop/ports/QtFilePanels.h"
#include "support/QtApplication.h"

#include <QFileDialog>
#include <QLineEdit>
#include <QTimer>
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
    EXPECT_THAT(panels.openFiles({"accdb", "mdb"}), Optional(ElementsAre(folder.path("a.mdb"), folder.path("b.MDB"))));
    EXPECT_EQ(filters, QStringList{"Access databases (*.accdb *.ACCDB *.mdb *.MDB)"});
    answerNext({});
    EXPECT_EQ(panels.openFiles({"mdb"}), std::nullopt);
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
    answerNext("Orders.old"); // the panel remembers the folder; another extension stays
    EXPECT_EQ(panels.saveFile("xls", "Shop"), folder.path("Orders.old"));
}

} // namespace
} // namespace vellumo
