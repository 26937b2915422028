#pragma once

#include "embedded/TAdmBlobData.h"
#include "model/TAdmMDBTable.h"

#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vellumo::testing {

struct ColumnSpec {
    std::string name;
    std::string dataType;
};

// A table of the given columns; each row lists the texts of its cells, "" being null. In an object column any text
// stands for an object. Groups of `rowsPerGroup` rows.
inline std::unique_ptr<TAdmMDBTable> makeTable(const std::vector<ColumnSpec>& columns,
    const std::vector<std::vector<std::string>>& rows, std::size_t rowsPerGroup = 3)
{
    auto table = std::make_unique<TAdmMDBTable>();
    TAdmMDBTable::Columns list;
    for (const auto& spec : columns) {
        list.push_back(std::make_unique<TAdmMDBColumn>());
        list.back()->setName(spec.name);
        list.back()->setDataType(spec.dataType);
    }
    table->setColumns(std::move(list));
    auto store = table->emptyRows();
    RowGroupBuilder builder(store.kinds());
    std::size_t count = 0;
    for (const auto& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            if (builder.kind(i) == CellKind::Text) {
                builder.addText(i, row[i]);
            } else {
                builder.addBlob(
                    i, row[i].empty() ? nullptr : std::make_shared<TAdmBlobData>(std::vector<std::byte>(), row[i]));
            }
        }
        builder.endRow();
        if (++count % rowsPerGroup == 0) store.append(builder.take());
    }
    store.append(builder.take());
    table->setRows(std::move(store));
    return table;
}

// A table of one column.
inline std::unique_ptr<TAdmMDBTable> makeColumn(const std::string& dataType, const std::vector<std::string>& texts)
{
    std::vector<std::vector<std::string>> rows;
    for (const auto& text : texts)
        rows.push_back({text});
    return makeTable({{"A", dataType}}, rows);
}

} // namespace vellumo::testing
