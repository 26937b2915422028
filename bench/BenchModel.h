// SPDX-License-Identifier: MIT
#pragma once

#include "support/ModelBuilder.h"

#include <fmt/format.h>

namespace vellumo::bench {

// One table of 9 columns, three of them texts, as `rowCount` rows of an address book would fill it.
inline std::unique_ptr<TAdmMDBFile> makeBenchFile(std::size_t rowCount)
{
    auto table = test::makeTable("People",
        {{"ID", "Long Integer", true}, {"Name", "Text", false, false, 50}, {"City", "Text", false, {}, 50},
            {"Remark", "Memo/Hyperlink"}, {"Balance", "Currency"}, {"Ratio", "Double"}, {"Since", "DateTime"},
            {"Active", "Boolean"}, {"Visits", "Integer"}});
    auto store = table->emptyRows();
    RowGroupBuilder group(store.kinds());
    for (std::size_t i = 0; i < rowCount; ++i) {
        group.addText(0, std::to_string(i + 1));
        group.addText(1, fmt::format("Name of person {}", i));
        group.addText(2, i % 50 == 0 ? "L'Aquila" : "Springfield");
        group.addText(3, i % 10 == 0 ? "" : fmt::format("called on day {}, will call again", i % 365));
        group.addText(4, fmt::format("{}.{:04}", i % 100000, i % 10000));
        group.addText(5, fmt::format("{}", static_cast<double>(i) / 7));
        group.addText(
            6, fmt::format("{:02}/{:02}/{} {:02}:{:02}:00", i % 12 + 1, i % 28 + 1, 1990 + i % 30, i % 24, i % 60));
        group.addText(7, i % 2 == 0 ? "1" : "0");
        group.addText(8, std::to_string(i % 1000));
        group.endRow();
        if (group.isFull()) store.append(group.take());
    }
    store.append(group.take());
    table->setRows(std::move(store));
    return test::makeFile("/nowhere/people.mdb", std::move(table));
}

} // namespace vellumo::bench
