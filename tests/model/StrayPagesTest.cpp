// SPDX-License-Identifier: MIT
// What a file holds and does not lead to: told, unless the file itself says that it is no longer in use.

#include "model/TAdmMDBFile.h"
#include "samples/DatabaseWriter.h"
#include "samples/SystemTables.h"
#include "support/TempFolder.h"

#include <gmock/gmock.h>

namespace vellumo {
namespace {

using namespace std::string_literals;
using samples::JetVersion;

class StrayPages : public testing::TestWithParam<JetVersion> {
protected:
    void SetUp() override
    {
        samples::DatabaseDescription database{.version = GetParam()};
        for (const bool isFull : {true, false}) {
            samples::TableDescription table{.name = isFull ? "Full" : "Empty", .columns = {{.name = "T"}}};
            if (isFull) {
                table.rows = samples::rowsOf(std::vector<samples::Row>{{.values = {"1"s}}, {.values = {"2"s}}});
                table.indexes = {{.name = "ByT", .columns = {{"T"}}}};
            }
            database.tables.push_back(std::move(table));
        }
        written = samples::writeDatabase(database, folder.path("a.mdb"));
        ASSERT_EQ(written.error, "");
        bytes = folder.read("a.mdb").value();
        definition = written.tables[0].definitionPages[0];
        data = written.tables[0].dataPages[0];
    }

    [[nodiscard]] bool isJet3() const { return GetParam() == JetVersion::Jet3; }
    [[nodiscard]] std::size_t pageSize() const { return isJet3() ? 2048 : 4096; }
    [[nodiscard]] std::size_t at(std::size_t page) const { return page * pageSize(); }
    [[nodiscard]] std::size_t number(std::size_t offset) const
    {
        return static_cast<std::uint8_t>(bytes[offset])
            | std::size_t{static_cast<std::uint8_t>(bytes[offset + 1])} << 8;
    }

    void clearPage(std::size_t page) { bytes.replace(at(page), pageSize(), pageSize(), '\0'); }
    void swapPages(std::size_t one, std::size_t other)
    {
        std::swap_ranges(&bytes[at(one)], &bytes[at(one)] + pageSize(), &bytes[at(other)]);
    }

    // Calls `change` with where the row of an entry begins, and where its place stands.
    template <typename Change> void changeEntry(std::string_view name, const Change& change)
    {
        const auto countAt = isJet3() ? 8 : 12;
        std::string wide;
        for (const char letter : name)
            wide.append(1, letter).append(1, '\0');
        for (std::size_t page = at(1); page < bytes.size(); page += pageSize()) {
            if (bytes.substr(page, 2) != "\1\1" || bytes.substr(page + 4, 4) != "\2\0\0\0"s) continue;
            std::size_t end = pageSize();
            for (std::size_t row = 0; row < number(page + countAt); ++row) {
                const auto entry = page + countAt + 2 + 2 * row;
                const auto start = number(entry) & 0x1FFF;
                const auto stored = bytes.substr(page + start, end - start);
                if (stored.find(name) != stored.npos || stored.find(wide) != stored.npos) change(page + start, entry);
                end = start;
            }
        }
    }
    // As a database does it: the entry's row is marked, and the catalogue states one row less.
    void deleteEntry(std::string_view name)
    {
        changeEntry(name,
            [&](std::size_t, std::size_t place) { bytes[place + 1] = static_cast<char>(bytes[place + 1] | 0xC0); });
        --bytes[at(samples::objectsPage) + (isJet3() ? 12 : 16)];
    }
    void setFlags(std::string_view name, std::string_view flags)
    {
        constexpr std::size_t flagsAt = 26; // in the fixed part, behind the number of columns
        changeEntry(name, [&](std::size_t row, std::size_t) {
            bytes.replace(row + (isJet3() ? 1 : 2) + flagsAt, flags.size(), flags);
        });
    }
    // The map of the free pages, in the form that holds its bits itself.
    void markFree(std::initializer_list<std::size_t> pages)
    {
        const auto size = isJet3() ? 133 : 69;
        const auto map = at(2) - size;
        bytes.replace(map, size, size, '\0');
        for (const auto page : pages)
            bytes[map + 5 + page / 8] = static_cast<char>(bytes[map + 5 + page / 8] | 1 << page % 8);
    }

