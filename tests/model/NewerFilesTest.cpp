// SPDX-License-Identifier: MIT
// What only files of Access 2007 and later have: new types, calculated columns, columns of several values.

#include "embedded/TAdmBlobData.h"
#include "model/TAdmMDBFile.h"
#include "samples/Damage.h"
#include "samples/DatabaseWriter.h"
#include "samples/SampleDatabases.h"
#include "support/TempFolder.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <set>

namespace vellumo {
namespace {

using samples::JetVersion;
using testing::ElementsAre;
using testing::IsEmpty;

class NewerFiles : public testing::Test {
protected:
    void write(const samples::DatabaseDescription& database)
    {
        m_written = samples::writeDatabase(database, m_path);
        ASSERT_EQ(m_written.error, "");
    }
    void open(const OpenOptions& options = {.newerFormats = true, .checksIndexes = true})
    {
        file.close();
        file.setFullPath(m_path);
        ASSERT_TRUE(file.open(options));
        newer = file.findTable("Newer");
        ASSERT_NE(newer, nullptr);
    }

    // The texts of a column of "Newer", row by row; of objects what the cell shows.
    [[nodiscard]] std::vector<std::string> texts(std::string_view column) const
    {
        std::vector<std::string> found;
        for (std::size_t row = 0; row < newer->rows().rowCount(); ++row) {
            const auto value = newer->rows().record(row).value(column);
            const auto* const object = std::get_if<std::shared_ptr<TAdmBlobData>>(&value);
            const auto* const text = std::get_if<std::string_view>(&value);
            found.push_back(object != nullptr ? (*object)->cellDescription()
                    : text != nullptr         ? std::string(*text)
                                              : "");
        }
        return found;
    }
    [[nodiscard]] std::vector<std::string> damage() const
    {
        std::vector<std::string> found;
        for (const auto& record : file.damage().records())
            found.push_back(std::string(damageKindName(record.kind)) + " " + record.table + " " + record.column + " "
                + std::to_string(record.count));
        return found;
    }
    [[nodiscard]] const samples::TablePlaces& places(std::string_view end) const
    {
        return *std::ranges::find_if(
            m_written.tables, [&](const samples::TablePlaces& table) { return table.name.ends_with(end); });
    }

    test::TempFolder m_folder;
    std::string m_path = m_folder.path("newer.accdb");
    samples::WriteResult m_written;
    TAdmMDBFile file;
    const TAdmMDBTable* newer = nullptr;
};

TEST_F(NewerFiles, NewTypesAndCalculatedColumnsAreTheirValues)
{
    write(samples::newerDatabase());
    open();
    EXPECT_THAT(damage(), IsEmpty());
    EXPECT_THAT(texts("BigInt"), ElementsAre("9223372036854775807", "-9223372036854775808", "0", ""));
    EXPECT_THAT(texts("Extended"),
        ElementsAre("06/14/2021 22:45:12.3456789", "01/01/0001 00:00:00.0000000", "12/31/9999 23:59:59.9999999", ""));
    EXPECT_THAT(texts("Sum"), ElementsAre("2", "4", "", ""));
    EXPECT_THAT(texts("Is"), ElementsAre("0", "1", "", ""));
    EXPECT_THAT(texts("Share"), ElementsAre("0.3333", "-0.6667", "", ""));
    EXPECT_THAT(texts("Label"), ElementsAre("now!", "", "", ""));
    EXPECT_THAT(texts("Long label"), ElementsAre(std::string(3000, 'l'), "", "", ""));
    const auto& is = *newer->findColumn("Is");
    EXPECT_TRUE(is.isCalculatedType());
    EXPECT_EQ(is.type(), ColumnType::Boolean);
    EXPECT_EQ(is.expression(), "[ID]>1");
}

TEST_F(NewerFiles, SeveralValuesAreOneCell)
{
    write(samples::newerDatabase());
    open();
    EXPECT_THAT(texts("Colours"), ElementsAre("red; green; blue", "", "one", ""));
    EXPECT_THAT(texts("Sizes"), ElementsAre("large; or so; small; 3", "large; or so", "", ""));
    EXPECT_THAT(texts("Files"), ElementsAre(".txt [1 KB] and 1 more", ".bin [30 KB]", "", ""));
    const auto value = newer->rows().record(0).value("Files");
    const auto& first = *std::get<std::shared_ptr<TAdmBlobData>>(value);
    EXPECT_EQ(first.storedName(), "notes.txt");
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(first.data().data()), first.data().size()), "A few notes.\n");
    ASSERT_EQ(first.furtherFiles().size(), 1U);
    EXPECT_EQ(first.furtherFiles()[0]->storedName(), "plain.bin");
    EXPECT_EQ(first.furtherFiles()[0]->data().size(), 3000U);
    EXPECT_EQ(first.description(), "notes.txt [1 KB]\nplain.bin [3 KB]");

    const auto note = *newer->rows().columnIndex("Note");
    ASSERT_EQ(newer->versionsOf(0, note).size(), 2U);
    EXPECT_EQ(newer->versionsOf(0, note)[0].text, "before");
    EXPECT_EQ(newer->versionsOf(0, note)[0].modified, "06/18/2020 06:00:00");
    EXPECT_EQ(newer->versionsOf(0, note)[1].text, "now");
    EXPECT_TRUE(newer->versionsOf(1, note).empty() && newer->versionsOf(0, 0).empty());
}

