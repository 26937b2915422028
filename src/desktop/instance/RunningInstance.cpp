// SPDX-License-Identifier: MIT
#include "desktop/instance/RunningInstance.h"

#include "desktop/QtText.h"

#include <QDir>
#include <QLocalSocket>
#include <QLockFile>
#include <QSharedPointer>

#include <cstdlib>
#include <sys/stat.h>
#include <unistd.h>

namespace vellumo {

namespace {

constexpr int patienceMs = 3000;              // for a program that is busy; opening a file lets it answer in between
constexpr qsizetype longestMessage = 1 << 20; // bytes; no start hands over as much
constexpr char accepted = '+';

// A folder of mode 0700 that is ours; "" when somebody else got there first.
QString privateFolder(const QString& path)
{
    const auto name = QFile::encodeName(path);
    ::mkdir(name.constData(), S_IRWXU); // it may be there already
    struct stat facts { };
    const auto isOurs = ::lstat(name.constData(), &facts) == 0 && S_ISDIR(facts.st_mode) && facts.st_uid == ::getuid()
        && (facts.st_mode & (S_IRWXG | S_IRWXO)) == 0;
    return isOurs ? path : QString();
}

QString runtimeFolder()
{
    const auto folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (!folder.isEmpty()) return privateFolder(folder + "/vellumo");
    return privateFolder(QDir::tempPath() + "/vellumo-" + QString::number(::getuid()));
}

QByteArray messageOf(const std::vector<std::string>& paths)
{
    QByteArray message;
    for (const auto& path : paths)
        message.append(path.c_str(), static_cast<qsizetype>(path.size()) + 1);
    message.append('\0'); // an empty path ends the message
    return message;
}

// Every path is ended by a NUL byte, and so is the empty one at the end.
bool isComplete(const QByteArray& message)
{
    return message == QByteArray(1, '\0') || message.endsWith(QByteArray(2, '\0'));
}

std::vector<std::string> pathsOf(const QByteArray& message)
{
    std::vector<std::string> paths;
    for (const auto& path : message.split('\0'))
        if (!path.isEmpty()) paths.push_back(path.toStdString());
    return paths;
}

} // namespace

RunningInstance::RunningInstance(QString socketPath)
    : m_socketPath(std::move(socketPath))
{
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&m_server, &QLocalServer::newConnection, this, &RunningInstance::answer);
}

bool RunningInstance::handOver(const std::vector<std::string>& paths) const
{
    if (m_socketPath.isEmpty()) return false;
    QLocalSocket socket;
    socket.connectToServer(m_socketPath);
    if (!socket.waitForConnected(patienceMs)) return false;
    socket.write(messageOf(paths));
    char answer = 0;
    return socket.waitForBytesWritten(patienceMs) && socket.waitForReadyRead(patienceMs) && socket.getChar(&answer)
        && answer == accepted;
}

RunningInstance::Listening RunningInstance::listen()
{
    using enum Listening;
    if (m_socketPath.isEmpty()) return Impossible;
    // Of two programs that start at once, one makes the socket and the other finds it.
    QLockFile lock(m_socketPath + ".lock");
    if (!lock.tryLock(patienceMs)) return Impossible;
    QLocalSocket probe;
    probe.connectToServer(m_socketPath);
    if (probe.waitForConnected(patienceMs)) return AnotherRuns;
    QLocalServer::removeServer(m_socketPath);
    return m_server.listen(m_socketPath) ? Begun : Impossible;
}

void RunningInstance::receive(Receive receive)
{
    m_receive = std::move(receive);
    answer();
}

void RunningInstance::answer()
{
    // Without an answer the other program waits.
    if (!m_receive) return;
    while (auto* socket = m_server.nextPendingConnection()) {
        socket->setParent(this);
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        const auto message = QSharedPointer<QByteArray>::create();
        const auto read = [this, socket, message] {
            *message += socket->readAll();
            if (message->size() > longestMessage) socket->abort();
            if (!isComplete(*message)) return;
            // What receives them may run the event loop, in which the socket goes: no longer inside its signal.
            const auto paths = pathsOf(std::exchange(*message, {}));
            QMetaObject::invokeMethod(
                this, [this, paths] { m_receive(paths); }, Qt::QueuedConnection);
            socket->putChar(accepted);
            socket->flush();
        };
        connect(socket, &QLocalSocket::readyRead, this, read);
        read(); // what has come already
    }
}

QString userSocketPath()
{
    const auto folder = runtimeFolder();
    if (folder.isEmpty()) return {};
    auto display = qEnvironmentVariable("WAYLAND_DISPLAY", qEnvironmentVariable("DISPLAY"));
    display.replace('/', '_');
    return folder + "/window-" + display;
}

} // namespace vellumo
