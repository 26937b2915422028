// SPDX-License-Identifier: MIT
#pragma once

#include <QLocalServer>
#include <QObject>

#include <functional>
#include <string>
#include <vector>

namespace vellumo {

// One running program per user and display. A second start hands its files to the first over a socket that belongs to
// the user alone, and ends. Needs no desktop service. A message is the paths, each ended by a NUL byte (a path holds
// none); the answer is one byte.
class RunningInstance : public QObject {
public:
    using Receive = std::function<void(const std::vector<std::string>&)>;

    // `socketPath`: in a folder that is the user's own.
    explicit RunningInstance(QString socketPath);

    // Hands the files (perhaps none) to the program that runs already. False when there is none, or when it does not
    // answer: then this one has to go on.
    [[nodiscard]] bool handOver(const std::vector<std::string>& paths) const;
    // AnotherRuns: it has begun to listen since this one looked. Impossible: the socket cannot be made; the program
    // then works on its own.
    enum class Listening { Begun, AnotherRuns, Impossible };
    // From now on this is the running program. A socket that a dead one left behind is replaced.
    [[nodiscard]] Listening listen();
    // Takes what other starts hand over, also what has waited since `listen`. `receive` is called from the event loop,
    // and may run another.
    void receive(Receive receive);

private:
    void answer();

    QString m_socketPath;
    QLocalServer m_server;
    Receive m_receive;
};

// Below $XDG_RUNTIME_DIR, or below the temporary folder in a folder of mode 0700; one a display. "" when there is no
// such place.
[[nodiscard]] QString userSocketPath();

} // namespace vellumo
