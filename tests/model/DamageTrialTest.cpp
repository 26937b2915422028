// SPDX-License-Identifier: MIT
// Sound files of every kind of content, damaged in every way: what is lost must be told. VELLUMO_DAMAGE_SEEDS=100 tries
// that many copies a file and method, and prints a line a method.

#include "embedded/TAdmBlobData.h"
#include "model/TAdmMDBFile.h"
#include "samples/DamageMethod.h"
#include "samples/DatabaseWriter.h"
#include "samples/SampleDatabases.h"
#include "support/TempFolder.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <map>

namespace vellumo {
namespace {

using samples::JetVersion;

struct Tally {
    int files = 0;   // copies tried
    int refused = 0; // not opened, and so told
    int losses = 0;  // tables of which something is missing
    int told = 0;    // of them, those that a record covers
};

// A loss that no record covers, as a text for whoever looks into it.
using Findings = std::vector<std::string>;

std::size_t cellSize(const TAdmMDBTable& table, std::size_t row, std::size_t column)
{
    const auto value = table.rows().value(row, column);
    if (const auto* const text = std::get_if<std::string_view>(&value)) return text->size();
    const auto* const object = std::get_if<std::shared_ptr<TAdmBlobData>>(&value);
    return object != nullptr && (*object)->state() == ObjectState::Whole ? (*object)->data().size() : 0;
}

// Row numbers by the text of the column "ID"; none without that column.
std::map<std::string_view, std::size_t> rowsById(const TAdmMDBTable& table)
{
    std::map<std::string_view, std::size_t> rows;
    const auto id = table.rows().columnIndex("ID");
    for (std::size_t row = 0; id && row < table.rows().rowCount(); ++row)
        rows.emplace(table.rows().text(row, *id), row);
    return rows;
}

// The first cell that became null, or a long one that became shorter; "" for none. Shorter texts of other columns are
// other values.
std::string lostCell(const TAdmMDBTable& sound, const TAdmMDBTable& damaged)
{
    const auto found = rowsById(damaged);
    for (const auto& [id, row] : rowsById(sound)) {
        const auto other = found.find(id);
        if (other == found.end()) continue; // rows are counted; another ID may be another value
        for (std::size_t column = 0; column < sound.columns().size(); ++column) {
            const auto before = cellSize(sound, row, column);
            const auto place = damaged.rows().columnIndex(sound.columns()[column]->name());
            const auto after = place ? cellSize(damaged, other->second, *place) : 0;
            const bool isLong = before > 255 || sound.isOLEColumn(sound.columns()[column]->name());
            if (before > 0 && (after == 0 || (isLong && after < before)))
                return sound.columns()[column]->name() + " of " + std::string(id) + ", " + std::to_string(before)
                    + " to " + std::to_string(after) + " bytes,";
        }
    }
    return {};
}

// "" when nothing is lost.
std::string lossOf(const TAdmMDBTable& sound, const TAdmMDBTable* damaged, bool comparesCells)
{
    if (damaged == nullptr) return "the table";
    const auto before = sound.rows().rowCount();
    const auto after = damaged->rows().rowCount();
    if (after < before) return std::to_string(before - after) + " rows";
    return comparesCells ? lostCell(sound, *damaged) : "";
}

std::vector<std::string> columnNames(const TAdmMDBTable& table)
{
    std::vector<std::string> names;
    for (const auto& column : table.columns())
        names.push_back(column->name());
    return names;
}

// The table of the same name, or one that only the damaged file has, with the same columns: the bytes of a name may be
// those of another name. Null when it is missing.
const TAdmMDBTable* counterpart(const TAdmMDBTable& table, const TAdmMDBFile& sound, const TAdmMDBFile& damaged)
{
    if (const auto* const same = damaged.findTable(table.name())) return same;
    for (const auto& other : damaged.tables()) {
        if (sound.findTable(other->name()) == nullptr && columnNames(*other) == columnNames(table)) return other.get();
    }
    return nullptr;
}

// What belongs to a table that is missing as a whole is told without its name.
bool isTold(const DamageReport& report, const std::string& table, bool isMissing)
{
    if (isMissing && report.total(DamageKind::LostTable) + report.total(DamageKind::Page, "") > 0) return true;
    return report.concerns(table) || report.total(DamageKind::File) > 0 || report.total(DamageKind::Catalogue) > 0;
}

void compare(const TAdmMDBFile& sound, const TAdmMDBFile& damaged, bool comparesCells, const std::string& what,
    Tally& tally, Findings& findings)
{
    for (const auto& table : sound.tables()) {
        const auto* const other = counterpart(*table, sound, damaged);
        const auto loss = lossOf(*table, other, comparesCells);
        if (loss.empty()) continue;
        ++tally.losses;
        if (isTold(damaged.damage(), other != nullptr ? other->name() : table->name(), other == nullptr))
            ++tally.told;
        else
            findings.push_back(what + ": " + loss + " of " + table->name());
    }
}

struct TrialFile {
    const char* name;
    samples::DatabaseDescription (*make)(JetVersion);
    JetVersion version;
    std::uint64_t seeds; // copies a method
    std::map<std::string, std::size_t> rowCounts;
};

class DamageTrial : public testing::TestWithParam<TrialFile> {
protected:
    void SetUp() override
    {
        const auto path = m_folder.path("sound.mdb");
        ASSERT_EQ(samples::writeDatabase(GetParam().make(GetParam().version), path).error, "");
        m_sound.setFullPath(path);
        ASSERT_TRUE(m_sound.open({.newerFormats = true}));
        for (const auto& [table, rows] : GetParam().rowCounts)
            ASSERT_EQ(m_sound.findTable(table)->rows().rowCount(), rows) << table << ", undamaged";
        const auto content = m_folder.read("sound.mdb").value();
        m_bytes.assign(content.begin(), content.end());
    }

