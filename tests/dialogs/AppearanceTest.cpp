// SPDX-License-Identifier: MIT
#include "desktop/appearance/Appearance.h"
#include "support/ExportFakes.h"
#include "support/QtApplication.h"

#include <QStyle>

namespace vellumo {
namespace {

using namespace test;
using Choice = Appearance::Choice;

bool windowIsDark() { return QApplication::palette().color(QPalette::Window).lightness() < 128; }

// The desktop's answer, as the portal's signal brings it: the number in a variant, or that in one more.
QDBusVariant scheme(uint number, bool isWrappedTwice)
{
    const QDBusVariant once{QVariant(number)};
    return isWrappedTwice ? QDBusVariant(QVariant::fromValue(once)) : once;
}

TEST(Appearance, FollowsTheDesktopUnlessTheUserChoseOtherwise)
{
    const struct {
        const char* name;
        Choice choice;
        uint desktop; // 0 no preference, 1 dark, 2 light
        bool isDark;
    } cases[] = {
        {"no preference", Choice::System, 0, false},
        {"dark desktop", Choice::System, 1, true},
        {"light desktop", Choice::System, 2, false},
        {"dark by choice", Choice::Dark, 2, true},
        {"light by choice", Choice::Light, 1, false},
    };
    const auto before = QApplication::palette();
    for (const auto& c : cases) {
        FakeDefaults defaults;
        Appearance appearance(defaults);
        appearance.setChoice(c.choice);
        for (const bool isWrappedTwice : {false, true}) {
            appearance.settingChanged("org.freedesktop.appearance", "color-scheme", scheme(c.desktop, isWrappedTwice));
            EXPECT_EQ(windowIsDark(), c.isDark) << c.name;
        }
        appearance.settingChanged("org.freedesktop.appearance", "contrast", scheme(1 - c.desktop % 2, false));
        EXPECT_EQ(windowIsDark(), c.isDark) << c.name;
        EXPECT_EQ(Appearance(defaults).choice(), c.choice) << c.name; // kept for the next start
        appearance.setChoice(Choice::Light);
        EXPECT_EQ(QApplication::palette(), before) << c.name;
    }
}

} // namespace
} // namespace vellumo
