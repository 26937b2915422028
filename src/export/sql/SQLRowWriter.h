// SPDX-License-Identifier: MIT
#pragma once

#include "export/sql/SQLText.h"
#include "rows/RowGroup.h"

#include <string>
#include <string_view>
#include <vector>

namespace vellumo {

// How the text cells of a column are written into an INSERT statement.
enum class SQLCellForm {
    Bare,
    Decimal,            // bare, "." replaced by the decimal symbol
    Literal,            // quoted
    IsoDate,            // quoted, a date in the form that servers read
    ToDate,             // quoted, within a call that says how the date is written
    GuidLiteral,        // "{...}" with its braces replaced by quotes
    CompactGuidLiteral, // the same, without dashes
};

struct SQLRowColumn {
    SQLCellForm form = SQLCellForm::Bare;
    std::string_view nullText; // what a null cell becomes; not owned
};

// Writes the rows of one table as INSERT statements, straight from the groups of its rows.
class SQLRowWriter {
public:
    // `start` goes in front of a row's values and `end` behind them; `columns` has one entry a column of the groups.
    SQLRowWriter(
        std::string start, const std::vector<SQLRowColumn>& columns, std::string_view end, std::string decimalSymbol);

    // The rows that follow are those of `group`, which stays until the next group begins.
    void beginGroup(const RowGroup& group);

    // The statement of a row, counted within the group. A sink has write(std::string_view).
    template <typename Sink> void writeRow(Sink& sink, std::uint32_t row) const
    {
        sink.write(m_start);
        for (std::size_t c = 0; c < m_columns.size(); ++c) {
            if (c > 0) sink.write(", ");
            writeCell(sink, c, row);
        }
        sink.write(m_end);
    }

private:
    struct Column {
        SQLRowColumn layout;
        bool isPlain = false; // no text of the group needs escaping or replacing
    };

    template <typename Sink> void writeCell(Sink& sink, std::size_t index, std::uint32_t row) const
    {
        const auto& column = m_columns[index];
        if (!m_group->blobs[index].empty()) {
            const auto literal = blobLiteral(index, row);
            return sink.write(literal.empty() ? column.layout.nullText : std::string_view(literal));
        }
        const auto text = m_group->texts[index].text(row);
        if (text.empty()) return sink.write(column.layout.nullText);
        writeText(sink, column, text);
    }

    template <typename Sink> void writeText(Sink& sink, const Column& column, std::string_view text) const
    {
        switch (column.layout.form) {
        case SQLCellForm::Bare: return sink.write(text);
        case SQLCellForm::Decimal:
            return column.isPlain ? sink.write(text) : writeReplaced(sink, text, '.', m_decimalSymbol);
        case SQLCellForm::Literal: return writeLiteral(sink, column.isPlain, text);
        case SQLCellForm::IsoDate: return writeIsoDate(sink, column.isPlain, text);
        case SQLCellForm::ToDate:
            sink.write(fractionOf(text).empty() ? "TO_DATE(" : "TO_TIMESTAMP(");
            writeLiteral(sink, column.isPlain, text);
            return sink.write(
                fractionOf(text).empty() ? ", 'MM/DD/YYYY HH24:MI:SS')" : ", 'MM/DD/YYYY HH24:MI:SS.FF7')");
        case SQLCellForm::GuidLiteral:
        case SQLCellForm::CompactGuidLiteral: return writeGuid(sink, column.layout.form, text);
        }
    }

    template <typename Sink> static void writeLiteral(Sink& sink, bool isPlain, std::string_view text)
    {
        sink.write("'");
        if (isPlain)
            sink.write(text);
        else
            writeEscaped(sink, text);
        sink.write("'");
    }

    template <typename Sink> static void writeEscaped(Sink& sink, std::string_view text)
    {
        std::size_t start = 0;
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (text[i] != '\'' && text[i] != '\\') continue;
            sink.write(text.substr(start, i + 1 - start));
            start = i; // the character itself goes out once more
        }
        sink.write(text.substr(start));
    }

    template <typename Sink> static void writeIsoDate(Sink& sink, bool isPlain, std::string_view text)
    {
        const auto fraction = fractionOf(text);
        const auto date = sqlDateText(text.substr(0, text.size() - fraction.size()));
        if (!date) return writeLiteral(sink, isPlain, text);
        sink.write("'");
        sink.write({date->data(), date->size()});
        sink.write(fraction);
        sink.write("'");
    }

    // Behind the seconds of an extended date: a point and seven digits.
    static std::string_view fractionOf(std::string_view date)
    {
        constexpr std::size_t wholeSize = 19;
        if (date.size() != wholeSize + 8 || date[wholeSize] != '.') return {};
        const auto fraction = date.substr(wholeSize);
        return fraction.find_first_not_of("0123456789", 1) == std::string_view::npos ? fraction : std::string_view();
    }

    template <typename Sink> static void writeGuid(Sink& sink, SQLCellForm form, std::string_view text)
    {
        if (text.front() != '{' || text.back() != '}') return sink.write(text);
        text = text.substr(1, text.size() - 2);
        sink.write("'");
        if (form == SQLCellForm::CompactGuidLiteral)
            writeReplaced(sink, text, '-', "");
        else
            sink.write(text);
        sink.write("'");
    }

    template <typename Sink>
    static void writeReplaced(Sink& sink, std::string_view text, char character, std::string_view replacement)
    {
        for (auto at = text.find(character); at != std::string_view::npos; at = text.find(character)) {
            sink.write(text.substr(0, at));
            sink.write(replacement);
            text.remove_prefix(at + 1);
        }
        sink.write(text);
    }

    // "" for a cell without an object that may be exported.
    [[nodiscard]] std::string blobLiteral(std::size_t column, std::uint32_t row) const;
    [[nodiscard]] bool isPlain(SQLCellForm form, std::string_view texts) const;

    std::string m_start;
    std::vector<Column> m_columns;
    std::string_view m_end;
    std::string m_decimalSymbol;
    const RowGroup* m_group = nullptr;
};

} // namespace vellumo