    void tryCopy(const samples::Bytes& bytes, const samples::DamageMethodFacts& method, std::uint64_t seed)
    {
        m_folder.write("damaged.mdb", {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
        auto& tally = m_tallies[method.name];
        ++tally.files;
        TAdmMDBFile file;
        file.setFullPath(m_folder.path("damaged.mdb"));
        if (file.open({.readerCount = 1, .newerFormats = true, .checksIndexes = true}))
            compare(m_sound, file, !method.hitsValues, std::string(method.name) + ", seed " + std::to_string(seed),
                tally, m_findings);
        else
            ++tally.refused;
    }

    void print() const
    {
        Tally sum;
        std::printf("%-20s %6s %8s %7s %6s\n", "method", "files", "refused", "losses", "told");
        const auto line = [](std::string_view name, const Tally& tally) {
            std::printf("%-20.*s %6d %8d %7d %6d  %5.1f %%\n", static_cast<int>(name.size()), name.data(), tally.files,
                tally.refused, tally.losses, tally.told, tally.losses == 0 ? 100.0 : 100.0 * tally.told / tally.losses);
        };
        for (const auto& [name, tally] : m_tallies) {
            line(name, tally);
            sum.files += tally.files;
            sum.refused += tally.refused;
            sum.losses += tally.losses;
            sum.told += tally.told;
        }
        line("all", sum);
    }

    test::TempFolder m_folder;
    TAdmMDBFile m_sound;
    samples::Bytes m_bytes;
    std::map<std::string_view, Tally> m_tallies;
    Findings m_findings;
};

TEST_P(DamageTrial, NothingIsLostWithoutAWord)
{
    const char* const wish = std::getenv("VELLUMO_DAMAGE_SEEDS");
    const std::uint64_t seeds = wish != nullptr ? std::strtoull(wish, nullptr, 10) : GetParam().seeds;
    for (const auto& method : samples::damageMethods()) {
        samples::Bytes last = m_bytes;
        for (std::uint64_t seed = 1; seed <= seeds; ++seed) {
            auto bytes = samples::damaged(m_bytes, method.method, seed);
            if (bytes != last && bytes != m_bytes) tryCopy(bytes, method, seed);
            last = std::move(bytes);
        }
        EXPECT_GT(m_tallies[method.name].files, 0) << "nothing to damage: " << method.name;
    }
    if (wish != nullptr) print();
    EXPECT_EQ(m_findings.size(), 0U);
    for (std::size_t i = 0; i < std::min<std::size_t>(20, m_findings.size()); ++i)
        ADD_FAILURE() << m_findings[i];
}

samples::DatabaseDescription newer(JetVersion) { return samples::newerDatabase(); }

// A list of pages in the large form takes a large file, of which few copies are tried.
const TrialFile files[] = {
    {"EvolvedJet3", samples::evolvedDatabase, JetVersion::Jet3, 24,
        {{"Parents", 890}, {"Children", 200}, {"Types", 6}}},
    {"EvolvedJet4", samples::evolvedDatabase, JetVersion::Jet4, 24, {{"Parents", 890}, {"Children", 200}, {"Rows", 5}}},
    {"Newer", newer, JetVersion::Jet4, 24, {{"Newer", 4}, {"Types", 6}}},
    {"SpreadJet3", samples::spreadDatabase, JetVersion::Jet3, 4, {{"Spread", 1050}}},
    {"SpreadJet4", samples::spreadDatabase, JetVersion::Jet4, 4, {{"Spread", 530}}},
};

INSTANTIATE_TEST_SUITE_P(
    Files, DamageTrial, testing::ValuesIn(files), [](const auto& test) { return std::string(test.param.name); });

} // namespace
} // namespace vellumo
