#include "export/OutputFile.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace vellumo {
namespace {

using test::TempFolder;

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

TEST(OutputFile, ReplacesWhatWasThere)
{
    TempFolder folder;
    folder.write("a", "longer than before");
    OutputFile file;
    ASSERT_TRUE(file.open(folder.path("a")));
    file.write("new");
    EXPECT_TRUE(file.close());
    EXPECT_EQ(folder.read("a"), "new");
    // The same object again, for another file.
    ASSERT_TRUE(file.open(folder.path("b")));
    EXPECT_TRUE(file.close());
    EXPECT_EQ(folder.read("b"), "");
    EXPECT_EQ(folder.read("a"), "new");
}

TEST(OutputFile, LeavesNothingWhenItIsNotClosed)
{
    TempFolder folder;
    {
        OutputFile file;
        ASSERT_TRUE(file.open(folder.path("a")));
        file.write(std::string(1 << 20, 'x'));
    }
    EXPECT_FALSE(folder.exists("a"));
}

TEST(OutputFile, DiscardKeepsALinkAndEmptiesWhatItLeadsTo)
{
    TempFolder folder;
    folder.write("real", "old");
    std::filesystem::create_symlink(folder.path("real"), folder.path("link"));
    OutputFile file;
    ASSERT_TRUE(file.open(folder.path("link")));
    file.write(std::string(1 << 20, 'x'));
    file.discard();
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path("link")));
    EXPECT_EQ(folder.read("real"), "");
}

TEST(OutputFile, DiscardKeepsAFileThatTookThePlace)
{
    TempFolder folder;
    OutputFile file;
    ASSERT_TRUE(file.open(folder.path("a")));
    std::filesystem::rename(folder.path("a"), folder.path("b"));
    folder.write("a", "someone else's");
    file.discard();
    EXPECT_EQ(folder.read("a"), "someone else's");
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

} // namespace
} // namespace vellumo
