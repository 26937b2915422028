#include "support/ModelBuilder.h"

#include <gmock/gmock.h>

namespace vellumo {
namespace {

using testing::ElementsAre;

std::string line(const TAdmMDBObject& object)
{
    std::string text;
    auto values = object.getObjectValues();
    for (const auto& label : object.getObjectLabels())
        text += label + "=" + infoText(values[label]) + ";";
    return text;
}

TEST(Column, ListsWhatItHas)
{
    using Property = std::pair<const char*, const char*>;
    const struct {
        const char* name;
        const char* type;
        std::vector<Property> properties;
        const char* expected;
    } cases[] = {
        {"nothing set", "Long Integer", {}, "Name=c;Type=Long Integer;"},
        {"flags", "Text", {{"Required", "yes"}, {"AllowZeroLength", "no"}, {"UnicodeCompression", "Yes"}},
            "Name=c;Type=Text;Allow zero length=NO;Required=YES;Unicode compression=NO;"},
        {"places", "Double", {{"DecimalPlaces", "255"}}, "Name=c;Type=Double;Decimal places=Auto;"},
        {"two places", "Double", {{"DecimalPlaces", "2"}}, "Name=c;Type=Double;Decimal places=2;"},
        {"texts", "Text", {{"Description", "größe"}, {"DefaultValue", ""}, {"Format", "@"}},
            "Name=c;Type=Text;Default value=;Description=größe;"},
        {"rich memo", "Memo/Hyperlink", {{"TextFormat", "1"}}, "Name=c;Type=Memo/Hyperlink;Text Format=Rich Text;"},
        {"odd memo", "Memo/Hyperlink", {{"TextFormat", "9"}}, "Name=c;Type=Memo/Hyperlink;Text Format=Unknown;"},
        {"format of a text", "Text", {{"TextFormat", "1"}}, "Name=c;Type=Text;"},
        {"result", "Long Integer", {{"ResultType", "10"}, {"Expression", "[a]&[b]"}},
            "Name=c;Type=Long Integer;Result Type=Text;Expression=[a]&[b];"},
        {"no result", "Long Integer", {{"ResultType", "0"}}, "Name=c;Type=Long Integer;"},
        {"alignment", "Text", {{"TextAlign", "4"}}, "Name=c;Type=Text;Text alignment=Distribute;"},
        {"general alignment", "Text", {{"TextAlign", "0"}}, "Name=c;Type=Text;Text alignment=General;"},
    };
    for (const auto& test : cases) {
        TAdmMDBColumn column;
        column.setName("c");
        column.setDataType(test.type);
        for (const auto& [property, value] : test.properties)
            column.applyProperty(property, value);
        EXPECT_EQ(line(column), test.expected) << test.name;
    }
}

TEST(Column, AlignsCells)
{
    const struct {
        const char* property;
        TextAlignment expected;
    } cases[] = {{"0", TextAlignment::Natural}, {"1", TextAlignment::Left}, {"2", TextAlignment::Center},
        {"3", TextAlignment::Right}, {"4", TextAlignment::Justified}, {"x", TextAlignment::Natural}};
    TAdmMDBColumn column;
    EXPECT_EQ(column.textAlignForCell(), TextAlignment::Natural);
    for (const auto& test : cases) {
        column.setTextAlign(test.property);
        EXPECT_EQ(column.textAlignForCell(), test.expected) << test.property;
    }
}

class OddObject : public TAdmMDBObject {
public:
    [[nodiscard]] std::vector<std::string> getObjectLabels() const override { return {"Name", "Size"}; }

protected:
    [[nodiscard]] std::vector<InfoValue> infoValues() const override { return {name()}; }
};

TEST(Object, ListOfAnotherLengthHasNoValues) { EXPECT_TRUE(OddObject().getObjectValues().empty()); }

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
