// SPDX-License-Identifier: MIT
#include "cli/ProgressBar.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace vellumo {
namespace {

TEST(ProgressBar, LineFitsTheWidth)
{
    const struct {
        const char* name;
        const char* label;
        std::uint64_t done;
        std::uint64_t total;
        std::size_t width;
        const char* line;
    } cases[] = {
        {"nothing done", "Opening", 0, 10, 35, "Opening [                    ]   0%"},
        {"half", "Opening", 5, 10, 35, "Opening [##########          ]  50%"},
        {"all", "Opening", 10, 10, 35, "Opening [####################] 100%"},
        {"more than expected", "Opening", 11, 10, 35, "Opening [####################] 100%"},
        {"nothing expected", "Opening", 3, 0, 35, "Opening [                    ]   0%"},
        {"no more than 40 columns of bar", "A", 1, 1, 99, "A [########################################] 100%"},
        {"the shortest bar", "Opening", 1, 1, 25, "Opening [##########] 100%"},
        {"no room for a label", "Opening", 1, 1, 18, " [##########] 100%"},
        {"label cut between characters", "\u00C4\u00D6\u00DC\u00E4\u00F6\u00FC", 1, 1, 20,
            "\u00C4\u00D6 [##########] 100%"},
        {"control characters", "a\033\nb", 1, 1, 31, "a\\u{1B}\\u{A}b [##########] 100%"},
        {"no room for a bar", "Opening", 1, 2, 17, " 50%"},
        {"no room for a number", "Opening", 1, 2, 2, " 5"},
        {"no room", "Opening", 1, 2, 0, ""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(progressLine(c.label, c.done, c.total, c.width), c.line) << c.name;
}

TEST(ProgressBar, OutlivesItsTerminal)
{
    const int window = ::posix_openpt(O_RDWR | O_NOCTTY);
    if (window < 0 || ::grantpt(window) != 0 || ::unlockpt(window) != 0) GTEST_SKIP() << "no terminals here";
    const int terminal = ::open(::ptsname(window), O_RDWR | O_NOCTTY);
    ASSERT_GE(terminal, 0);
    const int errors = ::dup(STDERR_FILENO);
    ::dup2(terminal, STDERR_FILENO);
    ::close(terminal);
    EXPECT_NO_THROW({
        ProgressBar bar("Opening");
        bar.show(1, 2);
        ::close(window);
        bar.show(2, 2);
    });
    ::dup2(errors, STDERR_FILENO);
    ::close(errors);
}

} // namespace
} // namespace vellumo
