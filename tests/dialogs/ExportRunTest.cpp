// SPDX-License-Identifier: MIT
#include "ExportDesk.h"
#include "desktop/dialogs/ExportProgressDialog.h"

#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <gmock/gmock.h>

namespace vellumo {
namespace {

using namespace test;
using testing::ElementsAre;

using Report = std::pair<std::string, std::string>;

// The report as it stands on the screen, closed by its button.
Report readReport()
{
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr) return {};
    Report result{box->text().toStdString(), box->informativeText().toStdString()};
    box->button(QMessageBox::Ok)->click();
    return result;
}

// What the main window does with an export: the dialog, then the progress sheet, then the report.
class Sheets {
public:
    explicit Sheets(ExportDesk& desk)
    {
        desk.defaults.strings["exportFilePath"] = desk.folder.path();
        wizard = desk.wizard(ExportFileType::CSV);
        auto* dialog = new ExportDialog(wizard, nullptr);
        QSignalSpy ended(dialog, &ExportDialog::sheetEnded);
        dialog->open();
        QTest::keyClick(dialog, Qt::Key_Return);
        EXPECT_TRUE(ended.wait());
        progress = new ExportProgressDialog(wizard, nullptr);
        progress->open();
        desk.mainThread.afterwards = [this] { watch(); };
    }

    void finish()
    {
        QSignalSpy finished(progress, &ExportProgressDialog::exportDidFinish);
        ASSERT_TRUE(wizard->startExport());
        ASSERT_TRUE(finished.wait(20000));
        EXPECT_TRUE(eventually([this] { return progress.isNull(); }));
    }

    std::function<void()> atEachTable = [] {};
    std::vector<std::string> seen; // label, value of maximum
    std::shared_ptr<ExportWizard> wizard;
    QPointer<ExportProgressDialog> progress;

private:
    // Called on the main thread after each report of the worker.
    void watch()
    {
        if (!progress->isVisible()) return;
        const auto& bar = child<QProgressBar>(*progress, "progressIndicator");
        seen.push_back(child<QLabel>(*progress, "progressLabel").text().toStdString() + " | "
            + std::to_string(bar.value()) + "/" + std::to_string(bar.maximum()));
        atEachTable();
    }
};

TEST(ExportRun, WritesTheFilesAndReports)
{
    ExportDesk desk;
    Sheets run(desk);
    run.finish();
    EXPECT_THAT(run.seen,
        ElementsAre("Exporting Customers... <0 of 3> | 0/3", "Exporting Orders... <1 of 3> | 1/3",
            "Exporting Products... <2 of 3> | 2/3"));
    EXPECT_EQ(desk.folder.read("Customers.csv"), "\"Id\",\"Name\"\n1,\"Ann\"\n2,\"Bob\"\n");
    EXPECT_TRUE(desk.folder.exists("Orders.csv") && desk.folder.exists("Products.csv"));
    EXPECT_EQ(readReport(), Report("Export finished.", "3 tables exported successfully."));
}

TEST(ExportRun, StopEndsItAndKeepsWhatIsDone)
{
    ExportDesk desk;
    Sheets run(desk);
    run.atEachTable = [&] {
        if (run.seen.size() != 2) return;
        auto& stop = child<QPushButton>(*run.progress, "stopButton");
        QTest::mouseClick(&stop, Qt::LeftButton);
        EXPECT_FALSE(stop.isEnabled());
        EXPECT_TRUE(run.progress->isVisible()); // until the worker has seen it
    };
    run.finish();
    EXPECT_TRUE(desk.folder.exists("Customers.csv"));
    EXPECT_FALSE(desk.folder.exists("Orders.csv") || desk.folder.exists("Products.csv"));
    EXPECT_EQ(
        readReport(), Report("Export terminated.", "1 table exported successfully.\n<Orders> Failed: Terminated."));
}

} // namespace
} // namespace vellumo
