// SPDX-License-Identifier: MIT
#include "samples/RowEncoder.h"

#include <gtest/gtest.h>

namespace vellumo::samples {
namespace {

std::vector<ColumnDescription> bytesNamed(std::string_view letters)
{
    std::vector<ColumnDescription> columns;
    for (const char letter : letters)
        columns.push_back({.name = {letter}, .type = ColumnType::Byte});
    return columns;
}

// Rows keep the form that they had when they were written, whatever happened to the table since.
TEST(RowEncoder, RowsAreAsOldAsTheirTableWasThen)
{
    TableDescription fixed{.name = "A text was added",
        .columns = {{.name = "ID", .type = ColumnType::Long}, {.name = "Level", .type = ColumnType::Byte},
            {.name = "Text", .type = ColumnType::Text}}};
    TableDescription nine{.name = "d was deleted, i added", .columns = bytesNamed("abcdefghi")};
    nine.columns[3].deleted = true;
    TableDescription flagged = nine;
    flagged.columns[8] = {.name = "i", .type = ColumnType::Boolean};

    const struct {
        const char* name;
        const TableDescription& table;
        Row row;
        Bytes jet3, jet4;
    } cases[] = {
        {"before the first variable column", fixed, {{258, 7, "ab"}, RowState::Live, 2}, {2, 2, 1, 0, 0, 7, 0x03},
            {2, 0, 2, 1, 0, 0, 7, 0x03}},
        {"after it", fixed, {{258, 7, "ab"}}, {3, 2, 1, 0, 0, 7, 'a', 'b', 8, 6, 1, 0x07},
            {3, 0, 2, 1, 0, 0, 7, 'a', 0, 'b', 0, 11, 0, 7, 0, 1, 0, 0x07}},
        {"with the value that was deleted later", nine, {{11, 12, 13, 14, 15, 16, 17, 18, 19}, RowState::Live, 8},
            {8, 11, 12, 13, 14, 15, 16, 17, 18, 0xFF}, {8, 0, 11, 12, 13, 14, 15, 16, 17, 18, 0xFF}},
        {"after the deletion: its room stays", nine, {{11, 12, 13, {}, 15, 16, 17, 18, 19}},
            {9, 11, 12, 13, 0, 15, 16, 17, 18, 19, 0xF7, 0x01}, {9, 0, 11, 12, 13, 0, 15, 16, 17, 18, 19, 0xF7, 0x01}},
        {"a boolean past a multiple of 8", flagged, {{11, 12, 13, {}, 15, 16, 17, 18, true}},
            {9, 11, 12, 13, 0, 15, 16, 17, 18, 0xF7, 0x01}, {9, 0, 11, 12, 13, 0, 15, 16, 17, 18, 0xF7, 0x01}},
    };
    for (const auto& test : cases) {
        for (const auto version : {JetVersion::Jet3, JetVersion::Jet4}) {
            const TableShape shape(test.table, version);
            std::map<std::size_t, LongValues> noLongValues;
            RowEncoder encoder(test.table, shape, version, noLongValues);
            const auto bytes = encoder.encode(test.row);
            EXPECT_EQ(Bytes(bytes.begin(), bytes.end()), version == JetVersion::Jet3 ? test.jet3 : test.jet4)
                << test.name << " in " << test.table.name;
        }
    }
}

} // namespace
} // namespace vellumo::samples
