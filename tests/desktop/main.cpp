// The widgets run without a display and know nothing of the user's home.

#include "support/TempFolder.h"

#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    const vellumo::test::TempFolder home;
    for (const char* name : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"})
        ::setenv(name, home.path().c_str(), 1);
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    ::unsetenv("DBUS_SESSION_BUS_ADDRESS");
    ::unsetenv("QT_SCALE_FACTOR");
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    QApplication::setApplicationDisplayName("Vellumo");
    QApplication::setStyle("Fusion");
    return RUN_ALL_TESTS();
}
