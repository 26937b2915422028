// SPDX-License-Identifier: MIT
#include "embedded/InflateRaw.h"
#include "embedded/OleCells.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <zlib.h>

namespace vellumo {
namespace {

using namespace testing;

TEST(InflateRaw, TellsTheWayAStreamEnds)
{
    const auto good = deflated(bytesOf("aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa"));
    const auto shorter = Buffer(good.begin(), good.end() - 1);
    auto longer = good;
    longer.push_back(std::byte{7});
    const struct {
        const char* name;
        Buffer source;
        std::size_t room;
        int status;
    } cases[] = {
        {"exact room", good, 32, Z_OK},
        {"more room", good, 40, Z_OK},
        {"bytes after the stream", longer, 32, Z_OK},
        {"room for one byte less, nothing left to read", good, 31, Z_DATA_ERROR},
        {"room for one byte", longer, 1, Z_BUF_ERROR},
        {"cut short", shorter, 32, Z_DATA_ERROR},
        {"nothing", {}, 32, Z_DATA_ERROR},
        {"reserved block type", bytesOf("\7"), 32, Z_DATA_ERROR},
    };
    for (const auto& test : cases) {
        Buffer room(test.room);
        std::span<std::byte> destination(room);
        EXPECT_EQ(inflateRaw(destination, test.source), test.status) << test.name;
        EXPECT_EQ(destination.size(), test.status == Z_OK ? 32 : test.room) << test.name;
    }
}

TEST(InflateRaw, RefusesLengthsOfMoreThan32Bits)
{
    constexpr std::size_t size = (std::size_t{1} << 32) + 1;
    auto* memory = mmap(nullptr, size, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    ASSERT_NE(memory, MAP_FAILED);
    const std::span huge(static_cast<std::byte*>(memory), size);
    Buffer few(10);
    auto destination = huge;
    EXPECT_EQ(inflateRaw(destination, few), Z_BUF_ERROR);
    destination = few;
    EXPECT_EQ(inflateRaw(destination, huge), Z_BUF_ERROR);
    munmap(memory, size);
}

} // namespace
} // namespace vellumo