TEST_F(NewerFiles, WhatAccessKeepsForItselfIsNotListed)
{
    auto database = samples::newerDatabase();
    database.tables.push_back({.name = "MSysCompactError", .columns = {{.name = "ErrorCode"}}});
    database.tables.push_back({.name = "~TMPCLP123", .columns = {{.name = "A"}}});
    write(database);
    open();
    std::vector<std::string> names;
    for (const auto& table : file.tables())
        names.push_back(table->name());
    EXPECT_THAT(names, ElementsAre("Memos", "Newer", "Rows", "Types"));
    EXPECT_EQ(newer->columns().size(), 12U); // without the history
    ASSERT_EQ(newer->indices().size(), 1U);
    EXPECT_EQ(newer->indices()[0]->name(), "PrimaryKey");
}

TEST_F(NewerFiles, AWishToStopIsHeardWhateverIsBeingRead)
{
    write(samples::newerDatabase());
    int asked = 0, stopAt = 0;
    const OpenOptions options{
        .observer = [&](auto, auto) { return ++asked != stopAt; }, .readerCount = 1, .newerFormats = true};
    open(options);
    for (const int last = asked; stopAt < last;) {
        file.close();
        asked = 0;
        ++stopAt;
        EXPECT_FALSE(file.open(options)) << stopAt;
    }
}

// Each change of a sound file, and all that is told of it.
TEST_F(NewerFiles, DamagedValuesAreTold)
{
    const auto patch = [](std::size_t offset, std::string_view bytes) {
        return [=](std::string& content, std::size_t place) { content.replace(place + offset, bytes.size(), bytes); };
    };
    const struct {
        const char* name;
        std::string_view find; // bytes, of which the last occurrence is changed
        std::function<void(std::string&, std::size_t)> change;
        std::vector<std::string> told;
    } cases[] = {
        {"a letter in an extended date", "0000000000000737954:", patch(3, "x"), {"value Newer Extended 1"}},
        {"a day after the last", "0000000000003652058:", patch(18, "9"), {"value Newer Extended 1"}},
        {"a kind of packing that there is not", std::string_view("\0\0\0\0\xCC\x0B\0\0\x14\0\0\0", 12), patch(0, "\7"),
            {"object Newer Files 1"}},
        {"a header longer than the content", std::string_view("\xCC\x0B\0\0\x14\0\0\0\1", 9), patch(4, "\xFF\xFF"),
            {"object Newer Files 1"}},
        {"less content than is stated", std::string_view("\0\0\0\0\xCC\x0B\0\0\x14\0\0\0", 12), patch(5, "\x1B"),
            {"object Newer Files 1"}},
        {"less packed than is stated", std::string_view("\1\0\0\0\x44\x75\0\0\x78", 9), patch(5, "\x76"),
            {"object Newer Files 1"}},
        {"more packed than is stated", std::string_view("\1\0\0\0\x44\x75\0\0\x78", 9), patch(5, "\x15"),
            {"object Newer Files 1"}},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.name);
        write(samples::newerDatabase());
        auto content = m_folder.read("newer.accdb").value();
        const auto place = content.rfind(test.find);
        ASSERT_NE(place, std::string::npos);
        test.change(content, place);
        m_folder.write("newer.accdb", content);
        open();
        EXPECT_EQ(damage(), test.told);
    }
}

// A cell without the values that it should have says so, and the values themselves are not lost.
TEST_F(NewerFiles, LostWaysToValuesAreTold)
{
    write(samples::newerDatabase());
    const auto& values = places("_Colours");
    ASSERT_TRUE(samples::patchFile(m_path, values.definitionPages[0] * 4096, samples::Bytes(4096)));
    open();
    EXPECT_THAT(damage(),
        ElementsAre(
            "value Newer Colours 1", "value Newer Colours 1", "value Newer Colours 1", "value Newer Colours 1"));
    EXPECT_THAT(texts("Colours"), ElementsAre("\xEF\xBF\xBD", "\xEF\xBF\xBD", "\xEF\xBF\xBD", "\xEF\xBF\xBD"));

    write(samples::newerDatabase());
    ASSERT_TRUE(samples::patchFile(m_path, places("_Files").dataPages[0] * 4096, samples::Bytes(4096)));
    open();
    EXPECT_THAT(damage(), ElementsAre("page Newer Files 1", "object Newer Files 3"));

    // The way from the columns to the tables of values: these are then tables of their own.
    write(samples::newerDatabase());
    ASSERT_TRUE(samples::patchFile(m_path, places("MSysComplexColumns").dataPages[0] * 4096, samples::Bytes(4096)));
    open();
    EXPECT_EQ(file.damage().total(DamageKind::Value), 4U * 4U);
    ASSERT_NE(file.findTable("Newer_Colours"), nullptr);
    EXPECT_EQ(file.findTable("Newer_Colours")->rows().rowCount(), 3U);
}

// Two cells swap one number for another: one shows values twice, the other's values are missing.
TEST_F(NewerFiles, ValuesThatNoCellClaimsAreTold)
{
    auto database = samples::newerDatabase();
    database.tables = {{.name = "Newer"}};
    database.tables[0].columns = {
        {.name = "ID", .type = samples::ColumnType::Long}, {.name = "Tags", .complex = samples::Complex::Texts}};
    database.tables[0].rows = samples::rowsOf(std::vector<std::vector<samples::Value>>{
        {0x11111111, samples::TextValues{"a", "b"}}, {0x22222222, samples::TextValues{"c"}}});
    write(database);
    auto content = m_folder.read("newer.accdb").value();
    content.replace(content.find("\x11\x11\x11\x11\1") + 4, 1, "\2");
    m_folder.write("newer.accdb", content);
    open();
    EXPECT_THAT(texts("Tags"), ElementsAre("c", "c"));
    EXPECT_THAT(damage(), ElementsAre("value Newer Tags 2"));
}

} // namespace
} // namespace vellumo
