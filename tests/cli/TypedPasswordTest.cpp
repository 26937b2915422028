// SPDX-License-Identifier: MIT
#include "Program.h"

#include <gmock/gmock.h>

#include <csignal>
#include <pty.h>
#include <sys/resource.h>
#include <termios.h>

namespace vellumo {
namespace {

using test::Program;
using ::testing::HasSubstr;
using ::testing::Not;

// A terminal that a program reads from: the other end of it is ours.
class Terminal {
public:
    Terminal() { EXPECT_EQ(::openpty(&m_ours, &m_theirs, nullptr, nullptr, nullptr), 0); }
    ~Terminal()
    {
        ::close(m_ours);
        ::close(m_theirs);
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    [[nodiscard]] int theirs() const { return m_theirs; }
    [[nodiscard]] bool showsTyping() const
    {
        termios settings{};
        return ::tcgetattr(m_theirs, &settings) == 0 && (settings.c_lflag & ECHO) != 0;
    }
    [[nodiscard]] bool hidesTypingSoon() const
    {
        for (int tries = 0; showsTyping(); ++tries) {
            if (tries == 10'000) return false;
            ::usleep(1000);
        }
        return true;
    }
    void type(std::string_view text) const { EXPECT_EQ(::write(m_ours, text.data(), text.size()), std::ssize(text)); }
    [[nodiscard]] std::string shown() const
    {
        std::string text(1000, '\0');
        ::fcntl(m_ours, F_SETFL, O_NONBLOCK);
        text.resize(static_cast<std::size_t>(std::max<ssize_t>(::read(m_ours, text.data(), text.size()), 0)));
        return text;
    }

private:
    int m_ours = -1;
    int m_theirs = -1;
};

TEST_F(Program, ATypedPasswordIsNotShown)
{
    const struct {
        const char* typed;
        int signal;
        int status;
        const char* error;
    } cases[] = {
        {"Sesam\n", 0, 0, "Password: "},
        {"sesam\n", 0, 1, "the password is wrong"},
        {"Sesam", SIGINT, 1, "Interrupted."},
        {"Sesam", SIGTERM, 1, "Interrupted."},
        {"", SIGQUIT, -1, "Password: "},
    };
    for (const auto& c : cases) {
        const Terminal terminal;
        const auto program =
            start({"check", s_folder->path("Locked.accdb"), "--newer-formats", "--password-file=-"}, "", [&] {
                constexpr rlimit none{0, 0};
                ::setrlimit(RLIMIT_CORE, &none);
                ::dup2(terminal.theirs(), STDIN_FILENO);
            });
        ASSERT_TRUE(terminal.hidesTypingSoon());
        terminal.type(c.typed);
        if (c.signal != 0) ::kill(program.process(), c.signal);
        const auto result = program.wait();
        EXPECT_EQ(result.status, c.status) << result.err;
        EXPECT_THAT(result.err, HasSubstr(c.error));
        EXPECT_TRUE(terminal.showsTyping());
        EXPECT_THAT(terminal.shown(), Not(HasSubstr("esam")));
    }
}

} // namespace
} // namespace vellumo
