// SPDX-License-Identifier: MIT
#include "adapters/LockFile.h"

#include "adapters/Files.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

namespace vellumo {
namespace {

using namespace test;
constexpr std::chrono::milliseconds once{0};

std::string thisHost()
{
    char name[256] = {};
    gethostname(name, sizeof name - 1);
    return name;
}

// The number of a process that has ended.
std::string goneProcess()
{
    const auto child = fork();
    if (child == 0) _exit(0);
    waitpid(child, nullptr, 0);
    return std::to_string(child);
}

TEST(LockFile, KeepsOthersOutUntilUnlocked)
{
    const TempFolder folder;
    const auto path = folder.path("list.lock");
    LockFile first(path);
    LockFile second(path);
    EXPECT_TRUE(first.tryLock(once));
    EXPECT_TRUE(readFile(path).starts_with(std::to_string(getpid()) + "\nadapters_tests\n" + thisHost() + "\n"));
    EXPECT_FALSE(second.tryLock(once));
    first.unlock();
    EXPECT_FALSE(std::filesystem::exists(path));
    EXPECT_TRUE(second.tryLock(once));
    EXPECT_FALSE(LockFile(folder.path("missing/list.lock")).tryLock(once));
}

TEST(LockFile, TakesOverWhatADeadProcessLeft)
{
    const auto host = thisHost();
    const auto self = std::to_string(getpid());
    const struct {
        const char* name;
        std::string content;
        bool isTaken;
    } cases[] = {
        {"process is gone", goneProcess() + "\nother\n" + host + "\n", true},
        {"process is gone, owner told in full", goneProcess() + "\nother\n" + host + "\nid\n\n", true},
        {"process runs another program", self + "\nother\n" + host + "\n", true},
        {"earlier start of the machine", self + "\nadapters_tests\n" + host + "\nid\nanother-boot\n", true},
        {"process runs", self + "\nadapters_tests\n" + host + "\n", false},
        {"another machine's", goneProcess() + "\nother\nelsewhere." + host + "\n", false},
        {"no owner", "", false},
        {"no number", "x\nother\n" + host + "\nid\nanother-boot\n", false},
        {"a number below one", "-1\nother\n" + host + "\n", false},
        {"cut short", goneProcess() + "\nother", false},
    };
    for (const auto& test : cases) {
        const TempFolder folder;
        const auto path = folder.path("list.lock");
        folder.write("list.lock", test.content);
        LockFile lock(path);
        EXPECT_EQ(lock.tryLock(once), test.isTaken) << test.name;
        EXPECT_EQ(readFile(path) == test.content, !test.isTaken) << test.name;
        EXPECT_FALSE(std::filesystem::exists(path + ".rmlock")) << test.name;
    }
}

} // namespace
} // namespace vellumo
