// SPDX-License-Identifier: MIT
#pragma once

#include "samples/DatabaseWriter.h"
#include "samples/OleObjects.h"
#include "support/NewerFile.h"
#include "support/ProgramRun.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace vellumo::test {

// A small shop, and a table that is larger than all buffers between the writer of a file and its reader.
class Program : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        s_folder = std::make_unique<TempFolder>();
        samples::DatabaseDescription shop;
        auto& items = shop.tables.emplace_back();
        items.name = "Items";
        items.columns = {{.name = "ID", .type = samples::ColumnType::Long}, {.name = "Name"},
            {.name = "Price", .type = samples::ColumnType::Double},
            {.name = "Picture", .type = samples::ColumnType::Ole}};
        items.indexes = {{.name = "Key", .columns = {{"ID"}}, .primary = true}};
        items.rows = samples::rowsOf({
            {std::int64_t{1}, std::string("Tea\tand\nmilk"), 2.5,
                samples::pictureObject(samples::asBytes("BM\xFFpicture"))},
            {std::int64_t{2}, std::string("K\u00E4se")},
        });
        auto& large = shop.tables.emplace_back();
        large.name = "Large";
        large.columns = {{.name = "T",
            .properties = {samples::booleanProperty("Required", true), samples::byteProperty("TextAlign", 3)}}};
        large.properties = {samples::textProperty("Description", "Much")};
        shop.relations = {{.name = "R",
            .table = "Large",
            .columns = {"T"},
            .referencedTable = "Items",
            .referencedColumns = {"Name"},
            .enforced = false,
            .cascadeDeletes = true}};
        large.rows = [](std::size_t index, samples::Row& row) {
            row.values = {std::string(200, 'x')};
            return index < 20'000;
        };
        s_written = samples::writeDatabase(shop, database());
        ASSERT_TRUE(s_written.ok()) << s_written.error;
        s_folder->write("broken.mdb", "not a database");
        writeNewer();
    }
    // A newer file, and an encrypted one, with a lookup and all that can stand beside tables.
    static void writeNewer()
    {
        samples::DatabaseDescription more{.password = "idle"};
        more.tables = {{.name = "T",
            .columns = {{.name = "Who",
                .type = samples::ColumnType::Long,
                .properties = {{"DisplayControl", samples::PropertyType::Integer, 111},
                    {"ColumnCount", samples::PropertyType::Integer, 2}, samples::textProperty("ColumnWidths", "0;1"),
                    samples::textProperty("Caption", "Person"), samples::textProperty("RowSourceType", "Value List"),
                    samples::memoProperty("RowSource", "1;Zoe;2;Ann")}}},
            .rows = samples::rowsOf(std::vector<std::vector<samples::Value>>{{std::int64_t{1}}, {std::int64_t{2}}}),
            .properties = {
                samples::textProperty("Description", "People"), samples::textProperty("ValidationRule", ">0")}}};
        more.otherEntries = {
            {.name = "Q", .query = {{.attribute = 5, .name1 = "T"}, {.attribute = 6, .expression = "Who"}}},
            {.name = "L", .type = 6, .connect = "Text;PWD=geheim", .foreignName = "x.txt"},
            {.name = "F", .type = -32768}};
        ASSERT_TRUE(samples::writeDatabase(more, s_folder->path("More.mdb")).ok());
        const auto bytes = s_folder->read("More.mdb").value();
        s_folder->write("Newer.accdb", test::newerFile(bytes));
        s_folder->write("Locked.accdb", test::encryptedFile(bytes, "Sesam"));
    }
    static void TearDownTestSuite() { s_folder.reset(); }

    static std::string database() { return s_folder->path("Shop.mdb"); }
    // "FILE" stands for the database.
    static RunningProgram start(
        std::vector<std::string> arguments, const std::string& output = "",
        const std::function<void()>& prepare = [] {})
    {
        std::ranges::replace(arguments, std::string("FILE"), database());
        arguments.insert(arguments.begin(), VELLUMO_BIN_DIR "/vellumo-cli");
        return RunningProgram(arguments, output, [&] {
            ::setenv("LC_ALL", "C", 1);
            prepare();
        });
    }
    template <typename... More> static CommandResult run(const std::vector<std::string>& arguments, const More&... more)
    {
        return start(arguments, more...).wait();
    }

    static inline std::unique_ptr<TempFolder> s_folder;
    static inline samples::WriteResult s_written;
    TempFolder m_out;
};

} // namespace vellumo::test
