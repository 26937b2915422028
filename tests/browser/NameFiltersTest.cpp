#include "browser/NameFilters.h"

#include <gtest/gtest.h>

namespace vellumo {
namespace {

std::unique_ptr<TAdmMDBFile> makeFile(const char* path, bool isOpen, const std::vector<const char*>& tableNames)
{
    auto file = std::make_unique<TAdmMDBFile>();
    file->setFullPath(path);
    TAdmMDBFile::Tables tables;
    for (const auto* name : tableNames) {
        tables.push_back(std::make_unique<TAdmMDBTable>());
        tables.back()->setName(name);
    }
    file->setTables(std::move(tables));
    file->setActive(isOpen);
    return file;
}

std::vector<std::string> names(const auto& objects)
{
    std::vector<std::string> list;
    list.reserve(objects.size());
    for (const auto* object : objects)
        list.push_back(object->name());
    return list;
}

TEST(NameFilters, KeepWhatMatchesInTheGivenOrder)
{
    const auto sales = makeFile("/data/Sales.mdb", true, {"Orders", "ÄRZTE", "Customers"});
    const auto closed = makeFile("/orders/closed.accdb", false, {});
    const auto stock = makeFile("/data/stock.mdb", true, {"Items"});
    const std::vector<TAdmMDBFile*> files = {stock.get(), closed.get(), sales.get()};
    const struct {
        const char* name;
        const char* text;
        std::vector<std::string> files;
        std::vector<std::string> salesTables;
    } cases[] = {
        {"no text", "", {"stock", "closed", "Sales"}, {"Orders", "ÄRZTE", "Customers"}},
        {"a file by its name", "STOC", {"stock"}, {}},
        {"an open file by one of its tables", "order", {"Sales"}, {"Orders"}},
        {"folder and extension do not count", "mdb", {}, {}},
        {"in the middle of both", "s", {"stock", "closed", "Sales"}, {"Orders", "Customers"}},
        {"letter case beyond ASCII", "ärzt", {"Sales"}, {"ÄRZTE"}},
        {"nothing", "xyz", {}, {}},
    };
    for (const auto& test : cases) {
        EXPECT_EQ(names(filterFileName(files, test.text)), test.files) << test.name;
        EXPECT_EQ(names(filterTableName(sales->tables(), test.text)), test.salesTables) << test.name;
    }
}

} // namespace
} // namespace vellumo
