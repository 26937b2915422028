// SPDX-License-Identifier: MIT
#include "cli/SecretLine.h"

#include "cli/ConsoleOutput.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <poll.h>
#include <sys/signalfd.h>
#include <termios.h>
#include <unistd.h>

namespace vellumo {

namespace {

// While this lives, the signals that end or stop a program wait, and can be seen to wait.
class WaitingSignals {
public:
    WaitingSignals()
    {
        sigset_t signals;
        ::sigemptyset(&signals);
        for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGTSTP})
            ::sigaddset(&signals, signal);
        ::pthread_sigmask(SIG_BLOCK, &signals, &m_before);
        m_descriptor = ::signalfd(-1, &signals, SFD_CLOEXEC);
    }
    // They come now.
    ~WaitingSignals()
    {
        if (m_descriptor >= 0) ::close(m_descriptor);
        ::pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
    }
    WaitingSignals(const WaitingSignals&) = delete;
    WaitingSignals& operator=(const WaitingSignals&) = delete;

    // Readable when one waits; negative when that cannot be told.
    [[nodiscard]] int descriptor() const { return m_descriptor; }

private:
    sigset_t m_before{};
    int m_descriptor = -1;
};

class HiddenTyping {
public:
    explicit HiddenTyping(int terminal)
        : m_terminal(terminal)
    {
        m_isHidden = ::tcgetattr(m_terminal, &m_before) == 0;
        if (!m_isHidden) return;
        auto hidden = m_before;
        hidden.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        hidden.c_lflag |= ECHONL;
        m_isHidden = ::tcsetattr(m_terminal, TCSADRAIN, &hidden) == 0;
    }
    ~HiddenTyping()
    {
        if (m_isHidden) ::tcsetattr(m_terminal, TCSADRAIN, &m_before);
    }
    HiddenTyping(const HiddenTyping&) = delete;
    HiddenTyping& operator=(const HiddenTyping&) = delete;

    [[nodiscard]] bool isHidden() const { return m_isHidden; }

private:
    int m_terminal;
    termios m_before{};
    bool m_isHidden = false;
};

enum class Event { Typed, Signal, Failure };

Event nextEvent(int terminal, const WaitingSignals& signals)
{
    std::array<pollfd, 2> waited{pollfd{signals.descriptor(), POLLIN, 0}, pollfd{terminal, POLLIN, 0}};
    while (::poll(waited.data(), waited.size(), -1) < 0)
        if (errno != EINTR) return Event::Failure;
    return (waited[0].revents & POLLIN) != 0 ? Event::Signal : Event::Typed;
}

// Adds what is typed until the line ends, or a signal waits.
Event takeLine(int terminal, const WaitingSignals& signals, std::size_t mostBytes, std::string& line)
{
    for (;;) {
        if (const auto event = nextEvent(terminal, signals); event != Event::Typed) return event;
        char c = 0;
        const auto count = ::read(terminal, &c, 1);
        if (count < 0) return Event::Failure;
        if (count == 0 || c == '\n') return Event::Typed;
        if (line.size() <= mostBytes) line += c;
    }
}

} // namespace

std::optional<std::string> readSecretLine(int terminal, std::string_view prompt, std::size_t mostBytes)
{
    while (!interrupted()) {
        std::string line;
        const WaitingSignals signals;
        const HiddenTyping hidden(terminal); // goes before the signals come
        if (signals.descriptor() < 0 || !hidden.isHidden()) return std::nullopt;
        std::fprintf(stderr, "%.*s ", static_cast<int>(prompt.size()), prompt.data());
        const auto event = takeLine(terminal, signals, mostBytes, line);
        if (event == Event::Typed) return line;
        std::fputc('\n', stderr);
        if (event == Event::Failure) return std::nullopt;
    }
    return std::nullopt;
}

} // namespace vellumo
