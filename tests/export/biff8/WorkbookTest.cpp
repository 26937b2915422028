// SPDX-License-Identifier: MIT
#include "export/biff8/Workbook.h"

#include "export/biff8/BiffReader.h"
#include "export/biff8/CompoundFileTarget.h"
#include "support/FileSizeLimit.h"
#include "support/TempFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <sys/stat.h>

namespace vellumo::biff8 {
namespace {

using namespace std::string_literals;
using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;
using Cells = std::map<std::pair<unsigned, unsigned>, std::string>;

constexpr auto Ok = CellStatus::Ok;

struct MemoryTarget : StreamTarget {
    bool write(std::string_view more) override
    {
        bytes += more;
        return bytes.size() <= capacity;
    }
    bool overwrite(std::uint32_t offset, std::string_view with) override
    {
        bytes.replace(offset, with.size(), with);
        return true;
    }
    std::string bytes;
    std::size_t capacity = std::string::npos;
};

std::string streamOf(Workbook& workbook)
{
    MemoryTarget target;
    EXPECT_TRUE(workbook.writeStream(target));
    return target.bytes;
}

Workbook workbookWithSheet(std::uint64_t limit = Workbook::defaultStreamLimit)
{
    Workbook workbook(limit);
    EXPECT_TRUE(workbook.addSheet("S"));
    return workbook;
}

std::string hex(std::string_view bytes)
{
    std::string text;
    char digits[3];
    for (const char byte : bytes) {
        std::snprintf(digits, sizeof digits, "%02x", static_cast<unsigned char>(byte));
        text += digits;
    }
    return text;
}

// Records of cells as "id:data" in hexadecimal.
std::vector<std::string> cellRecords(Workbook& workbook)
{
    std::vector<std::string> cells;
    for (const auto& record : recordsOf(streamOf(workbook))) {
        char id[8];
        std::snprintf(id, sizeof id, "%x:", record.id);
        const std::vector<std::uint16_t> cellIds = {0xFD, 0x203, 0x27E, 0x201, 0x205, 0xBD, 0xBE};
        if (std::find(cellIds.begin(), cellIds.end(), record.id) != cellIds.end())
            cells.push_back(id + hex(record.data));
    }
    return cells;
}

TEST(Workbook, NumbersAreStoredExactly)
{
    const struct {
        const char* name;
        double number;
        const char* record;
    } cases[] = {
        {"zero", 0, "27e:000000000f0002000000"},
        {"minus zero is no number of the format", -0.0, "27e:000000000f0002000000"},
        {"subnormal neither", 4.9e-324, "27e:000000000f0002000000"},
        {"integer", 7, "27e:000000000f001e000000"},
        {"negative integer", -1, "27e:000000000f00feffffff"},
        {"largest packed integer", 536870911, "27e:000000000f00feffff7f"},
        {"smallest packed integer", -536870912, "27e:000000000f0002000080"},
        {"integer past it, as the upper half of a double", 536870912, "27e:000000000f000000c041"},
        {"half", 0.5, "27e:000000000f000000e03f"},
        {"hundredths keep all digits", 0.29, "203:000000000f008fc2f5285c8fd23f"},
        {"odd large integer", 536870913, "203:000000000f00000080000000c041"},
        {"smallest normal", 2.2250738585072014e-308, "27e:000000000f0000001000"},
        {"infinity", std::numeric_limits<double>::infinity(), "205:000000000f002401"},
        {"not a number", std::numeric_limits<double>::quiet_NaN(), "205:000000000f002401"},
    };
    for (const auto& test : cases) {
        auto workbook = workbookWithSheet();
        EXPECT_EQ(workbook.setNumber(0, 0, test.number), Ok);
        EXPECT_THAT(cellRecords(workbook), ElementsAre(test.record)) << test.name;
    }
}

TEST(Workbook, NeighboursShareARecord)
{
    auto workbook = workbookWithSheet();
    EXPECT_EQ(workbook.setBlank(2, 1), Ok);
    EXPECT_EQ(workbook.setBlank(2, 2), Ok);
    EXPECT_EQ(workbook.setNumber(2, 3, 1), Ok);
    EXPECT_EQ(workbook.setNumber(2, 4, 0.5), Ok);
    EXPECT_EQ(workbook.setNumber(2, 6, 1), Ok); // not beside the last
    EXPECT_EQ(workbook.setText(2, 7, "a"), Ok);
    EXPECT_EQ(workbook.setBlank(2, 8), Ok);
    EXPECT_EQ(workbook.setBlank(3, 9), Ok); // another row
    EXPECT_EQ(workbook.setNumber(3, 10, 0.29), Ok);
    EXPECT_THAT(cellRecords(workbook),
        ElementsAre("be:020001000f000f000200", "bd:020003000f00060000000f000000e03f0400", "27e:020006000f0006000000",
            "fd:020007000f0000000000", "201:020008000f00", "201:030009000f00", "203:03000a000f008fc2f5285c8fd23f"));
}

// Offsets in INDEX, DBCELL and DIMENSIONS against where the records are.
TEST(Workbook, RowBlocksCanBeFound)
{
    auto workbook = workbookWithSheet();
    for (const std::uint16_t row : {5, 6, 36, 37, 200}) { // blocks begin at 5, 37, .., 197
        EXPECT_EQ(workbook.setText(row, 3, "x"), Ok);
        EXPECT_EQ(workbook.setNumber(row, 4, 0.29), Ok);
    }
    const auto stream = streamOf(workbook);
    const auto records = recordsOf(stream);
    std::map<std::uint32_t, const Record*> at;
    std::vector<std::uint32_t> lookups;
    const Record* index = nullptr;
    for (const auto& record : records) {
        at[record.offset] = &record;
        if (record.id == 0xD7) lookups.push_back(record.offset);
        if (record.id == 0x20B) index = &record;
        if (record.id == 0x200) {
            EXPECT_EQ(hex(record.data), "05000000c9000000030005000000");
        }
    }
    ASSERT_NE(index, nullptr);
    EXPECT_EQ(hex(index->data.substr(0, 12)), "0000000005000000c9000000");
    EXPECT_EQ(at.at(numberAt(index->data, 12, 4))->id, 0x55);
    ASSERT_EQ(index->data.size(), 16 + 4 * 7U);
    for (std::size_t i = 0; i < 7; ++i)
        EXPECT_EQ(numberAt(index->data, 16 + 4 * i, 4), lookups.at(i));
    // First block: three rows. 20 bytes a ROW, 14 + 18 a row of cells.
    EXPECT_EQ(hex(at.at(lookups[0])->data), "9c000000280020002000");
    EXPECT_EQ(hex(at.at(lookups[0] - 0x9C)->data), "050003000500ff000000000000010f00");
    EXPECT_EQ(hex(at.at(lookups[1])->data), "340000000000");
    EXPECT_EQ(hex(at.at(lookups[2])->data), "00000000"); // no cell from 69 to 196
    EXPECT_EQ(hex(at.at(lookups[6])->data), "340000000000");
}

TEST(Workbook, SheetsStandWhereTheListSays)
{
    Workbook workbook;
    for (const auto* name : {"Leer", "Bücher", "本"})
        EXPECT_TRUE(workbook.addSheet(name));
    EXPECT_EQ(workbook.setText(0, 0, "last"), Ok);
    const auto stream = streamOf(workbook);
    const auto sheets = sheetsOf(stream);
    ASSERT_EQ(sheets.size(), 3U);
    EXPECT_EQ(sheets[1].name, "Bücher");
    EXPECT_EQ(sheets[2].name, "本");
    EXPECT_THAT(sheets[0].cells, IsEmpty());
    EXPECT_EQ(sheets[2].cells, (Cells{{{0, 0}, "'last'"}}));
    std::size_t shownSheets = 0;
    std::vector<unsigned> bytesPerUnit; // of the names: one as long as that is enough
    for (const auto& record : recordsOf(stream)) {
        if (record.id == 0x85) bytesPerUnit.push_back(1 + unsigned(numberAt(record.data, 7, 1)));
        if (record.id == 0x23E) shownSheets += hex(record.data.substr(0, 2)) == "b606" ? 1 : 0;
    }
    EXPECT_EQ(shownSheets, 1U);
    EXPECT_THAT(bytesPerUnit, ElementsAre(1, 1, 2));
}

TEST(Workbook, CellFormatsFollowFifteenStyles)
{
    auto workbook = workbookWithSheet();
    std::string kinds;
    for (const auto& record : recordsOf(streamOf(workbook)))
        if (record.id == 0xE0) kinds += hex(record.data.substr(4, 2));
    std::string styles;
    for (int i = 0; i < 15; ++i)
        styles += "f5ff";
    EXPECT_EQ(kinds.substr(0, 64), styles + "0100");
}

TEST(Workbook, TextsAreStoredOnce)
{
    auto workbook = workbookWithSheet();
    const std::vector<std::string> texts = {"a", "é", "€", "a", "😀", "€"};
    std::uint16_t column = 0;
    for (const auto& text : texts)
        EXPECT_EQ(workbook.setText(0, column++, text), Ok);
    for (const auto& record : recordsOf(streamOf(workbook))) {
        if (record.id != 0xFC) continue;
        EXPECT_EQ(hex(record.data),
            "06000000"
            "04000000"
            "01000061"
            "010000e9"
            "010001ac20"
            "0200013dd800de");
    }
}

TEST(Workbook, TextsThatReadersDoNotSurviveAreRepaired)
{
    const std::string longest(32767, 'x');
    auto longestCell = longest;
    longestCell.insert(0, 1, '\'').append(1, '\'');
    const struct {
        const char* name;
        std::string text;
        CellStatus status;
        const char* cell;
    } cases[] = {
        {"line breaks and controls stay", "a\r\n\tb\x01", Ok, "'a\r\n\tb\x01'"},
        {"zero", "a\0b"s, Ok, "'a�b'"},
        {"zero among eight letters", "abcd\0efgh"s, Ok, "'abcd�efgh'"},
        {"lone surrogate", "a\xED\xA0\x80z", Ok, "'a�z'"},
        {"empty", "", Ok, "''"},
        {"cut off character", "a\xC3", CellStatus::BadText, nullptr},
        {"overlong form", "\xC0\xAF", CellStatus::BadText, nullptr},
        {"beyond Unicode", "\xF4\x90\x80\x80", CellStatus::BadText, nullptr},
        {"stray follower in a long text", "123456781234567\x80", CellStatus::BadText, nullptr},
        {"as long as a cell can hold", longest, Ok, longestCell.c_str()},
        {"longer", std::string(32768, 'x'), CellStatus::BadText, nullptr},
    };
    for (const auto& test : cases) {
        auto workbook = workbookWithSheet();
        EXPECT_EQ(workbook.setText(1, 1, test.text), test.status) << test.name;
        const auto cells = sheetsOf(streamOf(workbook)).at(0).cells;
        if (test.cell == nullptr) {
            EXPECT_THAT(cells, IsEmpty()) << test.name;
        } else {
            EXPECT_EQ(cells.at({1, 1}), test.cell);
        }
    }
}

// Every way a text of each kind can meet the end of a record; the reader checks the rules of the split.
TEST(Workbook, TextsGoOnInTheNextRecord)
{
    const std::string narrow = "abcdefghij";
    const std::string latin = "äöüßéèñç";
    const std::string wide = "ЖЗИЙ";
    const std::string pairs = "😀😁😂";
    for (const auto& text : {narrow, latin, wide, pairs, "€" + pairs + "z"}) {
        for (std::size_t filler = 8160; filler <= 8224; ++filler) {
            auto workbook = workbookWithSheet();
            const std::string first(filler, 'f');
            const std::vector<std::string> expected = {first, text, "end"};
            std::uint16_t column = 0;
            for (const auto& cell : expected)
                EXPECT_EQ(workbook.setText(0, column++, cell), Ok);
            const auto strings = sharedStringsOf(recordsOf(streamOf(workbook)));
            ASSERT_EQ(strings.size(), 3U);
            for (std::size_t i = 0; i < 3; ++i)
                ASSERT_EQ(strings[i].text, expected[i]) << filler;
        }
    }
}

TEST(Workbook, IndexOfStringsPointsAtThem)
{
    auto workbook = workbookWithSheet();
    std::vector<std::string> texts;
    for (int i = 0; i < 5000; ++i)
        texts.push_back("text number " + std::to_string(i));
    for (std::size_t i = 0; i < texts.size(); ++i)
        EXPECT_EQ(workbook.setText(static_cast<std::uint16_t>(i), 0, texts[i]), Ok);
    const auto records = recordsOf(streamOf(workbook));
    const auto strings = sharedStringsOf(records);
    for (const auto& record : records) {
        if (record.id != 0xFF) continue;
        EXPECT_EQ(numberAt(record.data, 0, 2), 40U); // 5000 / 128 + 1
        ASSERT_EQ(record.data.size(), 2 + 125 * 8U);
        for (std::size_t i = 0; i < 125; ++i) {
            EXPECT_EQ(numberAt(record.data, 2 + i * 8, 4), strings[i * 40].offset) << i;
            EXPECT_EQ(numberAt(record.data, 6 + i * 8, 2), strings[i * 40].offsetInRecord) << i;
        }
    }
}

TEST(Workbook, CellsComeInOrder)
{
    Workbook workbook;
    EXPECT_EQ(workbook.setBlank(0, 0), CellStatus::NoSheet);
    EXPECT_TRUE(workbook.addSheet("S"));
    EXPECT_EQ(workbook.setNumber(4, 255, 1), Ok);
    EXPECT_EQ(workbook.setNumber(4, 255, 2), CellStatus::Misplaced);
    EXPECT_EQ(workbook.setText(4, 254, "a"), CellStatus::Misplaced);
    EXPECT_EQ(workbook.setBlank(3, 255), CellStatus::Misplaced);
    EXPECT_EQ(workbook.setText(65535, 256, "a"), CellStatus::Misplaced);
    EXPECT_EQ(workbook.setNumber(65535, 255, 3), Ok);
    EXPECT_EQ(sheetsOf(streamOf(workbook)).at(0).cells, (Cells{{{4, 255}, "1"}, {{65535, 255}, "3"}}));
}

TEST(Workbook, HoldsAsManySheetsAsTheFormat)
{
    Workbook workbook;
    for (std::size_t i = 0; i < 4112; ++i)
        ASSERT_TRUE(workbook.addSheet(std::to_string(i)));
    EXPECT_FALSE(workbook.addSheet("one more"));
    EXPECT_EQ(sheetsOf(streamOf(workbook)).size(), 4112U);
}

TEST(Workbook, StaysBelowItsLimit)
{
    constexpr std::uint64_t limit = 200'000;
    std::vector<std::string> texts;
    for (int i = 0; i < 2000; ++i)
        texts.push_back(std::to_string(i) + std::string(static_cast<std::size_t>(i % 300), 'x'));
    auto workbook = workbookWithSheet(limit);
    EXPECT_EQ(workbook.setText(0, 0, "kept"), Ok);
    const auto fill = [&] { // two sheets; how many rows fit on the second
        EXPECT_EQ(workbook.setText(0, 0, "first"), Ok);
        EXPECT_TRUE(workbook.addSheet("T(2)"));
        std::uint16_t row = 0;
        while (workbook.setText(row, 0, texts[row]) == Ok)
            ++row;
        EXPECT_EQ(workbook.setText(row, 0, texts[row]), CellStatus::Full);
        return row;
    };
    EXPECT_TRUE(workbook.addSheet("T"));
    const auto rows = fill();
    const auto size = streamOf(workbook).size();
    EXPECT_LE(size, limit);
    EXPECT_GT(size, limit - 10'000);

    // Taken back, it is as if the sheets had never been filled.
    workbook.clearFrom(1);
    const auto sheets = sheetsOf(streamOf(workbook));
    ASSERT_EQ(sheets.size(), 2U);
    EXPECT_EQ(sheets[0].cells, (Cells{{{0, 0}, "'kept'"}}));
    EXPECT_THAT(sheets[1].cells, IsEmpty());
    EXPECT_EQ(sharedStringsOf(recordsOf(streamOf(workbook))).size(), 1U);
    EXPECT_EQ(fill(), rows);
    const auto again = sheetsOf(streamOf(workbook));
    ASSERT_EQ(again.size(), 3U);
    EXPECT_EQ(again[2].name, "T(2)");
    EXPECT_EQ(again[2].cells.size(), rows);
    EXPECT_EQ(again[2].cells.at({0, 0}), "'0'");
}

TEST(Workbook, NamesAreRepaired)
{
    const std::string forty(40, 'n');
    const std::string thirtyOne(31, 'n');
    const struct {
        const char* name;
        std::vector<std::string> given;
        std::vector<std::string> repaired;
    } cases[] = {
        {"as it is", {"Orders 2024!"}, {"Orders 2024!"}},
        {"forbidden characters", {"a:b\\c/d?e*f[g]h\x03"}, {"a_b_c_d_e_f_g_h_"}},
        {"quotes only at the ends", {"'it's'"}, {"_it's_"}},
        {"31 units", {thirtyOne}, {thirtyOne}},
        {"cut", {forty}, {thirtyOne}},
        {"cut twice", {forty, forty + "x"}, {thirtyOne, thirtyOne.substr(2) + "_2"}},
        {"a quote at the cut", {thirtyOne.substr(1) + "'x"}, {thirtyOne.substr(1) + "_"}},
        {"never half a pair", {thirtyOne.substr(1) + "😀"}, {thirtyOne.substr(1)}},
        {"continuation keeps its number", {forty, forty + "(2)", forty + "(12)"},
            {thirtyOne, thirtyOne.substr(3) + "(2)", thirtyOne.substr(4) + "(12)"}},
        {"a table named like a continuation", {"Orders(2)", "Orders(2)"}, {"Orders(2)", "Orders(2)_2"}},
        {"case does not tell them apart", {"Orders", "ORDERS", "orders"}, {"Orders", "ORDERS_2", "orders_3"}},
        {"nor do foldings", {"Straße", "STRASSE"}, {"Straße", "STRASSE_2"}},
        {"one that was taken by repair", {"a?", "a_", "a__2"}, {"a_", "a__2", "a__2_2"}},
        {"reserved", {"history"}, {"history_2"}},
        {"lone surrogate", {"a\xED\xA0\x80z"}, {"a_z"}},
        {"parentheses without a number", {forty + "()", forty + "(x)"}, {thirtyOne, thirtyOne.substr(2) + "_2"}},
        {"nothing but a number", {"(3)", "(3)"}, {"(3)", "(3)_2"}},
        {"a number too long to keep", {thirtyOne + "(7777777777777)"}, {thirtyOne}},
        {"failures take nothing", {"", "\xFF", "a"}, {"a"}},
    };
    for (const auto& test : cases) {
        Workbook workbook;
        for (const auto& name : test.given)
            EXPECT_EQ(workbook.addSheet(name), !name.empty() && name != "\xFF") << test.name;
        std::vector<std::string> names;
        for (const auto& sheet : sheetsOf(streamOf(workbook)))
            names.push_back(sheet.name);
        EXPECT_EQ(names, test.repaired) << test.name;
    }
}

TEST(Workbook, FailsWhenItsTargetDoes)
{
    auto workbook = workbookWithSheet();
    std::vector<std::string> texts;
    for (int i = 0; i < 3000; ++i)
        texts.push_back(std::to_string(i) + std::string(300, 'x'));
    for (std::uint16_t i = 0; i < 3000; ++i)
        EXPECT_EQ(workbook.setText(i, 0, texts[i]), Ok);
    MemoryTarget target;
    target.capacity = 500'000;
    EXPECT_FALSE(workbook.writeStream(target));
    EXPECT_LT(target.bytes.size(), 800'000U); // it stopped

    Workbook empty;
    MemoryTarget unused;
    EXPECT_FALSE(empty.writeStream(unused));
    EXPECT_EQ(unused.bytes, "");
}

TEST(WorkbookFile, IsWrittenWholeOrNotAtAll)
{
    std::vector<std::string> texts;
    for (int i = 0; i < 1000; ++i)
        texts.push_back(std::to_string(i) + std::string(300, 'x'));
    for (const bool isLarge : {false, true}) { // a stream below 4096 bytes is stored in another way
        TempFolder folder;
        folder.write("Old.xls", "old");
        auto workbook = workbookWithSheet();
        const std::uint16_t rowCount = isLarge ? 1000 : 1;
        for (std::uint16_t i = 0; i < rowCount; ++i)
            EXPECT_EQ(workbook.setText(i, 0, texts[i]), Ok);
        {
            const FileSizeLimit limit(isLarge ? 100'000 : 1000);
            EXPECT_FALSE(workbook.writeFile(folder.path("Old.xls")));
            EXPECT_FALSE(workbook.writeFile(folder.path("New.xls")));
        }
        const std::atomic<bool> stop = true;
        EXPECT_FALSE(workbook.writeFile(folder.path("Old.xls"), &stop));
        EXPECT_EQ(folder.read("Old.xls"), "old");
        EXPECT_THAT(folder.names(), ElementsAre("Old.xls"));
        EXPECT_TRUE(workbook.writeFile(folder.path("Old.xls")));
        EXPECT_TRUE(workbook.writeFile(folder.path("New.xls")));
        EXPECT_THAT(folder.names(), ElementsAre("New.xls", "Old.xls"));
        EXPECT_EQ(workbookStreamOf(folder.path("Old.xls")), streamOf(workbook));
        EXPECT_EQ(folder.read("New.xls"), folder.read("Old.xls"));
    }
}

TEST(WorkbookFile, ReplacesNothingButFiles)
{
    TempFolder folder;
    auto workbook = workbookWithSheet();
    std::filesystem::create_directory(folder.path("folder"));
    ASSERT_EQ(mkfifo(folder.path("pipe").c_str(), 0600), 0);
    for (const auto& path : {folder.path("folder"), folder.path("pipe"), folder.path("missing/New.xls"), ""s})
        EXPECT_FALSE(workbook.writeFile(path)) << path;
    EXPECT_THAT(folder.names(), ElementsAre("folder", "pipe"));
    EXPECT_EQ(std::filesystem::status(folder.path("pipe")).type(), std::filesystem::file_type::fifo);
}

} // namespace
} // namespace vellumo::biff8
