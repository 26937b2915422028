#include "jet/UsageMap.h"

#include <gmock/gmock.h>
#include <string>

namespace vellumo::jet {
namespace {

using namespace std::string_literals;
using testing::ElementsAre;
using testing::Optional;

std::span<const std::uint8_t> bytesOf(const std::string& text)
{
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

TEST(UsageMap, NamesPagesInsideTheFileOnly)
{
    // Pages of 8 bytes: a bitmap page holds 4 bytes, 32 pages.
    const auto bitmap = "\5\1\0\0\x01\x00\x00\x80"s;
    const auto readPage = [&](std::uint32_t page) { return page == 3 || page == 0 ? bytesOf(bitmap) : bytesOf(""); };
    const auto pages = [&](const std::string& map, std::uint32_t pageCount = 100) {
        return pagesOfUsageMap(bytesOf(map), pageCount, readPage);
    };

    EXPECT_THAT(pages("\0\x0A\0\0\0\x05\x80"s), Optional(ElementsAre(10, 12, 25)));
    EXPECT_THAT(pages("\0\x0A\0\0\0\x05\x80"s, 12), Optional(ElementsAre(10))) << "the rest lies behind the end";
    EXPECT_THAT(pages("\0\0\0\0\0\x03"s), Optional(ElementsAre(1))) << "page 0 is the header";
    EXPECT_THAT(pages("\0\xFF\xFF\xFF\xFF\x03"s), Optional(ElementsAre()));
    EXPECT_THAT(pages("\1\0\0\0\0\3\0\0\0"s), Optional(ElementsAre(32, 63))) << "the first bitmap page is not used";
    EXPECT_THAT(pages("\1\xFF\xFF\xFF\0\3\0\0\0"s), Optional(ElementsAre(32, 63))) << "a bitmap page out of the file";
    EXPECT_THAT(pages("\1\3\0\0\0\3\0"s), Optional(ElementsAre(31))) << "half an entry at the end";
    EXPECT_EQ(pages("\1\5\0\0\0"s), std::nullopt) << "a bitmap page that cannot be read";
    EXPECT_EQ(pages("\7\0\0\0\0"s), std::nullopt);
    EXPECT_EQ(pages("\0\0"s), std::nullopt);
}

} // namespace
} // namespace vellumo::jet
