// SPDX-License-Identifier: MIT
#pragma once

#include "export/exact/ExactCells.h"
#include "export/sql/ExactSchema.h"

#include "text/TextBuffer.h"

#include <functional>
#include <string>
#include <vector>

namespace vellumo {

// Writes the rows of one table as INSERT statements, as many rows to a statement as the server likes.
class ExactRows {
public:
    // Where finished statements go, many at once.
    using Sink = std::function<void(std::string_view statements)>;
    // All outlive it. `start`: what stands in front of a statement's first row.
    ExactRows(const ExactDialectFacts& facts, const ExactTable& table, std::string start, Sink sink);

    // What the object of a cell is on the server when it is not its bytes: a path. Row counted from 0 in the table.
    using ObjectText = std::function<std::string(std::size_t column, std::size_t row, const TAdmBlobData& object)>;
    void setObjectText(ObjectText text) { m_objectText = std::move(text); }

    // The rows that follow are those of `group`, whose first is the table's row with that number.
    void beginGroup(const RowGroup& group, std::size_t firstRow);
    void addRow(std::uint32_t row);
    // Ends the last statement.
    void finish();

private:
    using Append = void (ExactRows::*)(const ExactCell& cell);
    // How a column is written. In most groups of rows its literals are its texts as they stand, between two others.
    struct Column {
        Append append = nullptr;
        std::string start; // with the separator
        std::string_view end;
        std::string null;
        std::size_t longest = 0; // bytes of texts that are written so
        // Of the group.
        TextForm form = TextForm::None;
        const TextChunk* texts = nullptr;
    };

    [[nodiscard]] Column columnFor(const ExactColumn& column, std::string_view separator) const;
    [[nodiscard]] Append appendFor(const ExactColumn& column) const;
    [[nodiscard]] TextForm formOf(const ExactCells& cells, Append append) const;
    [[nodiscard]] bool standAsTheyAre(const ExactCells& cells, Append append) const;
    void addText(const Column& column, std::string_view text);
    void addCell(std::size_t column, std::uint32_t row);
    void appendBare(const ExactCell& cell);
    void appendBoolean(const ExactCell& cell);
    void appendReal(const ExactCell& cell);
    void appendDigits(const ExactCell& cell);
    void appendDate(const ExactCell& cell);
    void appendGuid(const ExactCell& cell);
    void appendText(const ExactCell& cell);
    void appendBytes(const ExactCell& cell);
    void appendObject(const ExactCell& cell);
    void splitBefore(std::size_t place);
    void endStatement();
    void passOn();
    void wrapInBlock();

    const ExactDialectFacts& m_facts;
    const ExactTable& m_table;
    std::string m_start;
    Sink m_sink;
    ObjectText m_objectText;
    std::vector<Column> m_columns;
    std::vector<ExactCells> m_cells;
    std::size_t m_firstRow = 0;
    std::size_t m_column = 0; // that is being written
    std::uint32_t m_row = 0;
    TextBuffer m_script; // statements that are done, and behind them the one begun
    std::size_t m_statementStart = 0;
    std::string m_bytes;
    // Of this row, by their columns: what no literal can hold.
    std::vector<std::pair<std::size_t, std::span<const std::byte>>> m_longBytes;
    std::size_t m_rowsInStatement = 0;
};

} // namespace vellumo
