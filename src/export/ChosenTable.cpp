// SPDX-License-Identifier: MIT
#include "export/ChosenTable.h"

#include <algorithm>
#include <numeric>

namespace vellumo {

namespace {

std::vector<std::size_t> chosenColumns(const TAdmMDBTable& table, const TableChoice& choice)
{
    if (choice.columns) return *choice.columns;
    std::vector<std::size_t> all(table.columns().size());
    std::iota(all.begin(), all.end(), std::size_t{0});
    return all;
}

// Half a key is none: rows that differ in the other half would break it.
bool hasAllKeys(const TAdmMDBTable& table, const TAdmMDBIndex& index)
{
    return std::ranges::all_of(
        index.keys(), [&](const IndexKey& key) { return table.findColumn(key.name) != nullptr; });
}

std::size_t primaryKeyCount(const TAdmMDBTable& table)
{
    return static_cast<std::size_t>(
        std::ranges::count_if(table.columns(), [](const auto& column) { return column->isPrimaryKey(); }));
}

void takeColumns(const TAdmMDBTable& from, std::span<const std::size_t> numbers, TAdmMDBTable& to)
{
    TAdmMDBTable::Columns columns;
    for (const auto number : numbers)
        columns.push_back(std::make_unique<TAdmMDBColumn>(*from.columns()[number]));
    to.setColumns(std::move(columns));
    if (primaryKeyCount(to) == primaryKeyCount(from)) return;
    for (const auto& column : to.columns())
        column->setIsPrimaryKey(false);
}

void takeIndexes(const TAdmMDBTable& from, TAdmMDBTable& to)
{
    TAdmMDBTable::Indices indices;
    for (const auto& index : from.indices())
        if (hasAllKeys(to, *index)) indices.push_back(std::make_unique<TAdmMDBIndex>(*index));
    to.setIndices(std::move(indices));
}

RowGroup sharedGroup(const RowGroup& from, std::span<const std::size_t> columns)
{
    RowGroup group;
    group.rowCount = from.rowCount;
    for (const auto column : columns) {
        group.texts.push_back(from.texts[column]);
        group.blobs.push_back(from.blobs[column]);
    }
    return group;
}

// What the text of a cell does not tell of its value goes with it.
void addNote(const TextChunk& chunk, std::uint32_t row, ColumnType type, TextColumnBuilder& out)
{
    const auto number = chunk.notes() == nullptr ? std::nullopt : chunk.notes()->at(row);
    if (!number) return;
    const bool isDate = factsOf(type).sortKind == SortKind::Date;
    if (isDate || *number < 0)
        out.note(*number);
    else
        out.noteWholeText(chunk.notes()->wholeText(*number));
}

void addCell(const RowGroup& from, std::size_t column, std::uint32_t row, ColumnType type, RowGroupBuilder& group,
    std::size_t target)
{
    if (group.kind(target) == CellKind::Blob) return group.addBlob(target, from.blobs[column][row]);
    auto& out = group.text(target);
    out.append(from.texts[column].text(row));
    addNote(from.texts[column], row, type, out);
    out.endText();
}

std::size_t groupOf(const RowStore& rows, std::size_t row)
{
    std::size_t first = 0;
    for (auto count = rows.groups().size(); count > 1;) {
        const auto half = count / 2;
        if (rows.firstRow(first + half) <= row) first += half;
        count -= half;
    }
    return first;
}

void takeChosenRows(
    const RowStore& from, std::span<const std::size_t> columns, std::span<const std::uint32_t> rows, TAdmMDBTable& to)
{
    auto store = to.emptyRows();
    RowGroupBuilder group(store.kinds());
    for (const auto row : rows) {
        const auto place = groupOf(from, row);
        const auto rowInGroup = static_cast<std::uint32_t>(row - from.firstRow(place));
        for (std::size_t c = 0; c < columns.size(); ++c)
            addCell(from.groups()[place], columns[c], rowInGroup, to.columns()[c]->type(), group, c);
        group.endRow();
        if (group.isFull()) store.append(group.take());
    }
    if (!group.isEmpty()) store.append(group.take());
    to.setRows(std::move(store));
}

void takeRows(const RowStore& from, std::span<const std::size_t> columns, const TableChoice& choice, TAdmMDBTable& to)
{
    if (choice.rows) return takeChosenRows(from, columns, *choice.rows, to);
    auto store = to.emptyRows();
    for (const auto& group : from.groups())
        store.append(sharedGroup(group, columns));
    to.setRows(std::move(store));
}

} // namespace

std::unique_ptr<TAdmMDBTable> chosenTable(const TAdmMDBTable& table, const TableChoice& choice)
{
    auto chosen = std::make_unique<TAdmMDBTable>();
    chosen->setName(table.name());
    chosen->setFile(table.file());
    chosen->setOrigin(table.origin());
    chosen->setProperties(table.properties());
    const auto columns = chosenColumns(table, choice);
    takeColumns(table, columns, *chosen);
    takeIndexes(table, *chosen);
    takeRows(table.rows(), columns, choice, *chosen);
    return chosen;
}

} // namespace vellumo
