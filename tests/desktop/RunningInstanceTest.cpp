// SPDX-License-Identifier: MIT
#include "desktop/instance/RunningInstance.h"
#include "desktop/QtText.h"
#include "support/QtApplication.h"

#include <QApplication>
#include <QEventLoop>
#include <QLocalSocket>
#include <atomic>
#include <gmock/gmock.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>

namespace vellumo::test {

namespace {

using enum RunningInstance::Listening;

class RunningInstanceTest : public testing::Test {
protected:
    // What a second start on another thread is told, while this thread's event loop turns.
    bool handOver(const std::vector<std::string>& paths)
    {
        std::atomic<bool> isTaken = false;
        QEventLoop loop;
        std::thread second([&] {
            isTaken = RunningInstance(m_socketPath).handOver(paths);
            QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
        });
        loop.exec();
        second.join();
        return isTaken;
    }

    // What a killed program leaves: a socket that nobody listens to.
    void leaveStaleSocket() const
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        const auto path = fromQString(m_socketPath);
        ASSERT_LT(path.size(), sizeof address.sun_path);
        path.copy(address.sun_path, path.size());
        const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
        ASSERT_EQ(::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        ::close(socket);
    }

    TempFolder m_folder;
    QString m_socketPath = toQString(m_folder.path("window"));
    std::vector<std::vector<std::string>> m_received;
    RunningInstance::Receive m_receive = [this](const auto& paths) { m_received.push_back(paths); };
};

} // namespace

TEST_F(RunningInstanceTest, handsFilesToTheFirst)
{
    RunningInstance first(m_socketPath);
    EXPECT_FALSE(first.handOver({"/a.mdb"})); // nobody is there
    ASSERT_EQ(first.listen(), Begun);
    first.receive(m_receive);
    EXPECT_TRUE(handOver({"/with space/b.mdb", "/line\nbreak.mdb", "/ü.accdb"}));
    EXPECT_TRUE(handOver({}));
    const std::vector<std::string> files{"/with space/b.mdb", "/line\nbreak.mdb", "/ü.accdb"};
    EXPECT_THAT(m_received, testing::ElementsAre(files, std::vector<std::string>()));
    // Nobody but the user may connect.
    struct stat facts { };
    ASSERT_EQ(::stat(m_folder.path("window").c_str(), &facts), 0);
    EXPECT_EQ(facts.st_mode & (S_IRWXG | S_IRWXO), 0U);
}

TEST_F(RunningInstanceTest, replacesTheSocketOfADeadProgram)
{
    leaveStaleSocket();
    RunningInstance next(m_socketPath);
    EXPECT_FALSE(next.handOver({"/a.mdb"}));
    ASSERT_EQ(next.listen(), Begun);
    next.receive(m_receive);
    EXPECT_TRUE(handOver({"/b.mdb"}));
    EXPECT_EQ(m_received.size(), 1U);
}

TEST_F(RunningInstanceTest, leavesALivingOneAlone)
{
    RunningInstance first(m_socketPath);
    ASSERT_EQ(first.listen(), Begun);
    first.receive(m_receive);
    RunningInstance second(m_socketPath);
    EXPECT_EQ(second.listen(), AnotherRuns);
    EXPECT_TRUE(handOver({"/b.mdb"}));
    EXPECT_EQ(m_received.size(), 1U);
}

TEST_F(RunningInstanceTest, keepsWhatComesBeforeItCanReceive)
{
    RunningInstance first(m_socketPath);
    ASSERT_EQ(first.listen(), Begun);
    QLocalSocket early;
    early.connectToServer(m_socketPath);
    ASSERT_TRUE(early.waitForConnected());
    early.write("/a.mdb\0\0", 8);
    ASSERT_TRUE(early.waitForBytesWritten());
    QApplication::processEvents();
    EXPECT_EQ(early.bytesAvailable(), 0);
    first.receive(m_receive);
    EXPECT_TRUE(eventually([&] { return early.bytesAvailable() == 1 && !m_received.empty(); }));
    EXPECT_THAT(m_received, testing::ElementsAre(std::vector<std::string>{"/a.mdb"}));
}

// An alert about a file lets events through, the end of the connection among them.
TEST_F(RunningInstanceTest, maySeeTheOtherGoWhileItReceives)
{
    RunningInstance first(m_socketPath);
    ASSERT_EQ(first.listen(), Begun);
    first.receive([&](const auto& paths) {
        m_receive(paths);
        QEventLoop alert;
        auto* socket = first.findChild<QLocalSocket*>();
        if (socket == nullptr) return; // gone already
        QObject::connect(socket, &QObject::destroyed, &alert, &QEventLoop::quit);
        alert.exec();
    });
    EXPECT_TRUE(handOver({"/bad.mdb"}));
    EXPECT_TRUE(handOver({"/next.mdb"}));
    EXPECT_THAT(
        m_received, testing::ElementsAre(std::vector<std::string>{"/bad.mdb"}, std::vector<std::string>{"/next.mdb"}));
}

} // namespace vellumo::test
