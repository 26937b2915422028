// SPDX-License-Identifier: MIT
#include "export/files/OutputFile.h"
#include "support/TempFolder.h"

#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace vellumo {
namespace {

using test::TempFolder;
using testing::ElementsAre;

TEST(OutputFile, WritesPiecesOfAnySizeInOrder)
{
    constexpr std::size_t buffer = std::size_t{256} << 10;
    TempFolder folder;
    std::string expected;
    OutputFile file;
    ASSERT_TRUE(file.open(folder.path("a")));
    char letter = 'a';
    for (const std::size_t size :
        {buffer - 1, std::size_t{1}, std::size_t{1}, buffer, buffer + 1, std::size_t{0}, 3 * buffer, std::size_t{5}}) {
        const std::string piece(size, letter++);
        file.write(piece);
        expected += piece;
    }
    EXPECT_TRUE(file.close());
    EXPECT_EQ(folder.read("a"), expected);
}

// What a file with content that came before is like at each moment, and what lies in its folder.
TEST(OutputFile, TakesItsNameWhenItIsWhole)
{
    namespace fs = std::filesystem;
    const struct {
        const char* name;
        bool isLink;
        bool isClosed;
        const char* result;
    } cases[] = {{"whole", false, true, "new"}, {"whole, behind a link", true, true, "new"},
        {"discarded", false, false, "old, and longer"}, {"discarded, behind a link", true, false, "old, and longer"}};
    for (const auto& test : cases) {
        TempFolder folder;
        folder.write("a", "old, and longer");
        folder.write("a.part", "of somebody else");
        fs::permissions(folder.path("a"), fs::perms(0640));
        const TempFolder links;
        fs::create_symlink(folder.path("a"), links.path("link"));
        OutputFile file;
        ASSERT_TRUE(file.open(test.isLink ? links.path("link") : folder.path("a"))) << test.name;
        file.write("new");
        EXPECT_EQ(folder.read("a"), "old, and longer") << test.name;
        if (test.isClosed)
            EXPECT_TRUE(file.close()) << test.name;
        else
            file.discard();
        EXPECT_EQ(folder.read("a"), test.result) << test.name;
        EXPECT_THAT(folder.names(), ElementsAre("a", "a.part")) << test.name;
        EXPECT_EQ(folder.read("a.part"), "of somebody else") << test.name;
        EXPECT_TRUE(fs::is_symlink(links.path("link"))) << test.name;
        EXPECT_EQ(fs::status(folder.path("a")).permissions(), fs::perms(0640)) << test.name;
    }
}

TEST(OutputFile, LeavesNothingWhenItIsNotClosed)
{
    TempFolder folder;
    {
        OutputFile file;
        ASSERT_TRUE(file.open(folder.path("a")));
        file.write(std::string(1 << 20, 'x'));
        EXPECT_THAT(folder.names(), ElementsAre(testing::MatchesRegex("a\\.[0-9a-f]+\\.part")));
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

TEST(OutputFile, TellsThatItsNameCouldNotBeTaken)
{
    TempFolder folder;
    OutputFile file;
    ASSERT_TRUE(file.open(folder.path("a")));
    file.write("new");
    std::filesystem::create_directory(folder.path("a"));
    EXPECT_FALSE(file.close());
    EXPECT_EQ(file.error(), EISDIR);
    EXPECT_THAT(folder.names(), ElementsAre("a"));
}

TEST(OutputFile, TwoProgramsDoNotMixTheirBytes)
{
    TempFolder folder;
    OutputFile first;
    OutputFile second;
    ASSERT_TRUE(first.open(folder.path("a")) && second.open(folder.path("a")));
    first.write("of the first");
    second.write("half");
    EXPECT_TRUE(first.close());
    EXPECT_EQ(folder.read("a"), "of the first");
    second.discard();
    EXPECT_EQ(folder.read("a"), "of the first");
    EXPECT_THAT(folder.names(), ElementsAre("a"));
}

TEST(OutputFile, LongestName)
{
    const std::string name(NAME_MAX, 'n');
    TempFolder folder;
    OutputFile file;
    ASSERT_TRUE(file.open(folder.path(name)));
    file.write("new");
    EXPECT_FALSE(folder.exists(name));
    EXPECT_TRUE(file.close());
    EXPECT_EQ(folder.read(name), "new");
}

// A link that leads nowhere stays one.
TEST(OutputFile, WritesInPlaceWhatCannotBeReplaced)
{
    TempFolder folder;
    std::filesystem::create_symlink(folder.path("real"), folder.path("link"));
    OutputFile file;
    for (const bool isClosed : {false, true}) {
        ASSERT_TRUE(file.open(folder.path("link")));
        file.write("new");
        if (isClosed)
            EXPECT_TRUE(file.close());
        else
            file.discard();
        EXPECT_EQ(folder.read("real"), isClosed ? "new" : "");
        EXPECT_TRUE(std::filesystem::is_symlink(folder.path("link")));
        std::filesystem::remove(folder.path("real"));
    }
}

// Written in place it would be lost with the first error.
TEST(OutputFile, LeavesAFileThatItsFolderKeepsFromUs)
{
    constexpr uid_t nobody = 65'534;
    TempFolder folder;
    std::filesystem::create_directory(folder.path("kept"));
    folder.write("kept/a", "older");
    std::filesystem::permissions(folder.path(), std::filesystem::perms(0755));
    std::filesystem::permissions(folder.path("kept/a"), std::filesystem::perms(0666));
    std::filesystem::permissions(folder.path("kept"), std::filesystem::perms(0555));
    const bool isRoot = ::geteuid() == 0;
    if (isRoot && ::seteuid(nobody) != 0) GTEST_SKIP() << "root must not become another user";
    OutputFile file;
    const bool isOpen = file.open(folder.path("kept/a"));
    const int error = file.error();
    file.discard();
    ASSERT_TRUE(!isRoot || ::seteuid(0) == 0);
    std::filesystem::permissions(folder.path("kept"), std::filesystem::perms(0755));
    EXPECT_FALSE(isOpen);
    EXPECT_EQ(error, EACCES);
    EXPECT_EQ(folder.read("kept/a"), "older");
}

TEST(OutputFile, ErrorsStickUntilTheNextFile)
{
    if (!std::filesystem::exists("/dev/full")) GTEST_SKIP();
    TempFolder folder;
    OutputFile file;
    ASSERT_TRUE(file.open("/dev/full"));
    file.write(std::string(1 << 20, 'x'));
    EXPECT_TRUE(file.failed());
    file.write("more");
    EXPECT_FALSE(file.close());
    ASSERT_TRUE(file.open(folder.path("a")));
    EXPECT_FALSE(file.failed());
    EXPECT_TRUE(file.close());
    EXPECT_FALSE(file.open(folder.path("missing/a")));
}

// What stood in the file before is none of the output's.
TEST(OutputFile, StandardOutputIsWrittenWhereItStands)
{
    test::TempFolder folder;
    folder.write("out", "before\n");
    const int standardOutput = ::dup(STDOUT_FILENO);
    const int appended = ::open(folder.path("out").c_str(), O_WRONLY | O_APPEND | O_CLOEXEC);
    ASSERT_GE(::dup2(appended, STDOUT_FILENO), 0);
    OutputFile file;
    bool isOpen = file.open(std::string(standardOutputPath));
    file.write(std::string(1 << 20, 'x')); // through all buffers
    file.discard();
    isOpen = isOpen && file.open(std::string(standardOutputPath));
    file.write("after");
    const bool isClosed = file.close();
    ::dup2(standardOutput, STDOUT_FILENO);
    for (const int descriptor : {standardOutput, appended})
        ::close(descriptor);
    EXPECT_TRUE(isOpen && isClosed);
    EXPECT_EQ(folder.read("out"), "before\nafter");
}

} // namespace
} // namespace vellumo
