// SPDX-License-Identifier: MIT
#include "export/objects/ObjectCells.h"

#include "embedded/TAdmBlobData.h"
#include "model/TAdmMDBTable.h"
#include "text/Format.h"

#include <algorithm>

namespace vellumo {

namespace {

bool isLeftOut(const std::shared_ptr<TAdmBlobData>& cell) { return cell && exportedObject(cell) == nullptr; }

std::int64_t leftOutCount(const RowStore& rows, std::size_t column)
{
    std::int64_t count = 0;
    for (const auto& group : rows.groups())
        count += std::ranges::count_if(group.blobs[column], isLeftOut);
    return count;
}

} // namespace

const TAdmBlobData* exportedObject(const std::shared_ptr<TAdmBlobData>& cell)
{
    return cell && cell->state() != ObjectState::Damaged ? cell.get() : nullptr;
}

std::vector<std::string> leftOutObjects(const TAdmMDBTable& table)
{
    std::vector<std::string> lines;
    for (std::size_t c = 0; c < table.columns().size(); ++c) {
        const auto& column = table.columns()[c]->name();
        const auto count = leftOutCount(table.rows(), c);
        if (count == 1)
            lines.push_back(localizedFormat("%@.%@: 1 damaged object was left out.", {table.name(), column}));
        else if (count > 1)
            lines.push_back(
                localizedFormat("%@.%@: %ld damaged objects were left out.", {table.name(), column, count}));
    }
    return lines;
}

std::size_t furtherFileCount(const TAdmMDBTable& table, std::size_t column)
{
    std::size_t count = 0;
    for (const auto& group : table.rows().groups())
        for (const auto& cell : group.blobs[column])
            if (cell) count += cell->furtherFiles().size();
    return count;
}

} // namespace vellumo
