#include "jet/LongValue.h"
#include "jet/PageFile.h"

#include <gtest/gtest.h>
#include <map>
#include <string>

namespace vellumo::jet {
namespace {

using namespace std::string_literals;

// Rows by pointer. A chain link begins with the pointer to the next.
class FakePages : public PageFile {
public:
    std::map<std::uint32_t, std::string> rows;
    [[nodiscard]] std::span<const std::uint8_t> row(std::uint32_t pointer) override
    {
        ++reads;
        const auto found = rows.find(pointer);
        if (found == rows.end()) return {};
        return {reinterpret_cast<const std::uint8_t*>(found->second.data()), found->second.size()};
    }
    int reads = 0;
};

std::string number(std::uint32_t value) { return {reinterpret_cast<const char*>(&value), sizeof value}; }

std::string header(std::uint32_t kindAndLength, std::uint32_t pointer)
{
    return number(kindAndLength) + number(pointer) + number(0);
}

TEST(LongValue, IsGatheredFromWhereItLies)
{
    FakePages pages;
    pages.rows[0x500] = "whole value";
    pages.rows[0x600] = number(0x701) + "first ";
    pages.rows[0x701] = number(0x802) + "second ";
    pages.rows[0x802] = number(0) + "third and slack";
    pages.rows[0x900] = number(0x900) + "round";
    pages.rows[0xA00] = number(0xA01);
    pages.rows[0xA01] = number(0xA00);
    pages.rows[0xB00] = number(0xFFFFFF00) + "lost";
    pages.rows[0xC00] = "abc";
    pages.rows[0xD00] = number(0xD01) + "start";
    pages.rows[0xD01] = number(0xD02) + "a";
    pages.rows[0xD02] = number(0xD01) + "b";
    const struct {
        const char* name;
        std::string stored;
        const char* expected;
        bool isComplete;
    } cases[] = {
        {"in the row", header(0x80000005, 0) + "hello", "hello", true},
        {"in the row, slack behind", header(0x80000002, 0) + "hello", "he", true},
        {"in the row, cut", header(0x80000006, 0) + "hello", "hello", false},
        {"empty", header(0x80000000, 0), "", true},
        {"no header", "abc", "", false},
        {"no bytes at all", "", "", true},
        {"in one row", header(0x4000000B, 0x500), "whole value", true},
        {"in one row that is longer", header(0x40000005, 0x500), "whole", true},
        {"in a row that is missing", header(0x40000005, 0x555), "", false},
        {"chain", header(22, 0x600), "first second third and", true},
        {"chain that ends early", header(500, 0x600), "first second third and slack", false},
        {"chain to itself", header(500, 0x900), "roundround", false},
        {"circle behind a start", header(500, 0xD00), "startaba", false},
        {"circle without bytes", header(12, 0xA00), "", false},
        {"chain that leads out", header(12, 0xB00), "lost", false},
        {"link too short for its pointer", header(12, 0xC00), "", false},
    };
    for (const auto& test : cases) {
        pages.reads = 0;
        LongValue value(1000);
        value.read({reinterpret_cast<const std::uint8_t*>(test.stored.data()), test.stored.size()}, pages);
        EXPECT_EQ(std::string(value.bytes().begin(), value.bytes().end()), test.expected) << test.name;
        EXPECT_EQ(value.isComplete(), test.isComplete) << test.name;
        EXPECT_LE(pages.reads, 20) << test.name;
    }
}

TEST(LongValue, AllValuesTogetherTakeNoMoreThanTheFile)
{
    FakePages pages;
    pages.rows[0x500] = number(0) + std::string(600, 'x');
    const auto stored = header(600, 0x500);
    LongValue value(1000);
    value.read({reinterpret_cast<const std::uint8_t*>(stored.data()), stored.size()}, pages);
    EXPECT_TRUE(value.isComplete());
    value.read({reinterpret_cast<const std::uint8_t*>(stored.data()), stored.size()}, pages);
    EXPECT_FALSE(value.isComplete());
    EXPECT_TRUE(value.bytes().empty());
}

} // namespace
} // namespace vellumo::jet
