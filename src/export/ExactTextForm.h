// SPDX-License-Identifier: MIT
#pragma once

#include "export/EncodedFile.h"
#include "export/ExportJob.h"
#include "export/exact/ExactCells.h"
#include "model/TAdmMDBTable.h"

#include <memory>
#include <optional>
#include <vector>

namespace vellumo {

// How the records of one table stand in a text file that keeps every value as it is.
class ExactTextForm {
public:
    // The form of the job's format. All outlive it.
    [[nodiscard]] static std::unique_ptr<ExactTextForm> create(
        ExportJob& job, const TAdmMDBTable& table, EncodedFile& out);

    ExactTextForm(ExportJob& job, const TAdmMDBTable& table, EncodedFile& out);
    virtual ~ExactTextForm() = default;

    // What stands in front of the records, and behind them.
    virtual void begin() { }
    virtual void end() { }

    // The records that follow are the group's, whose first one has that number in the table.
    virtual void enter(const RowGroup& group, std::size_t firstRow);
    virtual void addRecord(std::uint32_t row) = 0;

protected:
    // How a column is written.
    struct Column {
        std::string start; // in front of each value
        std::string null;  // in the place of that and a value
        // Around the values of a group that are written by their texts alone, in the place of the start.
        std::string textStart;
        std::string textEnd;
        TextForm form = TextForm::None;
        const TextChunk* texts = nullptr; // of the group
    };
    // Once for each column, in their order.
    void addColumn(Column column) { m_columns.push_back(std::move(column)); }
    // Whether the texts of these cells may be written as they are.
    [[nodiscard]] virtual bool standAsTheyAre(const ExactCells& cells) const = 0;
    // Between a date and its time of day.
    [[nodiscard]] virtual char dateSeparator() const { return 'T'; }
    // Writes a value behind the column's start.
    virtual void addValue(const ExactCell& cell, std::size_t column, std::uint32_t row) = 0;
    // Writes the cells of the group's row.
    void addCells(std::uint32_t row);

    [[nodiscard]] ExportJob& job() { return m_job; }
    [[nodiscard]] const TAdmMDBTable& table() const { return m_table; }
    [[nodiscard]] TextBuffer& text() { return m_out.text(); }
    [[nodiscard]] std::size_t columnCount() const { return m_table.columns().size(); }
    void addFinding(FindingKind kind, std::size_t column);

    // Makes the cell's object a file beside the export, where those are wanted; its path, "" for an object without
    // bytes.
    [[nodiscard]] std::optional<std::string> objectPath(const ExactCell& cell, std::size_t column, std::uint32_t row);
    void addBase64(std::span<const std::byte> bytes);

private:
    [[nodiscard]] TextForm formOf(const ExactCells& cells) const;
    void addText(const Column& column, std::string_view text);
    void addCell(std::size_t column, std::uint32_t row);

    ExportJob& m_job;
    const TAdmMDBTable& m_table;
    EncodedFile& m_out;
    std::vector<Column> m_columns;
    std::vector<ExactCells> m_cells;
    std::size_t m_firstRow = 0;
};

} // namespace vellumo
