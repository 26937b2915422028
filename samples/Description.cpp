// SPDX-License-Identifier: MIT
#include "samples/Description.h"

#include <memory>
#include <utility>

namespace vellumo::samples {

RowSource rowsOf(std::vector<Row> rows)
{
    return [rows = std::make_shared<const std::vector<Row>>(std::move(rows))](std::size_t index, Row& row) {
        if (index >= rows->size()) return false;
        row = (*rows)[index];
        return true;
    };
}

RowSource rowsOf(std::vector<std::vector<Value>> rows)
{
    std::vector<Row> live;
    live.reserve(rows.size());
    for (auto& values : rows) {
        live.emplace_back();
        live.back().values = std::move(values);
    }
    return rowsOf(std::move(live));
}

} // namespace vellumo::samples
