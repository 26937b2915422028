// SPDX-License-Identifier: MIT
#pragma once

#include "support/TempFolder.h"

#include <QApplication>
#include <QTest>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <string>

// One QApplication for a test program, without a display and far from the user's own settings. Including this file is
// enough: it is there before the first test and gone after the last.
namespace vellumo::test {

class QtApplication : public testing::Environment {
public:
    void SetUp() override
    {
        isolate();
        QApplication::setApplicationName("vellumo");
        m_application = std::make_unique<QApplication>(m_argumentCount, m_arguments);
        QApplication::setStyle("Fusion");
    }
    void TearDown() override { m_application.reset(); }

private:
    void isolate()
    {
        ::setenv("HOME", m_home.path().c_str(), 1);
        for (const auto* name :
            {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_STATE_HOME", "XDG_RUNTIME_DIR"}) {
            std::filesystem::create_directory(m_home.path(name));
            std::filesystem::permissions(m_home.path(name), std::filesystem::perms::owner_all);
            ::setenv(name, m_home.path(name).c_str(), 1);
        }
        // No desktop answers: neither its services nor its theme.
        ::setenv("DBUS_SESSION_BUS_ADDRESS", ("unix:path=" + m_home.path("no-bus")).c_str(), 1);
        for (const auto* name :
            {"QT_QPA_PLATFORMTHEME", "QT_STYLE_OVERRIDE", "QT_SCALE_FACTOR", "XDG_CURRENT_DESKTOP", "LANGUAGE", "LANG"})
            ::unsetenv(name);
        ::setenv("LC_ALL", "C.UTF-8", 1);
        ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    }

    TempFolder m_home;
    char m_name[8] = "vellumo";
    char* m_arguments[2] = {m_name, nullptr};
    int m_argumentCount = 1; // referred to as long as the application lives
    std::unique_ptr<QApplication> m_application;
};

inline testing::Environment* const qtApplication = testing::AddGlobalTestEnvironment(new QtApplication);

// Turns the event loop until the condition holds; false when it does not within the time.
template <typename Condition> [[nodiscard]] bool eventually(Condition condition, int patienceMs = 20000)
{
    return QTest::qWaitFor(condition, patienceMs);
}

// A widget by its object name; the test fails hard where there is none.
template <typename Widget> Widget& child(const QWidget& parent, const char* name)
{
    auto* found = parent.findChild<Widget*>(name);
    if (found == nullptr) {
        ADD_FAILURE() << "no widget " << name;
        std::abort();
    }
    return *found;
}

} // namespace vellumo::test
