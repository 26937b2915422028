// SPDX-License-Identifier: MIT
#include "export/objects/ObjectsExport.h"
#include "export/objects/ObjectCells.h"
#include "jet/Crypto.h"
#include "support/FileSizeLimit.h"
#include "support/ModelBuilder.h"
#include "support/TempFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vellumo {
namespace {

using namespace test;
using testing::ElementsAre;
using testing::MatchesRegex;

ObjectsReport exportAll(const TAdmMDBFile& file, const std::string& folder, std::uint64_t stopAfter = 100)
{
    std::vector<const TAdmMDBTable*> tables;
    for (const auto& table : file.tables())
        tables.push_back(table.get());
    return exportObjects(file, tables, folder, [&](std::uint64_t done, std::uint64_t) { return done < stopAfter; });
}

std::shared_ptr<TAdmBlobData> damaged(std::string_view bytes, std::string storedName = "")
{
    return makeBlob(bytes, "jpg", {ObjectState::Damaged, std::move(storedName), ""});
}

// The published values.
TEST(Sha256, IsTheStandards)
{
    const struct {
        std::string_view text;
        const char* digest;
    } cases[] = {{"", "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"},
        {"abc", "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"},
        {"abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq",
            "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1"}};
    for (const auto& c : cases)
        EXPECT_EQ(jet::sha256(std::as_bytes(std::span(c.text))), c.digest) << c.text;
}

TEST(ObjectNames, AreSafeAndShort)
{
    const struct {
        const char* storedName;
        const char* extension;
        bool isDamaged;
        std::string expected;
    } cases[] = {
        {"", "jpg", false, "7.jpg"},
        {"", "", false, "7"},
        {"", "", true, "7.damaged"},
        {"", "jpg", true, "7.damaged.jpg"},
        {"Tea.JPG", "jpg", true, "7-Tea.damaged.jpg"},
        {"Tea.tar", "gz", false, "7-Tea.tar.gz"},
        {"../../x\\y:z*?\"<>|\n\u202E", "../b", false, "7-.._.._x_y_z________..._b"},
        {"\xFF.jpg", "jpg", false, "7-_.jpg"},
        {".jpg", "jpg", false, "7.jpg"},
    };
    for (const auto& c : cases) {
        const ObjectFacts facts{c.isDamaged ? ObjectState::Damaged : ObjectState::Whole, c.storedName, ""};
        EXPECT_EQ(objectFileName(7, *makeBlob("x", c.extension, facts)), c.expected);
    }
    for (const auto length : {113, 114, 115}) { // the last that fits, and characters of two bytes that do not
        const auto name = std::string(static_cast<std::size_t>(length - 1), 'n') + "\u00E4";
        EXPECT_EQ(objectFileName(7, *makeBlob("x", "jpg", {ObjectState::Whole, name, ""})),
            "7-" + (length == 113 ? name : std::string(std::min(length - 1, 114), 'n')) + ".jpg");
    }
    FolderNames names;
    names.reserve("manifest.csv");
    const std::string longName(130, 'l');
    for (const auto& [name, expected] : {std::pair<std::string, std::string>{"..", "__"}, {"", "_"}, {"/", "_ (2)"},
             {"Stra\u00DFe", "Stra\u00DFe"}, {"STRASSE", "STRASSE (2)"}, {"Manifest.CSV", "Manifest.CSV (2)"},
             {longName, longName.substr(0, 120)}, {longName, longName.substr(0, 116) + " (2)"}})
        EXPECT_EQ(names.nameFor(name), expected);
}

TEST(ObjectsExport, ListsEveryObject)
{
    const TempFolder out;
    const auto linked = makeBlob("", "doc", {ObjectState::Linked, "", "C:\\a, b\\\"c\".doc"});
    const auto file = makeFile("/data/Shop.mdb",
        makeTable("../Tea", {{"ID", "Long Integer"}, {"P", "OLE"}, {"p", "OLE"}},
            {{"1", null, makeBlob("abc", "bin")}, {"2", damaged("abc", "a\r\nb.jpg"), null}, {"3", linked, null}}, 2),
        makeTable("Text only", {{"T", "Text"}}, {{"x"}}));
    const auto report = exportAll(*file, out.path("new"));
    EXPECT_EQ(report.written, 2U);
    EXPECT_EQ(report.damaged, 1U);
    EXPECT_EQ(report.linked, 1U);
    EXPECT_TRUE(report.failures.empty() && !report.isStopped);
    const std::string hash = "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad";
    EXPECT_EQ(out.read("new/manifest.csv"),
        "table,column,row,file,name,type,bytes,sha256,state\r\n"
        "../Tea,P,2,.._Tea/P/2-a__b.damaged.jpg,\"a\r\nb.jpg\",jpg,3,"
            + hash
            + ",damaged\r\n"
              "../Tea,P,3,,\"C:\\a, b\\\"\"c\"\".doc\",doc,0,,linked\r\n"
              "../Tea,p,1,.._Tea/p (2)/1.bin,,bin,3,"
            + hash + ",whole\r\n");
    EXPECT_EQ(out.read("new/.._Tea/P/2-a__b.damaged.jpg"), "abc");
    EXPECT_EQ(out.read("new/.._Tea/p (2)/1.bin"), "abc");
    EXPECT_THAT(out.names(), ElementsAre("new"));
}

// Two files of a cell may have one name.
TEST(ObjectsExport, WritesEveryFileOfACell)
{
    const TempFolder out;
    const auto cell = makeBlob("abc", "txt", {ObjectState::Whole, "a.txt", ""});
    cell->addFurtherFile(makeBlob("d", "txt", {ObjectState::Whole, "a.txt", ""}));
    const auto file = makeFile("/data/Shop.mdb", makeTable("T", {{"F", "Attachment"}}, {{null}, {cell}}),
        makeTable("manifest.csv", {{"O", "OLE"}}, {{makeBlob("m", "bin")}}));
    EXPECT_EQ(exportAll(*file, out.path()).written, 3U);
    EXPECT_EQ(out.read("manifest.csv (2)/O/1.bin"), "m");
    EXPECT_EQ(out.read("T/F/2-a.txt"), "abc");
    EXPECT_EQ(out.read("T/F/2.2-a.txt"), "d");
    const auto manifest = out.read("manifest.csv").value_or("");
    EXPECT_THAT(manifest, testing::HasSubstr("\r\nT,F,2,T/F/2-a.txt,a.txt,txt,3,"));
    EXPECT_THAT(manifest, testing::HasSubstr("\r\nT,F,2,T/F/2.2-a.txt,a.txt,txt,1,"));
    EXPECT_EQ(furtherFileCount(*file->findTable("T"), 0), 1U);
    EXPECT_THAT(leftOutObjects(*file->findTable("T")), testing::IsEmpty());
}

TEST(ObjectsExport, GoesOnAfterAFailure)
{
    const TempFolder out;
    std::filesystem::create_directories(out.path("T/O/2.bin"));
    out.write("U", "a file where a folder should be");
    std::filesystem::create_directories(out.path("V/O"));
    out.write("V/O/1.bin", "the database");
    const auto object = makeBlob("abc", "bin");
    const auto file = makeFile(out.path("V/O/1.bin"),
        makeTable("T", {{"O", "OLE"}}, {{object}, {object}, {makeBlob(std::string(2000, 'x'), "bin")}, {object}}),
        makeTable("U", {{"O", "OLE"}}, {{object}}), makeTable("V", {{"O", "OLE"}}, {{object}, {object}}));
    ObjectsReport report;
    {
        const FileSizeLimit limit(1000);
        report = exportAll(*file, out.path());
    }
    EXPECT_EQ(report.written, 3U);
    EXPECT_THAT(report.failures,
        ElementsAre(MatchesRegex("File .*/T/O/2.bin. cannot be written: Is a directory"),
            MatchesRegex("File .*/T/O/3.bin. cannot be written: File too large"),
            MatchesRegex("File .*/U. cannot be written: .*"),
            MatchesRegex("File .*/V/O/1.bin. cannot be written: it is the database itself")));
    EXPECT_EQ(out.read("V/O/1.bin"), "the database");
    EXPECT_EQ(out.read("V/O/2.bin"), "abc");
    EXPECT_FALSE(out.exists("T/O/3.bin"));
    const auto manifest = out.read("manifest.csv").value_or("");
    EXPECT_EQ(std::ranges::count(manifest, '\n'), 8);
    EXPECT_THAT(manifest, testing::HasSubstr("\r\nU,O,1,,,bin,3,"));
}

TEST(ObjectsExport, AStoppedRunHasNoList)
{
    const TempFolder out;
    const auto object = makeBlob("abc", "bin");
    const auto file = makeFile("/data/Shop.mdb", makeTable("T", {{"O", "OLE"}}, {{object}, {object}}));
    EXPECT_TRUE(exportAll(*file, out.path(), 1).isStopped);
    EXPECT_THAT(out.names(), ElementsAre("T"));
    EXPECT_EQ(exportAll(*file, out.path("missing/folder")).failures.size(), 1U);
}

} // namespace
} // namespace vellumo
