// SPDX-License-Identifier: MIT
#pragma once

#include "embedded/TAdmBlobData.h"
#include "model/TAdmMDBFile.h"

#include <concepts>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// Databases made in memory, for tests of what is done with an opened one.
namespace vellumo::test {

// A cell: a text, a blob, or `null`.
struct Cell {
    Cell(std::nullptr_t) { }
    template <std::convertible_to<std::string_view> Text>
    Cell(const Text& cellText)
        : text(std::string_view(cellText))
    {
    }
    Cell(std::shared_ptr<TAdmBlobData> cellBlob)
        : blob(std::move(cellBlob))
    {
    }
    std::string text;
    std::shared_ptr<TAdmBlobData> blob;
    std::optional<RowNotes::Number> note = {};
};
inline constexpr std::nullptr_t null = nullptr;

// A text that does not tell all of its value, with the note that does.
inline Cell noted(std::string_view text, RowNotes::Number note)
{
    Cell cell(text);
    cell.note = note;
    return cell;
}
// An empty text that is no null.
inline const Cell empty = noted("", -1);

using Row = std::vector<Cell>;

inline std::shared_ptr<TAdmBlobData> makeBlob(std::string_view bytes, std::string extension, ObjectFacts facts = {})
{
    const auto* first = reinterpret_cast<const std::byte*>(bytes.data());
    return std::make_shared<TAdmBlobData>(
        std::vector<std::byte>(first, first + bytes.size()), std::move(extension), std::move(facts));
}

struct ColumnSpec {
    std::string name;
    std::string dataType;
    bool isPrimaryKey = false;
    std::optional<bool> allowZeroLength = {};
    std::int32_t fieldSize = -1;
    TAdmMDBColumn::OptionalText description = {};
};

inline void addText(TextColumnBuilder& column, const Cell& cell)
{
    column.append(cell.text);
    if (cell.note) column.note(*cell.note);
    column.endText();
}

// `rowsPerGroup`: after how many rows a new group of the row store begins.
inline void setRows(TAdmMDBTable& table, const std::vector<Row>& rows, std::size_t rowsPerGroup = 1000)
{
    auto store = table.emptyRows();
    RowGroupBuilder group(store.kinds());
    std::size_t count = 0;
    for (const auto& row : rows) {
        for (std::size_t c = 0; c < group.columnCount(); ++c) {
            if (group.kind(c) == CellKind::Blob)
                group.addBlob(c, row.at(c).blob);
            else
                addText(group.text(c), row.at(c));
        }
        group.endRow();
        if (++count % rowsPerGroup == 0) store.append(group.take());
    }
    store.append(group.take());
    table.setRows(std::move(store));
}

inline std::unique_ptr<TAdmMDBTable> makeTable(std::string name, const std::vector<ColumnSpec>& columns,
    const std::vector<Row>& rows = {}, std::size_t rowsPerGroup = 1000)
{
    auto table = std::make_unique<TAdmMDBTable>();
    table->setName(std::move(name));
    TAdmMDBTable::Columns made;
    for (const auto& wanted : columns) {
        auto column = std::make_unique<TAdmMDBColumn>();
        column->setName(wanted.name);
        column->setDataType(wanted.dataType);
        column->setIsPrimaryKey(wanted.isPrimaryKey);
        column->setAllowZeroLength(wanted.allowZeroLength);
        column->setFieldSize(wanted.fieldSize);
        column->setDescription(wanted.description);
        made.push_back(std::move(column));
    }
    table->setColumns(std::move(made));
    setRows(*table, rows, rowsPerGroup);
    return table;
}

// An index of the table: key column names, "-" in front of a descending one. The indexes stay in the order added.
struct IndexSpec {
    std::string name;
    std::vector<std::string> keys;
    bool isUnique = false;
    bool isPrimaryKey = false;
};

inline void setIndices(TAdmMDBTable& table, const std::vector<IndexSpec>& wantedIndexes)
{
    TAdmMDBTable::Indices indices;
    for (const auto& wanted : wantedIndexes) {
        auto index = std::make_unique<TAdmMDBIndex>();
        index->setName(wanted.name);
        index->setIsUnique(wanted.isUnique);
        index->setIsPrimaryKey(wanted.isPrimaryKey);
        std::vector<IndexKey> keys;
        for (const auto& key : wanted.keys)
            keys.push_back(key.starts_with("-") ? IndexKey{key.substr(1), false} : IndexKey{key, true});
        index->setKeys(std::move(keys));
        indices.push_back(std::move(index));
    }
    table.setIndices(std::move(indices));
}

struct RelationSpec {
    std::string name;
    std::string referencingTable;
    std::string referencedTable;
    std::vector<std::pair<std::string, std::string>> columns; // referencing, referenced
    bool onUpdateCascade = false;
    bool onDeleteCascade = false;
};

inline void setRelations(TAdmMDBFile& file, const std::vector<RelationSpec>& wantedRelations)
{
    TAdmMDBFile::ForeignKeys relations;
    for (const auto& wanted : wantedRelations) {
        auto relation = std::make_unique<TAdmMDBForeignKey>();
        relation->setName(wanted.name);
        relation->setReferencingTable(wanted.referencingTable);
        relation->setReferencedTable(wanted.referencedTable);
        for (const auto& [referencing, referenced] : wanted.columns)
            relation->addColumnPair(referencing, referenced);
        relation->setOnUpdateCascade(wanted.onUpdateCascade);
        relation->setOnDeleteCascade(wanted.onDeleteCascade);
        relations.push_back(std::move(relation));
    }
    file.setAllForeignKeys(std::move(relations));
}

// A file that counts as open; nothing exists on disk at its path.
template <typename... Tables>
std::unique_ptr<TAdmMDBFile> makeFile(std::string_view fullPath, std::unique_ptr<Tables>... tables)
{
    auto file = std::make_unique<TAdmMDBFile>();
    file->setFullPath(fullPath);
    TAdmMDBFile::Tables list;
    (list.push_back(std::move(tables)), ...);
    file->setTables(std::move(list));
    file->setActive(true);
    return file;
}

} // namespace vellumo::test
