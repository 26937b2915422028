// SPDX-License-Identifier: MIT
#include "support/ModelBuilder.h"

#include <gmock/gmock.h>

namespace vellumo {
namespace {

using testing::ElementsAre;

std::string line(const TAdmMDBObject& object)
{
    std::string text;
    const auto labels = object.getObjectLabels();
    const auto values = object.getObjectValues();
    EXPECT_EQ(labels.size(), values.size());
    for (std::size_t i = 0; i < std::min(labels.size(), values.size()); ++i)
        text += labels[i] + "=" + values[i] + ";";
    return text;
}

TEST(Column, ListsWhatItHas)
{
    const struct {
        const char* name;
        const char* type;
        jet::PropertyList properties;
        const char* expected;
    } cases[] = {
        {"nothing set", "Long Integer", {}, "Name=c;Type=Long Integer;"},
        {"flags", "Text", {{"Required", true}, {"AllowZeroLength", false}, {"UnicodeCompression", "Yes"}},
            "Name=c;Type=Text;Allow zero length=NO;Required=YES;Unicode compression=NO;"},
        {"places", "Double", {{"DecimalPlaces", std::int64_t{255}}}, "Name=c;Type=Double;Decimal places=Auto;"},
        {"two places", "Double", {{"DecimalPlaces", "2"}}, "Name=c;Type=Double;Decimal places=2;"},
        {"no places", "Double", {{"DecimalPlaces", "x"}}, "Name=c;Type=Double;"},
        {"texts", "Text", {{"Description", "größe"}, {"DefaultValue", ""}, {"Format", "@"}, {"Caption", ""}},
            "Name=c;Type=Text;Default value=;Description=größe;Format=@;"},
        {"rich memo", "Memo/Hyperlink", {{"TextFormat", std::int64_t{1}}},
            "Name=c;Type=Memo/Hyperlink;Text Format=Rich Text;"},
        {"odd memo", "Memo/Hyperlink", {{"TextFormat", std::int64_t{9}}},
            "Name=c;Type=Memo/Hyperlink;Text Format=Unknown;"},
        {"format of a text", "Text", {{"TextFormat", std::int64_t{1}}}, "Name=c;Type=Text;"},
        {"result", "Long Integer", {{"ResultType", std::int64_t{10}}, {"Expression", "[a]&[b]"}},
            "Name=c;Type=Long Integer;Result Type=Text;Expression=[a]&[b];"},
        {"no result", "Long Integer", {{"ResultType", std::int64_t{0}}}, "Name=c;Type=Long Integer;"},
        {"alignment", "Text", {{"TextAlign", std::int64_t{4}}}, "Name=c;Type=Text;Text alignment=Distribute;"},
        {"general alignment", "Text", {{"TextAlign", "x"}}, "Name=c;Type=Text;Text alignment=General;"},
    };
    for (const auto& test : cases) {
        TAdmMDBColumn column;
        column.setName("c");
        column.setDataType(test.type);
        column.setProperties(test.properties);
        EXPECT_EQ(line(column), test.expected) << test.name;
    }
    TAdmMDBColumn decimal;
    decimal.setName("d");
    decimal.setDataType("Numeric");
    decimal.setPrecision(12);
    decimal.setScale(0);
    EXPECT_EQ(line(decimal), "Name=d;Type=Numeric;Precision=12;Scale=0;");
}

TEST(Column, AlignsCells)
{
    const struct {
        std::int64_t property;
        TextAlignment expected;
    } cases[] = {{0, TextAlignment::Natural}, {1, TextAlignment::Left}, {2, TextAlignment::Center},
        {3, TextAlignment::Right}, {4, TextAlignment::Justified}, {5, TextAlignment::Natural},
        {-1, TextAlignment::Natural}};
    TAdmMDBColumn column;
    EXPECT_EQ(column.textAlignForCell(), TextAlignment::Natural);
    for (const auto& test : cases) {
        column.setTextAlign(test.property);
        EXPECT_EQ(column.textAlignForCell(), test.expected) << test.property;
    }
}

class TwoAlike : public TAdmMDBObject {
public:
    [[nodiscard]] Information information() const override
    {
        return {{PropertyId::Name, "a"}, {PropertyId::Name, "b"}};
    }
};

// As happens when a language has one word for two labels.
TEST(Object, TwoLabelsAlikeLoseNoValue) { EXPECT_EQ(line(TwoAlike()), "Name=a;Name=b;"); }

TEST(File, TakesItsPathApart)
{
    const struct {
        const char* path;
        const char* folder;
        const char* name;
        const char* extension;
    } cases[] = {
        {"/a/b/shop.mdb", "/a/b", "shop", "mdb"},
        {"/shop.v2.MDB", "", "shop.v2", "MDB"},
        {"/a.b/shop", "/a.b", "shop", ""},
        {"/a/.mdb", "/a", ".mdb", ""},
        {"/a/shop.", "/a", "shop.", ""},
    };
    for (const auto& test : cases) {
        TAdmMDBFile file;
        file.setFullPath(test.path);
        EXPECT_EQ(file.path(), test.folder) << test.path;
        EXPECT_EQ(file.name(), test.name) << test.path;
        EXPECT_EQ(file.fileExtension(), test.extension) << test.path;
        EXPECT_EQ(file.fullPath(), test.path);
    }
}

TEST(File, OrdersByNameThenFolderOrByLastOpening)
{
    std::vector<std::unique_ptr<TAdmMDBFile>> files;
    const char* paths[] = {"/b/file10.mdb", "/b/file2.mdb", "/a/file10.mdb"};
    for (int i = 0; i < 3; ++i) {
        files.push_back(std::make_unique<TAdmMDBFile>());
        files.back()->setFullPath(paths[i]);
        files.back()->setLastOpenDate(Timestamp(std::chrono::seconds(i)));
    }
    sortByName(files);
    EXPECT_EQ(files[0]->fullPath(), "/b/file2.mdb");
    EXPECT_EQ(files[1]->fullPath(), "/a/file10.mdb");
    EXPECT_EQ(files[1]->compareByLastOpenDate(*files[0]), -1);
    EXPECT_EQ(files[0]->compareByLastOpenDate(*files[1]), 1);
}

TEST(Table, FindsItsRelationsAndKeyColumns)
{
    const auto file =
        test::makeFile("/d/Shop.mdb", test::makeTable("Orders", {{"ID", ""}, {"Part", ""}, {"Note", ""}}));
    test::setRelations(*file,
        {{"first", "Orders", "", {}}, {"other case", "orders", "", {}},
            {"second", "Orders", "Customers", {{"CustomerID", "ID"}, {"Branch", "BranchID"}}, false, true}});
    auto& table = *file->tables()[0];
    ASSERT_EQ(table.foreignKeys().size(), 2U);
    EXPECT_EQ(line(*table.foreignKeys()[1]),
        "Name=second;Columns=CustomerID, Branch;Referenced table=Customers;Referenced columns=ID, BranchID;"
        "On update cascade=NO;On delete cascade=YES;");

    test::setIndices(table, {{"PrimaryKey", {"ID", "-Part"}, false, true}, {"Notes", {"Note"}}});
    table.setColumnPrimaryKey();
    std::vector<bool> isKey;
    for (const auto& column : table.columns())
        isKey.push_back(column->isPrimaryKey());
    EXPECT_THAT(isKey, ElementsAre(true, true, false));
    EXPECT_EQ(line(*table.indices()[0]),
        "Name=PrimaryKey;Index keys=ID (Ascending), Part (Descending);Primary key=YES;Unique=NO;");
}

} // namespace
} // namespace vellumo
