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

// A cell is written as one value, its first file.
std::int64_t furtherFileCount(const RowStore& rows, std::size_t column)
{
    std::size_t count = 0;
    for (const auto& group : rows.groups())
        for (const auto& cell : group.blobs[column])
            if (cell) count += cell->furtherFiles().size();
    return static_cast<std::int64_t>(count);
}

} // namespace

const TAdmBlobData* exportedObject(const std::shared_ptr<TAdmBlobData>& cell)
{
    return cell && cell->state() != ObjectState::Damaged ? cell.get() : nullptr;
}

std::vector<std::string> leftOutObjects(const TAdmMDBTable& table, bool hasFiles)
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
        const auto further = hasFiles ? 0 : furtherFileCount(table.rows(), c);
        if (further == 1)
            lines.push_back(localizedFormat(
                "%@.%@: of a cell with several files the first was written, 1 was left out.", {table.name(), column}));
        else if (further > 1)
            lines.push_back(
                localizedFormat("%@.%@: of cells with several files the first was written, %ld were left out.",
                    {table.name(), column, further}));
    }
    return lines;
}

} // namespace vellumo
