// SPDX-License-Identifier: MIT
#include "embedded/CompoundFileWriter.h"
#include "embedded/OleCells.h"
#include "embedded/OleField.h"
#include "embedded/cfb/Stream.h"

#include <gtest/gtest.h>

namespace vellumo {
namespace {

using namespace testing;

// Bytes that differ from block to block.
Buffer pattern(std::size_t size)
{
    Buffer bytes(size);
    for (std::size_t i = 0; i < size; ++i)
        bytes[i] = static_cast<std::byte>(i * 7 + i / 251);
    return bytes;
}

// What extractOleStream gives: its status, and its bytes after 0.
struct Extracted {
    int status = -1;
    Buffer bytes{};
    bool operator==(const Extracted&) const = default;
};

Extracted extract(Bytes file, const char* name)
{
    Extracted result;
    result.status = extractOleStream(file, name, result.bytes);
    return result;
}

TEST(CompoundFile, ReadsStreamsOfAnySizeInBlocksOfAnySize)
{
    for (const unsigned bigShift : {7U, 8U, 9U, 12U, 15U})
        for (const unsigned smallShift : {0U, 6U, 7U})
            for (const std::size_t size : {0, 1, 63, 64, 65, 4095, 4096, 4097, 100000}) {
                const auto content = pattern(size);
                const auto neighbour = bytesOf("the other one");
                const auto file = writeCompoundFile({bigShift, smallShift, {{"a", neighbour}, {"b", content}}});
                EXPECT_EQ(extract(file.bytes, "b"), (Extracted{0, content}))
                    << bigShift << ' ' << smallShift << ' ' << size;
                EXPECT_EQ(extract(file.bytes, "a"), (Extracted{0, neighbour}));
            }
}

TEST(CompoundFile, FindsTableBlocksBeyondTheHeader)
{
    // Blocks of 128 bytes hold 32 links, and extension blocks list 31 table blocks. The header covers 3 blocks and the
    // directory has 2: 109 tables have links for 3488 = 3 + 2 + 109 + 3374 blocks.
    const struct {
        const char* name;
        std::size_t dataBlocks;
        std::size_t tableBlocks;
    } cases[] = {
        {"the last that the header lists", 3374, 109},
        {"one more", 3375, 110},
        {"the last of one extension block", 4334, 140},
        {"the first of two", 4335, 141},
    };
    for (const auto& test : cases) {
        const auto content = pattern(test.dataBlocks * 128);
        const auto file = writeCompoundFile({7, 6, {{"Contents", content}}});
        ASSERT_EQ(file.tableBlockCount(), test.tableBlocks) << test.name;
        EXPECT_EQ(extract(file.bytes, "Contents"), (Extracted{0, content})) << test.name;
    }
}

TEST(CompoundFile, LooksUpPaths)
{
    const auto content = bytesOf("x");
    const auto file = writeCompoundFile({9, 6,
        {{"Contents", content}, {"\5SummaryInformation", content}, {"\1\2Two", content}, {"Folder/Inner", content},
            {"\1", content}}});
    for (const auto* path : {"Contents", "SummaryInformation", "\2Two", "Folder/Inner", "/Folder/Inner"})
        EXPECT_EQ(extract(file.bytes, path).status, 0) << path;
    for (const auto* path : {"contents", "Content", "Contents2", "Contents/Inner", "\5SummaryInformation", "Folder",
             "Inner", "Folder/Contents", "Root Entry", ""})
        EXPECT_EQ(extract(file.bytes, path).status, 2) << path;
}

TEST(CompoundFile, StreamMovesLikeAFile)
{
    const auto file = writeCompoundFile({9, 6, {{"Contents", pattern(5000)}}});
    cfb::Storage storage(file.bytes);
    EXPECT_EQ(storage.result(), cfb::StorageResult::Closed);
    storage.open();
    cfb::Stream stream(storage, "Contents");
    storage.close();
    EXPECT_TRUE(cfb::Stream(storage, "Contents").fail()) << "closed again";

    Buffer buffer(600);
    stream.seek(500);
    EXPECT_EQ(stream.read(buffer), 600U);
    EXPECT_TRUE(std::equal(buffer.begin(), buffer.end(), pattern(5000).begin() + 500));
    stream.seek(4999);
    EXPECT_FALSE(stream.eof());
    EXPECT_EQ(stream.getch(), std::to_integer<int>(pattern(5000)[4999]));
    EXPECT_TRUE(stream.eof());
    EXPECT_EQ(stream.getch(), -1);
    stream.seek(9000);
    EXPECT_EQ(stream.read(buffer), 0U);
    EXPECT_EQ(stream.tell(), 9000U);
}

// Every row damages a good file that holds a stream of 12 big blocks, "Big", and one of 4 small blocks, "Small".
TEST(CompoundFile, SurvivesDamage)
{
    constexpr std::uint32_t end = 0xFFFFFFFE;
    constexpr std::uint32_t outside = 0x7FFFFFF0;
    const auto big = pattern(6000);
    const auto small = pattern(250);
    const auto good = writeCompoundFile({9, 6, {{"Big", big}, {"Small", small}, {"Last", small}}});
    const auto firstBig = good.firstBlockOf(1);
    const auto firstSmall = good.firstBlockOf(2);
    const struct {
        const char* name;
        Change damage;
        int bigStatus;
        int smallStatus;
    } cases[] = {
        {"none", [](Buffer&) {}, 0, 0},
        {"signature", set16(0, 0), 1, 1},
        {"shorter than a header", resizeTo(511), 1, 1},
        {"header alone", resizeTo(512), 1, 1},
        {"threshold of 4095", set32(56, 4095), 1, 1},
        {"no table blocks", set32(44, 0), 1, 1},
        {"extension blocks without need", set32(72, 1), 1, 1},
        {"small blocks larger than big ones", set16(32, 10), 1, 1},
        {"big shift of 6", set16(30, 6), 1, 1},
        {"big shift of 31", set16(30, 31), 1, 1},
        {"big shift of 30", set16(30, 30), 1, 1},
        {"big shift of 265", set16(30, 265), 1, 1},
        {"more table blocks than there are", set32(44, 2), 1, 1},
        {"2^32-1 table blocks", set32(44, 0xFFFFFFFF), 1, 1},
        {"table block outside the file", set32(76, outside), 1, 1},
        {"directory outside the table", set32(48, outside), 1, 1},
        {"directory chain loops", set32(good.offsetOfLink(good.directoryBlock()), good.directoryBlock()), 0, 0},
        {"root is a stream", set16(good.offsetOfEntry(0) + 66, 2), 1, 1},
        {"root of an unknown type", set16(good.offsetOfEntry(0) + 66, 3), 1, 1},
        {"root without a name", set16(good.offsetOfEntry(0), 0), 1, 1},
        {"small table is missing", set32(60, end), 0, 2},
        {"small area is missing", set32(good.offsetOfEntry(0) + 116, end), 0, 2},
        {"big chain loops", set32(good.offsetOfLink(firstBig + 5), firstBig), 2, 0},
        {"big chain leaves the table", set32(good.offsetOfLink(firstBig + 5), outside), 2, 0},
        {"big chain ends early", set32(good.offsetOfLink(firstBig + 10), end), 2, 0},
        {"big chain enters a block in the table, not in the file", set32(good.offsetOfLink(firstBig + 5), 127), 2, 0},
        {"big chain goes on behind such a block",
            [&](Buffer& file) {
                set32(good.offsetOfLink(127), firstBig + 6)(file);
                set32(good.offsetOfLink(firstBig + 5), 127)(file);
            },
            2, 0},
        {"small chain loops", set32(good.offsetOfSmallLink(firstSmall), firstSmall), 0, 2},
        {"small chain leaves the area", set32(good.offsetOfSmallLink(firstSmall), 100), 0, 2},
        {"stated size beyond the chain", set32(good.offsetOfEntry(1) + 120, 12 * 512 + 1), 2, 0},
        {"stated size of 4 GB", set32(good.offsetOfEntry(1) + 120, 0xFFFFFFFF), 2, 0},
        {"siblings loop", set32(good.offsetOfEntry(2) + 72, 1), 0, 0},
        {"an entry is its own sibling", set32(good.offsetOfEntry(3) + 72, 3), 0, 2},
        {"siblings leave the directory", set32(good.offsetOfEntry(3) + 72, outside), 0, 2},
        {"child is the root", set32(good.offsetOfEntry(0) + 76, 0), 2, 2},
        {"entry of an unknown type", set16(good.offsetOfEntry(1) + 66, 0x100), 2, 0},
        {"name length beyond the field", set16(good.offsetOfEntry(1) + 64, 0xFFFF), 0, 0},
        {"name length of zero", set16(good.offsetOfEntry(1) + 64, 0), 2, 0},
        {"last table block is cut inside",
            resizeTo(good.offsetOfBlock(good.tableBlock(0)) + std::size_t{4} * good.tableBlock(0)), 0, 0},
    };
    for (const auto& test : cases) {
        auto file = good.bytes;
        test.damage(file);
        const auto expectedBig = test.bigStatus == 0 ? Extracted{0, big} : Extracted{test.bigStatus};
        const auto expectedSmall = test.smallStatus == 0 ? Extracted{0, small} : Extracted{test.smallStatus};
        EXPECT_EQ(extract(file, "Big"), expectedBig) << test.name;
        EXPECT_EQ(extract(file, "Small"), expectedSmall) << test.name;
        EXPECT_EQ(extract(file, "None").status, test.bigStatus == 1 ? 1 : 2) << test.name;
    }
}

TEST(CompoundFile, LoopingExtensionBlocksEnd)
{
    const auto content = pattern(450560);
    auto file = writeCompoundFile({7, 6, {{"Contents", content}}});
    const auto extension = file.firstExtensionBlock();
    putU32(file.bytes, 72, 0x7FFFFFFF);
    putU32(file.bytes, file.offsetOfBlock(extension) + 124, extension);
    EXPECT_EQ(extract(file.bytes, "Contents"), (Extracted{0, content})) << "nothing of the loop is needed";
    putU32(file.bytes, 44, 3000);
    EXPECT_EQ(extract(file.bytes, "Contents").status, 1) << "the loop runs into entries that name no block";
}

TEST(CompoundFile, EveryCutAndEveryFlippedByteIsHarmless)
{
    const auto small = pattern(100);
    const auto good = writeCompoundFile({7, 6, {{"Contents", small}, {"Folder/Inner", pattern(4200)}}}).bytes;
    for (std::size_t length = 0; length < good.size(); ++length) {
        const Buffer cut(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(length));
        const auto result = extract(cut, "Contents");
        EXPECT_TRUE(result.status != 0 || result.bytes == small) << length;
    }
    for (std::size_t i = 0; i < good.size(); ++i) {
        auto flipped = good;
        flipped[i] ^= std::byte{0xFF};
        EXPECT_LE(extract(flipped, "Contents").bytes.size(), good.size()) << i;
        EXPECT_LE(extract(flipped, "Folder/Inner").bytes.size(), good.size()) << i;
    }
}

} // namespace
} // namespace vellumo
