// SPDX-License-Identifier: MIT
#pragma once

#include "rows/TextChunk.h"

#include <memory>
#include <string_view>
#include <vector>

namespace vellumo {

class TAdmBlobData;

enum class CellKind : std::uint8_t { Text, Blob };

// A run of consecutive rows: one chunk a column. The unit in which a table is read, searched and handed between
// threads.
struct RowGroup {
    std::uint32_t rowCount = 0;
    std::vector<TextChunk> texts; // one a column; for a blob column a chunk without rows
    std::vector<std::vector<std::shared_ptr<TAdmBlobData>>>
        blobs; // one list a column: empty for a text column, else one entry a row, null where the cell is null
    // One list a hidden column that keeps the history of a memo: the number of each row's group of versions.
    std::vector<std::vector<std::int32_t>> historyGroups;
};

// Builds groups row by row.
class RowGroupBuilder {
public:
    explicit RowGroupBuilder(std::vector<CellKind> kinds, std::size_t historyCount = 0);

    // For each text column of a row write its text (or nothing) and end it; for each blob column add one entry; then
    // end the row.
    [[nodiscard]] TextColumnBuilder& text(std::size_t column) { return m_texts[column]; }
    void addText(std::size_t column, std::string_view text);
    void addBlob(std::size_t column, std::shared_ptr<TAdmBlobData> blob);
    // Before a row ends, for each history.
    void addHistoryGroup(std::size_t history, std::int32_t group) { m_historyGroups[history].push_back(group); }
    void endRow() { endRows(1); }
    // The same for several rows, each column of which has got its texts or entries.
    void endRows(std::size_t count) { m_rowCount += static_cast<std::uint32_t>(count); }

    [[nodiscard]] std::size_t columnCount() const { return m_kinds.size(); }
    [[nodiscard]] CellKind kind(std::size_t column) const { return m_kinds[column]; }
    // True when the rows collected should become a group of their own.
    [[nodiscard]] bool isFull() const;
    [[nodiscard]] bool isEmpty() const { return m_rowCount == 0; }
    // The group of all ended rows; the builder is empty again.
    [[nodiscard]] RowGroup take();

private:
    std::vector<CellKind> m_kinds;
    std::vector<TextColumnBuilder> m_texts;
    std::vector<std::vector<std::shared_ptr<TAdmBlobData>>> m_blobs;
    std::vector<std::vector<std::int32_t>> m_historyGroups;
    std::uint32_t m_rowCount = 0;
};

} // namespace vellumo
