// SPDX-License-Identifier: MIT
#pragma once

#include "jet/CellText.h"
#include "jet/ComplexColumns.h"
#include "jet/DamageReport.h"
#include "jet/DataPage.h"
#include "jet/LongValue.h"
#include "jet/RowLayout.h"

#include <functional>
#include <memory>

namespace vellumo::jet {

// What a row keeps of an object cell; null for an empty one.
struct DecodedObject {
    std::shared_ptr<TAdmBlobData> object;
    bool isOverBudget = false; // left packed, because unpacking would take too much memory
};
// Decodes the raw value of an object cell; `isWhole`: all of its bytes are there. Called on the reading thread.
using ObjectDecoder = std::function<DecodedObject(ByteSpan stored, bool isWhole)>;

// Which rows of a page are wanted.
enum class RowChoice : std::uint8_t { Live, Deleted };

// Consecutive rows of a table, and what was damaged among them; row numbers in the report count from the first of them.
struct RowRun {
    std::vector<RowGroup> groups;
    std::size_t rowCount = 0;
    DamageReport damage;
};

// Reads the rows of one table, page by page, in the order in which they lie there. One thread.
class TableReader {
public:
    struct Source {
        Pages& pages; // serves no one else meanwhile
        TextRules rules;
        LongValue::Budget& longValueBudget;
        ObjectDecoder decodeObject;
    };
    // `table` and what `source` refers to outlive the reader.
    TableReader(const TableDef& table, Source source, RowChoice choice = RowChoice::Live);

    // Appends the rows of a page of the table to the run. A page that is none of the table's, or cannot be read, is
    // damage.
    void readPage(std::uint32_t page, RowRun& run);
    // To be called after the run's last page.
    void finish(RowRun& run);

private:
    void takeRow(const RowPlace& place, std::uint32_t page, RowRun& run);
    [[nodiscard]] bool movedToListedPage(const RowPlace& place);
    void addRows(std::uint32_t page, RowRun& run);
    [[nodiscard]] Cell cellOf(const ColumnDef& column, std::size_t row);
    void addBooleans(std::size_t column);
    void addTexts(std::size_t column);
    void addMemos(std::size_t column);
    void addObjects(std::size_t column);
    void addAttachments(std::size_t column);
    void addValues(std::size_t column);
    void addHistory(std::size_t history);
    struct ValuesOfCell {
        CellState state = CellState::Null;
        std::int32_t number = 0;
        const ValueGroup* group = nullptr; // null when the cell has no values
    };
    [[nodiscard]] ValuesOfCell valuesOf(const ColumnDef& column, std::size_t row);
    void appendValues(const ColumnDef& column, std::size_t row, const ValueGroup& group, TextColumnBuilder& text);
    [[nodiscard]] std::shared_ptr<TAdmBlobData> readObject(const ColumnDef& column, std::size_t row, ByteSpan stored);
    void addDamage(DamageKind kind, const ColumnDef& column, std::size_t row);

    const TableDef& m_table;
    Source m_source;
    RowChoice m_choice;
    RowLayout m_layout;
    LongValue m_longValue;
    PageBuffer m_page;
    PageBuffer m_otherPage;
    RowGroupBuilder m_builder;
    // The rows of the page being read. They are added column by column, so that the type of a cell is looked at once a
    // page.
    std::vector<RowFrame> m_rows;
    std::uint32_t m_pageNumber = 0;
    std::size_t m_cellBytesLeft = 0;
    RowRun* m_run = nullptr;
};

} // namespace vellumo::jet
