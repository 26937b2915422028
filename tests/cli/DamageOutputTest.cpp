// SPDX-License-Identifier: MIT
#include "cli/DamageOutput.h"
#include "support/ModelBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace vellumo {
namespace {

TEST(DamageOutput, TellsWhatConcernsTheTables)
{
    const auto file = test::makeFile("/data/Shop.mdb", test::makeTable("A", {}));
    EXPECT_EQ(damageSection(*file), "");
    EXPECT_EQ(damageJson(*file).dump(), "[]");
    EXPECT_EQ(doneWith(*file), ExitStatus::Done);

    DamageReport report;
    report.add({.kind = DamageKind::Value, .table = "A\033\n", .column = "C", .page = 7, .row = 3});
    file->setDamage(report);
    const std::string sound[] = {"A"};
    EXPECT_EQ(damageSection(*file, sound), "\nDamage:\n    Other parts of the file are damaged.\n");
    EXPECT_EQ(damageJson(*file, sound).dump(), "[]");
    EXPECT_EQ(doneWith(*file), ExitStatus::Damaged);
    EXPECT_EQ(damageSection(*file), "\nDamage:\n    A\\u{1B} , column C, row 3, page 7: A value cannot be read.\n");

    report.add({.kind = DamageKind::Relations, .count = 2});
    file->setDamage(report);
    EXPECT_EQ(damageSection(*file, sound), "\nDamage:\n    Some relations cannot be read.\n");
    EXPECT_EQ(damageJson(*file).dump(),
        R"([{"kind":"value","table":"A\u001b\n","column":"C","page":7,"row":3,"count":1,)"
        R"("text":"A\u001b\n, column C, row 3, page 7: A value cannot be read."},)"
        R"({"kind":"relations","table":null,"column":null,"page":null,"row":null,"count":2,)"
        R"("text":"Some relations cannot be read."}])");
}

TEST(DamageOutput, ShowsTwentyLines)
{
    const auto file = test::makeFile("/data/Shop.mdb", test::makeTable("A", {}));
    DamageReport report;
    for (const auto count : {20, 21, 22}) {
        while (report.records().size() < static_cast<std::size_t>(count))
            report.add({.kind = DamageKind::Table, .table = "T" + std::to_string(report.records().size())});
        file->setDamage(report);
        const auto text = damageSection(*file);
        EXPECT_EQ(std::ranges::count(text, '\n'), 2 + std::min(count, 21)) << count;
        const auto rest = "    ... and " + std::to_string(count - 20) + " more\n";
        EXPECT_EQ(text.ends_with(rest), count > 20) << text;
    }
}

} // namespace
} // namespace vellumo
