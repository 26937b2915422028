// SPDX-License-Identifier: MIT
#include "export/exact/ExactDate.h"
#include "support/ModelBuilder.h"

#include <cmath>
#include <gtest/gtest.h>

namespace vellumo {
namespace {

using namespace std::string_literals;
using namespace test;

// One row of one column.
RowGroup groupOf(std::string_view text, std::optional<RowNotes::Number> note = {}, const std::string& wholeText = {})
{
    RowGroupBuilder rows({CellKind::Text});
    rows.text(0).append(text);
    if (note) rows.text(0).note(*note);
    if (!wholeText.empty()) rows.text(0).noteWholeText(wholeText);
    rows.text(0).endText();
    rows.endRow();
    return rows.take();
}

TEST(ExactCells, TellNullEmptyAndUnreadableApart)
{
    const struct {
        const char* name;
        ColumnType type;
        RowGroup group;
        ExactState state;
        std::string text;
    } cases[] = {
        {"null", ColumnType::Text, groupOf(""), ExactState::Null, ""},
        {"empty", ColumnType::Text, groupOf("", -1), ExactState::Value, ""},
        {"two zeros behind", ColumnType::Memo, groupOf("a", -3), ExactState::Value, "a\0\0"s},
        {"a zero inside", ColumnType::Text, groupOf("a\uFFFDb", {}, "a\0b"s), ExactState::Value, "a\0b"s},
        {"a text that could not be read", ColumnType::Text, groupOf("\uFFFD"), ExactState::Value, "\uFFFD"},
        {"a number that could not be read", ColumnType::Double, groupOf("\uFFFD"), ExactState::Unreadable, "\uFFFD"},
        {"no bytes", ColumnType::Binary, groupOf("", -1), ExactState::Value, ""},
        {"a type of a newer program", ColumnType::Unknown, groupOf("00ff"), ExactState::Value, "00ff"},
    };
    for (const auto& test : cases) {
        ExactCells cells(test.type, test.group, 0);
        const auto cell = cells.at(0);
        EXPECT_EQ(cell.state, test.state) << test.name;
        EXPECT_EQ(cell.text, test.text) << test.name;
    }
}

TEST(ExactCells, ANoteConcernsItsRowAlone)
{
    RowGroupBuilder rows({CellKind::Text});
    for (const std::string_view text : {"01/01/2000 00:00:00", "\uFFFD", "", "01/02/2000 00:00:00"}) {
        rows.text(0).append(text);
        if (text.starts_with("01/01")) rows.text(0).note(250);
        rows.text(0).endText();
        rows.endRow();
    }
    const auto group = rows.take();
    ExactCells cells(ColumnType::DateTime, group, 0);
    EXPECT_EQ(cells.at(0).milliseconds, 250);
    EXPECT_EQ(cells.at(1).state, ExactState::Unreadable);
    EXPECT_EQ(cells.at(2).state, ExactState::Null);
    EXPECT_EQ(cells.at(3).state, ExactState::Value);
    EXPECT_EQ(cells.at(3).milliseconds, 0);
}

TEST(ExactCells, DatesHaveTheirMilliseconds)
{
    const struct {
        std::string_view text;
        int milliseconds;
        const char* iso;
        double serial;
    } cases[] = {
        {"03/05/2014 21:07:00", 0, "2014-03-05 21:07:00", 41703 + 21 / 24.0 + 7 / 1440.0},
        {"12/30/1899 12:00:00", 0, "1899-12-30 12:00:00", 0.5},
        {"03/01/1900 00:00:01", 5, "1900-03-01 00:00:01.005", 61 + 1.005 / 86400},
        {"03/01/2000 00:00:00", -250, "2000-02-29 23:59:59.750", 36586 - 0.25 / 86400},
        {"01/01/0100 00:00:00", 0, "0100-01-01 00:00:00", -657434},
        {"12/31/9999 23:59:59", 999, "9999-12-31 23:59:59.999", 2958466 - 0.001 / 86400},
        {"12/31/9999 23:59:59.1234567", 0, "9999-12-31 23:59:59.1234567", 2958465 + 86399.1234567 / 86400},
    };
    for (const auto& test : cases) {
        const ExactCell cell{ExactState::Value, ExactKind::Date, test.text, test.milliseconds};
        std::string iso;
        appendISODate(cell, ' ', iso);
        EXPECT_EQ(iso, test.iso);
        const auto date = dateOf(cell);
        ASSERT_TRUE(date) << test.text;
        EXPECT_NEAR(dateSerial(*date), test.serial, 1e-9) << test.text;
    }
    EXPECT_FALSE(dateOf({ExactState::Value, ExactKind::Date, "13.04.2014"}));
}

TEST(ExactCells, GiveNumbersAndBytes)
{
    const auto cell = [](ExactKind kind, std::string_view text) { return ExactCell{ExactState::Value, kind, text}; };
    EXPECT_EQ(cell(ExactKind::Integer, "-2147483648").integer(), -2147483648LL);
    EXPECT_EQ(cell(ExactKind::Single, "0.1").real(), static_cast<double>(0.1F)); // not the double 0.1
    EXPECT_EQ(cell(ExactKind::Double, "1.7976931348623157e+308").real(), 1.7976931348623157e+308);
    EXPECT_FALSE(cell(ExactKind::Double, "-inf").isFinite());
    EXPECT_FALSE(cell(ExactKind::Single, "nan").isFinite());
    EXPECT_TRUE(cell(ExactKind::Double, "1e+20").isFinite());
    EXPECT_EQ(cell(ExactKind::Decimal, "-922337203685477.5807").significantDigits(), 19);
    EXPECT_EQ(cell(ExactKind::Decimal, "0.0500").significantDigits(), 1);
    EXPECT_EQ(cell(ExactKind::Decimal, "1200.0000").significantDigits(), 4);
    EXPECT_EQ(cell(ExactKind::Guid, "{00FF-1}").guid(), "00FF-1");
    std::string bytes;
    cell(ExactKind::Binary, "00fF7e").appendBytes(bytes);
    EXPECT_EQ(bytes, "\0\xFF\x7E"s);
}

} // namespace
} // namespace vellumo
