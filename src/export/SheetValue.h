// SPDX-License-Identifier: MIT
#pragma once

#include "export/ExportJob.h"
#include "export/biff8/CellFormats.h"
#include "export/exact/ExactCells.h"

namespace vellumo {

// What a cell of a sheet is to hold.
struct SheetValue {
    enum class Kind : std::uint8_t { Blank, Number, Boolean, Text };
    Kind kind = Kind::Blank;
    CellFormat format = CellFormat::General;
    // Text: at most 32767 units of UTF-16. Number: its digits; "" for a date. Boolean: "1" or "0".
    std::string_view text{};
    double number = 0;        // a date
    bool isTemporary = false; // the text is gone with the next value; others live as long as the table
};

// Makes the cells of a table values of sheets: dates as the days that sheets count, numbers as numbers where a double
// holds all of their digits, texts as far as a cell takes them. What a sheet cannot hold as it is becomes a finding.
class SheetValues {
public:
    // Both outlive it.
    SheetValues(ExportJob& job, const TAdmMDBTable& table)
        : m_job(job)
        , m_table(table)
    {
    }
    // `row` counts from 0 in the table.
    [[nodiscard]] SheetValue of(const ExactCell& cell, std::size_t column, std::size_t row);

    void addFinding(FindingKind kind, std::size_t column, std::string_view detail = {});

private:
    [[nodiscard]] SheetValue numberOf(const ExactCell& cell, std::size_t column, CellFormat format);
    [[nodiscard]] SheetValue dateValue(const ExactCell& cell, std::size_t column);
    [[nodiscard]] SheetValue textOf(std::string_view text, std::size_t column);
    [[nodiscard]] SheetValue objectOf(const ExactCell& cell, std::size_t column, std::size_t row);
    [[nodiscard]] SheetValue bytesLeftOut(std::size_t byteCount, std::size_t column);
    [[nodiscard]] SheetValue temporary() const;

    ExportJob& m_job;
    const TAdmMDBTable& m_table;
    std::string m_text; // of a temporary value
};

} // namespace vellumo
