// SPDX-License-Identifier: MIT
#include "jet/DamageReport.h"

#include <gtest/gtest.h>

namespace vellumo {
namespace {

using enum DamageKind;

TEST(DamageReport, CountsExactlyAndKeepsSomePlaces)
{
    DamageReport report;
    report.add({.kind = Row, .count = 5}); // without a place from the start
    for (std::uint32_t page = 1; page <= 30; ++page) {
        report.add({.kind = Row, .page = page, .count = 2});
        report.add({.kind = Value, .column = "A", .page = page, .row = page});
        report.add({.kind = Value, .column = "B", .page = page, .row = page});
    }
    EXPECT_EQ(report.total(Row), 65U);
    EXPECT_EQ(report.total(Value), 60U);
    EXPECT_EQ(report.missingRows(), 65U);
    // 20 places of each, and one record for the rest of each.
    EXPECT_EQ(report.records().size(), 63U);
    EXPECT_EQ(report.records().front(), (DamageRecord{.kind = Row, .count = 25}));
    EXPECT_EQ(report.records().back(), (DamageRecord{.kind = Value, .column = "B", .count = 10}));
    EXPECT_EQ(report.records()[60], (DamageRecord{.kind = Value, .column = "B", .page = 20, .row = 20}));
}

TEST(DamageReport, JoinsThoseOfSeveralReaders)
{
    DamageReport part;
    part.add({.kind = Value, .column = "A", .page = 9, .row = 3});
    part.add({.kind = Page, .page = 8});
    part.add({.kind = Row, .table = "Other", .page = 7});
    for (std::uint32_t row = 1; row <= 25; ++row)
        part.add({.kind = Object, .column = "B", .page = 1, .row = row});
    DamageReport report;
    report.append(part, "Mine", 1000);
    report.append(part, "Mine", 2000);
    const auto records = report.records();
    EXPECT_EQ(records[0], (DamageRecord{.kind = Value, .table = "Mine", .column = "A", .page = 9, .row = 1003}));
    EXPECT_EQ(records[1], (DamageRecord{.kind = Page, .table = "Mine", .page = 8})) << "a page is no row";
    EXPECT_EQ(records[2], (DamageRecord{.kind = Row, .table = "Other", .page = 7}));
    EXPECT_EQ(records[24].row, 2003U);
    EXPECT_EQ(report.total(Object, "Mine"), 50U);
    EXPECT_EQ(report.total(Object, "Other"), 0U);
    EXPECT_TRUE(report.concerns("Other"));
    EXPECT_FALSE(report.concerns(""));
}

TEST(DamageReport, IsToldInSentences)
{
    EXPECT_EQ(damageText({.kind = Value, .table = "Orders", .column = "Note", .page = 203, .row = 17}),
        "Orders, column Note, row 17, page 203: A value cannot be read.");
    EXPECT_EQ(damageText({.kind = Row, .count = 2}), "2 rows cannot be read.");
    EXPECT_EQ(damageText({.kind = Table, .table = "Orders", .count = 2}),
        "Orders: The table cannot be read: its definition is damaged.");

    const struct {
        std::vector<DamageRecord> records;
        const char* summary;
    } cases[] = {
        {{}, ""},
        {{{.kind = Table}, {.kind = Table}, {.kind = Row, .count = 400}, {.kind = MissingRows, .count = 80}},
            "2 of 8 tables could not be read, 480 rows are missing."},
        {{{.kind = MissingRows}}, "1 row is missing."},
        {{{.kind = Catalogue}, {.kind = LongText}, {.kind = Value}, {.kind = Object}},
            "The list of tables is damaged, 2 values are damaged, 1 object is damaged."},
        {{{.kind = File}}, "The file is damaged."},
    };
    for (const auto& test : cases) {
        DamageReport report;
        for (const auto& record : test.records)
            report.add(record);
        EXPECT_EQ(damageSummary(report, 6), test.summary);
    }
}

} // namespace
} // namespace vellumo
