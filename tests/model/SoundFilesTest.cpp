// SPDX-License-Identifier: MIT
// Files that are sound must be told so: one false alarm, and nobody believes the next.

#include "model/TAdmMDBFile.h"
#include "samples/DatabaseWriter.h"
#include "samples/DemoDatabase.h"
#include "samples/SampleDatabases.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace vellumo {
namespace {

const std::filesystem::path corpus = VELLUMO_SOURCE_DIR "/../shared/corpus";

void expectNoDamage(const std::string& path)
{
    for (const bool checksIndexes : {false, true}) {
        TAdmMDBFile file;
        file.setFullPath(path);
        ASSERT_TRUE(file.open({.checksIndexes = checksIndexes})) << path;
        for (const auto& record : file.damage().records())
            ADD_FAILURE() << path << (checksIndexes ? ", with indexes: " : ": ") << damageText(record);
    }
}

TEST(SoundFiles, MadeOnesGiveNoRecord)
{
    using enum samples::JetVersion;
    auto encoded = samples::typesDatabase(Jet4);
    encoded.databaseKey = 0x6AA23F11;
    const samples::DatabaseDescription made[] = {samples::demoDatabase(), samples::millionDatabase(20'000),
        samples::wideDatabase(), samples::manyTablesDatabase(300), samples::typesDatabase(Jet3),
        samples::typesDatabase(Jet4), samples::evolvedDatabase(Jet3), samples::evolvedDatabase(Jet4),
        samples::spreadDatabase(Jet3), samples::spreadDatabase(Jet4), encoded};
    const test::TempFolder folder;
    for (const auto& database : made) {
        ASSERT_EQ(samples::writeDatabase(database, folder.path("made.mdb")).error, "");
        expectNoDamage(folder.path("made.mdb"));
    }
}

TEST(SoundFiles, RealOnesGiveNoRecord)
{
    if (!std::filesystem::is_directory(corpus)) GTEST_SKIP() << "no real files here";
    for (const auto& entry : std::filesystem::directory_iterator(corpus)) {
        if (entry.path().extension() == ".mdb") expectNoDamage(entry.path().string());
    }
}

// Rows that are older than some columns, and younger than the deletion of another.
TEST(SoundFiles, RowsOfAnEvolvedTableKeepTheirValues)
{
    const test::TempFolder folder;
    for (const auto version : {samples::JetVersion::Jet3, samples::JetVersion::Jet4}) {
        ASSERT_EQ(samples::writeDatabase(samples::evolvedDatabase(version), folder.path("made.mdb")).error, "");
        TAdmMDBFile file;
        file.setFullPath(folder.path("made.mdb"));
        ASSERT_TRUE(file.open());
        const auto& rows = file.findTable("Children")->rows();
        ASSERT_EQ(rows.rowCount(), 200U) << "those of before the first memo as well";
        for (std::size_t row = 0; row < 200; ++row) {
            const auto text = [&](const char* column) { return rows.text(row, rows.columnIndex(column).value()); };
            const auto id = std::to_string(row + 1);
            EXPECT_EQ(text("ID"), id);
            EXPECT_EQ(text("C"), "-" + id);
            EXPECT_EQ(text("E"), std::to_string(301 + row));
            EXPECT_EQ(text("Flag"), row >= 60 && row % 2 == 1 ? "1" : "0") << id;
            EXPECT_EQ(text("Note").size(), row < 120 ? 0 : 30 + 97 * (row % 60)) << id;
        }
    }
}

} // namespace
} // namespace vellumo
