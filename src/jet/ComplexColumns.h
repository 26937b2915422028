// SPDX-License-Identifier: MIT
#pragma once

#include "jet/Definition.h"
#include "rows/RowStore.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

// Columns whose cells have several values. The cell holds the number of a group; the values lie, a row each, in a
// hidden table of values, whose rows name the group that they belong to. Only files of Access 2007 and later have them.
namespace vellumo::jet {

struct CatalogEntry;

// An entry of the system table that leads from the columns to their tables of values.
struct ComplexColumn {
    std::uint32_t table = 0; // catalogue id of the column's own table
    std::uint32_t complexId = 0;
    std::uint32_t valueTable = 0; // catalogue id
    ComplexKind kind = ComplexKind::Values;
};

// `rows` of the system table `table` as the catalogue knows it. An entry without one of its numbers is left out.
[[nodiscard]] std::vector<ComplexColumn> complexColumnsFrom(
    const TableDef& table, const RowStore& rows, const std::vector<CatalogEntry>& catalog);

// One text that a memo with a history had.
struct MemoVersion {
    std::string modified; // when it became this: the text of a date cell
    std::string text;     // "" for null
};

constexpr std::string_view valueSeparator = "; ";

// The values of a cell. Which member has them follows from the kind of the column.
struct ValueGroup {
    std::shared_ptr<TAdmBlobData> object; // the first file, which knows the others
    std::string text;                     // the values, joined by valueSeparator
    std::vector<std::uint32_t> ends;      // where in the text each value ends
    std::vector<MemoVersion> versions;    // the oldest first
    std::uint64_t count = 0;              // of values
    mutable std::atomic<bool> isClaimed = false;
};

// The values of a column by the number of their group. Filled once, then read by any number of threads.
class ValueGroups {
public:
    // The values of a cell; null when it has none. They then count as claimed.
    [[nodiscard]] const ValueGroup* claim(std::int32_t number) const;
    // The same without claiming.
    [[nodiscard]] const ValueGroup* find(std::int32_t number) const;
    [[nodiscard]] std::uint64_t unclaimedValues() const;
    // All groups, in no order.
    [[nodiscard]] const std::unordered_map<std::int32_t, ValueGroup>& all() const { return m_groups; }

    [[nodiscard]] ValueGroup& groupOf(std::int32_t number) { return m_groups[number]; }

private:
    std::unordered_map<std::int32_t, ValueGroup> m_groups;
};

// Leaves in the definition of a table of values what groupValues() asks for.
void keepValueColumns(TableDef& table, ComplexKind kind);

// What people see of the values is settled in their table: gives the column what the table's properties say of a
// lookup.
void takeLookupOf(const TableDef& values, ColumnDef& column);

// Puts the rows of a table of values into groups. Null when the table lacks a column that it needs.
[[nodiscard]] std::shared_ptr<ValueGroups> groupValues(ComplexKind kind, const TableDef& table, const RowStore& rows);

// The column of `owner` whose history `versions` is, the table of values of a history column.
[[nodiscard]] std::optional<std::size_t> memoOfHistory(const TableDef& owner, const TableDef& versions);

} // namespace vellumo::jet
