// SPDX-License-Identifier: MIT
// What is found again of tables and rows to which a file has lost the way.

#include "model/TAdmMDBFile.h"
#include "samples/Damage.h"
#include "samples/DatabaseWriter.h"
#include "support/TempFolder.h"

#include <gmock/gmock.h>

namespace vellumo {
namespace {

using namespace std::string_literals;
using samples::JetVersion;
using testing::ElementsAre;

class SalvageTest : public testing::TestWithParam<JetVersion> {
protected:
    void SetUp() override
    {
        samples::DatabaseDescription database{.version = GetParam()};
        for (const char* name : {"Kept", "Lost"}) {
            const auto text = [&](const char* number) { return samples::Value(name + " "s + number); };
            database.tables.push_back({.name = name,
                .columns = {{.name = "T"}},
                .rows = samples::rowsOf(std::vector<samples::Row>{{.values = {text("1")}},
                    {.values = {text("2")}, .state = samples::RowState::Deleted}, {.values = {text("3")}}})});
        }
        written = samples::writeDatabase(database, path);
        ASSERT_EQ(written.error, "");
    }
    // "table: text, text" for each table.
    [[nodiscard]] std::vector<std::string> found(Salvage salvage)
    {
        file.close();
        file.setFullPath(path);
        EXPECT_TRUE(file.open({.salvage = salvage}));
        std::vector<std::string> lines;
        for (const auto& table : file.tables()) {
            auto& line = lines.emplace_back(table->name() + ":");
            for (std::size_t row = 0; row < table->rows().rowCount(); ++row)
                line.append(row == 0 ? " " : ", ").append(table->rows().text(row, 0));
        }
        return lines;
    }
    // What the pages of the catalogue are, by place in the file: data pages that name page 2 as their table's.
    template <typename Change> void changeCatalogue(const Change& change)
    {
        auto bytes = folder.read("a.mdb").value();
        const std::size_t pageSize = GetParam() == JetVersion::Jet3 ? 2048 : 4096;
        for (std::size_t at = pageSize; at < bytes.size(); at += pageSize)
            if (bytes.substr(at, 2) == "\1\1" && bytes.substr(at + 4, 4) == "\2\0\0\0"s) change(bytes, at, pageSize);
        folder.write("a.mdb", bytes);
    }

    test::TempFolder folder;
    std::string path = folder.path("a.mdb");
    samples::WriteResult written;
    TAdmMDBFile file;
};

TEST_P(SalvageTest, FindsATableWhoseEntryIsGoneAndNoOther)
{
    changeCatalogue([](std::string& bytes, std::size_t page, std::size_t pageSize) {
        const auto countAt = page + (pageSize == 2048 ? 8 : 12);
        const auto number = [&](std::size_t at) -> std::size_t {
            return static_cast<std::uint8_t>(bytes[at]) | std::size_t{static_cast<std::uint8_t>(bytes[at + 1])} << 8U;
        };
        std::size_t end = pageSize;
        for (std::size_t row = 0; row < number(countAt); ++row) {
            const auto start = number(countAt + 2 + 2 * row) & 0x1FFFU;
            const auto entry = bytes.substr(page + start, end - start);
            const bool isOfLost = entry.find("Lost") != entry.npos || entry.find("L\0o\0s\0t\0"s) != entry.npos;
            if (isOfLost) bytes[countAt + 3 + 2 * row] = static_cast<char>(bytes[countAt + 3 + 2 * row] | 0xC0);
            end = start;
        }
    });
    EXPECT_THAT(found(Salvage::None), ElementsAre("Kept: Kept 1, Kept 3"));
    EXPECT_THAT(found(Salvage::LostRows), ElementsAre("Kept: Kept 1, Kept 3", "Recovered 1: Lost 1, Lost 3"));
    EXPECT_EQ(file.tables()[1]->origin(), TableOrigin::Recovered);
    EXPECT_THAT(found(Salvage::LostAndDeletedRows),
        ElementsAre("Kept: Kept 1, Kept 3", "Kept (deleted): Kept 2", "Recovered 1: Lost 1, Lost 3"));
}

// Of the tables that a database keeps for itself nothing is shown, lost or not.
TEST_P(SalvageTest, FindsTheTablesOfUsersWithoutACatalogue)
{
    changeCatalogue([](std::string& bytes, std::size_t page, std::size_t pageSize) {
        bytes.replace(page, pageSize, pageSize, '\0');
    });
    EXPECT_THAT(found(Salvage::LostRows), ElementsAre("Recovered 1: Kept 1, Kept 3", "Recovered 2: Lost 1, Lost 3"));
}

TEST_P(SalvageTest, FindsRowsOnPagesThatTheirTableDoesNotList)
{
    // A map of a range of pages: its kind, the first page, and the bits.
    constexpr std::size_t bitsAt = 5;
    ASSERT_TRUE(samples::patchFile(path, written.tables[0].dataMapOffset + bitsAt, samples::Bytes(64)));
    EXPECT_THAT(
        found(Salvage::LostRows), ElementsAre("Kept:", "Kept (recovered): Kept 1, Kept 3", "Lost: Lost 1, Lost 3"));
}

INSTANTIATE_TEST_SUITE_P(Versions, SalvageTest, testing::Values(JetVersion::Jet3, JetVersion::Jet4),
    [](const auto& test) { return test.param == JetVersion::Jet3 ? "Jet3" : "Jet4"; });

} // namespace
} // namespace vellumo
