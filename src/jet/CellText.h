// SPDX-License-Identifier: MIT
#pragma once

#include "jet/Definition.h"
#include "rows/TextChunk.h"

namespace vellumo::jet {

class CodePage;

// What the text of a cell depends on besides its bytes.
struct TextRules {
    bool isJet3 = false;
    const CodePage* codePage = nullptr; // Jet 3 only
};

// Appends the text of a value that is not null, as it lies in a row, to `out`. One for the cells of a column. Numbers
// and dates never depend on a locale:
//   whole numbers    12, -3
//   Currency         always 4 decimals: 2.5000
//   Single, Double   the fewest digits that give the same value back, in the notation of %.8g and %.16g; inf, -inf, nan
//   DateTime         MM/DD/YYYY hh:mm:ss, the seconds rounded; Date/Time Extended with 7 decimals behind
//   Binary           lower-case hexadecimal
//   Replication ID   {8-4-4-4-12} in capitals
//   Numeric          exactly as many decimals as the column's scale; of a calculated one as the value's own
// What cannot be decoded (too few bytes, a date outside the years 100 to 9999, broken text) becomes U+FFFD. False when
// the value is damaged: of a text only when it ends inside a character, since other broken characters may have been
// entered so. Not for Boolean, memo and OLE columns, whose values do not lie in the row.
// Of a calculated column it is the value without its wrapper, of any type but memo.
class CellAppender {
public:
    // `column` and `rules` outlive it.
    CellAppender(const ColumnDef& column, const TextRules& rules);
    bool operator()(ByteSpan stored, TextColumnBuilder& out) const { return m_append(m_column, stored, m_rules, out); }

private:
    using Append = bool (*)(const ColumnDef&, ByteSpan, const TextRules&, TextColumnBuilder&);
    [[nodiscard]] static Append appendFor(const ColumnDef& column);
    [[nodiscard]] static Append appendFor(ColumnType type);

    const ColumnDef& m_column;
    const TextRules& m_rules;
    Append m_append;
};

// The text of a text or memo value; false when it ends inside a character.
bool appendStoredText(ByteSpan stored, const TextRules& rules, TextColumnBuilder& out);

} // namespace vellumo::jet
