// SPDX-License-Identifier: MIT
#pragma once

#include "support/ModelBuilder.h"

namespace vellumo::test {

// A table of one column, in groups of three rows. Each text is a cell, "" being null; in an object column it stands for
// an object with that extension.
inline std::unique_ptr<TAdmMDBTable> makeColumn(const std::string& dataType, const std::vector<std::string>& texts)
{
    std::vector<Row> rows;
    rows.reserve(texts.size());
    for (const auto& text : texts)
        rows.push_back({dataType == "OLE" && !text.empty() ? Cell(makeBlob("", text)) : Cell(text)});
    return makeTable("T", {{"A", dataType}}, rows, 3);
}

} // namespace vellumo::test
