// SPDX-License-Identifier: MIT
#include "rows/RowStore.h"

#include "embedded/TAdmBlobData.h"

#include <gtest/gtest.h>

namespace vellumo {
namespace {

std::string textOf(const CellValue& value)
{
    if (isNull(value)) return "null";
    if (const auto* text = std::get_if<std::string_view>(&value)) return std::string(*text);
    return "blob " + std::get<std::shared_ptr<TAdmBlobData>>(value)->fileExtension();
}

TEST(RowStore, JoinsGroupsOfAnySize)
{
    RowStore store({"Name", "Picture"}, {CellKind::Text, CellKind::Blob});
    RowGroupBuilder builder(store.kinds());
    const auto addRow = [&](std::string_view text, const char* extension) {
        builder.addText(0, text);
        builder.addBlob(1,
            extension == nullptr ? nullptr
                                 : std::make_shared<TAdmBlobData>(std::vector<std::byte>(3), std::string(extension)));
        builder.endRow();
    };
    addRow("a", "bmp");
    store.append(builder.take());
    store.append(builder.take()); // no rows, no group
    addRow("", nullptr);
    addRow("ccc", "doc");
    addRow("dd", nullptr);
    store.append(builder.take());

    ASSERT_EQ(store.rowCount(), 4U);
    EXPECT_EQ(store.groups().size(), 2U);
    EXPECT_EQ(store.firstRow(1), 1U);
    const char* expected[][2] = {{"a", "blob bmp"}, {"null", "null"}, {"ccc", "blob doc"}, {"dd", "null"}};
    for (std::size_t row = 0; row < 4; ++row) {
        EXPECT_EQ(textOf(store.record(row).value("Name")), expected[row][0]) << row;
        EXPECT_EQ(textOf(store.record(row).value("Picture")), expected[row][1]) << row;
        EXPECT_EQ(store.text(row, 1), "") << row;
    }
    EXPECT_TRUE(isNull(store.record(0).value("name"))) << "names are told apart by case";
    EXPECT_EQ(store.record(2), store.record(2));
    EXPECT_NE(store.record(2), store.record(3));
}

TEST(RowStore, LongTextsComeThroughWhole)
{
    RowGroupBuilder builder({CellKind::Text});
    const std::string longText(3 << 20, 'x');
    builder.addText(0, "before");
    builder.endRow();
    builder.addText(0, longText);
    builder.endRow();
    builder.addText(0, "behind");
    builder.endRow();
    const auto large = builder.take();
    builder.addText(0, "next");
    builder.endRow();
    const auto small = builder.take();

    EXPECT_EQ(large.texts[0].text(0), "before");
    EXPECT_EQ(large.texts[0].text(1), longText);
    EXPECT_EQ(large.texts[0].text(2), "behind");
    EXPECT_EQ(small.texts[0].text(0), "next");
}

TEST(TextColumnBuilder, RefusesMoreThanAChunkHolds)
{
    TextColumnBuilder builder;
    builder.append("a");
    EXPECT_THROW(static_cast<void>(builder.room(TextColumnBuilder::maximumBytes)), std::bad_alloc);
    builder.append("b");
    EXPECT_EQ(builder.openText(), "ab");
}

} // namespace
} // namespace vellumo
