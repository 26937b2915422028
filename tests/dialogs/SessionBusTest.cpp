// SPDX-License-Identifier: MIT
#include "desktop/appearance/Appearance.h"
#include "desktop/ports/QtWorkspace.h"
#include "support/ExportFakes.h"
#include "support/QtApplication.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QMutex>
#include <QProcess>
#include <QStandardPaths>
#include <QThread>

namespace vellumo {
namespace {

using namespace test;

constexpr auto portalPath = "/org/freedesktop/portal/desktop";
constexpr auto fileManagerPath = "/org/freedesktop/FileManager1";

// A desktop service that notes what it is asked, and tells the colour scheme as the portal's older method does.
class Service : public QDBusVirtualObject {
public:
    explicit Service(uint scheme)
        : m_scheme(scheme)
    {
    }
    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override
    {
        QVariantList answer;
        if (message.member() == "Read")
            answer << QVariant::fromValue(QDBusVariant(QVariant::fromValue(QDBusVariant(m_scheme))));
        const QMutexLocker lock(&m_mutex);
        m_calls << message.interface() + "." + message.member();
        for (const auto& argument : message.arguments())
            m_calls.last() += " " + argument.toStringList().join(',');
        return connection.send(message.createReply(answer));
    }
    QStringList calls()
    {
        const QMutexLocker lock(&m_mutex);
        return m_calls;
    }

private:
    const uint m_scheme;
    QMutex m_mutex;
    QStringList m_calls;
};

// A session bus of its own. Services answer from a thread of theirs, as other programs would.
class SessionBus : public testing::Test {
protected:
    void SetUp() override
    {
        if (QStandardPaths::findExecutable("dbus-daemon").isEmpty()) GTEST_SKIP() << "no dbus-daemon";
        if (address().isEmpty()) startDaemon();
        m_thread.start();
    }
    void TearDown() override
    {
        QDBusConnection::disconnectFromBus("services");
        m_thread.quit();
        m_thread.wait();
        QApplication::setPalette(QPalette());
    }

    QDBusConnection serve(Service& service, const char* name, const char* path, bool isOnMainThread = false)
    {
        auto connection = QDBusConnection::connectToBus(address(), "services");
        if (!isOnMainThread) service.moveToThread(&m_thread);
        EXPECT_TRUE(connection.registerVirtualObject(path, &service));
        EXPECT_TRUE(connection.registerService(name));
        return connection;
    }

private:
    static QString& address()
    {
        static QString theAddress;
        return theAddress;
    }

    // Once for the program: its connection to the session bus cannot be made anew. Killed with the application.
    static void startDaemon()
    {
        auto* daemon = new QProcess(qApp);
        daemon->start("dbus-daemon", {"--session", "--nofork", "--nopidfile", "--print-address=1"});
        ASSERT_TRUE(eventually([&] { return daemon->canReadLine(); }));
        address() = QString::fromUtf8(daemon->readLine()).trimmed();
        qputenv("DBUS_SESSION_BUS_ADDRESS", address().toUtf8());
    }

    QThread m_thread;
};

bool windowIsDark() { return QApplication::palette().color(QPalette::Window).lightness() < 128; }

TEST_F(SessionBus, TheFirstWindowHasTheColoursOfThePortal)
{
    Service portal(1);
    auto services = serve(portal, "org.freedesktop.portal.Desktop", portalPath);
    FakeDefaults defaults;
    Appearance appearance(defaults);
    EXPECT_TRUE(windowIsDark());

    auto changed = QDBusMessage::createSignal(portalPath, "org.freedesktop.portal.Settings", "SettingChanged");
    changed << "org.freedesktop.appearance"
            << "color-scheme" << QVariant::fromValue(QDBusVariant(2U));
    services.send(changed);
    EXPECT_TRUE(eventually([] { return !windowIsDark(); }));
}

TEST_F(SessionBus, APortalThatAnswersLateIsHeardAsWell)
{
    Service portal(1);
    const auto services = serve(portal, "org.freedesktop.portal.Desktop", portalPath, true);
    FakeDefaults defaults;
    Appearance appearance(defaults);
    EXPECT_FALSE(windowIsDark()); // it could not answer while the main thread waited
    EXPECT_TRUE(eventually([] { return windowIsDark(); }));
}

TEST_F(SessionBus, TheFileManagerIsAskedToShowTheFile)
{
    Service fileManager(0);
    const auto services = serve(fileManager, "org.freedesktop.FileManager1", fileManagerPath);
    QtWorkspace().revealFile("/data/Größe 100%.mdb");
    EXPECT_TRUE(eventually([&] { return !fileManager.calls().isEmpty(); }));
    EXPECT_EQ(fileManager.calls(),
        QStringList{"org.freedesktop.FileManager1.ShowItems file:///data/Gr%C3%B6%C3%9Fe%20100%25.mdb "});
}

} // namespace
} // namespace vellumo