    [[nodiscard]] std::vector<std::string> told(const OpenOptions& options = {})
    {
        folder.write("a.mdb", bytes);
        TAdmMDBFile file;
        file.setFullPath(folder.path("a.mdb"));
        EXPECT_TRUE(file.open(options));
        std::vector<std::string> texts;
        for (const auto& record : file.damage().records())
            texts.push_back(damageText(record));
        return texts;
    }
    static std::string page(std::size_t number) { return "page " + std::to_string(number) + ": "; }

    test::TempFolder folder;
    samples::WriteResult written;
    std::string bytes;
    std::size_t definition = 0, data = 0; // pages of "Full"
    const std::string lacksPage = "The list of the table's pages lacks a page of its rows.";
    const std::string lacksTable = "The list of tables lacks a table that is in the file.";
};

// Only the index still knows of a row that is marked as deleted and no longer counted.
TEST_P(StrayPages, OfARowThatOnlyAnIndexKnows)
{
    const auto firstPlace = at(data) + (isJet3() ? 10 : 14);
    bytes[firstPlace + 1] = static_cast<char>(bytes[firstPlace + 1] | 0xC0);
    --bytes[at(definition) + (isJet3() ? 12 : 16)];
    EXPECT_THAT(told(), testing::ElementsAre());
    const auto missing = testing::ElementsAre("Full: 1 row is missing.");
    EXPECT_THAT(told({.checksIndexes = true}), missing);

    // The same leaf as the tail of a node that has no entries of its own.
    std::size_t root = 0;
    while (bytes[root] != 4 || number(root + 4) != definition)
        root += pageSize();
    const auto leaf = bytes.size() / pageSize();
    bytes += bytes.substr(root, pageSize());
    const std::size_t tailAt = isJet3() ? 16 : 20, entriesAt = isJet3() ? 248 : 480;
    bytes.replace(root + tailAt, entriesAt - tailAt, entriesAt - tailAt, '\0');
    bytes[root] = 3;
    bytes[root + tailAt] = static_cast<char>(leaf);
    EXPECT_THAT(told({.checksIndexes = true}), missing);
}

// The entry of the full table then leads to a definition that lists no pages.
TEST_P(StrayPages, OfATableWhoseDefinitionIsThatOfAnEmptyOne)
{
    swapPages(definition, written.tables[1].definitionPages[0]);
    EXPECT_THAT(told(), testing::Contains("Full, " + page(data) + lacksPage));
}

TEST_P(StrayPages, OfATableWhoseListIsEmpty)
{
    constexpr std::size_t bitsAt = 5;
    bytes.replace(written.tables[0].dataMapOffset + bitsAt, 64, 64, '\0');
    EXPECT_THAT(told(), testing::ElementsAre("Full, " + page(data) + lacksPage, "Full: 2 rows are missing."));
}

TEST_P(StrayPages, OfATableThatTheCatalogueLacks)
{
    deleteEntry("Full");
    const auto lost = bytes;
    EXPECT_THAT(told(), testing::ElementsAre(page(definition) + lacksTable));
    // What is deleted keeps its bytes, and is free.
    markFree({definition, data});
    EXPECT_THAT(told(), testing::ElementsAre());
    markFree({definition});
    EXPECT_THAT(told(), testing::ElementsAre(page(data) + "A page of rows cannot be read."));
    bytes = lost;
    clearPage(1);
    EXPECT_THAT(told(), testing::ElementsAre(page(definition) + lacksTable)) << "nobody knows what is free";
}

TEST_P(StrayPages, OfATableWithoutEntryAndDefinition)
{
    deleteEntry("Full");
    clearPage(definition);
    EXPECT_THAT(told(), testing::ElementsAre(page(data) + "A page of rows cannot be read."));
}

TEST_P(StrayPages, OfATableThatIsHiddenByChance)
{
    setFlags("Full", "\xA6\x76\x93\x81");
    EXPECT_THAT(told(), testing::ElementsAre(page(definition) + "A part of the list of tables cannot be read."));
    setFlags("Full", "\2\0\0\x80"s); // as people hide tables
    EXPECT_THAT(told(), testing::ElementsAre());
}

TEST_P(StrayPages, OfTablesOfTheSystem)
{
    deleteEntry("MSysQueries");
    EXPECT_THAT(
        told(), testing::ElementsAre(page(samples::queriesPage) + "A part of the list of tables cannot be read."));
}

INSTANTIATE_TEST_SUITE_P(Versions, StrayPages, testing::Values(JetVersion::Jet3, JetVersion::Jet4),
    [](const auto& test) { return test.param == JetVersion::Jet3 ? "Jet3" : "Jet4"; });

} // namespace
} // namespace vellumo
