// SPDX-License-Identifier: MIT
// What the program writes into files and to its output for other programs.
#include "Program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vellumo {
namespace {

using test::Program;
using ::testing::HasSubstr;

TEST_F(Program, ExtractsObjects)
{
    EXPECT_EQ(run({"blob", "FILE", "Items", "Picture", "1", "--to", "-"}).out, "BM\xFFpicture");
    const auto result = run({"objects", "FILE", "--table", "Items", "--to", m_out.path("all")});
    EXPECT_EQ(result.out, "1 object written.\n");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(m_out.read("all/Items/Picture/1.bmp"), "BM\xFFpicture");
    EXPECT_EQ(run({"blob", "FILE", "Items", "Picture", "1", "--to", m_out.path("file")}).status, 0);
    EXPECT_EQ(m_out.read("file"), "BM\xFFpicture");
    EXPECT_EQ(run({"blob", "FILE", "Items", "Picture", "1", "--to", m_out.path()}).status, 0);
    EXPECT_EQ(m_out.read("Picture-1.bmp"), "BM\xFFpicture");
}

TEST_F(Program, Exports)
{
    auto result = run({"export", "FILE", "--format", "csv", "--to", m_out.path()});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "Export finished.\n2 tables exported successfully.\n");
    // No bar where there is no terminal.
    EXPECT_EQ(result.err, "vellumo-cli: Items.Picture: 1 object is left out.\nvellumo-cli: --exact avoids this.\n");
    EXPECT_EQ(m_out.read("Items.csv"),
        "\"ID\",\"Name\",\"Price\",\"Picture\"\n1,\"Tea\tand\nmilk\",2.5,\n2,\"K\u00E4se\",,\n");

    result = run({"export", "FILE", "--format", "txt", "--to", m_out.path(), "--table", "Items", "--no-header",
        "--field-delimiter", "tab", "--record-delimiter", "crlf", "--decimal-symbol=", "--encoding", "latin1"});
    EXPECT_EQ(result.out, "Export finished.\n1 table exported successfully.\n");
    EXPECT_EQ(m_out.read("Items.txt"), "1\t\"Tea\tand\nmilk\"\t25\t\r\n2\t\"K\xE4se\"\t\t\r\n");
    EXPECT_FALSE(m_out.exists("Large.txt"));

    result = run({"export", "FILE", "--format", "xml", "--to", m_out.path(), "--encoding", "us-ascii"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out,
        "Export finished.\n1 table exported successfully.\n"
        "<Items> Failed: Text cannot be represented in the selected encoding. Row 2, column Name\n");
    EXPECT_FALSE(m_out.exists("Items.xml"));

    result = run({"export", "FILE", "--format", "csv", "--to", m_out.path("quite/missing"), "--table", "Items"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out,
        "Export finished.\n<Items> Failed: Unable to create file for export. " + m_out.path("quite/missing/Items.csv")
            + ": No such file or directory\n");
}

TEST_F(Program, ExportsWhatIsChosenToStandardOutput)
{
    const std::vector<std::string> common = {"export", "FILE", "--table", "Items", "--to", "-", "--format"};
    const auto with = [&](std::vector<std::string> more) {
        more.insert(more.begin(), common.begin(), common.end());
        return more;
    };
    const std::string report = "Export finished.\n1 table exported successfully.\n";
    auto result = run(with({"csv", "--columns", "Name,ID", "--search", "k\u00E4se"}));
    EXPECT_EQ(result.out, "\"Name\",\"ID\"\n\"K\u00E4se\",2\n");
    EXPECT_EQ(result.err, report);
    EXPECT_EQ(result.status, 0);
    result = run(with({"txt", "--columns", "ID", "--sort", "ID:desc", "--no-header"}));
    EXPECT_EQ(result.out, "2\n1\n");

    // Not written from beginning to end, but whole all the same.
    EXPECT_EQ(
        run({"export", "FILE", "--format", "sqlite", "--to", m_out.path("x.sqlite"), "--table", "Items"}).status, 0);
    result = run(with({"sqlite"}));
    EXPECT_TRUE(result.out.starts_with("SQLite format 3"));
    EXPECT_EQ(result.out.size(), m_out.read("x.sqlite").value_or("").size());

    result = run(with({"csv", "--encoding", "us-ascii"}), m_out.path("out"));
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(m_out.read("out"), "");
    if (std::filesystem::exists("/dev/full")) {
        result = run(with({"csv"}), "/dev/full");
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.err, HasSubstr("Unable to write file. /dev/stdout: No space left on device\n"));
    }
}

TEST_F(Program, FindsCellsAsJson)
{
    const auto result = run({"find", "FILE", "2", "--match", "equals", "--json"});
    EXPECT_EQ(result.out, R"({
  "hits": [
    {
      "table": "Items",
      "column": "ID",
      "row": 2,
      "text": "2"
    }
  ],
  "damage": []
}
)");
}

} // namespace
} // namespace vellumo
