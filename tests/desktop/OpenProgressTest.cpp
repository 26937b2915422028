// SPDX-License-Identifier: MIT
#include "desktop/window/OpenProgress.h"
#include "support/QtApplication.h"

#include <QElapsedTimer>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

namespace vellumo::test {

TEST(OpenProgressTest, showsAfterAMomentHowFarItIsAndStops)
{
    QWidget window;
    int stops = 0;
    OpenProgress progress([&] { ++stops; }, &window);
    window.show();
    progress.begin("Shop.mdb");
    EXPECT_FALSE(progress.isVisible());
    QElapsedTimer elapsed;
    elapsed.start();
    ASSERT_TRUE(eventually([&] { return progress.isVisible(); }));
    EXPECT_GE(elapsed.elapsed(), OpenProgress::delayMs * 9 / 10); // a coarse timer
    auto& bar = *progress.findChild<QProgressBar*>();
    EXPECT_EQ(bar.maximum(), 0) << "busy until the first number comes";
    progress.advance(250, 1000);
    EXPECT_EQ(bar.value() * 4, bar.maximum());
    auto& stop = *progress.findChild<QPushButton*>();
    QTest::mouseClick(&stop, Qt::LeftButton);
    QTest::mouseClick(&stop, Qt::LeftButton);
    EXPECT_EQ(stops, 1);
    progress.end();
    EXPECT_FALSE(progress.isVisible());

    // A file that opens at once is never announced.
    progress.begin("Small.mdb");
    progress.end();
    QTest::qWait(OpenProgress::delayMs * 3 / 2);
    EXPECT_FALSE(progress.isVisible());
}

} // namespace vellumo::test
