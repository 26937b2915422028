// SPDX-License-Identifier: MIT
#include "browser/NameFilters.h"

#include "support/ModelBuilder.h"

#include <gtest/gtest.h>

namespace vellumo {
namespace {

using test::makeFile;
using test::makeTable;

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
    const auto sales =
        makeFile("/data/Sales.mdb", makeTable("Orders", {}), makeTable("ÄRZTE", {}), makeTable("Customers", {}));
    const auto closed = makeFile("/orders/closed.accdb");
    closed->setActive(false);
    const auto stock = makeFile("/data/stock.mdb", makeTable("Items", {}));
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
