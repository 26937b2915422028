#include "desktop/window/OpenProgress.h"
#include "support/QtApplication.h"

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

namespace vellumo::test {

TEST(OpenProgressTest, showsAfterAMomentHowFarItIsAndStops)
{
    QWidget window;
    window.show();
    OpenProgress progress(window);
    progress.begin("Shop.mdb");
    QElapsedTimer elapsed;
    elapsed.start();
    QDialog* dialog = nullptr;
    while ((dialog = window.findChild<QDialog*>("openProgress")) == nullptr) {
        ASSERT_LT(elapsed.elapsed(), 20 * OpenProgress::delayMs);
        ASSERT_TRUE(progress.advance(250, 1000));
    }
    EXPECT_GE(elapsed.elapsed(), OpenProgress::delayMs);
    EXPECT_EQ(dialog->findChild<QProgressBar*>()->value() * 4, dialog->findChild<QProgressBar*>()->maximum());
    EXPECT_EQ(QApplication::activeModalWidget(), dialog);
    QTest::mouseClick(dialog->findChild<QPushButton*>(), Qt::LeftButton);
    EXPECT_FALSE(progress.advance(251, 1000));
    progress.end();
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);

    // A file that opens at once is never announced.
    progress.begin("Small.mdb");
    EXPECT_TRUE(progress.advance(1, 1));
    EXPECT_EQ(window.findChild<QDialog*>("openProgress"), nullptr);
    progress.end();
}

} // namespace vellumo::test
