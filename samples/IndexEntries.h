// SPDX-License-Identifier: MIT
#pragma once

#include "samples/IndexPlan.h"
#include "samples/RowPages.h"
#include "samples/TableShape.h"

#include <vector>

namespace vellumo::samples {

// Collects what one index says of the rows of a table. An entry is the key and, behind it, the place of the row: 3
// bytes of page and 1 of row, the high byte first, so that entries are in order when their bytes are.
class IndexEntries {
public:
    // The arguments outlive the collection.
    IndexEntries(const TableDescription& table, const TableShape& shape, const PhysicalIndex& index, JetVersion version)
        : m_table(table)
        , m_shape(shape)
        , m_index(index)
        , m_version(version)
    {
    }

    // `place`: where the row was written first; there a moved row has left a pointer. A value whose key is not known
    // here (a text of other characters than ASCII letters and digits, a GUID, a binary) leaves the index empty for
    // good.
    void add(const Row& row, const RowPlace& place);
    // The entries in key order; none when the index is left empty. Nothing may be added afterwards.
    [[nodiscard]] std::vector<Bytes> take();

private:
    [[nodiscard]] const Value& valueOf(const Row& row, std::size_t column) const;
    [[nodiscard]] bool isLeftOut(const Row& row) const;
    [[nodiscard]] bool appendKey(Bytes& entry, const Row& row) const;

    const TableDescription& m_table;
    const TableShape& m_shape;
    const PhysicalIndex& m_index;
    JetVersion m_version;
    std::vector<Bytes> m_entries;
    bool m_isLeftEmpty = false;
};

} // namespace vellumo::samples
